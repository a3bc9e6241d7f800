#include "settings/support_snapshot.hpp"

#include <gtest/gtest.h>
#include <unistd.h>

#include <array>
#include <cstdlib>
#include <string>

#include "settings_fixture.hpp"

namespace velotap {
namespace {

using test::english;

SupportFacts facts() {
  SupportFacts result;
  result.build = {.version = "1.4.2", .build = "318", .notice = {}};
  result.systemVersion = "14.1";
  result.accessibilityGranted = true;
  return result;
}

TEST(SupportSnapshot, HoldsOneFactALine) {
  SupportFacts all = facts();
  all.enabled = false;
  all.connectedDevices = {DeviceClass::magicMouse, DeviceClass::trackpad};
  all.ignoredApps = 2;
  all.keystrokeZoomApps = 1;
  EXPECT_EQ(SupportSnapshot::text(all, english()),
            "Velotap · Version 1.4.2 (318)\n"
            "macOS · 14.1\n"
            "Enable Velotap: No\n"
            "Accessibility Setup…: Yes\n"
            "Max tap duration: 300\u00A0ms\n"
            "Finger drift tolerance: 0.05\n"
            "Sensitivity: 1.0\n"
            "Left edge: 0.35\n"
            "Right edge: 0.65\n"
            "Devices: Trackpad, Magic Mouse\n"
            "Velotap off in these apps: 2\n"
            "Send zoom keyboard shortcuts: 1\n");
}

TEST(SupportSnapshot, SaysNoWhenNoDeviceIsConnected) {
  EXPECT_NE(SupportSnapshot::text(facts(), english()).find("\nDevices: No\n"), std::string::npos);
  EXPECT_NE(SupportSnapshot::text(facts(), test::textsIn("de")).find("\nGeräte: Nein\n"),
            std::string::npos);
}

TEST(SupportSnapshot, WritesNumbersAsTheRegionDoes) {
  EXPECT_NE(SupportSnapshot::text(facts(), test::textsIn("en", "de_DE")).find("tolerance: 0,05\n"),
            std::string::npos);
}

TEST(SupportSnapshot, KeepsEachFactOnItsLine) {
  SupportFacts odd = facts();
  odd.systemVersion = "14.1\nsecret";
  EXPECT_NE(SupportSnapshot::text(odd, english()).find("macOS · 14.1 secret\n"), std::string::npos);
}

// Whatever this machine and the person at it are called does not appear, in any language.
TEST(SupportSnapshot, IdentifiesNobody) {
  std::array<char, 256> host{};
  ASSERT_EQ(gethostname(host.data(), host.size() - 1), 0);
  std::vector<std::string> secrets = {host.data(), "/home", "/Users", "/tmp", "com.apple", "org."};
  for (const char* name : {"USER", "LOGNAME", "HOME", "PWD"}) {
    if (const char* value = std::getenv(name)) secrets.emplace_back(value);
  }
  SupportFacts all = facts();
  all.connectedDevices = {DeviceClass::trackpad};
  all.ignoredApps = 7;
  for (const std::string& language : Localization::shared().languages()) {
    const std::string text = SupportSnapshot::text(all, test::textsIn(language));
    for (const std::string& secret : secrets) {
      // A host called "a", or the root folder, would be found in any text.
      if (secret.size() < 3) continue;
      EXPECT_EQ(text.find(secret), std::string::npos) << language << ": " << secret;
    }
  }
}

TEST(SupportSnapshot, IsShownWithAWordOnPrivacy) {
  const SupportSnapshotView view = supportSnapshotView(facts(), english());
  EXPECT_EQ(view.title, "Support Snapshot");
  EXPECT_EQ(view.text, SupportSnapshot::text(facts(), english()));
  EXPECT_NE(view.caption, "");
  EXPECT_EQ(SupportSnapshot::kFileName, "Velotap-support.txt");
  EXPECT_EQ(english()(SupportSnapshot::key(SupportSnapshot::CopyFeedback::copied)), "Copied");
  EXPECT_EQ(english()(SupportSnapshot::key(SupportSnapshot::CopyFeedback::failed)),
            "The snapshot could not be copied.");
}

}  // namespace
}  // namespace velotap
