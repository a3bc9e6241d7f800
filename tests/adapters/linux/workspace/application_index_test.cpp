#include "adapters/linux/workspace/application_index.hpp"

#include <gtest/gtest.h>

namespace velotap {
namespace {

InstalledApplication entry(const std::string& id, const std::string& windowClass = {},
                           const std::string& program = {}, bool inMenus = true) {
  return {.id = id,
          .name = "Name of " + id,
          .icon = {},
          .windowClass = windowClass,
          .program = program,
          .inMenus = inMenus};
}

std::string found(const ApplicationIndex& index, const FrontWindow& window,
                  std::string_view program = {}) {
  const auto* application = index.find(window, program);
  return application == nullptr ? "-" : application->id;
}

FrontWindow waylandWindow(const std::string& appId) {
  return {.appId = appId};
}
FrontWindow x11Window(const std::string& instance, const std::string& windowClass) {
  return {.windowClass = windowClass, .instance = instance};
}

TEST(ApplicationIndex, theAppIdIsADesktopFileId) {
  const ApplicationIndex index({entry("org.mozilla.firefox"), entry("org.gnome.Nautilus")});
  EXPECT_EQ(found(index, waylandWindow("org.mozilla.firefox")), "org.mozilla.firefox");
  EXPECT_EQ(found(index, waylandWindow("org.gnome.Nautilus.desktop")), "org.gnome.Nautilus");
  EXPECT_EQ(found(index, waylandWindow("/usr/share/applications/org.gnome.Nautilus.desktop")),
            "org.gnome.Nautilus");
  EXPECT_EQ(found(index, waylandWindow("org.mozilla")), "-");
}

TEST(ApplicationIndex, anExactIdBeatsAnEntryThatClaimsTheClass) {
  const ApplicationIndex index({entry("code"), entry("code-url-handler", "code")});
  EXPECT_EQ(found(index, waylandWindow("code")), "code");
}

TEST(ApplicationIndex, anEntryMayClaimAWindowClass) {
  const ApplicationIndex index({entry("org.gimp.GIMP", "gimp-2.10"), entry("gimp-2.10-help")});
  EXPECT_EQ(found(index, x11Window("gimp-2.10", "Gimp-2.10")), "org.gimp.GIMP");
  EXPECT_EQ(found(index, waylandWindow("gimp-2.10")), "org.gimp.GIMP");
}

TEST(ApplicationIndex, aWebApplicationIsNotItsBrowser) {
  const ApplicationIndex index({entry("chromium", "Chromium"), entry("chrome-mail", "crx_abc")});
  EXPECT_EQ(found(index, x11Window("crx_abc", "Chromium")), "chrome-mail");
  EXPECT_EQ(found(index, x11Window("chromium", "Chromium")), "chromium");
}

TEST(ApplicationIndex, letterCaseAndSpacesMatterLast) {
  const ApplicationIndex index(
      {entry("vlc"), entry("VLC"), entry("my-editor"), entry("x", "JetBrains-Idea")});
  EXPECT_EQ(found(index, x11Window("vlc", "Vlc")), "vlc");
  EXPECT_EQ(found(index, waylandWindow("VLC")), "VLC");
  EXPECT_EQ(found(index, x11Window("", "My Editor")), "my-editor");
  EXPECT_EQ(found(index, x11Window("", "jetbrains-idea")), "x");
}

TEST(ApplicationIndex, theLastPartOfAnIdIdentifiesIfItIsAlone) {
  const ApplicationIndex index(
      {entry("org.kde.dolphin"), entry("org.a.editor"), entry("org.b.Editor")});
  EXPECT_EQ(found(index, x11Window("dolphin", "dolphin")), "org.kde.dolphin");
  EXPECT_EQ(found(index, x11Window("editor", "Editor")), "-");
}

TEST(ApplicationIndex, theProgramIdentifiesIfItIsAlone) {
  const ApplicationIndex index({entry("debian-xterm", "", "xterm"), entry("a", "", "tool"),
                                entry("b", "", "tool"), entry("c", "", "tool2"),
                                entry("d", "", "tool2", false)});
  EXPECT_EQ(found(index, x11Window("xterm", "XTerm")), "debian-xterm");
  EXPECT_EQ(found(index, x11Window("tool", "Tool")), "-");
  // A helper beside the application does not make it ambiguous.
  EXPECT_EQ(found(index, x11Window("tool2", "Tool2")), "c");
}

TEST(ApplicationIndex, entriesInMenusAreBetterThanHelpers) {
  const ApplicationIndex index({entry("a-helper", "app", "", false), entry("b-app", "app")});
  EXPECT_EQ(found(index, waylandWindow("app")), "b-app");
  const ApplicationIndex helpers({entry("b", "app", "", false), entry("a", "app", "", false)});
  EXPECT_EQ(found(helpers, waylandWindow("app")), "a");
}

TEST(ApplicationIndex, theRunningProgramCountsOnlyForANamelessWindow) {
  const ApplicationIndex index({entry("xterm"), entry("firefox")});
  EXPECT_EQ(found(index, {}, "xterm"), "xterm");
  EXPECT_EQ(found(index, waylandWindow("firefox"), "xterm"), "firefox");
  EXPECT_EQ(found(index, waylandWindow("unknown"), "xterm"), "-");
}

TEST(ApplicationIndex, emptyFieldsMatchNothing) {
  const ApplicationIndex index({entry("a"), entry("b.")});
  EXPECT_EQ(found(index, {}), "-");
  EXPECT_EQ(found(ApplicationIndex(), waylandWindow("a")), "-");
}

TEST(ApplicationIndex, listsByIdentifier) {
  const ApplicationIndex index({entry("b"), entry("a")});
  ASSERT_EQ(index.all().size(), 2U);
  EXPECT_EQ(index.all().front().id, "a");
  EXPECT_EQ(index.byId("b")->name, "Name of b");
  EXPECT_EQ(index.byId("c"), nullptr);
}

TEST(DesktopFileId, stripsFolderAndSuffix) {
  EXPECT_EQ(desktopFileId("org.a.B"), "org.a.B");
  EXPECT_EQ(desktopFileId("org.a.B.desktop"), "org.a.B");
  EXPECT_EQ(desktopFileId("/usr/share/applications/kde/konsole.desktop"), "kde-konsole");
  EXPECT_EQ(desktopFileId(".desktop"), ".desktop");
  EXPECT_EQ(desktopFileId(""), "");
}

TEST(IdentifierWithoutEntry, isTheFirstNameThatThereIs) {
  EXPECT_EQ(
      identifierWithoutEntry({.appId = "a.desktop", .windowClass = "B", .instance = "c"}, "d"),
      "a");
  EXPECT_EQ(identifierWithoutEntry({.windowClass = "B", .instance = "c"}, "d"), "B");
  EXPECT_EQ(identifierWithoutEntry({.instance = "c"}, "d"), "c");
  EXPECT_EQ(identifierWithoutEntry({}, "d"), "d");
  EXPECT_EQ(identifierWithoutEntry({}, ""), "");
}

}  // namespace
}  // namespace velotap
