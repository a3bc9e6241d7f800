#include "adapters/linux/notices/console_watch.hpp"

#include <fcntl.h>
#include <sys/epoll.h>
#include <unistd.h>

#include <array>
#include <utility>

namespace velotap {

bool consoleInFront(std::string_view active, std::string_view terminal) noexcept {
  while (!active.empty() && active.back() == '\n') active.remove_suffix(1);
  if (terminal.empty() || terminal == "0" || !active.starts_with("tty")) return true;
  return active.substr(3) == terminal;
}

ConsoleWatch::ConsoleWatch(DescriptorLoop& loop, const char* terminal,
                           std::function<void()> changed, const std::string& activePath)
    : terminal_(terminal != nullptr ? terminal : ""), changed_(std::move(changed)) {
  if (terminal_.empty()) return;
  active_ = Descriptor(::open(activePath.c_str(), O_RDONLY | O_CLOEXEC));
  alarm_ = Descriptor(::epoll_create1(EPOLL_CLOEXEC));
  if (!active_.ok() || !alarm_.ok()) return;
  // The kernel's file is readable always, and says only by an exception that it reads differently.
  epoll_event wanted{};
  wanted.events = EPOLLPRI | EPOLLET;
  if (::epoll_ctl(alarm_.get(), EPOLL_CTL_ADD, active_.get(), &wanted) == 0) {
    ready_ = loop.watch(alarm_.get(), DescriptorLoop::Interest::readable, [this] {
      epoll_event event{};
      ::epoll_wait(alarm_.get(), &event, 1, 0);
      const bool before = std::exchange(inFront_, read());
      if (inFront_ != before) changed_();
    });
  }
  inFront_ = read();
}

bool ConsoleWatch::read() {
  std::array<char, 32> text{};
  const ssize_t size = ::pread(active_.get(), text.data(), text.size(), 0);
  return size <= 0 || consoleInFront({text.data(), static_cast<std::size_t>(size)}, terminal_);
}

}  // namespace velotap
