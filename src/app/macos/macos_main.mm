// The program on a Mac.

#import <AppKit/AppKit.h>

#include <csignal>
#include <iostream>

#include "adapters/macos/desktop/mac_desktop.hpp"
#include "adapters/macos/menus/native_menu.hpp"
#include "adapters/macos/shell/uncaught_exceptions.hpp"
#include "app/application.hpp"
#include "app/command_line.hpp"
#include "app/macos/mac_diagnostics.hpp"
#include "app/macos/native_menus.hpp"
#include "app/macos/windows.hpp"
#include "config/app_identity.hpp"
#include "config/config.hpp"
#include "config/settings_table.hpp"
#include "localization/system_regional_settings.hpp"
#include "shell/exception_record.hpp"

@interface VelotapApplicationDelegate : NSObject <NSApplicationDelegate>
- (instancetype)initWithDelegate:(velotap::AppDelegate*)delegate
                         desktop:(velotap::MacDesktop*)desktop
                         windows:(velotap::Windows*)windows;
@end

@implementation VelotapApplicationDelegate {
  velotap::AppDelegate* _delegate;
  velotap::MacDesktop* _desktop;
  velotap::Windows* _windows;
}

- (instancetype)initWithDelegate:(velotap::AppDelegate*)delegate
                         desktop:(velotap::MacDesktop*)desktop
                         windows:(velotap::Windows*)windows {
  self = [super init];
  if (self != nil) {
    _delegate = delegate;
    _desktop = desktop;
    _windows = windows;
  }
  return self;
}

- (void)applicationDidFinishLaunching:(NSNotification*)notification {
  static_cast<void>(notification);
  _delegate->applicationDidFinishLaunching();
}

- (void)applicationDidBecomeActive:(NSNotification*)notification {
  static_cast<void>(notification);
  _desktop->recheckPreferences();
  _delegate->applicationDidBecomeActive();
}

- (BOOL)applicationShouldHandleReopen:(NSApplication*)sender hasVisibleWindows:(BOOL)flag {
  static_cast<void>(sender);
  static_cast<void>(flag);
  return _delegate->applicationShouldHandleReopen() ? YES : NO;
}

- (void)applicationWillTerminate:(NSNotification*)notification {
  static_cast<void>(notification);
  _windows->close();
  _delegate->applicationWillTerminate();
}

@end

namespace velotap {
namespace {

std::vector<std::string> settingKeys() {
  std::vector<std::string> keys;
  for (const SettingRow& row : settingsTable()) keys.emplace_back(row.key);
  return keys;
}

void recordUncaughtExceptions(const std::string& logPath) {
  installUncaughtExceptionHandler([logPath](const UncaughtException& exception) {
    writeRecord(logPath, exceptionRecord(exception.name, exception.reason, exception.stack));
  });
}

void activate() {
  [NSApplication.sharedApplication activateIgnoringOtherApps:YES];
}

Application::Surroundings surroundings(const MacDesktop& desktop, NativeMenuBar& menuBar,
                                       Windows& windows) {
  Application::Surroundings surroundings;
  surroundings.effects = {
      .activate = &activate,
      .terminate = [] { [NSApplication.sharedApplication terminate:nil]; },
      .openSettings = [&windows](SettingsPane pane) { windows.showSettings(pane); }};
  surroundings.localize = [](std::string_view key) {
    return SystemRegionalSettings::shared().texts()(key);
  };
  surroundings.observeRegionalSettings = [](std::function<void()> changed) {
    return SystemRegionalSettings::shared().observeRevision(std::move(changed));
  };
  surroundings.version = desktop.program().version;
  surroundings.refreshLocalizedLabels = [&windows] { windows.refreshLocalizedLabels(); };
  surroundings.showMainMenu = [&menuBar,
                               edit = windows.editor()](const std::vector<MenuItem>& menus) {
    menuBar.show(nativeMenuBar(menus, menuBar, edit));
  };
  return surroundings;
}

int runApplication(int& argc, char** argv) {
  // Whoever read the diagnostic lines may go; that is no reason to stop working.
  std::signal(SIGPIPE, SIG_IGN);
  MacDesktop desktop(Config::debug(), settingKeys());
  Platform::setCurrent(desktop.platform());
  ShellPlatform::setCurrent(desktop.shellPlatform());
  SystemRegionalSettings::setSystem(desktop.regionalSettings());
  if (desktop.platform().workspace.ownBundleId().text() == AppIdentity::kCurrentDomain) {
    AppIdentity::migratePreferences(desktop.platform().preferences);
  }
  const auto windows = makeWindows(argc, argv,
                                   {.applications = desktop.applications(),
                                    .panels = desktop.panels(),
                                    .appearance = desktop.appearance(),
                                    .program = desktop.program(),
                                    .stateFolder = MacDesktop::supportFolder(),
                                    .activate = &activate});
  NSApplication* system = NSApplication.sharedApplication;
  // The bundle says so too; a program that is started outside of one has nobody else to say it.
  [system setActivationPolicy:NSApplicationActivationPolicyAccessory];

  const auto menuBar = NativeMenuBar::system();
  const auto statusItem = NativeStatusItem::system();
  Application application(surroundings(desktop, *menuBar, *windows));
  application.trayMenu().setView(
      nativeTrayView(*statusItem, [&application](const std::optional<StatusItemClick>& click) {
        application.trayMenu().statusItemClicked(click);
      }));
  windows->connect(application);
  application.delegate().steps.installCrashReporter = [&application] {
    recordUncaughtExceptions(application.crashReporter().logPath());
    application.crashReporter().install();
  };
  VelotapApplicationDelegate* delegate =
      [[VelotapApplicationDelegate alloc] initWithDelegate:&application.delegate()
                                                   desktop:&desktop
                                                   windows:windows.get()];
  system.delegate = delegate;
  [system run];
  return 0;
}

}  // namespace
}  // namespace velotap

int main(int argc, char** argv) {
  @autoreleasepool {
    if (const auto mode = velotap::diagnosticsMode(argc, argv))
      return velotap::runMacDiagnostics(*mode);
    if (const auto status = velotap::capturePicturesIfRequested(argc, argv)) return *status;
    const velotap::CommandLine line = velotap::parseCommandLine(argc, argv);
    if (line.help || line.version) {
      std::cout << (line.help ? velotap::helpText() : velotap::versionText());
      return 0;
    }
    std::cerr << velotap::unknownText(line);
    return velotap::runApplication(argc, argv);
  }
}
