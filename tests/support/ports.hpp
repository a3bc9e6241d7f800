// All fakes of the ports, gathered as the program wants them.
#pragma once

#include "platform/platform.hpp"
#include "support/fake_multitouch.hpp"
#include "support/fake_ports.hpp"
#include "support/fake_taps.hpp"
#include "support/recording_events.hpp"
#include "support/virtual_time.hpp"

namespace velotap::test {

struct Ports {
  ManualClock clock;
  VirtualQueue queue{clock};
  FakeMultitouch library;
  RecordingEvents events;
  FakeTaps taps;
  MemoryPreferences preferences;
  FakeSystemPreferences system;
  FakeWorkspace workspace;
  FakeKeyboardLayout layout;
  FakeNotices notices;
  FakeTrust trust;
  FakeAlerts alerts;
  NotificationCenter notifications;
  RecordingLog log;
  Platform platform{.clock = clock,
                    .mainQueue = queue,
                    .libraries = library,
                    .events = events,
                    .taps = taps,
                    .preferences = preferences,
                    .systemPreferences = system,
                    .workspace = workspace,
                    .keyboardLayout = layout,
                    .notices = notices,
                    .trust = trust,
                    .alerts = alerts,
                    .notifications = notifications,
                    .log = log};
};

}  // namespace velotap::test
