// Is there a Magic Mouse that the kernel serves as a plain mouse, without its touches?
//
// Kernels before mid-2025 know the newest model only as something that moves. People see a mouse
// that works and gestures that do not, so it is worth telling. Read from sysfs, without opening a
// device. Any thread.
#pragma once

#include <string>

namespace velotap {

/// `folder` holds the kernel's input devices, each with its `device/id` and `device/capabilities`.
/// What another device of the same model can do counts for all of that model.
[[nodiscard]] bool hasUndrivenMouse(const std::string& folder = "/sys/class/input");

}  // namespace velotap
