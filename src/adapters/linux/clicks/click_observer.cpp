#include "adapters/linux/clicks/click_observer.hpp"

#include <fcntl.h>
#include <linux/input.h>
#include <sys/ioctl.h>

#include <array>
#include <cerrno>
#include <utility>

#include "adapters/linux/clicks/button_router.hpp"

namespace velotap {
namespace {

constexpr std::array<unsigned, 4> kSilent = {EV_REL, EV_ABS, EV_MSC, EV_SW};

void listenToButtonsOnly(int fd) {
  std::array<std::uint8_t, 128> codes{};  // more than any type has
  static_assert(codes.size() * 8 >= KEY_CNT);
  input_mask mask{};
  mask.codes_size = codes.size();
  mask.codes_ptr = reinterpret_cast<std::uintptr_t>(codes.data());
  for (const unsigned type : kSilent) {
    mask.type = type;
    ::ioctl(fd, EVIOCSMASK, &mask);
  }
  for (const unsigned button : {BTN_LEFT, BTN_RIGHT, BTN_MIDDLE}) {
    codes[button / 8] = static_cast<std::uint8_t>(codes[button / 8] | 1U << (button % 8));
  }
  mask.type = EV_KEY;
  ::ioctl(fd, EVIOCSMASK, &mask);
}

}  // namespace

ClickObserver::ClickObserver(DescriptorLoop& loop, const std::string& path, Seen seen)
    : node_(::open(path.c_str(), O_RDONLY | O_NONBLOCK | O_CLOEXEC)), seen_(std::move(seen)) {
  if (!node_.ok()) return;
  listenToButtonsOnly(node_.get());
  ready_ = loop.watch(node_.get(), DescriptorLoop::Interest::readable, [this] { read(); });
}

void ClickObserver::read() {
  std::array<input_event, 64> events;
  const ssize_t size = ::read(node_.get(), events.data(), sizeof events);
  if (size <= 0) {
    // Unplugged; whoever owns this hears of it elsewhere.
    if (size == 0 || (errno != EAGAIN && errno != EINTR)) ready_.reset();
    return;
  }
  for (std::size_t i = 0; i < static_cast<std::size_t>(size) / sizeof(input_event); ++i) {
    const input_event& event = events[i];
    if (event.type == EV_KEY && isClickButton(event.code) && event.value != 2) {
      seen_(event.code, event.value != 0);
    }
  }
}

}  // namespace velotap
