// The whole application over the simulated desktop, without a view. A program of its own: the
// services that it shares live until it ends.
#include "app/application.hpp"

#include <gtest/gtest.h>

#include <string>
#include <vector>

#include "app/shell_fakes.hpp"
#include "platform/shell_platform.hpp"
#include "support/desktop.hpp"
#include "support/recording_urls.hpp"
#include "support/temporary_folder.hpp"

namespace velotap {
namespace {

using test::Lines;

class FakePrompt final : public TrustPrompt {
 public:
  void request() override {}
  bool openSettings() override { return true; }
  bool revealProgram() override { return true; }
  [[nodiscard]] Observation observe(std::function<void()> /*mayHaveChanged*/) override {
    return {};
  }
};

class FakeUpdates final : public UpdateService {
 public:
  void start() override { ++started; }
  [[nodiscard]] std::optional<std::string> unavailableReason() const override { return "none"; }
  void checkForUpdates() override {}
  [[nodiscard]] bool checksAutomatically() const override { return false; }
  void setChecksAutomatically(bool /*on*/) override {}
  [[nodiscard]] std::optional<std::chrono::system_clock::time_point> lastCheck() const override {
    return std::nullopt;
  }
  [[nodiscard]] Observation observe(std::function<void()> /*changed*/) override { return {}; }
  int started = 0;
};

// Made before every service, so that it is gone after all of them.
struct World {
  World() {
    Platform::setCurrent(desktop.platform);
    ShellPlatform::setCurrent(shell);
    desktop.multitouch.add({.name = "pad"});
  }
  TemporaryFolder folder;
  test::Desktop desktop;
  FakePrompt prompt;
  test::FakeLoginItem loginItem;
  FakeUpdates updates;
  test::FakeAnnouncements announcements;
  test::RecordingUrls urls;
  ShellPlatform shell{.trustPrompt = prompt,
                      .loginItem = loginItem,
                      .updates = updates,
                      .announcements = announcements,
                      .urls = urls,
                      .crashFolder = (folder.path() / "Crashes").string()};
};

World& world() {
  static World instance;
  return instance;
}

TEST(ApplicationTest, LaunchesRunsAndEnds) {
  test::Desktop& desktop = world().desktop;
  desktop.trust.setTrusted(false);
  Lines icons;
  Lines effects;
  Application application(
      {.effects = {.activate = [] {},
                   .terminate = [&effects] { effects.emplace_back("terminate"); },
                   .openSettings = [&effects](SettingsPane) { effects.emplace_back("settings"); }},
       .localize = [](std::string_view key) { return std::string(key); },
       .observeRegionalSettings = [](const std::function<void()>&) { return Observation(); },
       .version = "1.0"});
  application.trayMenu().setView(
      {.setIcon = [&icons](const StatusIcon& icon) { icons.push_back(icon.label); }});
  Lines windows;
  application.onboarding().setView(
      {.create = [&windows](const std::string& title, double) { windows.push_back(title); },
       .isVisible = [] { return true; }});

  application.delegate().applicationDidFinishLaunching();
  EXPECT_FALSE(Controller::shared().isRunning());
  EXPECT_EQ(icons.back(), "Velotap (unavailable)");
  EXPECT_EQ(windows, Lines{"Set Up Velotap"}) << "switched on and not trusted";
  EXPECT_EQ(world().updates.started, 1);
  EXPECT_TRUE(std::filesystem::exists(application.crashReporter().logPath()));

  // The permission is found by the poll, and moves everything on.
  desktop.trust.setTrusted(true);
  desktop.advance(1.0);
  EXPECT_TRUE(Controller::shared().isRunning());
  EXPECT_EQ(icons.back(), "Velotap (active)");
  EXPECT_TRUE(application.onboarding().content().granted);
  EXPECT_EQ(world().announcements.spoken, Lines{"Permission granted (50)"});

  desktop.trust.setTrusted(false);
  desktop.advance(1.0);
  EXPECT_FALSE(Controller::shared().isRunning());
  desktop.trust.setTrusted(true);
  desktop.advance(1.0);
  EXPECT_TRUE(Controller::shared().isRunning());

  // Whoever switches off, the listeners stop.
  DefaultsStore::shared().set("enabled", false);
  EXPECT_FALSE(Controller::shared().isRunning());
  EXPECT_EQ(icons.back(), "Velotap (disabled)");
  application.trayMenu().toggleEnabled();
  EXPECT_TRUE(Controller::shared().isRunning());

  // Sleep pauses, waking restarts after ten seconds.
  desktop.notices.willSleep();
  desktop.advance(0);
  EXPECT_FALSE(Controller::shared().isRunning());
  desktop.notices.didWake();
  desktop.advance(9.999);
  EXPECT_FALSE(Controller::shared().isRunning());
  desktop.advance(0.001);
  EXPECT_TRUE(Controller::shared().isRunning());

  EXPECT_FALSE(application.delegate().applicationShouldHandleReopen());
  EXPECT_EQ(effects, Lines{}) << "the onboarding is still there";
  application.onboarding().windowWillClose();
  EXPECT_FALSE(application.delegate().applicationShouldHandleReopen());
  EXPECT_EQ(effects, Lines{"settings"});

  application.delegate().applicationWillTerminate();
  EXPECT_FALSE(Controller::shared().isRunning());
  desktop.trust.setTrusted(false);
  desktop.advance(5.0);
  EXPECT_EQ(icons.back(), "Velotap (unavailable)");
}

}  // namespace
}  // namespace velotap
