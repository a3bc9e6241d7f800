#include "adapters/linux/workspace/desktop_entry.hpp"

#include <gtest/gtest.h>

namespace velotap {
namespace {

using Texts = std::vector<std::string>;

std::optional<DesktopEntry> parse(const std::string& lines, const Texts& languages = {}) {
  return parseDesktopEntry("[Desktop Entry]\nType=Application\n" + lines, languages);
}

TEST(DesktopEntry, readsTheKeysThatMatter) {
  const auto entry = parse(
      "Name=Files\nIcon=org.gnome.Nautilus\nExec=nautilus --new-window %U\n"
      "StartupWMClass=Org.gnome.Nautilus\nComment=Access files\n");
  ASSERT_TRUE(entry);
  EXPECT_EQ(entry->name, "Files");
  EXPECT_EQ(entry->icon, "org.gnome.Nautilus");
  EXPECT_EQ(entry->windowClass, "Org.gnome.Nautilus");
  EXPECT_EQ(entry->program, "nautilus");
  EXPECT_TRUE(entry->inMenus);
  EXPECT_FALSE(entry->hidden);
}

TEST(DesktopEntry, blanksCommentsAndCarriageReturnsDoNotMatter) {
  const auto entry = parseDesktopEntry(
      "\xEF\xBB\xBF# made by hand\r\n\r\n[Desktop Entry]\r\n  Type = Application \r\n"
      "#Name=No\r\nName =  Files\r\n",
      {});
  ASSERT_TRUE(entry);
  EXPECT_EQ(entry->name, "Files");
}

TEST(DesktopEntry, theLastLineNeedsNoEnd) {
  const auto entry = parseDesktopEntry("[Desktop Entry]\nType=Application\nName=A", {});
  ASSERT_TRUE(entry);
  EXPECT_EQ(entry->name, "A");
}

TEST(DesktopEntry, onlyItsOwnGroupCounts) {
  const auto entry = parse("Name=Files\n[Desktop Action new]\nName=New window\nExec=other\n");
  ASSERT_TRUE(entry);
  EXPECT_EQ(entry->name, "Files");
  EXPECT_EQ(entry->program, "");
}

TEST(DesktopEntry, whatDescribesNoApplicationGivesNothing) {
  EXPECT_FALSE(parseDesktopEntry("", {}));
  EXPECT_FALSE(parseDesktopEntry("Name=A\n", {}));
  EXPECT_FALSE(parseDesktopEntry("[Desktop Action]\nType=Application\nName=A\n", {}));
  EXPECT_FALSE(parseDesktopEntry("[Desktop Entry]\nType=Link\nName=A\n", {}));
  EXPECT_FALSE(parseDesktopEntry("[Desktop Entry]\nName=A\n", {}));
  EXPECT_FALSE(parse(""));
  EXPECT_FALSE(parse("Name=\n"));
}

TEST(DesktopEntry, aHiddenEntryNeedsNothingElse) {
  const auto entry = parseDesktopEntry("[Desktop Entry]\nHidden=true\n", {});
  ASSERT_TRUE(entry);
  EXPECT_TRUE(entry->hidden);
  EXPECT_FALSE(parseDesktopEntry("[Desktop Entry]\nHidden=false\n", {}));
}

TEST(DesktopEntry, helpersAreMarked) {
  EXPECT_FALSE(parse("Name=A\nNoDisplay=true\n")->inMenus);
  EXPECT_TRUE(parse("Name=A\nNoDisplay=false\n")->inMenus);
  EXPECT_TRUE(parse("Name=A\nNoDisplay=yes\n")->inMenus);
}

TEST(DesktopEntry, escapesAreResolved) {
  EXPECT_EQ(parse("Name=a\\sb\\tc\\\\d\\xe\\\n")->name, "a b\tc\\d\\xe\\");
}

TEST(DesktopEntry, theBestLanguageWins) {
  const std::string names = "Name[de]=Dateien\nName=Files\nName[de_AT]=Ordner\nName[fr]=Fichiers\n";
  EXPECT_EQ(parse(names)->name, "Files");
  EXPECT_EQ(parse(names, {"de_AT", "de"})->name, "Ordner");
  EXPECT_EQ(parse(names, {"de_CH", "de"})->name, "Dateien");
  EXPECT_EQ(parse(names, {"bg"})->name, "Files");
  EXPECT_EQ(parse("Name[de]=Dateien\n", {"de"})->name, "Dateien");
  EXPECT_FALSE(parse("Name[de]=Dateien\n", {"fr"}));
}

TEST(DesktopEntry, iconsMayBeLocalisedToo) {
  EXPECT_EQ(parse("Name=A\nIcon=a\nIcon[de]=a-de\n", {"de"})->icon, "a-de");
}

TEST(DesktopEntry, otherKeysAreNeverLocalised) {
  EXPECT_EQ(parse("Name=A\nExec=a\nExec[de]=b\n", {"de"})->program, "a");
}

TEST(DesktopEntry, aNameThatIsNotTextIsPassedOver) {
  EXPECT_EQ(parse("Name[de]=\xFF\xFE\nName=Files\n", {"de"})->name, "Files");
}

TEST(DesktopEntry, brokenLinesArePassedOver) {
  EXPECT_EQ(parse("nonsense\n=x\nName[=B\nName[]=C\nName]=D\nName=A\n[x\n")->name, "A");
}

TEST(LanguageSuffixes, goFromSpecialToGeneral) {
  EXPECT_EQ(languageSuffixes("sr_RS.UTF-8@latin"),
            (Texts{"sr_RS@latin", "sr_RS", "sr@latin", "sr"}));
  EXPECT_EQ(languageSuffixes("de_AT.UTF-8"), (Texts{"de_AT", "de"}));
  EXPECT_EQ(languageSuffixes("bg"), Texts{"bg"});
  EXPECT_EQ(languageSuffixes("ca@valencia"), (Texts{"ca@valencia", "ca"}));
}

TEST(LanguageSuffixes, theUntranslatedLocalesAskForNone) {
  for (const char* locale : {"", "C", "C.UTF-8", "POSIX", ".UTF-8", "@euro"}) {
    EXPECT_TRUE(languageSuffixes(locale).empty()) << locale;
  }
}

TEST(ProgramOfExec, isTheBaseName) {
  EXPECT_EQ(programOfExec("firefox %u"), "firefox");
  EXPECT_EQ(programOfExec("/usr/lib/firefox/firefox"), "firefox");
  EXPECT_EQ(programOfExec("\"/opt/My App/run it\" --flag"), "run it");
  EXPECT_EQ(programOfExec("\"/opt/a\\\"b\""), "a\"b");
  EXPECT_EQ(programOfExec(""), "");
  EXPECT_EQ(programOfExec("   "), "");
}

TEST(ProgramOfExec, looksThroughWrappers) {
  EXPECT_EQ(programOfExec("env LANG=C GDK_BACKEND=x11 gimp-2.10 %U"), "gimp-2.10");
  EXPECT_EQ(programOfExec("/usr/bin/env A=/x/y kate"), "kate");
  EXPECT_EQ(programOfExec("A=1 gimp"), "gimp");
  EXPECT_EQ(programOfExec("env A=1"), "");
  EXPECT_EQ(programOfExec("/usr/bin/flatpak run --branch=stable --command=gimp-2.10 org.gimp.GIMP"),
            "gimp-2.10");
}

TEST(ProgramOfExec, saysNothingForInterpretersAndSandboxes) {
  for (const char* exec : {"python3 /usr/bin/app", "/usr/bin/python3.11 x", "sh -c app", "gjs x",
                           "flatpak run org.gimp.GIMP", "java -jar a.jar", "electron22 /x"}) {
    EXPECT_EQ(programOfExec(exec), "") << exec;
  }
}

}  // namespace
}  // namespace velotap
