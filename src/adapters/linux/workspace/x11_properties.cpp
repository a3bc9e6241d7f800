#include "adapters/linux/workspace/x11_properties.hpp"

#include <cstring>

namespace velotap {
namespace {

std::uint32_t numberAt(std::string_view bytes) {
  std::uint32_t number = 0;
  std::memcpy(&number, bytes.data(), sizeof number);
  return number;
}

}  // namespace

std::optional<std::uint32_t> firstNumber(const PropertyValue& value) {
  if (value.format != 32 || value.bytes.size() < sizeof(std::uint32_t)) return std::nullopt;
  return numberAt(value.bytes);
}

bool containsNumber(const PropertyValue& value, std::uint32_t number) {
  if (value.format != 32) return false;
  for (auto rest = value.bytes; rest.size() >= sizeof number; rest.remove_prefix(sizeof number)) {
    if (numberAt(rest) == number) return true;
  }
  return false;
}

std::string firstText(const PropertyValue& value) {
  if (value.format != 8) return {};
  return std::string(value.bytes.substr(0, value.bytes.find('\0')));
}

std::pair<std::string, std::string> instanceAndClass(const PropertyValue& value) {
  std::string instance = firstText(value);
  if (value.format != 8 || value.bytes.size() <= instance.size()) return {instance, {}};
  const std::string_view rest = value.bytes.substr(instance.size() + 1);
  return {std::move(instance), std::string(rest.substr(0, rest.find('\0')))};
}

}  // namespace velotap
