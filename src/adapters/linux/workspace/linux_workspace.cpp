#include "adapters/linux/workspace/linux_workspace.hpp"

#include <unistd.h>

#include <array>
#include <utility>

#include "adapters/linux/session/socket_recovery.hpp"
#include "adapters/linux/workspace/desktop_entry.hpp"
#include "adapters/linux/workspace/front_sources.hpp"

namespace velotap {
namespace {

/// More different windows than this are not remembered; looking one up again costs microseconds.
constexpr std::size_t kMostKnown = 256;

std::string keyOf(const FrontWindow& window) {
  return window.appId + '\0' + window.windowClass + '\0' + window.instance;
}

bool nameless(const FrontWindow& window) {
  return window.appId.empty() && window.windowClass.empty() && window.instance.empty();
}

/// The base name of what a process runs; empty when it is another user's or gone.
std::string programOf(int pid) {
  if (pid <= 0) return {};
  std::array<char, 4096> target;
  const std::string link = "/proc/" + std::to_string(pid) + "/exe";
  const ssize_t length = readlink(link.c_str(), target.data(), target.size());
  if (length <= 0) return {};
  const std::string path(target.data(), static_cast<std::size_t>(length));
  return path.substr(path.find_last_of('/') + 1);
}

}  // namespace

LinuxWorkspace::Desktop LinuxWorkspace::desktopOf(const SessionEnvironment& session,
                                                  const Services& services) {
  return {
      .candidates = frontSourceCandidates(session, services.loop, services.queue),
      .recovery = std::make_unique<SocketRecovery>(services.loop, serverSockets(session)),
      .applicationFolders = applicationFolders(session),
      .languages = languageSuffixes(session.locale),
  };
}

LinuxWorkspace::LinuxWorkspace(AppId ownBundleId, Desktop desktop, const Services& services)
    : own_(ownBundleId),
      unknown_(AppId::intern(kUnknownApplication)),
      services_(services),
      frontmost_(unknown_),
      front_(RunningApplication{.bundleId = unknown_, .name = {}}),
      applications_(services.loop, std::move(desktop.applicationFolders),
                    std::move(desktop.languages)),
      recovery_(std::move(desktop.recovery)),
      chooser_(std::move(desktop.candidates), *recovery_, services.queue, services.clock,
               services.log,
               {.statusChanged = [this](const FrontSourceStatus& s) { statusChanged(s); },
                .front = [this](const std::optional<FrontWindow>& w) { windowReported(w); }}) {}

LinuxWorkspace::~LinuxWorkspace() {
  if (settling_ != nullptr) settling_->cancel();
  if (refresh_ != nullptr) refresh_->cancel();
}

void LinuxWorkspace::statusChanged(const FrontSourceStatus& status) {
  if (settling_ != nullptr) std::exchange(settling_, nullptr)->cancel();
  filter_.reset();
  window_.reset();
  if (status.kind == FrontSourceKind::none) {
    become(RunningApplication{.bundleId = unknown_, .name = {}});
  }
  sources_.notify(status);
}

void LinuxWorkspace::windowReported(const std::optional<FrontWindow>& window) {
  window_ = window;
  if (window) {
    if (settling_ != nullptr) std::exchange(settling_, nullptr)->cancel();
    if (filter_.windowInFront() == ActivationFilter::Verdict::report) become(identify(*window));
  } else if (filter_.nothingInFront(services_.clock.uptime()) == ActivationFilter::Verdict::wait) {
    settleLater();
  }
}

void LinuxWorkspace::settleLater() {
  const auto deadline = filter_.deadline();
  if (!deadline) return;
  settling_ = services_.queue.asyncAfter(*deadline - services_.clock.uptime(), [this] {
    settling_ = nullptr;
    switch (filter_.settle(services_.clock.uptime())) {
      case ActivationFilter::Verdict::report:
        return become(std::nullopt);
      case ActivationFilter::Verdict::wait:
        return settleLater();
      case ActivationFilter::Verdict::ignore:
        return;
    }
  });
}

void LinuxWorkspace::become(Front front) {
  const auto same = [](const Front& a, const Front& b) {
    if (!a || !b) return a.has_value() == b.has_value();
    return a->bundleId == b->bundleId && a->name == b->name;
  };
  if (same(front, front_)) return;
  front_ = std::move(front);
  frontmost_.store(front_ ? front_->bundleId : AppId(), std::memory_order_release);
  // A copy: an observer may bring about the next change.
  const Front told = front_;
  activations_.notify(told);
}

RunningApplication LinuxWorkspace::identify(const FrontWindow& window) {
  // Our own windows, whatever they are called in a build that is not installed.
  if (own_ && window.pid == getpid()) return {.bundleId = own_, .name = {}};
  if (nameless(window)) return lookUp(window);
  const std::string key = keyOf(window);
  if (const auto found = known_.find(key); found != known_.end()) {
    if (applications_.stale()) refreshSoon();
    return found->second;
  }
  if (applications_.stale() || known_.size() >= kMostKnown) known_.clear();
  return known_.emplace(key, lookUp(window)).first->second;
}

void LinuxWorkspace::refreshSoon() {
  if (refresh_ != nullptr) return;
  refresh_ = services_.queue.asyncAfter(0, [this] {
    refresh_ = nullptr;
    known_.clear();
    if (window_) become(identify(*window_));
  });
}

RunningApplication LinuxWorkspace::lookUp(const FrontWindow& window) {
  const std::string program = nameless(window) ? programOf(window.pid) : std::string();
  if (const auto* found = applications_.index().find(window, program)) {
    return {.bundleId = AppId::intern(found->id), .name = found->name};
  }
  const std::string id = identifierWithoutEntry(window, program);
  // An application that says nothing about itself has no identifier.
  return {.bundleId = id.empty() ? AppId() : AppId::intern(id), .name = {}};
}

}  // namespace velotap
