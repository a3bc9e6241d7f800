#include "adapters/linux/session/folder_watch.hpp"

#include <gtest/gtest.h>

#include <filesystem>

#include "adapters/linux/runtime/posix_clock.hpp"
#include "adapters/linux/runtime/posix_main_queue.hpp"
#include "support/temporary_folder.hpp"

namespace velotap {
namespace {

// What the kernel has to say of a file is readable as soon as the file was touched, so that no
// test waits.
class FolderWatchTest : public testing::Test {
 protected:
  int told() {
    loop.runReady();
    return calls;
  }
  PosixClock clock;
  PosixMainQueue loop{clock};
  TemporaryFolder folder;
  int calls = 0;
  FolderWatch watch{loop, [this] { ++calls; }};
};

TEST_F(FolderWatchTest, saysNothingWhileNothingChanges) {
  folder.write("a", "1");
  EXPECT_TRUE(watch.addFolder(folder.path()));
  EXPECT_EQ(told(), 0);
}

TEST_F(FolderWatchTest, tellsOfANewFileOnce) {
  EXPECT_TRUE(watch.addFolder(folder.path()));
  folder.write("a", "1");
  EXPECT_EQ(told(), 1);
  folder.write("b", "1");
  EXPECT_EQ(told(), 1);
}

TEST_F(FolderWatchTest, tellsOfAChangedFile) {
  folder.write("a", "1");
  EXPECT_TRUE(watch.addFolder(folder.path()));
  folder.write("a", "2");
  EXPECT_EQ(told(), 1);
}

TEST_F(FolderWatchTest, tellsOfARemovedFile) {
  folder.write("a", "1");
  EXPECT_TRUE(watch.addFolder(folder.path()));
  folder.remove("a");
  EXPECT_EQ(told(), 1);
}

TEST_F(FolderWatchTest, tellsOfAReplacedFile) {
  folder.write("apps/a", "1");
  folder.write("b", "1");
  EXPECT_TRUE(watch.addFolder(folder / "apps"));
  std::filesystem::rename(folder / "b", folder / "apps/a");
  EXPECT_EQ(told(), 1);
}

TEST_F(FolderWatchTest, tellsWhenTheFolderItselfGoes) {
  folder.makeFolder("apps");
  EXPECT_TRUE(watch.addFolder(folder / "apps"));
  folder.remove("apps");
  EXPECT_EQ(told(), 1);
}

TEST_F(FolderWatchTest, waitsForAFolderThatIsMissing) {
  EXPECT_TRUE(watch.addFolder(folder / "share/applications"));
  folder.write("unrelated", "1");
  EXPECT_EQ(told(), 0);
  folder.makeFolder("share");
  EXPECT_EQ(told(), 1);
}

TEST_F(FolderWatchTest, tellsOfTheOneFileThatIsAwaited) {
  EXPECT_TRUE(watch.addAppearance(folder / "socket"));
  folder.write("socket.lock", "");
  folder.write("socke", "");
  EXPECT_EQ(told(), 0);
  folder.write("socket", "");
  EXPECT_EQ(told(), 1);
}

TEST_F(FolderWatchTest, theAwaitedFileMayBeMovedIntoPlace) {
  EXPECT_TRUE(watch.addAppearance(folder / "socket"));
  folder.write("new", "");
  std::filesystem::rename(folder / "new", folder / "socket");
  EXPECT_EQ(told(), 1);
}

TEST_F(FolderWatchTest, aFileThatGoesDoesNotAppear) {
  folder.write("socket", "");
  EXPECT_TRUE(watch.addAppearance(folder / "socket"));
  folder.remove("socket");
  EXPECT_EQ(told(), 0);
  folder.write("socket", "");
  EXPECT_EQ(told(), 1);
}

TEST_F(FolderWatchTest, twoFilesInOneFolderAreBothAwaited) {
  EXPECT_TRUE(watch.addAppearance(folder / "one"));
  EXPECT_TRUE(watch.addAppearance(folder / "two"));
  folder.write("two", "");
  EXPECT_EQ(told(), 1);
}

TEST_F(FolderWatchTest, refusesWhatHasNoFolder) {
  EXPECT_FALSE(watch.addAppearance("relative"));
  EXPECT_FALSE(watch.addAppearance(""));
  EXPECT_FALSE(watch.addAppearance("/"));
}

TEST_F(FolderWatchTest, mayBeDestroyedWhenTold) {
  std::unique_ptr<FolderWatch> own;
  own = std::make_unique<FolderWatch>(loop, [&own] { own.reset(); });
  EXPECT_TRUE(own->addFolder(folder.path()));
  folder.write("a", "1");
  loop.runReady();
  EXPECT_EQ(own, nullptr);
}

}  // namespace
}  // namespace velotap
