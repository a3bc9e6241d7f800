// A whole desktop inside the process, in virtual time: one adapter for each port, and the platform
// that bundles them.
//
// The thread that makes it is its main thread. One exists at a time in a process, because the
// multitouch library's functions carry no context. Whatever runs on its platform must be gone
// before it is.
#pragma once

#include "adapters/simulated/simulated_alerts.hpp"
#include "adapters/simulated/simulated_clock.hpp"
#include "adapters/simulated/simulated_event_stream.hpp"
#include "adapters/simulated/simulated_event_taps.hpp"
#include "adapters/simulated/simulated_keyboard_layout.hpp"
#include "adapters/simulated/simulated_log.hpp"
#include "adapters/simulated/simulated_main_queue.hpp"
#include "adapters/simulated/simulated_multitouch.hpp"
#include "adapters/simulated/simulated_notices.hpp"
#include "adapters/simulated/simulated_preferences.hpp"
#include "adapters/simulated/simulated_trust.hpp"
#include "adapters/simulated/simulated_workspace.hpp"
#include "platform/platform.hpp"

namespace velotap {

struct SimulatedDesktop {
  SimulatedClock clock;
  SimulatedMainQueue mainQueue{clock};
  SimulatedMultitouch multitouch;
  SimulatedEventStream events;
  SimulatedEventTaps taps;
  SimulatedPreferences preferences;
  SimulatedSystemPreferences systemPreferences;
  SimulatedWorkspace workspace;
  SimulatedKeyboardLayout keyboardLayout;
  SimulatedNotices notices;
  SimulatedTrust trust;
  SimulatedAlerts alerts;
  NotificationCenter notifications;
  SimulatedLog log;

  Platform platform{.clock = clock,
                    .mainQueue = mainQueue,
                    .libraries = multitouch,
                    .events = events,
                    .taps = taps,
                    .preferences = preferences,
                    .systemPreferences = systemPreferences,
                    .workspace = workspace,
                    .keyboardLayout = keyboardLayout,
                    .notices = notices,
                    .trust = trust,
                    .alerts = alerts,
                    .notifications = notifications,
                    .log = log};
};

}  // namespace velotap
