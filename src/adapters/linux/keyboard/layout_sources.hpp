// Which sources of the layout a session has, and how they are made.
//
// On GNOME's Wayland sessions the settings know more than the compositor tells; on KDE's the bus
// completes the compositor. On X the server knows all of it, whatever the desktop.
#pragma once

#include <memory>
#include <vector>

#include "adapters/linux/dconf/dconf_places.hpp"
#include "adapters/linux/descriptor_loop.hpp"
#include "adapters/linux/keyboard/layout_source.hpp"
#include "adapters/linux/session/session_environment.hpp"
#include "platform/main_queue.hpp"

namespace velotap {

enum class LayoutSourceKind { gnome, wayland, waylandWithKde, x11, configured };

/// The most believable first. Pure.
[[nodiscard]] std::vector<LayoutSourceKind> layoutSourcesFor(const SessionEnvironment& session);

[[nodiscard]] std::vector<std::unique_ptr<LayoutSource>> makeLayoutSources(
    DescriptorLoop& loop, MainQueue& queue, const SessionEnvironment& session,
    const DconfPlaces& dconf);

}  // namespace velotap
