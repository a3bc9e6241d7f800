// Prints, a line each, what the workspace says: where it learns which application is in front, and
// every activation. Fields are separated by tabs; times are of the monotonic clock, in
// microseconds.
//
//   source TIME KIND TEXT
//   front TIME KIND IDENTIFIER NAME     identifier "-" when nothing is in front
//   log TEXT
//
// Ends when its standard input does.
#include <unistd.h>

#include <cstdio>
#include <string>

#include "adapters/linux/runtime/posix_clock.hpp"
#include "adapters/linux/runtime/posix_main_queue.hpp"
#include "adapters/linux/workspace/linux_workspace.hpp"
#include "platform/diagnostic_log.hpp"

namespace velotap {
namespace {

class PrintedLog final : public DiagnosticLog {
 public:
  [[nodiscard]] bool enabled() const noexcept override { return true; }
  void line(std::string_view text) override {
    std::printf("log\t%.*s\n", static_cast<int>(text.size()), text.data());
  }
};

long long microseconds(const Clock& clock) {
  return static_cast<long long>(1e6 * clock.uptime());
}

void printFront(const Clock& clock, LinuxWorkspace& workspace,
                const std::optional<RunningApplication>& application) {
  const long long now = microseconds(clock);
  const AppId asked = workspace.frontmostBundleId();
  if (asked != (application ? application->bundleId : AppId())) {
    std::printf("log\tthe two answers differ\n");
  }
  const std::string id = application ? std::string(application->bundleId.text()) : "-";
  std::printf("front\t%lld\t%s\t%s\t%s\n", now, frontSourceName(workspace.source().kind),
              id.c_str(), application ? application->name.c_str() : "");
}

int watch() {
  PosixClock clock;
  PosixMainQueue loop(clock);
  PrintedLog log;
  const LinuxWorkspace::Services services{.loop = loop, .queue = loop, .clock = clock, .log = log};
  LinuxWorkspace workspace(AppId::intern("app.norwend.velotap"),
                           LinuxWorkspace::desktopOf(SessionEnvironment::ofThisProcess(), services),
                           services);
  const auto activations = workspace.observeActivations(
      [&](const std::optional<RunningApplication>& a) { printFront(clock, workspace, a); });
  const auto sources = workspace.observeSource([&](const FrontSourceStatus& status) {
    std::printf("source\t%lld\t%s\t%s\n", microseconds(clock), frontSourceName(status.kind),
                status.text.c_str());
  });
  const auto input = loop.watch(STDIN_FILENO, DescriptorLoop::Interest::readable, [&loop] {
    char ignored[64];
    if (read(STDIN_FILENO, ignored, sizeof ignored) <= 0) loop.stop();
  });
  std::setvbuf(stdout, nullptr, _IOLBF, 0);
  workspace.start();
  loop.run();
  return 0;
}

}  // namespace
}  // namespace velotap

int main() {
  return velotap::watch();
}
