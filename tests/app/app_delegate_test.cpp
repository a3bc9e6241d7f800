#include "app/app_delegate.hpp"

#include <gtest/gtest.h>

#include <string>
#include <utility>
#include <vector>

namespace velotap {
namespace {

using Lines = std::vector<std::string>;

class AppDelegateTest : public ::testing::Test {
 protected:
  std::function<void()> note(const char* what) {
    return [this, what] { calls_.emplace_back(what); };
  }
  AppDelegate::Steps steps() {
    return {
        .installMainMenu = note("main menu"),
        .observeRegionalSettings =
            [this](std::function<void()> changed) {
              calls_.emplace_back("observe regional settings");
              return regional_.add(std::move(changed));
            },
        .refreshLocalizedLabels = note("labels"),
        .retitleOnboarding = note("onboarding title"),
        .updateIcon = note("icon"),
        .multitouchAvailable = [this] { return available_; },
        .showAlert =
            [this](const AlertRequest& alert) {
              calls_.push_back("alert " + alert.message + " / " + alert.informativeText);
            },
        .terminate = note("terminate"),
        .installCrashReporter = note("crash reporter"),
        .startKeyCodes = note("key codes"),
        .startAppTracker = note("app tracker"),
        .setUpTray = note("tray"),
        .createUpdater = note("updater"),
        .enabled = [this] { return enabled_; },
        .takeInitialPresentation =
            [this](bool enabled) {
              calls_.emplace_back(enabled ? "present, enabled" : "present, disabled");
              return presents_;
            },
        .showOnboarding = note("onboarding"),
        .offerPendingReports = note("offer reports"),
        .startWatcher =
            [this](std::function<void()> pause, std::function<void()> change) {
              calls_.emplace_back("watcher");
              pause_ = std::move(pause);
              change_ = std::move(change);
            },
        .startMonitoring =
            [this](std::function<void(bool)> changed) {
              calls_.emplace_back("monitor");
              trust_ = std::move(changed);
              trust_(granted_);
            },
        .observeSettings =
            [this](std::function<void()> changed) { return settings_.add(std::move(changed)); },
        .stopMonitoring = note("stop monitor"),
        .refreshPermissions = note("refresh"),
        .startController = note("start"),
        .restartController = note("restart"),
        .stopController = note("stop"),
        .listenersRunning = [this] { return running_; },
        .onboardingVisible = [this] { return onboardingVisible_; },
        .bringOnboardingToFront = note("onboarding front"),
        .openSettings =
            [this](SettingsPane pane) {
              calls_.emplace_back(pane == SettingsPane::general ? "general" : "about");
            },
    };
  }
  Lines take() { return std::exchange(calls_, {}); }

  bool available_ = true;
  bool enabled_ = true;
  bool presents_ = false;
  bool granted_ = true;
  bool running_ = true;
  bool onboardingVisible_ = false;
  Lines calls_;
  ObserverList<> regional_;
  ObserverList<> settings_;
  std::function<void()> pause_;
  std::function<void()> change_;
  std::function<void(bool)> trust_;
  AppDelegate delegate_{steps(), [](std::string_view key) { return "«" + std::string(key) + "»"; }};
};

TEST_F(AppDelegateTest, LaunchesInThisOrder) {
  presents_ = true;
  delegate_.applicationDidFinishLaunching();
  EXPECT_EQ(take(), (Lines{"main menu", "observe regional settings", "crash reporter", "key codes",
                           "app tracker", "tray", "icon", "updater", "present, enabled",
                           "onboarding", "offer reports", "watcher", "monitor", "start"}));
}

TEST_F(AppDelegateTest, DoesNotPresentTheOnboardingAgain) {
  delegate_.applicationDidFinishLaunching();
  const Lines calls = take();
  EXPECT_EQ(std::count(calls.begin(), calls.end(), "onboarding"), 0);
}

TEST_F(AppDelegateTest, TellsThePresentationWhetherItIsSwitchedOn) {
  enabled_ = false;
  delegate_.applicationDidFinishLaunching();
  const Lines calls = take();
  EXPECT_EQ(std::count(calls.begin(), calls.end(), "present, disabled"), 1);
}

TEST_F(AppDelegateTest, WithoutThePermissionTheLaunchEndsStopped) {
  granted_ = false;
  delegate_.applicationDidFinishLaunching();
  EXPECT_EQ(take().back(), "stop");
}

TEST_F(AppDelegateTest, WithoutTheMultitouchLibraryItSaysSoAndEnds) {
  available_ = false;
  delegate_.applicationDidFinishLaunching();
  EXPECT_EQ(take(), (Lines{"main menu", "observe regional settings",
                           "alert «MultitouchSupport unavailable» / "
                           "«multitouch.unavailable.body»",
                           "terminate"}));
}

TEST_F(AppDelegateTest, TrustStartsAndStopsTheListeners) {
  delegate_.applicationDidFinishLaunching();
  take();
  trust_(false);
  trust_(true);
  EXPECT_EQ(take(), (Lines{"stop", "start"}));
}

TEST_F(AppDelegateTest, TheWatcherPausesAndRestarts) {
  delegate_.applicationDidFinishLaunching();
  take();
  pause_();
  change_();
  EXPECT_EQ(take(), (Lines{"stop", "restart"}));
}

TEST_F(AppDelegateTest, AnotherLanguageRenamesEverything) {
  delegate_.applicationDidFinishLaunching();
  take();
  regional_.notify();
  EXPECT_EQ(take(), (Lines{"main menu", "labels", "onboarding title", "icon"}));
}

TEST_F(AppDelegateTest, SwitchingOffElsewhereStopsWhatRuns) {
  delegate_.applicationDidFinishLaunching();
  take();
  settings_.notify();
  EXPECT_EQ(take(), Lines{}) << "another setting changed";
  enabled_ = false;
  settings_.notify();
  EXPECT_EQ(take(), Lines{"stop"});
  running_ = false;
  settings_.notify();
  EXPECT_EQ(take(), Lines{});
}

TEST_F(AppDelegateTest, ComingToTheFrontTriesToStart) {
  delegate_.applicationDidBecomeActive();
  EXPECT_EQ(take(), (Lines{"refresh", "start"}));
}

TEST_F(AppDelegateTest, OpeningAgainShowsTheSettings) {
  EXPECT_FALSE(delegate_.applicationShouldHandleReopen());
  EXPECT_EQ(take(), (Lines{"refresh", "general"}));
}

TEST_F(AppDelegateTest, OpeningAgainReturnsToAVisibleOnboarding) {
  onboardingVisible_ = true;
  EXPECT_FALSE(delegate_.applicationShouldHandleReopen());
  EXPECT_EQ(take(), (Lines{"refresh", "onboarding front"}));
}

TEST_F(AppDelegateTest, EndsWithEverythingStopped) {
  delegate_.applicationWillTerminate();
  EXPECT_EQ(take(), (Lines{"stop monitor", "stop"}));
}

}  // namespace
}  // namespace velotap
