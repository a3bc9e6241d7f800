#include "app/linux_diagnostics.hpp"

#include <unistd.h>

#include <iostream>

#include "adapters/linux/runtime/dl_library_loader.hpp"
#include "adapters/linux/runtime/posix_clock.hpp"
#include "app/diagnostics.hpp"

namespace velotap {
namespace {

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

}  // namespace

std::optional<int> answerInTerminal(int argc, char** argv, const CommandLine& line) {
  if (const auto mode = diagnosticsMode(argc, argv)) return diagnose(*mode);
  if (!line.help && !line.version) return std::nullopt;
  std::cout << (line.help ? helpText() : versionText());
  return 0;
}

}  // namespace velotap
