// The terminal side of the program on a Mac. Exists on a Mac only.
#pragma once

#include "app/diagnostics.hpp"

namespace velotap {

/// The exit status.
[[nodiscard]] int runMacDiagnostics(DiagnosticsMode mode);

}  // namespace velotap
