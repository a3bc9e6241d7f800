#include "adapters/linux/recordings/evdev_recording.hpp"
#include "adapters/linux/recordings/recording_text.hpp"

namespace velotap {

RecordingResult parseRecording(std::string_view text) {
  constexpr int kLinesThatTell = 200;
  std::string_view rest = text;
  for (int i = 0; i < kLinesThatTell && !rest.empty(); ++i) {
    const std::string_view line = takeLine(rest);
    if (line.starts_with("# EVEMU") || line.starts_with("N:")) return parseEvemu(text);
    if (line.starts_with("# libinput record") || line.starts_with("ndevices:")) {
      return parseLibinputYaml(text);
    }
    if (line.starts_with("Input driver version") || line.starts_with("Input device ID:")) {
      return parseEvtest(text);
    }
  }
  return RecordingError{0, "neither an evemu nor an evtest nor a libinput recording"};
}

}  // namespace velotap
