#include "adapters/linux/services/single_instance.hpp"

#include <fcntl.h>
#include <sys/file.h>

#include <cerrno>
#include <utility>

#include "adapters/linux/runtime/posix_clock.hpp"
#include "adapters/linux/runtime/posix_main_queue.hpp"

namespace velotap {
namespace {

constexpr const char* kInterface = "app.norwend.velotap.Application";
// What desktops call to bring an application to the front.
constexpr const char* kDesktopInterface = "org.freedesktop.Application";

}  // namespace

std::optional<SingleInstance> SingleInstance::claim(const std::string& runtimeFolder) {
  if (runtimeFolder.empty()) return SingleInstance(Descriptor());
  const std::string file = runtimeFolder + "/velotap.lock";
  Descriptor lock(::open(file.c_str(), O_RDWR | O_CREAT | O_CLOEXEC | O_NOFOLLOW, 0600));
  // A folder that takes no file cannot tell who is first.
  if (!lock.ok()) return SingleInstance(Descriptor());
  if (::flock(lock.get(), LOCK_EX | LOCK_NB) != 0 && errno == EWOULDBLOCK) return std::nullopt;
  return SingleInstance(std::move(lock));
}

bool SingleInstance::reopenOther(const std::string& sessionBusAddress) {
  const PosixClock clock;
  PosixMainQueue queue(clock);
  bool answered = false;
  SessionBus bus(queue, queue, [&queue](const std::string&) { queue.stop(); });
  if (bus.refusalToOpen(sessionBusAddress)) return false;
  bus.call({kBusName, kObject, kInterface, "Reopen"}, {}, [&](BusMessage reply) {
    answered = static_cast<bool>(reply);
    queue.stop();
  });
  queue.asyncAfter(kAnswerSeconds, [&queue] { queue.stop(); });
  queue.run();
  return answered;
}

void SingleInstance::serve(DescriptorLoop& loop, MainQueue& queue,
                           const std::string& sessionBusAddress, std::function<void()> reopen) {
  // A lost bus costs being brought to the front, nothing else.
  bus_ = std::make_unique<SessionBus>(loop, queue, [](const std::string&) {});
  if (bus_->refusalToOpen(sessionBusAddress)) return;
  // Not from inside the message: the answer is to go out before anything is shown.
  const auto answer = [&queue, reopen = std::move(reopen)](BusMessage) { queue.async(reopen); };
  static_cast<void>(bus_->onCall(kObject, kInterface, "Reopen", answer));
  static_cast<void>(bus_->onCall(kObject, kDesktopInterface, "Activate", answer));
  bus_->requestName(kBusName, [](bool) {});
}

}  // namespace velotap
