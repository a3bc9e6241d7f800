#include <utility>

#include "adapters/linux/recordings/evdev_recording.hpp"
#include "adapters/linux/recordings/recording_text.hpp"

namespace velotap {
namespace {

// The number in "… type 3 (EV_ABS)": the word after `label`.
template <typename T>
std::optional<T> after(std::string_view line, std::string_view label, int base = 10) {
  const std::size_t found = line.find(label);
  if (found == std::string_view::npos) return std::nullopt;
  line.remove_prefix(found + label.size());
  std::string_view word = takeWord(line);
  if (word.ends_with(',')) word.remove_suffix(1);
  if (base == 16 && word.starts_with("0x")) word.remove_prefix(2);
  return number<T>(word, base);
}

// evtest prints a description for people; this follows it line by line.
class EvtestReader {
 public:
  RecordingResult read(std::string_view text) {
    while (!text.empty()) {
      const std::string_view line = takeLine(text);
      ++line_;
      if (line.starts_with("Event: ")) {
        if (!readEvent(line)) return RecordingError{line_, "an event that cannot be read"};
      } else {
        readDescription(line);
      }
    }
    if (!described_) return RecordingError{0, "no line tells the input device ID"};
    return std::move(recording_);
  }

 private:
  void readDescription(std::string_view line) {
    EvdevDevice& device = recording_.device;
    constexpr std::string_view kName = "Input device name: \"";
    if (line.starts_with("Input device ID:")) {
      device.bus = after<std::uint16_t>(line, "bus ", 16).value_or(0);
      device.vendor = after<std::uint16_t>(line, "vendor ", 16).value_or(0);
      device.product = after<std::uint16_t>(line, "product ", 16).value_or(0);
      device.version = after<std::uint16_t>(line, "version ", 16).value_or(0);
      described_ = true;
    } else if (line.starts_with(kName) && line.ends_with('"') && line.size() > kName.size()) {
      device.name = line.substr(kName.size(), line.size() - kName.size() - 1);
    } else if (const auto type = after<unsigned>(line, "Event type ")) {
      type_ = *type;
    } else if (const auto property = after<std::size_t>(line, "Property type ")) {
      if (*property < device.properties.size()) device.properties.set(*property);
    } else if (const auto code = after<unsigned>(line, "Event code ")) {
      noteCode(*code);
    } else {
      readRange(line);
    }
  }

  void noteCode(unsigned code) {
    EvdevDevice& device = recording_.device;
    axis_ = nullptr;
    if (type_ == EV_KEY && code < device.keys.size()) device.keys.set(code);
    if (type_ == EV_REL && code < device.relativeAxes.size()) device.relativeAxes.set(code);
    if (type_ == EV_ABS && code < ABS_CNT) {
      axis_ = &device.absoluteAxes[code].emplace();
    }
  }

  void readRange(std::string_view line) {
    if (axis_ == nullptr) return;
    const std::string_view label = takeWord(line);
    const auto value = number<std::int32_t>(takeWord(line));
    if (!value) return;
    if (label == "Min") axis_->minimum = *value;
    if (label == "Max") axis_->maximum = *value;
    if (label == "Fuzz") axis_->fuzz = *value;
    if (label == "Flat") axis_->flat = *value;
    if (label == "Resolution") axis_->resolution = *value;
  }

  bool readEvent(std::string_view line) {
    constexpr std::string_view kTime = "time ";
    const std::size_t found = line.find(kTime);
    if (found == std::string_view::npos) return false;
    std::string_view rest = line.substr(found + kTime.size());
    std::string_view word = takeWord(rest);
    if (word.ends_with(',')) word.remove_suffix(1);
    const auto time = eventTime(word);
    if (!time) return false;
    if (line.find("SYN_REPORT") != std::string_view::npos) return add(*time, SYN_REPORT);
    if (line.find("SYN_MT_REPORT") != std::string_view::npos) return add(*time, SYN_MT_REPORT);
    if (line.find("SYN_DROPPED") != std::string_view::npos) return add(*time, SYN_DROPPED);
    const auto type = after<std::uint16_t>(rest, "type ");
    const auto code = after<std::uint16_t>(rest, "code ");
    // MSC_SCAN is printed in hexadecimal; it says nothing of touches.
    if (type && *type == EV_MSC) return true;
    const auto value = after<std::int32_t>(rest, "value ");
    if (!type || !code || !value) return false;
    recording_.events.push_back(makeEvent(*time, *type, *code, *value));
    return true;
  }

  bool add(EventTime time, std::uint16_t code) {
    recording_.events.push_back(makeEvent(time, EV_SYN, code, 0));
    return true;
  }

  EvdevRecording recording_;
  bool described_ = false;
  int line_ = 0;
  unsigned type_ = 0;
  AxisInfo* axis_ = nullptr;
};

}  // namespace

RecordingResult parseEvtest(std::string_view text) {
  if (text.size() > kLongestRecording) return RecordingError{0, "the recording is too long"};
  return EvtestReader().read(text);
}

}  // namespace velotap
