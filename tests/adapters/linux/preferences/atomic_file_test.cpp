#include "adapters/linux/preferences/atomic_file.hpp"

#include <gtest/gtest.h>
#include <sys/stat.h>
#include <unistd.h>

#include <algorithm>
#include <cerrno>
#include <string>
#include <vector>

#include "adapters/linux/files/read_file.hpp"
#include "settings_folder.hpp"

namespace velotap {
namespace {

namespace fs = std::filesystem;
using State = FileContent::State;

class AtomicFileTest : public test::SettingsFolder {
 protected:
  AtomicFileTest() { put(path, "old"); }
  /// The file is as it was and nothing lies beside it.
  void expectUntouched(const std::optional<std::string>& error, const std::string& reason) {
    ASSERT_TRUE(error);
    EXPECT_EQ(*error, reason);
    EXPECT_EQ(content(path), "old");
    EXPECT_EQ(names(path.parent_path()), std::vector<std::string>{"file"});
  }
  const fs::path path = root.path() / "here" / "file";
};

TEST_F(AtomicFileTest, replaces) {
  EXPECT_FALSE(replaceFile(path, "new", FileCalls::system()));
  EXPECT_EQ(content(path), "new");
  EXPECT_FALSE(replaceFile(path, "", FileCalls::system()));
  EXPECT_EQ(content(path), "");
  EXPECT_EQ(names(path.parent_path()), std::vector<std::string>{"file"});
}

TEST_F(AtomicFileTest, contentIsSafeBeforeItIsInPlaceAndTheFolderAfterwards) {
  std::vector<std::string> order;
  FileCalls calls = FileCalls::system();
  calls.write = [&](int fd, const void* data, std::size_t size) {
    order.emplace_back("write");
    return ::write(fd, data, size);
  };
  calls.sync = [&](int fd) {
    struct stat info {};
    EXPECT_EQ(::fstat(fd, &info), 0);
    order.emplace_back(S_ISDIR(info.st_mode) ? "sync folder" : "sync file");
    return ::fsync(fd);
  };
  calls.rename = [&](const char* from, const char* to) {
    order.emplace_back("rename");
    EXPECT_EQ(content(from), "new") << "whole before it is in place";
    EXPECT_EQ(fs::path(from).parent_path(), fs::path(to).parent_path());
    return ::rename(from, to);
  };
  EXPECT_FALSE(replaceFile(path, "new", calls));
  EXPECT_EQ(order, (std::vector<std::string>{"write", "sync file", "rename", "sync folder"}));
}

TEST_F(AtomicFileTest, shortWritesAreContinued) {
  FileCalls calls = FileCalls::system();
  calls.write = [](int fd, const void* data, std::size_t size) {
    return ::write(fd, data, std::min<std::size_t>(size, 3));
  };
  const std::string text(1000, 'x');
  EXPECT_FALSE(replaceFile(path, text, calls));
  EXPECT_EQ(content(path), text);
}

TEST_F(AtomicFileTest, interruptedWritesAreTriedAgain) {
  int calls = 0;
  FileCalls interrupted = FileCalls::system();
  interrupted.write = [&](int fd, const void* data, std::size_t size) -> ssize_t {
    if (++calls <= 3) {
      errno = EINTR;
      return -1;
    }
    return ::write(fd, data, size);
  };
  EXPECT_FALSE(replaceFile(path, "new", interrupted));
  EXPECT_EQ(calls, 4);
  EXPECT_EQ(content(path), "new");
}

TEST_F(AtomicFileTest, aDiskThatFillsUpHalfWayLeavesTheOldFile) {
  bool first = true;
  FileCalls full = FileCalls::system();
  full.write = [&](int fd, const void* data, std::size_t) -> ssize_t {
    if (std::exchange(first, false)) return ::write(fd, data, 1);
    errno = ENOSPC;
    return -1;
  };
  expectUntouched(replaceFile(path, "new", full), "write: No space left on device");
}

TEST_F(AtomicFileTest, aWriteThatTakesNothingIsAFullDisk) {
  FileCalls full = FileCalls::system();
  full.write = [](int, const void*, std::size_t) -> ssize_t { return 0; };
  expectUntouched(replaceFile(path, "new", full), "write: No space left on device");
}

TEST_F(AtomicFileTest, failingToSyncLeavesTheOldFile) {
  FileCalls failing = FileCalls::system();
  failing.sync = [](int) {
    errno = EIO;
    return -1;
  };
  expectUntouched(replaceFile(path, "new", failing), "sync: Input/output error");
}

TEST_F(AtomicFileTest, aFolderThatCannotBeSyncedIsNoFailure) {
  int syncs = 0;
  FileCalls calls = FileCalls::system();
  calls.sync = [&](int fd) {
    errno = EINVAL;
    return ++syncs == 1 ? ::fsync(fd) : -1;
  };
  EXPECT_FALSE(replaceFile(path, "new", calls));
  EXPECT_EQ(syncs, 2);
  EXPECT_EQ(content(path), "new");
}

TEST_F(AtomicFileTest, failingToRenameLeavesTheOldFile) {
  FileCalls failing = FileCalls::system();
  failing.rename = [](const char*, const char*) {
    errno = EXDEV;
    return -1;
  };
  expectUntouched(replaceFile(path, "new", failing), "rename: Invalid cross-device link");
}

TEST_F(AtomicFileTest, aMissingFolderIsAFailure) {
  const auto error = replaceFile(root.path() / "missing" / "file", "new", FileCalls::system());
  EXPECT_EQ(error, "create: No such file or directory");
}

TEST_F(AtomicFileTest, whateverStandsUnderTheFreshNameIsNotWrittenThrough) {
  const std::string fresh = path.string() + ".new-" + std::to_string(::getpid());
  put(root.path() / "victim", "precious");
  fs::create_symlink(root.path() / "victim", fresh);
  EXPECT_FALSE(replaceFile(path, "new", FileCalls::system()));
  EXPECT_EQ(content(root.path() / "victim"), "precious");
  ASSERT_EQ(::mkfifo(fresh.c_str(), 0600), 0);
  EXPECT_FALSE(replaceFile(path, "newer", FileCalls::system())) << "and nobody waits for a reader";
  EXPECT_EQ(content(path), "newer");
}

TEST_F(AtomicFileTest, linkChainNamesEveryLinkAndTheFile) {
  const auto at = [this](const char* name) { return (root.path() / name).string(); };
  EXPECT_EQ(linkChain(path), std::vector<std::string>{path.string()});
  EXPECT_EQ(linkChain(at("missing")), std::vector<std::string>{at("missing")});
  fs::create_symlink("second", at("first"));
  fs::create_symlink(path, at("second"));
  EXPECT_EQ(linkChain(at("first")),
            (std::vector<std::string>{at("first"), at("second"), path.string()}));
  fs::remove(path);
  EXPECT_EQ(linkChain(at("first")).back(), path.string()) << "it need not exist";
}

TEST_F(AtomicFileTest, linksInACircleEnd) {
  fs::create_symlink("b", root.path() / "a");
  fs::create_symlink("a", root.path() / "b");
  EXPECT_EQ(linkChain(root.path() / "a").size(), 41U);
}

TEST_F(AtomicFileTest, tellsThatAFileMayNotBeRead) {
  const test::OrdinaryUser user(root.path());
  const fs::path mine = root.path() / "mine";
  put(mine, "secret");
  ASSERT_EQ(::chmod(mine.c_str(), 0), 0);
  const FileContent read = readFile(mine, 100);
  EXPECT_EQ(read.state, State::unreadable);
  EXPECT_EQ(read.error, "Permission denied");
}

TEST_F(AtomicFileTest, foldersAreCreatedWithWhatIsMissingAbove) {
  const fs::path deep = root.path() / "a" / "b" / "c";
  EXPECT_FALSE(createFolder(deep));
  EXPECT_TRUE(fs::is_directory(deep));
  EXPECT_EQ(modeOf(root.path() / "a"), 0700U);
  EXPECT_FALSE(createFolder(deep)) << "it may exist";
  EXPECT_FALSE(createFolder(deep.string() + "/"));
}

TEST_F(AtomicFileTest, aFolderThatCannotBeCreatedIsNamed) {
  EXPECT_EQ(createFolder(path / "below"),
            "create the folder " + (path / "below").string() + ": Not a directory");
  const test::OrdinaryUser user(root.path());
  ASSERT_EQ(::chmod(root.path().c_str(), 0500), 0);
  EXPECT_EQ(createFolder(root.path() / "no" / "way"),
            "create the folder " + (root.path() / "no").string() + ": Permission denied");
  ASSERT_EQ(::chmod(root.path().c_str(), 0700), 0);
}

}  // namespace
}  // namespace velotap
