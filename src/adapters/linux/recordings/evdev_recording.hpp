// A device's events as somebody recorded them, in one of the formats that Linux tools write.
//
// Pure: text in, a value or a message out. Whatever the text holds, nothing but memory for its own
// events is used.
#pragma once

#include <linux/input.h>

#include <string>
#include <string_view>
#include <variant>
#include <vector>

#include "adapters/linux/evdev/evdev_device.hpp"

namespace velotap {

struct EvdevRecording {
  EvdevDevice device;
  std::vector<input_event> events;  ///< times as recorded
};

/// What is wrong, for a person, and in which line; 0 when no line is to blame.
struct RecordingError {
  int line = 0;
  std::string message;
};

using RecordingResult = std::variant<EvdevRecording, RecordingError>;

/// What `evemu-record` writes: N, I, P, B, A and E lines.
[[nodiscard]] RecordingResult parseEvemu(std::string_view text);

/// What `evtest` prints: the description of the device, then "Event: time …" lines.
[[nodiscard]] RecordingResult parseEvtest(std::string_view text);

/// What `libinput record` writes: YAML. Of several devices the first multitouch one is taken.
[[nodiscard]] RecordingResult parseLibinputYaml(std::string_view text);

/// Any of them, told by its first lines.
[[nodiscard]] RecordingResult parseRecording(std::string_view text);

}  // namespace velotap
