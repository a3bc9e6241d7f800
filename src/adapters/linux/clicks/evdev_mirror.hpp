// The system calls behind a mirrored device: evdev, uinput and udev.
#pragma once

#include <cstddef>
#include <cstdint>
#include <functional>
#include <memory>
#include <string>

#include "adapters/linux/clicks/mirror_hardware.hpp"

namespace velotap {

/// What the multitouch library is fed with: see `VelotapFeedEvents` there.
using FeedEvents = void (*)(std::uint64_t number, const input_event* events, std::size_t count);

/// The `phys` of every mirror, by which the rest of the program knows not to read it.
inline constexpr const char* kMirrorPhys = "velotap/clone";

/// The device at an event node, closed; null when it may not be read or is none.
/// `pointerDescriptor` gives the open file of the virtual pointer, or -1.
[[nodiscard]] std::unique_ptr<MirrorHardware> makeEvdevMirror(
    const std::string& path, FeedEvents feed, std::function<int()> pointerDescriptor);

}  // namespace velotap
