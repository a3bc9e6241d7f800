#include "adapters/json/json_value.hpp"

#include <cmath>
#include <nlohmann/json.hpp>

namespace velotap {
namespace {

using nlohmann::json;

// Nobody nests settings; a file that does is not one of ours and must not exhaust the stack.
constexpr int kDeepest = 64;
constexpr const char* kTooDeep = "it is nested more than 64 deep";

// Turns what the library parsed into values. Depth 0 is the outermost.
class Reader {
 public:
  /// Nothing for a null, which stands for no value, and for whatever nests too deeply.
  std::optional<Value> value(const json& node, int depth) {
    if (depth > kDeepest) {
      tooDeep_ = true;
      return std::nullopt;
    }
    switch (node.type()) {
      case json::value_t::boolean:
        return Value(node.get<bool>());
      case json::value_t::number_integer:
        return Value(node.get<std::int64_t>());
      case json::value_t::number_unsigned:
        return unsignedNumber(node.get<std::uint64_t>());
      case json::value_t::number_float:
        return Value(node.get<double>());
      case json::value_t::string:
        return Value(node.get<std::string>());
      case json::value_t::array:
        return Value(array(node, depth));
      case json::value_t::object:
        return Value(map(node, depth));
      case json::value_t::null:
      case json::value_t::binary:
      case json::value_t::discarded:
        return std::nullopt;
    }
    return std::nullopt;
  }

  ValueMap map(const json& node, int depth) {
    ValueMap map;
    for (const auto& [key, item] : node.items()) {
      if (auto inner = value(item, depth + 1)) map.emplace(key, *std::move(inner));
    }
    return map;
  }

  [[nodiscard]] bool tooDeep() const noexcept { return tooDeep_; }

 private:
  static Value unsignedNumber(std::uint64_t number) {
    // Too large for a signed number: kept as near as a real can.
    if (number > static_cast<std::uint64_t>(INT64_MAX)) return static_cast<double>(number);
    return static_cast<std::int64_t>(number);
  }

  ValueArray array(const json& node, int depth) {
    ValueArray array;
    for (const json& item : node) {
      if (auto inner = value(item, depth + 1)) array.push_back(*std::move(inner));
    }
    return array;
  }

  bool tooDeep_ = false;
};

std::optional<json> toJson(const Value& value, std::string& error);

std::optional<json> mapToJson(const ValueMap& map, std::string& error) {
  json object = json::object();
  for (const auto& [key, item] : map) {
    auto node = toJson(item, error);
    if (!node) {
      error.insert(0, "\"" + key + "\": ");
      return std::nullopt;
    }
    object.emplace(key, *std::move(node));
  }
  return object;
}

std::optional<json> toJson(const Value& value, std::string& error) {
  if (const bool* boolean = value.boolean()) return json(*boolean);
  if (const std::int64_t* integer = value.integer()) return json(*integer);
  if (const std::string* text = value.text()) return json(*text);
  if (const double* real = value.real()) {
    if (std::isfinite(*real)) return json(*real);
    error = "the number is not finite";
    return std::nullopt;
  }
  if (const ValueMap* map = value.map()) return mapToJson(*map, error);
  json array = json::array();
  for (const Value& item : *value.array()) {
    auto node = toJson(item, error);
    if (!node) return std::nullopt;
    array.push_back(*std::move(node));
  }
  return array;
}

// The library's parser reports where it gave up through an exception; it goes no further than here.
std::optional<json> parsed(std::string_view text, std::string& error) {
  // The parser takes a zero byte for the end of the text and would silently drop what follows.
  if (text.find('\0') != std::string_view::npos) {
    error = "it holds a zero byte";
    return std::nullopt;
  }
  try {
    return json::parse(text);
  } catch (const json::exception& failure) {
    error = failure.what();
    return std::nullopt;
  }
}

}  // namespace

std::optional<ValueMap> parseSettings(std::string_view text, std::string& error) {
  const auto root = parsed(text, error);
  if (!root) return std::nullopt;
  if (!root->is_object()) {
    error = "it does not hold a JSON object";
    return std::nullopt;
  }
  Reader reader;
  ValueMap map = reader.map(*root, 0);
  if (reader.tooDeep()) {
    error = kTooDeep;
    return std::nullopt;
  }
  return map;
}

std::optional<Value> parseValue(std::string_view text, std::string& error) {
  const auto root = parsed(text, error);
  if (!root) return std::nullopt;
  Reader reader;
  auto value = reader.value(*root, 0);
  if (!value) error = "null is no value";
  if (reader.tooDeep()) {
    error = kTooDeep;
    return std::nullopt;
  }
  return value;
}

std::optional<std::string> settingsText(const ValueMap& values, std::string& error) {
  const auto root = mapToJson(values, error);
  if (!root) return std::nullopt;
  try {
    return root->dump(2) + "\n";
  } catch (const json::exception& failure) {
    error = failure.what();
    return std::nullopt;
  }
}

}  // namespace velotap
