#include <array>
#include <utility>

#include "adapters/linux/recordings/evdev_recording.hpp"
#include "adapters/linux/recordings/recording_text.hpp"

namespace velotap {
namespace {

class EvemuReader {
 public:
  RecordingResult read(std::string_view text) {
    while (!text.empty()) {
      std::string_view line = takeLine(text);
      ++line_;
      if (const std::size_t comment = line.find('#'); comment != std::string_view::npos) {
        // A name may hold the sign; nothing else does.
        if (!line.starts_with("N:")) line = line.substr(0, comment);
      }
      if (line.find_first_not_of(" \t") == std::string_view::npos) continue;
      if (!readLine(line)) return RecordingError{line_, message_};
    }
    if (!named_) return RecordingError{0, "no N: line names the device"};
    return std::move(recording_);
  }

 private:
  bool fail(const char* message) {
    message_ = message;
    return false;
  }

  bool readLine(std::string_view line) {
    if (line.size() < 2 || line[1] != ':') return fail("no line of an evemu recording");
    const char kind = line[0];
    line.remove_prefix(2);
    switch (kind) {
      case 'N':
        while (line.starts_with(' ')) line.remove_prefix(1);
        recording_.device.name = line;
        named_ = true;
        return true;
      case 'I':
        return readIdentity(line);
      case 'P':
        return readProperties(line);
      case 'B':
        return readBits(line);
      case 'A':
        return readAxis(line);
      case 'L':
      case 'S':
        return true;  // lamps and switches say nothing of touches
      case 'E':
        return readEvent(line);
      default:
        return fail("a line of unknown kind");
    }
  }

  bool readIdentity(std::string_view line) {
    EvdevDevice& device = recording_.device;
    for (std::uint16_t* field : {&device.bus, &device.vendor, &device.product, &device.version}) {
      const auto value = number<std::uint16_t>(takeWord(line), 16);
      if (!value) return fail("I: needs four hexadecimal numbers");
      *field = *value;
    }
    return true;
  }

  // Lines of bytes follow each other; each continues where the one before ended.
  bool readProperties(std::string_view line) {
    return readBytes(line, propertyBits_, [&](std::size_t bit) {
      if (bit < recording_.device.properties.size()) recording_.device.properties.set(bit);
    });
  }

  bool readBits(std::string_view line) {
    const auto type = number<unsigned>(takeWord(line), 16);
    if (!type || *type >= bits_.size()) return fail("B: needs an event type");
    return readBytes(line, bits_[*type], [&](std::size_t bit) {
      EvdevDevice& device = recording_.device;
      if (*type == EV_KEY && bit < device.keys.size()) device.keys.set(bit);
      if (*type == EV_REL && bit < device.relativeAxes.size()) device.relativeAxes.set(bit);
    });
  }

  template <typename Set>
  bool readBytes(std::string_view line, std::size_t& position, Set set) {
    for (auto word = takeWord(line); !word.empty(); word = takeWord(line)) {
      const auto byte = number<std::uint8_t>(word, 16);
      if (!byte) return fail("a byte of a bit mask is not hexadecimal");
      for (unsigned bit = 0; bit < 8; ++bit) {
        if ((*byte >> bit & 1U) != 0) set(position + bit);
      }
      position += 8;
    }
    return true;
  }

  bool readAxis(std::string_view line) {
    const auto code = number<unsigned>(takeWord(line), 16);
    if (!code || *code >= ABS_CNT) return fail("A: needs the code of an axis");
    AxisInfo info;
    for (std::int32_t* field : {&info.minimum, &info.maximum, &info.fuzz, &info.flat}) {
      const auto value = number<std::int32_t>(takeWord(line));
      if (!value) return fail("A: needs minimum, maximum, fuzz and flat");
      *field = *value;
    }
    // Recordings of the first kind have no resolution.
    if (const auto word = takeWord(line); !word.empty()) {
      const auto value = number<std::int32_t>(word);
      if (!value) return fail("A: the resolution is not a number");
      info.resolution = *value;
    }
    recording_.device.absoluteAxes[*code] = info;
    return true;
  }

  bool readEvent(std::string_view line) {
    const auto time = eventTime(takeWord(line));
    const auto type = number<std::uint16_t>(takeWord(line), 16);
    const auto code = number<std::uint16_t>(takeWord(line), 16);
    const auto value = number<std::int32_t>(takeWord(line));
    if (!time || !type || !code || !value) return fail("E: needs time, type, code and value");
    recording_.events.push_back(makeEvent(*time, *type, *code, *value));
    return true;
  }

  EvdevRecording recording_;
  bool named_ = false;
  int line_ = 0;
  std::string message_;
  std::size_t propertyBits_ = 0;
  std::array<std::size_t, EV_CNT> bits_{};
};

}  // namespace

RecordingResult parseEvemu(std::string_view text) {
  if (text.size() > kLongestRecording) return RecordingError{0, "the recording is too long"};
  return EvemuReader().read(text);
}

}  // namespace velotap
