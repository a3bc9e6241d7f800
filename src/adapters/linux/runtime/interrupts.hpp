// Interrupts as something to wait for, so that they become an orderly end.
#pragma once

#include "adapters/linux/runtime/descriptor.hpp"

namespace velotap {

/// A descriptor that becomes readable when the process is asked to end: by SIGINT, SIGTERM or
/// SIGHUP, which interrupt nothing from now on. Every thread that is started later must have them
/// blocked too, so this comes before the first one.
[[nodiscard]] Descriptor takeInterrupts();

}  // namespace velotap
