// The terminal side of the program: lists multitouch devices, prints live frames, dumps raw
// records. Chosen by a flag on the command line; the application is then not started.
//
// What is printed is made by pure functions; the callbacks that print run on the library's thread.
#pragma once

#include <cstdint>
#include <functional>
#include <limits>
#include <optional>
#include <string>

#include "input/multitouch_binding.hpp"
#include "platform/multitouch_abi.hpp"

namespace velotap {

enum class DiagnosticsMode { devices, watch, calibrate };

/// The mode that the arguments ask for. Flags count anywhere on the line, whole and with their
/// exact case; watching wins over calibrating, because it never ends by itself.
[[nodiscard]] std::optional<DiagnosticsMode> diagnosticsMode(int argc, const char* const* argv);

/// "fingers=3  touch0: stage=4 pos=(0.300, 0.500) size=1.00 pressure=0.00"; nothing for a frame
/// without contacts.
[[nodiscard]] std::optional<std::string> watchLine(const MTTouch* touches, std::int32_t count);

/// The dump of at most three records, with its heading; nothing for a frame without contacts.
[[nodiscard]] std::optional<std::string> calibrationDump(const MTTouch* touches,
                                                         std::int32_t count);

/// Lets a dump through at most once a second; one exactly a second later is still too early.
class DumpThrottle {
 public:
  [[nodiscard]] bool admit(double now) noexcept;

 private:
  double lastDump_ = -std::numeric_limits<double>::infinity();
};

struct DiagnosticsEnvironment {
  MT& multitouch;
  std::function<double()> uptime;
  std::function<void()> runMainLoop;  ///< returns only when the program is to end
};

/// Lists, watches or calibrates; the exit status.
[[nodiscard]] int runDiagnostics(DiagnosticsMode mode, const DiagnosticsEnvironment& environment);

}  // namespace velotap
