// The whole application over the macOS adapters, from its launch to its end: what the system's
// frameworks are asked for, and what is left in them. A program of its own, because the services
// that it shares live until the process ends.
#include <gtest/gtest.h>

#include <algorithm>

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
namespace {

using Texts = std::vector<std::string>;

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
  Texts said;
};

class RecordingMenuBar final : public NativeMenuBar {
 public:
  void show(const std::vector<NativeMenuItem>& menus) override {
    ++shows;
    titles.clear();
    for (const NativeMenuItem& menu : menus) titles.push_back(menu.title);
  }
  int shows = 0;
  Texts titles;
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

// Made before every service, so that it is gone after all of them.
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

TEST(MacApplicationTest, aRunFromTheLaunchToTheEnd) {
  static MacWorld world;
  static Application application(world.surroundings());
  application.trayMenu().setView(
      nativeTrayView(world.statusItem, [](const std::optional<StatusItemClick>& click) {
        application.trayMenu().statusItemClicked(click);
      }));
  Onboarding::View onboarding;
  onboarding.create = [](const std::string&, double) { ++world.onboardings; };
  application.onboarding().setView(std::move(onboarding));
  AppDelegate& delegate = application.delegate();

  delegate.applicationDidFinishLaunching();
  EXPECT_EQ(world.menuBar.titles, (Texts{"Velotap", "Edit", "Window"}));
  EXPECT_TRUE(world.statusItem.visible);
  EXPECT_EQ(world.statusItem.symbol, "exclamationmark.triangle");
  EXPECT_EQ(world.onboardings, 1);
  EXPECT_EQ(world.quartz.installed(kCGSessionEventTap), 0U) << "not trusted";

  world.accessibility.trusted = true;
  world.pass(1.0);
  EXPECT_EQ(world.statusItem.symbol, "computermouse.fill");
  EXPECT_EQ(world.quartz.installed(kCGSessionEventTap), 1U);
  EXPECT_EQ(world.quartz.installed(kCGHIDEventTap), 1U);

  // A tap with three fingers is a middle click at the lowest level.
  world.touch({});
  world.touch(row(3));
  world.pass(0.1);
  world.touch({});
  ASSERT_EQ(world.quartz.posts.size(), 2U);
  EXPECT_EQ(world.quartz.posts[0].event.type, kCGEventOtherMouseDown);
  EXPECT_EQ(world.quartz.posts[1].event.type, kCGEventOtherMouseUp);
  EXPECT_EQ(world.quartz.posts[0].location, kCGHIDEventTap);

  // A click with three fingers is rewritten on its way.
  world.touch(row(3));
  const FakeEvent press{.type = kCGEventLeftMouseDown, .integers = {{kCGMouseEventNumber, 9}}};
  EXPECT_TRUE(world.quartz.send(kCGHIDEventTap, press));
  const auto rewritten = world.quartz.send(kCGSessionEventTap, press);
  ASSERT_TRUE(rewritten);
  EXPECT_EQ(rewritten->type, kCGEventOtherMouseDown);
  EXPECT_EQ(rewritten->button, kCGMouseButtonCenter);
  world.touch({});

  // A plain click on the icon switches, any other shows the menu.
  world.statusItem.clicked(NativeClick{NativeClick::Kind::leftUp, false});
  EXPECT_EQ(world.statusItem.symbol, "computermouse");
  EXPECT_EQ(world.quartz.installed(kCGSessionEventTap), 0U);
  ASSERT_EQ(world.announcer.said.size(), 2U);
  EXPECT_EQ(world.announcer.said[0], "Permission granted 50");
  world.statusItem.clicked(NativeClick{NativeClick::Kind::leftUp, false});
  EXPECT_EQ(world.statusItem.symbol, "computermouse.fill");
  world.statusItem.clicked(NativeClick{NativeClick::Kind::leftUp, true});
  EXPECT_EQ(world.statusItem.menu.size(), 14U);
  world.statusItem.choose("Launch at Login");
  EXPECT_TRUE(world.login.registered);

  // A device that comes restarts the listeners two seconds later.
  world.ioKit.happen(kIOFirstMatchNotification, 1);
  world.pass(1.9);
  static_cast<void>(world.log.take());
  world.pass(0.2);
  const Texts lines = world.log.take();
  EXPECT_EQ(std::count(lines.begin(), lines.end(), "restarting listeners"), 1);

  // Taps that the system takes away for good are given up.
  world.quartz.disable(kCGSessionEventTap, kCGEventTapDisabledByTimeout, false);
  EXPECT_EQ(world.statusItem.symbol, "exclamationmark.triangle");
  delegate.applicationDidBecomeActive();
  EXPECT_EQ(world.statusItem.symbol, "computermouse.fill");

  world.region.changes.notify();
  EXPECT_EQ(world.menuBar.shows, 2);

  delegate.applicationWillTerminate();
  EXPECT_EQ(world.quartz.installed(kCGSessionEventTap), 0U);
  EXPECT_EQ(world.quartz.installed(kCGHIDEventTap), 0U);
  EXPECT_EQ(world.multitouch.heldReferences(), 0U);
  EXPECT_EQ(world.cf.loopSources.size(), 1U) << "the device watch lives as long as the process";
  world.pass(20);
  EXPECT_EQ(world.dispatch.pending(), 0U);
  EXPECT_EQ(world.quartz.pools, 0);
}

}  // namespace
}  // namespace velotap::test
