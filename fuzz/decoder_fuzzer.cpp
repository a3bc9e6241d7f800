// Any events from any device through the provider's decoder: a surface that lies about itself must
// not bring the program down, nor make it hand out contacts that it does not have.

#include <linux/input.h>

#include <cstddef>
#include <cstdint>
#include <cstdlib>
#include <cstring>

#include "adapters/linux/evdev/contact_reader.hpp"
#include "adapters/linux/evdev/touch_frames.hpp"

namespace {

// Takes values off the front of the input; zeros when it is used up.
class Source {
 public:
  Source(const std::uint8_t* data, std::size_t size) : data_(data), size_(size) {}
  template <typename T>
  T take() {
    T value{};
    const std::size_t n = size_ < sizeof(T) ? size_ : sizeof(T);
    std::memcpy(&value, data_, n);
    data_ += n;
    size_ -= n;
    return value;
  }
  [[nodiscard]] bool empty() const { return size_ == 0; }

 private:
  const std::uint8_t* data_;
  std::size_t size_;
};

velotap::EvdevDevice anyDevice(Source& source) {
  velotap::EvdevDevice device;
  device.bus = source.take<std::uint8_t>();
  device.vendor = source.take<std::uint16_t>();
  device.product = source.take<std::uint16_t>();
  const auto flags = source.take<std::uint8_t>();
  if ((flags & 1U) != 0) device.properties.set(INPUT_PROP_SEMI_MT);
  if ((flags & 2U) != 0) device.keys.set(BTN_TOOL_DOUBLETAP);
  for (const unsigned axis : {ABS_MT_SLOT, ABS_MT_POSITION_X, ABS_MT_POSITION_Y, ABS_MT_TOUCH_MAJOR,
                              ABS_MT_TOUCH_MINOR}) {
    if ((source.take<std::uint8_t>() & 1U) == 0) continue;
    velotap::AxisInfo info;
    info.minimum = source.take<std::int32_t>();
    info.maximum = source.take<std::int32_t>();
    info.resolution = source.take<std::int32_t>();
    device.absoluteAxes[axis] = info;
  }
  return device;
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
  Source source(data, size);
  const velotap::SurfaceModel model = velotap::surfaceModel(anyDevice(source));
  velotap::ContactReader reader(model);
  velotap::TouchFrames frames(model);
  while (!source.empty()) {
    input_event event{};
    event.input_event_sec = source.take<std::uint16_t>();
    event.type = source.take<std::uint8_t>() % 4;
    event.code = source.take<std::uint16_t>();
    event.value = source.take<std::int32_t>();
    const auto step = reader.handle(event);
    if (step == velotap::ContactReader::Step::nothing) continue;
    if (step == velotap::ContactReader::Step::resynchronise) reader.clear();
    const auto frame = frames.next(reader.contacts(), static_cast<double>(event.input_event_sec));
    if (frame && frame->touches.size() > velotap::kMaxContacts) std::abort();
  }
  return 0;
}
