#include "adapters/macos/desktop/mac_desktop.hpp"

#include "adapters/macos/cocoa/cocoa_folders.hpp"
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
#include "adapters/macos/shell/mac_alerts.hpp"
#include "adapters/macos/shell/mac_announcements.hpp"
#include "adapters/macos/shell/mac_login_item.hpp"
#include "adapters/macos/shell/mac_regional_settings.hpp"
#include "adapters/macos/shell/mac_trust_prompt.hpp"
#include "adapters/macos/shell/mac_updates.hpp"
#include "adapters/macos/shell/mac_url_opener.hpp"
#include "adapters/macos/trust/mac_trust.hpp"
#include "adapters/macos/workspace/mac_applications.hpp"
#include "adapters/macos/workspace/mac_workspace.hpp"
#include "adapters/posix/standard_log.hpp"

namespace velotap {

// Listed in the order in which they need each other.
struct MacDesktop::Parts {
  Parts(bool debug, std::vector<std::string> settingKeys);

  StandardLog log;
  MachClock clock;
  DispatchMainQueue queue;
  MacLibraryLoader libraries;
  std::unique_ptr<CocoaWorkspace> cocoaWorkspace;
  std::unique_ptr<PreferencesChanges> preferencesChanges;
  std::unique_ptr<CocoaAlertPanel> alertPanel;
  std::unique_ptr<CocoaLoginService> loginService;
  std::unique_ptr<CocoaUpdater> updater;
  std::unique_ptr<CocoaAnnouncer> announcer;
  std::unique_ptr<NativeDialogs> dialogs;
  std::unique_ptr<CocoaAppearance> appearance;
  ProgramFacts program;
  std::unique_ptr<RegionalSettings> regionalSettings;
  QuartzEventStream events;
  QuartzEventTaps taps;
  CfPreferencesStorage preferences;
  CfSystemPreferences systemPreferences;
  MacWorkspace workspace;
  MacApplications applications;
  TextInputLayout keyboardLayout;
  MacNotices notices;
  MacTrust trust;
  MacAlerts alerts;
  NotificationCenter notifications;
  MacTrustPrompt trustPrompt;
  MacLoginItem loginItem;
  MacUpdates updates;
  MacAnnouncements announcements;
  MacUrlOpener urls;
  MacPanels panels;
  Platform platform;
  ShellPlatform shellPlatform;
};

MacDesktop::Parts::Parts(bool debug, std::vector<std::string> settingKeys)
    : log(debug),
      clock(MachTimeApi::system()),
      queue(DispatchApi::system()),
      libraries(DynamicLinkerApi::system()),
      cocoaWorkspace(CocoaWorkspace::system()),
      preferencesChanges(PreferencesChanges::system()),
      alertPanel(CocoaAlertPanel::system()),
      loginService(CocoaLoginService::system()),
      updater(CocoaUpdater::system()),
      announcer(CocoaAnnouncer::system()),
      dialogs(NativeDialogs::system()),
      appearance(CocoaAppearance::system()),
      program(programFacts(*CocoaProgram::system())),
      regionalSettings(makeMacRegionalSettings()),
      events(CoreFoundationApi::system(), QuartzApi::system(), ObjectiveCApi::system()),
      taps(CoreFoundationApi::system(), QuartzApi::system()),
      preferences(CoreFoundationApi::system(), *preferencesChanges, queue, std::move(settingKeys)),
      systemPreferences(CoreFoundationApi::system()),
      workspace(*cocoaWorkspace, ObjectiveCApi::system()),
      applications(*cocoaWorkspace),
      keyboardLayout(CoreFoundationApi::system(), TextInputApi::system()),
      notices(CoreFoundationApi::system(), IoKitApi::system(), QuartzApi::system(),
              *cocoaWorkspace),
      trust(CoreFoundationApi::system(), AccessibilityApi::system()),
      alerts(*alertPanel, *cocoaWorkspace),
      trustPrompt(trust, *cocoaWorkspace),
      loginItem(*loginService),
      updates(*updater),
      announcements(*announcer),
      urls(*cocoaWorkspace),
      panels(*dialogs, *cocoaWorkspace),
      platform{.clock = clock,
               .mainQueue = queue,
               .libraries = libraries,
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
               .log = log},
      shellPlatform{.trustPrompt = trustPrompt,
                    .loginItem = loginItem,
                    .updates = updates,
                    .announcements = announcements,
                    .urls = urls,
                    .crashFolder = MacDesktop::supportFolder() + "/Crashes"} {}

MacDesktop::MacDesktop(bool debug, std::vector<std::string> settingKeys)
    : parts_(std::make_unique<Parts>(debug, std::move(settingKeys))) {}

MacDesktop::~MacDesktop() = default;

Platform& MacDesktop::platform() noexcept {
  return parts_->platform;
}

ShellPlatform& MacDesktop::shellPlatform() noexcept {
  return parts_->shellPlatform;
}

RegionalSettings& MacDesktop::regionalSettings() noexcept {
  return *parts_->regionalSettings;
}

Applications& MacDesktop::applications() noexcept {
  return parts_->applications;
}

MacPanels& MacDesktop::panels() noexcept {
  return parts_->panels;
}

CocoaAppearance& MacDesktop::appearance() noexcept {
  return *parts_->appearance;
}

const ProgramFacts& MacDesktop::program() const noexcept {
  return parts_->program;
}

std::string MacDesktop::supportFolder() {
  return applicationSupportFolder() + "/Velotap";
}

void MacDesktop::recheckPreferences() {
  parts_->preferences.recheck();
}

}  // namespace velotap
