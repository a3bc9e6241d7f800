#include <yaml.h>

#include <functional>
#include <memory>
#include <utility>

#include "adapters/linux/recordings/evdev_recording.hpp"
#include "adapters/linux/recordings/recording_text.hpp"

namespace velotap {
namespace {

// A YAML document in memory, addressed by node.
class Document {
 public:
  explicit Document(std::string_view text) {
    yaml_parser_t parser;
    if (yaml_parser_initialize(&parser) == 0) return;
    yaml_parser_set_input_string(&parser, reinterpret_cast<const unsigned char*>(text.data()),
                                 text.size());
    loaded_ = yaml_parser_load(&parser, &document_) != 0;
    if (!loaded_) {
      error_ = {.line = static_cast<int>(parser.problem_mark.line) + 1,
                .message = parser.problem != nullptr ? parser.problem : "not YAML"};
    }
    yaml_parser_delete(&parser);
  }
  ~Document() {
    if (loaded_) yaml_document_delete(&document_);
  }
  Document(const Document&) = delete;
  Document& operator=(const Document&) = delete;

  [[nodiscard]] bool loaded() const { return loaded_; }
  [[nodiscard]] const RecordingError& error() const { return error_; }
  [[nodiscard]] yaml_node_t* root() { return yaml_document_get_root_node(&document_); }
  [[nodiscard]] yaml_node_t* node(int index) { return yaml_document_get_node(&document_, index); }

  [[nodiscard]] yaml_node_t* member(yaml_node_t* map, std::string_view key) {
    if (map == nullptr || map->type != YAML_MAPPING_NODE) return nullptr;
    for (auto* pair = map->data.mapping.pairs.start; pair < map->data.mapping.pairs.top; ++pair) {
      if (text(node(pair->key)) == key) return node(pair->value);
    }
    return nullptr;
  }

  [[nodiscard]] static std::string_view text(const yaml_node_t* node) {
    if (node == nullptr || node->type != YAML_SCALAR_NODE) return {};
    return {reinterpret_cast<const char*>(node->data.scalar.value), node->data.scalar.length};
  }

  [[nodiscard]] static int line(const yaml_node_t* node) {
    return node != nullptr ? static_cast<int>(node->start_mark.line) + 1 : 0;
  }

  void eachItem(yaml_node_t* sequence, const std::function<void(yaml_node_t*)>& visit) {
    if (sequence == nullptr || sequence->type != YAML_SEQUENCE_NODE) return;
    for (auto* item = sequence->data.sequence.items.start; item < sequence->data.sequence.items.top;
         ++item) {
      visit(node(*item));
    }
  }

  void eachMember(yaml_node_t* map, const std::function<void(yaml_node_t*, yaml_node_t*)>& visit) {
    if (map == nullptr || map->type != YAML_MAPPING_NODE) return;
    for (auto* pair = map->data.mapping.pairs.start; pair < map->data.mapping.pairs.top; ++pair) {
      visit(node(pair->key), node(pair->value));
    }
  }

  [[nodiscard]] std::vector<std::int64_t> numbers(yaml_node_t* sequence) {
    std::vector<std::int64_t> values;
    eachItem(sequence, [&](yaml_node_t* item) {
      values.push_back(number<std::int64_t>(text(item)).value_or(INT64_MIN));
    });
    return values;
  }

 private:
  yaml_document_t document_{};
  bool loaded_ = false;
  RecordingError error_;
};

// The line of the first reference to another part of the document; 0 when there is none. Nothing
// that writes recordings uses them, and a few kilobytes of them can stand for years of events.
int referenceLine(std::string_view text) {
  yaml_parser_t parser;
  if (yaml_parser_initialize(&parser) == 0) return 0;
  yaml_parser_set_input_string(&parser, reinterpret_cast<const unsigned char*>(text.data()),
                               text.size());
  int line = 0;
  for (bool over = false; !over && line == 0;) {
    yaml_event_t event;
    if (yaml_parser_parse(&parser, &event) == 0) break;  // the loader will say what is wrong
    if (event.type == YAML_ALIAS_EVENT) line = static_cast<int>(event.start_mark.line) + 1;
    over = event.type == YAML_STREAM_END_EVENT;
    yaml_event_delete(&event);
  }
  yaml_parser_delete(&parser);
  return line;
}

bool fits(std::int64_t value, std::int64_t low, std::int64_t high) {
  return low <= value && value <= high;
}

class YamlReader {
 public:
  explicit YamlReader(Document& document) : document_(document) {}

  RecordingResult read() {
    yaml_node_t* chosen = nullptr;
    document_.eachItem(document_.member(document_.root(), "devices"), [&](yaml_node_t* device) {
      if (chosen == nullptr && isMultitouch(device)) chosen = device;
    });
    if (chosen == nullptr) return RecordingError{0, "no multitouch device is in the recording"};
    readDevice(document_.member(chosen, "evdev"));
    document_.eachItem(document_.member(chosen, "events"), [&](yaml_node_t* entry) {
      document_.eachItem(document_.member(entry, "evdev"),
                         [&](yaml_node_t* event) { readEvent(event); });
    });
    if (error_.line != 0) return error_;
    return std::move(recording_);
  }

 private:
  bool isMultitouch(yaml_node_t* device) {
    bool found = false;
    yaml_node_t* axes = document_.member(document_.member(device, "evdev"), "absinfo");
    document_.eachMember(axes, [&](yaml_node_t* code, yaml_node_t*) {
      if (number<int>(Document::text(code)) == ABS_MT_POSITION_X) found = true;
    });
    return found;
  }

  void readDevice(yaml_node_t* evdev) {
    EvdevDevice& device = recording_.device;
    device.name = Document::text(document_.member(evdev, "name"));
    const auto id = document_.numbers(document_.member(evdev, "id"));
    std::size_t i = 0;
    for (std::uint16_t* field : {&device.bus, &device.vendor, &device.product, &device.version}) {
      if (i < id.size() && fits(id[i], 0, UINT16_MAX)) {
        *field = static_cast<std::uint16_t>(id[i]);
      }
      ++i;
    }
    for (const auto property : document_.numbers(document_.member(evdev, "properties"))) {
      if (fits(property, 0, INPUT_PROP_MAX)) {
        device.properties.set(static_cast<std::size_t>(property));
      }
    }
    readCodes(document_.member(evdev, "codes"));
    readAxes(document_.member(evdev, "absinfo"));
  }

  void readCodes(yaml_node_t* codes) {
    EvdevDevice& device = recording_.device;
    document_.eachMember(codes, [&](yaml_node_t* key, yaml_node_t* list) {
      const auto type = number<int>(Document::text(key)).value_or(-1);
      for (const auto code : document_.numbers(list)) {
        if (type == EV_KEY && fits(code, 0, KEY_MAX)) {
          device.keys.set(static_cast<std::size_t>(code));
        }
        if (type == EV_REL && fits(code, 0, REL_MAX)) {
          device.relativeAxes.set(static_cast<std::size_t>(code));
        }
      }
    });
  }

  void readAxes(yaml_node_t* axes) {
    document_.eachMember(axes, [&](yaml_node_t* key, yaml_node_t* list) {
      const auto code = number<int>(Document::text(key)).value_or(-1);
      const auto values = document_.numbers(list);
      if (!fits(code, 0, ABS_MAX) || values.size() < 5) return;
      AxisInfo info;
      std::size_t i = 0;
      for (std::int32_t* field :
           {&info.minimum, &info.maximum, &info.fuzz, &info.flat, &info.resolution}) {
        if (fits(values[i], INT32_MIN, INT32_MAX)) *field = static_cast<std::int32_t>(values[i]);
        ++i;
      }
      recording_.device.absoluteAxes[static_cast<std::size_t>(code)] = info;
    });
  }

  void readEvent(yaml_node_t* event) {
    const auto v = document_.numbers(event);
    const bool whole = v.size() == 5 && fits(v[0], 0, INT64_MAX) && fits(v[1], 0, 999'999) &&
                       fits(v[2], 0, EV_MAX) && fits(v[3], 0, UINT16_MAX) &&
                       fits(v[4], INT32_MIN, INT32_MAX);
    if (!whole) {
      if (error_.line == 0) {
        error_ = {Document::line(event), "an event is not five numbers in their range"};
      }
      return;
    }
    recording_.events.push_back(makeEvent({v[0], v[1]}, static_cast<std::uint16_t>(v[2]),
                                          static_cast<std::uint16_t>(v[3]),
                                          static_cast<std::int32_t>(v[4])));
  }

  Document& document_;
  EvdevRecording recording_;
  RecordingError error_;
};

}  // namespace

RecordingResult parseLibinputYaml(std::string_view text) {
  if (text.size() > kLongestRecording) return RecordingError{0, "the recording is too long"};
  if (const int line = referenceLine(text); line != 0) {
    return RecordingError{line, "a recording does not refer to parts of itself"};
  }
  Document document(text);
  if (!document.loaded()) return document.error();
  if (document.root() == nullptr) return RecordingError{0, "the recording is empty"};
  return YamlReader(document).read();
}

}  // namespace velotap
