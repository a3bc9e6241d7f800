#include "adapters/linux/workspace/installed_applications.hpp"

#include <gtest/gtest.h>
#include <sys/stat.h>

#include <filesystem>

#include "adapters/linux/runtime/posix_clock.hpp"
#include "adapters/linux/runtime/posix_main_queue.hpp"
#include "desktop_entry_text.hpp"
#include "support/temporary_folder.hpp"

namespace velotap {
namespace {

using test::desktopEntry;

class InstalledApplicationsTest : public testing::Test {
 protected:
  std::string name(const std::string& id) {
    loop.runReady();
    const auto* application = applications.index().byId(id);
    return application == nullptr ? "-" : application->name;
  }
  PosixClock clock;
  PosixMainQueue loop{clock};
  TemporaryFolder folder;
  InstalledApplications applications{
      loop, {folder / "home/applications", folder / "usr/applications"}, {"de"}};
};

TEST_F(InstalledApplicationsTest, readsWhenAskedFirst) {
  folder.write("usr/applications/a.desktop", desktopEntry("A", "Name[de]=Ä\nIcon=i\nExec=/b/a\n"));
  EXPECT_TRUE(applications.stale());
  EXPECT_EQ(name("a"), "Ä");
  EXPECT_FALSE(applications.stale());
  EXPECT_EQ(applications.index().byId("a")->icon, "i");
  EXPECT_EQ(applications.index().byId("a")->program, "a");
}

TEST_F(InstalledApplicationsTest, foldersThatAreMissingHoldNothing) {
  EXPECT_EQ(name("a"), "-");
}

TEST_F(InstalledApplicationsTest, readsAgainAfterAChange) {
  folder.write("usr/applications/a.desktop", desktopEntry("A"));
  EXPECT_EQ(name("b"), "-");
  folder.write("usr/applications/b.desktop", desktopEntry("B"));
  loop.runReady();
  EXPECT_TRUE(applications.stale());
  EXPECT_EQ(name("b"), "B");
  folder.write("usr/applications/b.desktop", desktopEntry("C"));
  EXPECT_EQ(name("b"), "C");
  folder.remove("usr/applications/b.desktop");
  EXPECT_EQ(name("b"), "-");
}

TEST_F(InstalledApplicationsTest, seesAFolderThatComesLater) {
  EXPECT_EQ(name("a"), "-");
  folder.write("home/applications/a.desktop", desktopEntry("A"));
  EXPECT_EQ(name("a"), "A");
  folder.write("home/applications/b.desktop", desktopEntry("B"));
  EXPECT_EQ(name("b"), "B");
}

TEST_F(InstalledApplicationsTest, anEarlierFolderHidesALaterOne) {
  folder.write("home/applications/a.desktop", desktopEntry("Mine"));
  folder.write("usr/applications/a.desktop", desktopEntry("Theirs"));
  EXPECT_EQ(name("a"), "Mine");
  folder.remove("home/applications/a.desktop");
  EXPECT_EQ(name("a"), "Theirs");
}

TEST_F(InstalledApplicationsTest, aHiddenEntryHidesALaterOne) {
  folder.write("home/applications/a.desktop", "[Desktop Entry]\nHidden=true\n");
  folder.write("usr/applications/a.desktop", desktopEntry("Theirs"));
  EXPECT_EQ(name("a"), "-");
}

TEST_F(InstalledApplicationsTest, subfoldersArePartOfTheIdentifier) {
  folder.write("usr/applications/kde/konsole.desktop", desktopEntry("Konsole"));
  EXPECT_EQ(name("kde-konsole"), "Konsole");
  EXPECT_EQ(name("konsole"), "-");
  folder.write("usr/applications/kde/kate.desktop", desktopEntry("Kate"));
  EXPECT_EQ(name("kde-kate"), "Kate");
}

TEST_F(InstalledApplicationsTest, foldersThatGoInCirclesEnd) {
  folder.makeFolder("usr/applications");
  std::filesystem::create_directory_symlink(folder / "usr/applications",
                                            folder / "usr/applications/self");
  folder.write("usr/applications/a.desktop", desktopEntry("A"));
  EXPECT_EQ(name("a"), "A");
}

TEST_F(InstalledApplicationsTest, whatIsNoEntryIsPassedOver) {
  folder.write("usr/applications/a.desktop", desktopEntry("A"));
  folder.write("usr/applications/readme.txt", desktopEntry("No"));
  folder.write("usr/applications/broken.desktop", "nonsense");
  folder.write("usr/applications/.desktop", desktopEntry("Nameless"));
  folder.write("usr/applications/huge.desktop",
               desktopEntry("Huge", "#" + std::string((1U << 20U) + 1, 'x')));
  std::filesystem::create_symlink(folder / "missing", folder / "usr/applications/link.desktop");
  // Opening a pipe that nobody writes to would wait for ever.
  ASSERT_EQ(mkfifo((folder / "usr/applications/pipe.desktop").c_str(), 0600), 0);
  EXPECT_EQ(name("a"), "A");
  EXPECT_EQ(applications.index().all().size(), 1U);
}

TEST_F(InstalledApplicationsTest, anEntryOfJustTheLargestSizeIsRead) {
  std::string text = desktopEntry("A");
  text += std::string((1U << 20U) - text.size(), '#');
  folder.write("usr/applications/a.desktop", text);
  EXPECT_EQ(name("a"), "A");
}

}  // namespace
}  // namespace velotap
