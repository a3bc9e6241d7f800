// The whole application over the macOS adapters, whose frameworks are recorders.
//
// One for a process, made before every service, so that it is gone after all of them: the services
// that it shares live until the process ends.
#pragma once

#include <gtest/gtest.h>

#include "adapters/macos/devices/mac_notices.hpp"
#include "adapters/macos/keyboard/text_input_layout.hpp"
#include "adapters/macos/preferences/cf_preferences_storage.hpp"
#include "adapters/macos/preferences/cf_system_preferences.hpp"
#include "adapters/macos/quartz/quartz_event_stream.hpp"
#include "adapters/macos/quartz/quartz_event_taps.hpp"
#include "adapters/macos/shell/mac_announcements.hpp"
#include "adapters/macos/shell/mac_login_item.hpp"
#include "adapters/macos/shell/mac_trust_prompt.hpp"
#include "adapters/macos/shell/mac_updates.hpp"
#include "adapters/macos/shell/mac_url_opener.hpp"
#include "adapters/macos/workspace/mac_applications.hpp"
#include "adapters/macos/workspace/mac_workspace.hpp"
#include "adapters/simulated/simulated_multitouch.hpp"
#include "app/application.hpp"
#include "app/macos/native_menus.hpp"
#include "fakes/fake_cocoa.hpp"
#include "fakes/fake_io_kit.hpp"
#include "fakes/fake_quartz.hpp"
#include "fakes/fake_runtime.hpp"
#include "fakes/fake_text_input.hpp"
#include "localization/system_regional_settings.hpp"
#include "platform/platform.hpp"
#include "platform/shell_platform.hpp"
#include "support/recording_log.hpp"
#include "support/temporary_folder.hpp"
#include "support/touches.hpp"

namespace velotap::test {

class EnglishRegion final : public RegionalSettings {
 public:
  std::vector<std::string> preferredLanguages() const override { return {"en"}; }
  std::string locale() const override { return "en_US"; }
  std::string timeZone() const override { return ""; }
  std::int64_t secondsFromUniversalTime(std::int64_t) const override { return 0; }
  Observation observeChanges(std::function<void()> changed) override {
    return changes.add(std::move(changed));
  }
  ObserverList<> changes;
};

class RecordingLogin final : public CocoaLoginService {
 public:
  long status() override { return registered ? 1 : 0; }
  std::optional<Error> registerService() override {
    registered = true;
    return std::nullopt;
  }
  std::optional<Error> unregisterService() override {
    registered = false;
    return std::nullopt;
  }
  void openLoginItemsSettings() override {}
  bool registered = false;
};

class NoFeed final : public CocoaUpdater {
 public:
  std::string feed() override { return {}; }
  bool start() override { return false; }
  void checkForUpdates() override {}
  bool automaticallyChecks() override { return false; }
  void setAutomaticallyChecks(bool) override {}
  std::optional<double> lastCheck() override { return std::nullopt; }
  Observation observe(std::function<void()>) override { return {}; }
};

class RecordingAnnouncer final : public CocoaAnnouncer {
 public:
  void announce(const std::string& message, int priority) override {
    said.push_back(message + " " + std::to_string(priority));
  }
  std::vector<std::string> said;
};

class RecordingMenuBar final : public NativeMenuBar {
 public:
  void show(const std::vector<NativeMenuItem>& menus) override {
    ++shows;
    shown = menus;
    titles.clear();
    for (const NativeMenuItem& menu : menus) titles.push_back(menu.title);
  }
  void send(const std::string& selector) override { sent.push_back(selector); }
  /// Chooses an item by its menu and title.
  void choose(const std::string& title) const {
    for (const NativeMenuItem& menu : shown) {
      for (const NativeMenuItem& item : menu.submenu) {
        if (item.title == title) return item.action();
      }
    }
    ADD_FAILURE() << "the menu bar has no " << title;
  }

  int shows = 0;
  std::vector<NativeMenuItem> shown;
  std::vector<std::string> sent;
  std::vector<std::string> titles;
};

class RecordingStatusItem final : public NativeStatusItem {
 public:
  void create(std::function<void(const std::optional<NativeClick>&)> told) override {
    clicked = std::move(told);
  }
  void setIcon(const std::string& name, const std::string&) override { symbol = name; }
  void setVisible(bool on) override { visible = on; }
  void popUp(const std::vector<NativeMenuItem>& items) override { menu = items; }
  void choose(const std::string& title) const {
    for (const NativeMenuItem& item : menu) {
      if (item.title == title) return item.action();
    }
    ADD_FAILURE() << "the menu has no " << title;
  }

  std::function<void(const std::optional<NativeClick>&)> clicked;
  std::string symbol;
  bool visible = false;
  std::vector<NativeMenuItem> menu;
};

struct MacWorld {
  FakeCoreFoundation cf;
  FakeQuartz quartz{cf};
  FakeIoKit ioKit{cf};
  FakeTextInput input{cf};
  FakeDispatch dispatch;
  FakeMachTime time;
  FakeAccessibility accessibility{cf};
  FakeWorkspace cocoa;
  FakeChanges preferencesChanges;
  FakeAlertPanel panel;
  RecordingLogin login;
  NoFeed updater;
  RecordingAnnouncer announcer;
  EnglishRegion region;
  TemporaryFolder folder;
  SimulatedMultitouch multitouch;

  MachClock clock{time.api()};
  DispatchMainQueue queue{dispatch.api()};
  QuartzEventStream events{cf.api(), quartz.api(), quartz.runtime()};
  QuartzEventTaps taps{cf.api(), quartz.api()};
  CfPreferencesStorage preferences{cf.api(), preferencesChanges, queue, {"enabled"}};
  CfSystemPreferences systemPreferences{cf.api()};
  MacWorkspace workspace{cocoa, quartz.runtime()};
  TextInputLayout layout{cf.api(), input.api()};
  MacNotices notices{cf.api(), ioKit.api(), quartz.api(), cocoa};
  MacTrust trust{cf.api(), accessibility.api()};
  MacAlerts alerts{panel, cocoa};
  NotificationCenter notifications;
  RecordingLog log;
  MacTrustPrompt trustPrompt{trust, cocoa};
  MacLoginItem loginItem{login};
  MacUpdates updates{updater};
  MacAnnouncements announcements{announcer};
  MacUrlOpener urls{cocoa};
  Platform platform{clock,     queue,  multitouch, events, taps,   preferences,   systemPreferences,
                    workspace, layout, notices,    trust,  alerts, notifications, log};
  ShellPlatform shell{trustPrompt,   loginItem, updates,
                      announcements, urls,      folder.path().string() + "/Crashes"};
  RecordingMenuBar menuBar;
  RecordingStatusItem statusItem;
  int onboardings = 0;

  MacWorld() {
    input.translate = [](const std::string&, UInt16) { return FakeTextInput::Translation{}; };
    cocoa.front = CocoaApplication{.bundleId = "com.example.editor", .name = "Editor"};
    multitouch.add({.name = "pad"});
    Platform::setCurrent(platform);
    ShellPlatform::setCurrent(shell);
    SystemRegionalSettings::setSystem(region);
  }
  void pass(double seconds) {
    time.ticks += static_cast<std::uint64_t>(seconds * 1e9);
    dispatch.advance(seconds);
  }
  void touch(const Frame& contacts) {
    ASSERT_TRUE(
        multitouch.deliver("pad", contacts.data(), static_cast<std::int32_t>(contacts.size())));
  }
  Application::Surroundings surroundings() {
    Application::Surroundings surroundings;
    surroundings.effects = {
        .activate = [] {}, .terminate = [] {}, .openSettings = [](SettingsPane) {}};
    surroundings.localize = [](std::string_view key) {
      return SystemRegionalSettings::shared().texts()(key);
    };
    surroundings.observeRegionalSettings = [](std::function<void()> changed) {
      return SystemRegionalSettings::shared().observeRevision(std::move(changed));
    };
    surroundings.version = "1.2.3";
    surroundings.showMainMenu = [this](const std::vector<MenuItem>& menus) {
      menuBar.show(nativeMenu(menus));
    };
    return surroundings;
  }
};

}  // namespace velotap::test
