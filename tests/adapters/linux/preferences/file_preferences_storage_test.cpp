#include "adapters/linux/preferences/file_preferences_storage.hpp"

#include <fcntl.h>
#include <gtest/gtest.h>
#include <poll.h>
#include <sys/stat.h>
#include <unistd.h>

#include <cerrno>
#include <filesystem>
#include <fstream>
#include <iterator>

namespace velotap {
namespace {

namespace fs = std::filesystem;
constexpr const char* kDomain = "app.example.test";

class FilePreferencesTest : public testing::Test {
 protected:
  FilePreferencesTest() {
    std::string pattern = (fs::temp_directory_path() / "velotap-settings-XXXXXX").string();
    root_ = ::mkdtemp(pattern.data());
  }
  ~FilePreferencesTest() override { fs::remove_all(root_); }

  std::unique_ptr<FilePreferencesStorage> open(FileCalls calls = FileCalls::system()) {
    return std::make_unique<FilePreferencesStorage>(
        folder().string(), [this](const std::string& message) { messages_.push_back(message); },
        std::move(calls));
  }
  [[nodiscard]] fs::path folder() const { return root_ / "config" / "velotap"; }
  [[nodiscard]] fs::path file() const { return folder() / (std::string(kDomain) + ".json"); }
  [[nodiscard]] std::string content() const {
    std::ifstream stream(file());
    return {std::istreambuf_iterator<char>(stream), {}};
  }
  void write(const std::string& text) const {
    fs::create_directories(folder());
    std::ofstream(file()) << text;
  }
  [[nodiscard]] std::size_t filesInFolder() const {
    return static_cast<std::size_t>(
        std::distance(fs::directory_iterator(folder()), fs::directory_iterator()));
  }
  static bool readable(int descriptor) {
    pollfd waiting{.fd = descriptor, .events = POLLIN, .revents = 0};
    return ::poll(&waiting, 1, 10000) == 1;
  }

  fs::path root_;
  std::vector<std::string> messages_;
};

TEST_F(FilePreferencesTest, makesItsFolderForTheUserAlone) {
  const auto storage = open();
  EXPECT_EQ(fs::status(folder()).permissions(), fs::perms::owner_all);
  EXPECT_TRUE(storage->load(kDomain).empty());
  EXPECT_TRUE(messages_.empty());
}

TEST_F(FilePreferencesTest, whatIsStoredIsLoadedByTheNext) {
  const ValueMap values = {{"a", 1}, {"b", 1.0}, {"c", Value::strings({"x"})}};
  EXPECT_TRUE(open()->store(kDomain, values));
  EXPECT_EQ(open()->load(kDomain), values);
  EXPECT_EQ(fs::status(file()).permissions(), fs::perms::owner_read | fs::perms::owner_write);
  EXPECT_EQ(filesInFolder(), 1U) << "nothing is left over";
}

TEST_F(FilePreferencesTest, aBrokenFileIsSetAsideAndNeverOverwritten) {
  for (const char* text : {"{ not json", "[1,2]"}) {
    write(text);
    messages_.clear();
    const auto storage = open();
    EXPECT_TRUE(storage->load(kDomain).empty());
    ASSERT_EQ(messages_.size(), 1U);
    EXPECT_NE(messages_[0].find("set aside"), std::string::npos);
    EXPECT_TRUE(storage->store(kDomain, {{"a", 1}}));
  }
  for (const char* name : {".broken-1", ".broken-2"}) {
    std::ifstream aside(file().string() + name);
    const std::string kept{std::istreambuf_iterator<char>(aside), {}};
    EXPECT_TRUE(kept == "{ not json" || kept == "[1,2]") << kept;
  }
}

TEST_F(FilePreferencesTest, aFolderInTheFilesPlaceIsSetAsideToo) {
  fs::create_directories(file());
  const auto storage = open();
  EXPECT_TRUE(storage->load(kDomain).empty());
  EXPECT_TRUE(storage->store(kDomain, {{"a", 1}}));
  EXPECT_TRUE(fs::is_directory(file().string() + ".broken-1"));
}

TEST_F(FilePreferencesTest, aBrokenFileThatCannotBeSetAsideIsLeftAlone) {
  write("{ not json");
  FileCalls calls = FileCalls::system();
  calls.rename = [](const char*, const char*) {
    errno = EROFS;
    return -1;
  };
  const auto storage = open(calls);
  EXPECT_TRUE(storage->load(kDomain).empty());
  EXPECT_FALSE(storage->store(kDomain, {{"a", 1}}));
  EXPECT_EQ(content(), "{ not json");
}

// Root may read everything, so an unreadable file is one that cannot be opened at all.
TEST_F(FilePreferencesTest, anUnreadableFileIsNotWrittenOver) {
  fs::create_directories(folder());
  fs::create_symlink(file(), file());  // a link to itself
  const auto storage = open();
  EXPECT_TRUE(storage->load(kDomain).empty());
  EXPECT_FALSE(storage->store(kDomain, {{"a", 1}}));
  EXPECT_TRUE(fs::is_symlink(file()));
  EXPECT_FALSE(messages_.empty());
}

TEST_F(FilePreferencesTest, aFullDiskIsReportedAndTheOldFileStays) {
  ASSERT_TRUE(open()->store(kDomain, {{"a", 1}}));
  const std::string before = content();
  struct Failure {
    const char* what;
    FileCalls calls;
  };
  std::vector<Failure> failures(4, {"", FileCalls::system()});
  failures[0].what = "the first write";
  failures[0].calls.write = [](int, const void*, std::size_t) -> ssize_t {
    errno = ENOSPC;
    return -1;
  };
  failures[1].what = "a write that gets only half-way";
  failures[1].calls.write = [done = false](int fd, const void* data,
                                           std::size_t size) mutable -> ssize_t {
    if (!std::exchange(done, true)) return ::write(fd, data, size / 2);
    errno = ENOSPC;
    return -1;
  };
  failures[2].what = "the sync";
  failures[2].calls.sync = [](int) {
    errno = EIO;
    return -1;
  };
  failures[3].what = "the rename";
  failures[3].calls.rename = [](const char*, const char*) {
    errno = ENOSPC;
    return -1;
  };
  for (const Failure& failure : failures) {
    messages_.clear();
    EXPECT_FALSE(open(failure.calls)->store(kDomain, {{"a", 2}})) << failure.what;
    EXPECT_EQ(content(), before) << failure.what;
    EXPECT_EQ(filesInFolder(), 1U) << failure.what;
    ASSERT_EQ(messages_.size(), 1U) << failure.what;
    EXPECT_NE(messages_[0].find("could not be written"), std::string::npos);
  }
}

TEST_F(FilePreferencesTest, shortWritesAreContinued) {
  FileCalls calls = FileCalls::system();
  calls.write = [](int fd, const void* data, std::size_t) { return ::write(fd, data, 1); };
  EXPECT_TRUE(open(calls)->store(kDomain, {{"key", "value"}}));
  EXPECT_EQ(open()->load(kDomain), (ValueMap{{"key", "value"}}));
}

TEST_F(FilePreferencesTest, aLinkStaysALink) {
  fs::create_directories(folder());
  const fs::path target = root_ / "elsewhere.json";
  std::ofstream(target) << "{\"a\": 1}";
  fs::create_symlink(target, file());
  const auto storage = open();
  EXPECT_EQ(storage->load(kDomain), (ValueMap{{"a", 1}}));
  EXPECT_TRUE(storage->store(kDomain, {{"a", 2}}));
  EXPECT_TRUE(fs::is_symlink(file()));
  EXPECT_EQ(open()->load(kDomain), (ValueMap{{"a", 2}}));
}

TEST_F(FilePreferencesTest, whatCannotBeJsonIsRefusedWhole) {
  const auto storage = open();
  ASSERT_TRUE(storage->store(kDomain, {{"a", 1}}));
  EXPECT_FALSE(storage->store(kDomain, {{"a", 2}, {"b", "\xFF"}}));
  EXPECT_EQ(open()->load(kDomain), (ValueMap{{"a", 1}}));
}

TEST_F(FilePreferencesTest, hearsOfOtherWritersAndNotOfItself) {
  const auto storage = open();
  int heard = 0;
  const auto observation = storage->observe(kDomain, [&] { ++heard; });
  storage->store(kDomain, {{"a", 1}});
  ASSERT_TRUE(readable(storage->watchDescriptor()));
  storage->dispatchChanges();
  EXPECT_EQ(heard, 0) << "its own writing";
  ASSERT_TRUE(open()->store(kDomain, {{"a", 2}}));
  ASSERT_TRUE(readable(storage->watchDescriptor()));
  storage->dispatchChanges();
  EXPECT_EQ(heard, 1);
  EXPECT_EQ(storage->load(kDomain), (ValueMap{{"a", 2}}));
}

TEST_F(FilePreferencesTest, twoWritersDoNotUndoEachOther) {
  const auto first = open();
  const auto second = open();
  ASSERT_TRUE(first->store(kDomain, {{"a", 1}, {"gone", 1}}));
  ValueMap seen = second->load(kDomain);
  int heard = 0;
  const auto observation = second->observe(kDomain, [&] { ++heard; });
  // Neither has heard of the other's change when it writes its own.
  ASSERT_TRUE(first->store(kDomain, {{"a", 5}, {"gone", 1}, {"b", 2}}));
  seen.erase("gone");
  seen.insert_or_assign("c", 3);
  ASSERT_TRUE(second->store(kDomain, seen));
  EXPECT_EQ(open()->load(kDomain), (ValueMap{{"a", 5}, {"b", 2}, {"c", 3}}));
  EXPECT_EQ(heard, 1) << "the writer must learn what was merged";
}

TEST_F(FilePreferencesTest, writingADomainThatWasNeverReadKeepsWhatIsInIt) {
  ASSERT_TRUE(open()->store(kDomain, {{"a", 1}}));
  ASSERT_TRUE(open()->store(kDomain, {{"b", 2}}));
  EXPECT_EQ(open()->load(kDomain), (ValueMap{{"a", 1}, {"b", 2}}));
}

class ConfigurationFolder : public testing::Test {
 protected:
  void TearDown() override {
    ::unsetenv("XDG_CONFIG_HOME");
    ::setenv("HOME", home_.c_str(), 1);
  }
  const std::string home_ = std::getenv("HOME") != nullptr ? std::getenv("HOME") : "/";
};

TEST_F(ConfigurationFolder, followsTheEnvironment) {
  ::setenv("XDG_CONFIG_HOME", "/x/config", 1);
  EXPECT_EQ(configurationFolder(), "/x/config/velotap");
  ::setenv("XDG_CONFIG_HOME", "relative", 1);
  ::setenv("HOME", "/home/somebody", 1);
  EXPECT_EQ(configurationFolder(), "/home/somebody/.config/velotap");
  ::unsetenv("HOME");
  EXPECT_TRUE(configurationFolder().ends_with("/.config/velotap"));
}

}  // namespace
}  // namespace velotap
