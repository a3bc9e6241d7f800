// Any text as a recording of libinput.

#include <cstddef>
#include <cstdint>
#include <string_view>

#include "adapters/linux/recordings/play_recording.hpp"

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
  const auto result =
      velotap::parseLibinputYaml(std::string_view(reinterpret_cast<const char*>(data), size));
  if (const auto* recording = std::get_if<velotap::EvdevRecording>(&result)) {
    static_cast<void>(velotap::playRecording(*recording));
  }
  return 0;
}
