// Everything that an operating system gives the program, gathered once by whoever starts it.
#pragma once

#include "platform/alerts.hpp"
#include "platform/clock.hpp"
#include "platform/diagnostic_log.hpp"
#include "platform/event_stream.hpp"
#include "platform/event_taps.hpp"
#include "platform/keyboard_layout.hpp"
#include "platform/library_loader.hpp"
#include "platform/main_queue.hpp"
#include "platform/notification_center.hpp"
#include "platform/preferences_storage.hpp"
#include "platform/system_notices.hpp"
#include "platform/workspace.hpp"

namespace velotap {

/// References to the ports. Whoever builds one keeps the adapters alive as long as it is in use.
struct Platform {
  Clock& clock;
  MainQueue& mainQueue;
  LibraryLoader& libraries;
  EventStream& events;
  EventTaps& taps;
  PreferencesStorage& preferences;
  SystemPreferences& systemPreferences;
  Workspace& workspace;
  KeyboardLayout& keyboardLayout;
  SystemNotices& notices;
  AccessibilityTrust& trust;
  Alerts& alerts;
  NotificationCenter& notifications;
  DiagnosticLog& log;

  /// The platform of this process. Set once, before anything is shared; ends the process with a
  /// message when it was not.
  [[nodiscard]] static Platform& current();
  static void setCurrent(Platform& platform);
};

}  // namespace velotap
