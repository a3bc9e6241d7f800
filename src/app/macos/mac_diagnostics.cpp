#include "app/macos/mac_diagnostics.hpp"

#include "adapters/macos/core_foundation/core_foundation_api.hpp"
#include "adapters/macos/runtime/mac_library_loader.hpp"
#include "adapters/macos/runtime/mach_clock.hpp"

namespace velotap {
namespace {

// Nobody else serves the run loop of a program without an application object, and the multitouch
// library needs it served.
void serveRunLoop() {
  const CoreFoundationApi& cf = CoreFoundationApi::system();
  while (true) {  // until Ctrl-C ends the process
    cf.CFRunLoopRunInMode(*cf.kCFRunLoopDefaultMode, 3600, 0);
  }
}

}  // namespace

int runMacDiagnostics(DiagnosticsMode mode) {
  const MachClock clock(MachTimeApi::system());
  MacLibraryLoader libraries(DynamicLinkerApi::system());
  MT multitouch(libraries);
  return runDiagnostics(mode, {.multitouch = multitouch,
                               .uptime = [&clock] { return clock.uptime(); },
                               .runMainLoop = &serveRunLoop});
}

}  // namespace velotap
