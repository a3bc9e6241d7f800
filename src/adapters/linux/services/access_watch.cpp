#include "adapters/linux/services/access_watch.hpp"

#include <sys/inotify.h>
#include <unistd.h>

#include <array>
#include <cstddef>
#include <cstdint>
#include <string_view>
#include <utility>

namespace velotap {
namespace {

constexpr std::uint32_t kEvents =
    IN_ATTRIB | IN_CREATE | IN_DELETE | IN_MOVED_FROM | IN_MOVED_TO | IN_ONLYDIR;

}  // namespace

AccessWatch::AccessWatch(DescriptorLoop& loop, MainQueue& queue, std::string devices)
    : queue_(queue),
      devices_(std::move(devices)),
      inotify_(::inotify_init1(IN_NONBLOCK | IN_CLOEXEC)) {
  if (!inotify_.ok()) return;
  outer_ = ::inotify_add_watch(inotify_.get(), devices_.c_str(), kEvents);
  watchInputFolder();
  readable_ =
      loop.watch(inotify_.get(), DescriptorLoop::Interest::readable, [this] { readEvents(); });
  works_ = outer_ >= 0 && readable_.active();
}

AccessWatch::~AccessWatch() {
  if (settling_ != nullptr) settling_->cancel();
}

Observation AccessWatch::observe(std::function<void()> mayHaveChanged) {
  return changes_.add(std::move(mayHaveChanged));
}

void AccessWatch::watchInputFolder() {
  inner_ = ::inotify_add_watch(inotify_.get(), (devices_ + "/input").c_str(), kEvents);
}

void AccessWatch::readEvents() {
  alignas(inotify_event) std::array<char, 4096> buffer{};
  bool changed = false;
  ssize_t length = 0;
  while ((length = ::read(inotify_.get(), buffer.data(), buffer.size())) > 0) {
    for (std::size_t at = 0; at < static_cast<std::size_t>(length);) {
      const auto* const event = reinterpret_cast<const inotify_event*>(buffer.data() + at);
      at += sizeof(inotify_event) + event->len;
      const std::string_view name = event->len > 0 ? event->name : "";
      const bool folderItself = event->wd == outer_ && name == "input";
      if (folderItself) watchInputFolder();
      changed = changed || folderItself || (event->wd == outer_ && name == "uinput") ||
                (event->wd == inner_ && name.starts_with("event")) ||
                (event->mask & IN_Q_OVERFLOW) != 0;
    }
  }
  if (changed) settle();
}

void AccessWatch::settle() {
  if (settling_ != nullptr) settling_->cancel();
  settling_ = queue_.asyncAfter(kSettlingSeconds, [this] {
    settling_ = nullptr;
    changes_.notify();
  });
}

}  // namespace velotap
