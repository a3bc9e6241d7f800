#include "adapters/linux/desktop_settings/linux_system_preferences.hpp"

#include <gtest/gtest.h>

#include <filesystem>
#include <fstream>
#include <optional>
#include <thread>

#include "adapters/linux/runtime/posix_clock.hpp"
#include "adapters/linux/runtime/posix_main_queue.hpp"
#include "support/temporary_folder.hpp"

namespace velotap {
namespace {

namespace fs = std::filesystem;
constexpr const char* kDomain = "com.apple.AppleMultitouchTrackpad";
constexpr const char* kTap = "TrackpadThreeFingerTapGesture";

class LinuxSystemPreferencesTest : public testing::Test {
 protected:
  void startGnome() {
    DesktopPlaces places;
    places.kind = DesktopKind::gnome;
    places.touchpadSchema = "org.gnome.desktop.peripherals.touchpad";
    places.dconf.databases = {(root / "dconf/user").string()};
    places.dconf.schemas = {std::string(VELOTAP_DCONF_DATA) + "/gschemas.compiled"};
    start(places);
  }
  void startKde() {
    DesktopPlaces places;
    places.kind = DesktopKind::kde;
    places.kdeInputFiles = {(root / "kcminputrc").string()};
    start(places);
  }
  void start(const DesktopPlaces& places) {
    preferences.emplace(queue, queue, places, "Our Pad");
    observation = preferences->observeChanges([this] { ++changes; });
  }
  void replace(const fs::path& file, const std::string& text) {
    folder.replace(file, text);
    queue.runReady();
  }
  void useDatabase(const char* name) {
    fs::create_directories(root / "dconf");
    fs::copy_file(fs::path(VELOTAP_DCONF_DATA) / name, root / "dconf/new");
    fs::rename(root / "dconf/new", root / "dconf/user");
    queue.runReady();
  }
  [[nodiscard]] ThreeFingerAnswers clicks() const {
    return {.tap = preferences->desktopClicksFor(TrackpadGesture::threeFingerTap),
            .click = preferences->desktopClicksFor(TrackpadGesture::threeFingerClick)};
  }

  TemporaryFolder folder;
  const fs::path root = folder.path();
  PosixClock clock;
  PosixMainQueue queue{clock};
  int changes = 0;
  std::optional<LinuxSystemPreferences> preferences;
  Observation observation;
};

TEST_F(LinuxSystemPreferencesTest, anUnknownDesktopHasTheInputLibrarysDefaults) {
  start({});
  EXPECT_EQ(preferences->read(kDomain, kTap), Value(0));
  EXPECT_EQ(clicks(), (ThreeFingerAnswers{.tap = false, .click = true}));
  EXPECT_TRUE(preferences->gesturePadUsable());
}

TEST_F(LinuxSystemPreferencesTest, gnomesSettingsAreReadAndFollowed) {
  startGnome();
  EXPECT_EQ(preferences->read(kDomain, kTap), Value(0)) << "there is no database yet";
  useDatabase("user");
  EXPECT_EQ(preferences->read(kDomain, kTap), Value(1));
  EXPECT_EQ(clicks(), (ThreeFingerAnswers{.tap = true, .click = false}));
  EXPECT_EQ(changes, 1);
  useDatabase("site");
  EXPECT_EQ(preferences->read(kDomain, kTap), Value(0));
  EXPECT_FALSE(preferences->gesturePadUsable()) << "touchpads are off";
  EXPECT_EQ(changes, 2);
}

TEST_F(LinuxSystemPreferencesTest, kdesSettingsAreReadAndFollowed) {
  startKde();
  EXPECT_EQ(preferences->read(kDomain, kTap), Value(0));
  replace("kcminputrc", "[Libinput][76][613][Magic Trackpad]\nTapToClick=true\n");
  EXPECT_EQ(preferences->read(kDomain, kTap), Value(1));
  EXPECT_EQ(clicks(), (ThreeFingerAnswers{.tap = true, .click = true}));
  EXPECT_TRUE(preferences->touchpads().of(76, 613).tapToClick);
  replace("kcminputrc", "");
  EXPECT_EQ(preferences->read(kDomain, kTap), Value(0));
}

TEST_F(LinuxSystemPreferencesTest, ourPadIsUnusableWhereItIsOffWithAMouse) {
  startKde();
  replace("kcminputrc", "[Libinput][76][613][Magic Trackpad]\nDisableEventsOnExternalMouse=true\n");
  EXPECT_TRUE(preferences->gesturePadUsable()) << "another touchpad's setting";
  replace("kcminputrc", "[Libinput][0][0][Our Pad]\nDisableEventsOnExternalMouse=true\n");
  EXPECT_FALSE(preferences->gesturePadUsable());
  replace("kcminputrc", "[Libinput][0][0][Our Pad]\nEnabled=false\n");
  EXPECT_FALSE(preferences->gesturePadUsable());
  replace("kcminputrc", "[Libinput][0][0][Our Pad]\nEnabled=true\n");
  EXPECT_TRUE(preferences->gesturePadUsable());
}

TEST_F(LinuxSystemPreferencesTest, aChangeOfOtherSettingsIsNotTold) {
  startKde();
  replace("kcminputrc", "[Mouse]\ncursorTheme=a\n");
  replace("kcminputrc", "[Mouse]\ncursorTheme=b\n");
  EXPECT_EQ(changes, 0);
}

TEST_F(LinuxSystemPreferencesTest, whatIsStoredAtTheStartIsKnownAtOnce) {
  std::ofstream(root / "kcminputrc") << "[Libinput][1452][613][a]\nTapToClick=true\n";
  startKde();
  EXPECT_EQ(preferences->read(kDomain, kTap), Value(1));
}

TEST_F(LinuxSystemPreferencesTest, otherThreadsMayAskWhileTheSettingsChange) {
  startKde();
  std::atomic<bool> stop = false;
  std::thread asking([&] {
    while (!stop) {
      (void)preferences->read(kDomain, kTap);
      (void)preferences->gesturePadUsable();
      (void)clicks();
    }
  });
  for (int i = 0; i < 50; ++i) {
    replace("kcminputrc", i % 2 == 0 ? "[Libinput][76][613][a]\nTapToClick=true\n" : "");
  }
  stop = true;
  asking.join();
  EXPECT_EQ(changes, 50);
}

}  // namespace
}  // namespace velotap
