#include "adapters/linux/files/file_watch.hpp"

#include <gtest/gtest.h>

#include <filesystem>
#include <fstream>
#include <optional>

#include "adapters/linux/runtime/posix_clock.hpp"
#include "adapters/linux/runtime/posix_main_queue.hpp"
#include "support/temporary_folder.hpp"

namespace velotap {
namespace {

namespace fs = std::filesystem;

class FileWatchTest : public testing::Test {
 protected:
  void follow(const std::vector<fs::path>& files) {
    std::vector<std::string> paths;
    paths.reserve(files.size());
    for (const auto& file : files) paths.push_back((root / file).string());
    watch.emplace(queue, paths, [this] { ++changes; });
  }
  void write(const fs::path& file, const char* text = "x") { std::ofstream(root / file) << text; }
  /// How often the watch told of a change since the last time.
  int told() {
    queue.runReady();
    return std::exchange(changes, 0);
  }

  TemporaryFolder folder;
  const fs::path root = folder.path();
  PosixClock clock;
  PosixMainQueue queue{clock};
  int changes = 0;
  std::optional<FileWatch> watch;
};

TEST_F(FileWatchTest, tellsOfWritingReplacingAndRemoving) {
  write("file");
  follow({"file"});
  EXPECT_EQ(told(), 0);
  write("file");
  EXPECT_EQ(told(), 1);
  write("other");
  EXPECT_EQ(told(), 0);
  fs::rename(root / "other", root / "file");
  EXPECT_EQ(told(), 1);
  fs::remove(root / "file");
  EXPECT_EQ(told(), 1);
  write("file");
  EXPECT_EQ(told(), 1);
}

TEST_F(FileWatchTest, otherFilesOfTheFolderDoNotMatter) {
  follow({"file"});
  write("file.tmp");
  write("fil");
  EXPECT_EQ(told(), 0);
}

TEST_F(FileWatchTest, waitsForFoldersThatDoNotExistYet) {
  follow({"a/b/c/file"});
  fs::create_directories(root / "a");
  EXPECT_GE(told(), 0);
  fs::create_directories(root / "a/b/c");
  EXPECT_GE(told(), 0);
  write("a/b/c/file");
  EXPECT_EQ(told(), 1);
}

TEST_F(FileWatchTest, tellsWhenTheFileCameWithItsFolders) {
  follow({"a/b/file"});
  fs::create_directories(root / "new/b");
  write("new/b/file");
  fs::rename(root / "new", root / "a");
  EXPECT_EQ(told(), 1);
  write("a/b/file");
  EXPECT_EQ(told(), 1);
}

TEST_F(FileWatchTest, followsAFolderThatIsTakenAwayAndComesBack) {
  fs::create_directories(root / "a");
  write("a/file");
  follow({"a/file"});
  fs::remove_all(root / "a");
  EXPECT_EQ(told(), 1);
  fs::create_directories(root / "a");
  EXPECT_EQ(told(), 1);
  write("a/file");
  EXPECT_EQ(told(), 1);
}

TEST_F(FileWatchTest, followsSeveralFilesInOneFolderAndInOthers) {
  fs::create_directories(root / "a");
  follow({"one", "two", "a/three"});
  write("one");
  EXPECT_EQ(told(), 1);
  write("two");
  EXPECT_EQ(told(), 1);
  write("a/three");
  EXPECT_EQ(told(), 1);
}

TEST_F(FileWatchTest, severalChangesAtOnceAreToldOnce) {
  follow({"one", "two"});
  write("one");
  write("two");
  write("one");
  EXPECT_EQ(told(), 1);
}

TEST_F(FileWatchTest, withoutFilesNothingIsTold) {
  follow({});
  write("one");
  EXPECT_EQ(told(), 0);
}

TEST_F(FileWatchTest, nothingIsToldAfterItIsGone) {
  follow({"file"});
  write("file");
  watch.reset();
  EXPECT_EQ(told(), 0);
}

}  // namespace
}  // namespace velotap
