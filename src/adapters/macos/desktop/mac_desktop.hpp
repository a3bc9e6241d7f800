// Every macOS adapter, wired to the others, as one platform.
//
// Made and destroyed on the main thread; members are listed in the order in which they need each
// other. Creating it makes one keyboard event and opens nothing. Exists on a Mac only.
#pragma once

#include <string>
#include <vector>

#include "adapters/macos/cocoa/cocoa_workspace.hpp"
#include "adapters/macos/devices/mac_notices.hpp"
#include "adapters/macos/keyboard/text_input_layout.hpp"
#include "adapters/macos/preferences/cf_preferences_storage.hpp"
#include "adapters/macos/preferences/cf_system_preferences.hpp"
#include "adapters/macos/quartz/quartz_event_stream.hpp"
#include "adapters/macos/quartz/quartz_event_taps.hpp"
#include "adapters/macos/runtime/dispatch_main_queue.hpp"
#include "adapters/macos/runtime/mac_library_loader.hpp"
#include "adapters/macos/runtime/mach_clock.hpp"
#include "adapters/macos/runtime/standard_output_log.hpp"
#include "adapters/macos/shell/mac_alerts.hpp"
#include "adapters/macos/shell/mac_announcements.hpp"
#include "adapters/macos/shell/mac_login_item.hpp"
#include "adapters/macos/shell/mac_trust_prompt.hpp"
#include "adapters/macos/shell/mac_updates.hpp"
#include "adapters/macos/shell/mac_url_opener.hpp"
#include "adapters/macos/trust/mac_trust.hpp"
#include "adapters/macos/workspace/mac_workspace.hpp"
#include "platform/platform.hpp"
#include "platform/regional_settings.hpp"
#include "platform/shell_platform.hpp"

namespace velotap {

class MacDesktop {
 public:
  /// `debug` turns diagnostic lines on; `settingKeys` are the settings whose change by another
  /// program is to be noticed at once.
  MacDesktop(bool debug, std::vector<std::string> settingKeys);

  [[nodiscard]] Platform& platform() noexcept { return platform_; }
  [[nodiscard]] ShellPlatform& shellPlatform() noexcept { return shellPlatform_; }
  [[nodiscard]] RegionalSettings& regionalSettings() noexcept { return *regionalSettings_; }
  /// To be called when the program comes to the front: settings that another program wrote and the
  /// system cannot tell of are noticed then.
  void recheckPreferences() { preferences_.recheck(); }

 private:
  StandardOutputLog log_;
  MachClock clock_;
  DispatchMainQueue queue_;
  MacLibraryLoader libraries_;
  std::unique_ptr<CocoaWorkspace> cocoaWorkspace_;
  std::unique_ptr<PreferencesChanges> preferencesChanges_;
  std::unique_ptr<CocoaAlertPanel> alertPanel_;
  std::unique_ptr<CocoaLoginService> loginService_;
  std::unique_ptr<CocoaUpdater> updater_;
  std::unique_ptr<CocoaAnnouncer> announcer_;
  std::unique_ptr<RegionalSettings> regionalSettings_;
  QuartzEventStream events_;
  QuartzEventTaps taps_;
  CfPreferencesStorage preferences_;
  CfSystemPreferences systemPreferences_;
  MacWorkspace workspace_;
  TextInputLayout keyboardLayout_;
  MacNotices notices_;
  MacTrust trust_;
  MacAlerts alerts_;
  NotificationCenter notifications_;
  MacTrustPrompt trustPrompt_;
  MacLoginItem loginItem_;
  MacUpdates updates_;
  MacAnnouncements announcements_;
  MacUrlOpener urls_;
  Platform platform_;
  ShellPlatform shellPlatform_;
};

}  // namespace velotap
