// What people start on Linux: diagnostics, the program without windows, and the way to the one
// with them.

#include <sys/signalfd.h>

#include <cerrno>
#include <csignal>
#include <cstdio>
#include <cstdlib>
#include <cstring>
#include <filesystem>
#include <iostream>

#include "adapters/linux/desktop/linux_desktop.hpp"
#include "adapters/linux/runtime/descriptor.hpp"
#include "adapters/linux/runtime/posix_clock.hpp"
#include "adapters/linux/runtime/posix_main_queue.hpp"
#include "app/command_line.hpp"
#include "app/diagnostics.hpp"
#include "app/program_choice.hpp"
#include "config/app_identity.hpp"
#include "control/controller.hpp"
#include "input/device_watcher.hpp"
#include "output/shortcut_key_codes.hpp"

namespace velotap {
namespace {

// Interrupts become an orderly end. They are taken from a descriptor, so every thread that is
// started later must have them blocked: this comes first.
Descriptor takeInterrupts() {
  sigset_t interrupts;
  sigemptyset(&interrupts);
  sigaddset(&interrupts, SIGINT);
  sigaddset(&interrupts, SIGTERM);
  sigaddset(&interrupts, SIGHUP);
  sigprocmask(SIG_BLOCK, &interrupts, nullptr);
  return Descriptor(::signalfd(-1, &interrupts, SFD_CLOEXEC | SFD_NONBLOCK));
}

int diagnose(DiagnosticsMode mode) {
  const PosixClock clock;
  DlLibraryLoader libraries;
  MT multitouch(libraries);
  return runDiagnostics(mode, {.multitouch = multitouch,
                               .uptime = [&clock] { return clock.uptime(); },
                               .runMainLoop =
                                   [] {
                                     while (true) ::pause();  // until Ctrl-C ends the process
                                   }});
}

// Becomes the program with windows. Returns only when that is not there.
void runDesktopProgram(char** argv) {
  std::error_code error;
  const std::filesystem::path own = std::filesystem::read_symlink("/proc/self/exe", error);
  if (error) return;
  const std::string program = desktopProgramBeside(own.string());
  ::execv(program.c_str(), argv);
  std::cerr << "velotap: " << program << ": " << std::strerror(errno) << std::endl;
}

void tellUnknown(const CommandLine& line) {
  for (const std::string_view argument : line.unknown) {
    std::cerr << "velotap: unknown option " << argument << " ignored (see --help)" << std::endl;
  }
}

void tellWhatIsMissing() {
  const AccessProblems problems = findAccessProblems();
  if (!problems.none()) std::cerr << "velotap: " << problems.text() << std::endl;
}

int runInBackground() {
  // Whoever read the diagnostic lines may go; that is no reason to stop working.
  std::signal(SIGPIPE, SIG_IGN);
  const Descriptor interrupts = takeInterrupts();
  PosixClock clock;
  PosixMainQueue queue(clock);
  PrintedAlerts alerts;
  LinuxDesktop desktop({.clock = clock, .queue = queue, .loop = queue, .alerts = alerts},
                       Config::debug());
  Platform& platform = desktop.platform();
  AppIdentity::migratePreferences(platform.preferences);
  Platform::setCurrent(platform);
  if (!MT::shared().isAvailable()) {
    std::cerr << "velotap: the multitouch library " << platform.libraries.multitouchLibraryPath()
              << " is unavailable" << std::endl;
    return 1;
  }
  ShortcutKeyCodes::shared().start();
  AppTracker::shared().start();
  DeviceWatcher watcher(platform.clock, platform.mainQueue, platform.notices, platform.log);
  watcher.start([] { Controller::shared().stop(); }, [] { Controller::shared().restart(); });
  tellWhatIsMissing();
  Controller::shared().start();
  const Observation interrupted =
      queue.watch(interrupts.get(), DescriptorLoop::Interest::readable, [&queue] { queue.stop(); });
  queue.run();
  Controller::shared().stop();
  return 0;
}

}  // namespace
}  // namespace velotap

int main(int argc, char** argv) {
  using namespace velotap;
  if (const auto mode = diagnosticsMode(argc, argv)) return diagnose(*mode);
  const CommandLine line = parseCommandLine(argc, argv);
  if (line.help || line.version) {
    std::cout << (line.help ? helpText() : versionText());
    return 0;
  }
  if (!line.capture) tellUnknown(line);
  const std::vector<std::string_view> arguments(argv + 1, argv + argc);
  const auto environment = [](const char* name) -> const char* { return std::getenv(name); };
  if (programChoice(arguments, environment) == ProgramChoice::desktop) {
    runDesktopProgram(argv);
    if (line.capture) return 1;
  }
  return runInBackground();
}
