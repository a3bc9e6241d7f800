// What people start on Linux: diagnostics, the program without windows, and the way to the one
// with them.

#include <cerrno>
#include <csignal>
#include <cstdio>
#include <cstdlib>
#include <cstring>
#include <filesystem>
#include <iostream>

#include "adapters/linux/desktop/linux_desktop.hpp"
#include "adapters/linux/desktop/linux_shell.hpp"
#include "adapters/linux/desktop/passive_adapters.hpp"
#include "adapters/linux/runtime/interrupts.hpp"
#include "adapters/linux/runtime/posix_clock.hpp"
#include "adapters/linux/runtime/posix_main_queue.hpp"
#include "adapters/linux/runtime/thread_stacks.hpp"
#include "adapters/linux/services/single_instance.hpp"
#include "app/application.hpp"
#include "app/command_line.hpp"
#include "app/linux_diagnostics.hpp"
#include "app/program_choice.hpp"
#include "config/app_identity.hpp"
#include "control/controller.hpp"
#include "localization/localization.hpp"
#include "platform/shell_platform.hpp"

namespace velotap {
namespace {

void tell(const std::string& message) {
  std::cerr << "velotap: " << message << std::endl;
}

// Becomes the program with windows. Returns only when that is not there.
void runDesktopProgram(char** argv) {
  std::error_code error;
  const std::filesystem::path own = std::filesystem::read_symlink("/proc/self/exe", error);
  if (error) return;
  const std::string program = desktopProgramBeside(own.string());
  ::execv(program.c_str(), argv);
  tell(program + ": " + std::strerror(errno));
}

void tellWhatIsMissing() {
  const AccessProblems problems = findAccessProblems();
  if (!problems.none()) tell(problems.text());
}

std::string english(std::string_view key) {
  static const std::vector<std::string> kLanguage{"en"};
  return Localization::shared().bundle(kLanguage).localizedString(key);
}

// A program without a window asks nobody: the report waits for one that has.
int keepCrashReport(const AlertRequest& request) {
  tell(request.message + " (" + ShellPlatform::current().crashFolder + ")");
  return static_cast<int>(request.buttons.size()) - 1;
}

Application::Surroundings backgroundSurroundings(PosixMainQueue& queue) {
  return {
      .effects = {.activate = [] {},
                  .terminate = [&queue] { queue.stop(); },
                  .openSettings = [](SettingsPane) { tell("already running, without a window"); }},
      .localize = &english,
      .observeRegionalSettings = [](const std::function<void()>&) { return Observation(); },
      .variant = "linux",
      .version = VELOTAP_VERSION,
      .explainsPermission = false,
      .offerCrashReport = &keepCrashReport};
}

int runInBackground() {
  boundThreadStacks();
  // Whoever read the diagnostic lines may go; that is no reason to stop working.
  std::signal(SIGPIPE, SIG_IGN);
  const Descriptor interrupts = takeInterrupts();
  const SessionEnvironment session = SessionEnvironment::ofThisProcess();
  auto instance = SingleInstance::claim(session.runtimeFolder);
  if (!instance) {
    tell(SingleInstance::reopenOther(session.busAddress) ? "already running; it was told"
                                                         : "already running");
    return 0;
  }
  PosixClock clock;
  PosixMainQueue queue(clock);
  PrintedAlerts alerts;
  const LinuxHost host{.clock = clock, .queue = queue, .loop = queue, .alerts = alerts};
  LinuxDesktop desktop(host, Config::debug());
  Platform& platform = desktop.platform();
  AppIdentity::migratePreferences(platform.preferences);
  Platform::setCurrent(platform);
  if (!MT::shared().isAvailable()) {
    tell(std::string("the multitouch library ") + platform.libraries.multitouchLibraryPath() +
         " is unavailable");
    return 1;
  }
  SilentAnnouncements announcements;
  NoUpdates updates;
  LinuxShell shell(host, desktop, announcements, updates);
  ShellPlatform::setCurrent(shell.platform());
  Application application(backgroundSurroundings(queue));
  instance->serve(queue, queue, session.busAddress, [&application] {
    static_cast<void>(application.delegate().applicationShouldHandleReopen());
  });
  tellWhatIsMissing();
  application.delegate().applicationDidFinishLaunching();
  const Observation interrupted =
      queue.watch(interrupts.get(), DescriptorLoop::Interest::readable, [&queue] { queue.stop(); });
  // Nobody brings a program without a window to the front to make it try again.
  const Observation switched = Config::shared().defaults().observeChanges([] {
    if (Config::shared().enabled()) Controller::shared().start();
  });
  queue.run();
  application.delegate().applicationWillTerminate();
  return 0;
}

}  // namespace
}  // namespace velotap

int main(int argc, char** argv) {
  using namespace velotap;
  const CommandLine line = parseCommandLine(argc, argv);
  if (const auto status = answerInTerminal(argc, argv, line)) return *status;
  const std::vector<std::string_view> arguments(argv + 1, argv + argc);
  const auto environment = [](const char* name) -> const char* { return std::getenv(name); };
  if (programChoice(arguments, environment) == ProgramChoice::desktop) {
    runDesktopProgram(argv);
    if (line.capture) return 1;
  }
  std::cerr << unknownText(line);  // what becomes the other program is told by that one
  return runInBackground();
}
