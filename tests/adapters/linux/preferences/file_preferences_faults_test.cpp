// Broken files, files that may not be read or written, full disks, killed writers.
#include <gtest/gtest.h>
#include <sys/mount.h>
#include <sys/resource.h>
#include <sys/stat.h>
#include <sys/wait.h>
#include <unistd.h>

#include <cerrno>
#include <csignal>
#include <limits>

#include "adapters/json/json_value.hpp"
#include "adapters/linux/preferences/file_preferences_storage.hpp"
#include "adapters/simulated/simulated_log.hpp"
#include "config/defaults_store.hpp"
#include "settings_folder.hpp"

namespace velotap {
namespace {

namespace fs = std::filesystem;
using test::kDomain;
using test::OrdinaryUser;

class FilePreferencesFaultsTest : public test::SettingsFolder {
 protected:
  /// One message was told, and it says this.
  void expectTold(const std::string& part) {
    const auto messages = told();
    ASSERT_EQ(messages.size(), 1U) << testing::PrintToString(messages);
    EXPECT_NE(messages[0].find(part), std::string::npos) << messages[0];
    EXPECT_NE(messages[0].find(file().string()), std::string::npos) << messages[0];
  }
  [[nodiscard]] static std::string withSize(std::size_t size) {
    return "{}" + std::string(size - 2, ' ');
  }
};

TEST_F(FilePreferencesFaultsTest, aFileThatCannotBeUnderstoodIsSetAsideAtTheStart) {
  const std::string broken[] = {"",
                                "{",
                                "[]",
                                "null",
                                "no",
                                R"({"a": 1} x)",
                                std::string(100, '\0'),
                                "{\"a\": " + std::string(65, '[') + std::string(65, ']') + "}"};
  int n = 0;
  for (const std::string& text : broken) {
    put(text);
    auto storage = open();
    EXPECT_TRUE(storage.load(kDomain).empty());
    ++n;
    EXPECT_EQ(content(aside(n)), text);
    EXPECT_FALSE(fs::exists(file()));
    expectTold("set aside as " + aside(n).string() + ", and the factory settings are in force");
    EXPECT_TRUE(storage.store(kDomain, {{"a", 1}}));
    EXPECT_EQ(content(aside(n)), text);
    settle();
    EXPECT_TRUE(told().empty());
  }
}

TEST_F(FilePreferencesFaultsTest, theFirstFreeNumberIsTaken) {
  put("broken");
  put(aside(1), "older");
  fs::create_symlink("nowhere", aside(2));
  put(aside(4), "odd");
  EXPECT_TRUE(open().load(kDomain).empty());
  EXPECT_EQ(content(aside(1)), "older");
  EXPECT_TRUE(fs::is_symlink(aside(2)));
  EXPECT_EQ(content(aside(3)), "broken");
  EXPECT_EQ(content(aside(4)), "odd");
}

TEST_F(FilePreferencesFaultsTest, whatIsNoFileIsSetAsideToo) {
  fs::create_directories(file() / "inside");
  EXPECT_TRUE(open().store(kDomain, {{"a", 1}}));
  EXPECT_TRUE(fs::is_directory(aside(1) / "inside"));
  EXPECT_TRUE(fs::is_regular_file(file()));
  expectTold("it is not a regular file");

  fs::remove(file());
  ASSERT_EQ(::mkfifo(file().c_str(), 0600), 0);
  EXPECT_TRUE(open().store(kDomain, {{"a", 1}}));
  EXPECT_TRUE(fs::is_fifo(aside(2)));
  expectTold("it is not a regular file");

  fs::remove(file());
  fs::create_symlink("/dev/null", file());
  EXPECT_TRUE(open().store(kDomain, {{"a", 1}}));
  EXPECT_TRUE(fs::is_symlink(aside(3)));
  EXPECT_TRUE(fs::is_regular_file(fs::symlink_status(file())));
}

TEST_F(FilePreferencesFaultsTest, filesUpToTheLimitAreRead) {
  put(withSize(kLargestSettingsFile - 1));
  EXPECT_TRUE(open().load(kDomain).empty());
  put(withSize(kLargestSettingsFile));
  EXPECT_TRUE(open().load(kDomain).empty());
  EXPECT_TRUE(told().empty());
  put(withSize(kLargestSettingsFile + 1));
  EXPECT_TRUE(open().load(kDomain).empty());
  expectTold("it is larger than 4194304 bytes");
  EXPECT_EQ(fs::file_size(aside(1)), kLargestSettingsFile + 1);
}

TEST_F(FilePreferencesFaultsTest, onlyWhatCanBeReadAgainIsWritten) {
  std::string error;
  const std::size_t frame = settingsText({{"a", ""}}, error)->size();
  auto storage = open();
  EXPECT_TRUE(storage.store(kDomain, {{"a", std::string(kLargestSettingsFile - frame - 1, 'x')}}));
  EXPECT_TRUE(storage.store(kDomain, {{"a", std::string(kLargestSettingsFile - frame, 'x')}}));
  EXPECT_EQ(fs::file_size(file()), kLargestSettingsFile);
  EXPECT_FALSE(storage.store(kDomain, {{"a", std::string(kLargestSettingsFile - frame + 1, 'x')}}));
  EXPECT_EQ(fs::file_size(file()), kLargestSettingsFile);
  expectTold("cannot hold the settings: they are larger than 4194304 bytes");
}

TEST_F(FilePreferencesFaultsTest, whatJsonCannotHoldIsRefused) {
  auto storage = open();
  storage.store(kDomain, {{"a", 1}});
  const std::string before = content();
  EXPECT_FALSE(storage.store(kDomain, {{"a", std::numeric_limits<double>::quiet_NaN()}}));
  expectTold("cannot hold the settings: \"a\": the number is not finite");
  EXPECT_FALSE(storage.store(kDomain, {{"a", "\xFF"}}));
  EXPECT_EQ(told().size(), 1U);
  EXPECT_EQ(content(), before);
  EXPECT_EQ(storage.load(kDomain), (ValueMap{{"a", 1}}));
}

TEST_F(FilePreferencesFaultsTest, aFileThatBreaksLaterCostsNoSetting) {
  auto storage = open();
  storage.store(kDomain, {{"a", 1}, {"b", 2}});
  const std::string good = content();
  int heard = 0;
  const Observation watching = storage.observe(kDomain, [&] { ++heard; });
  settle();
  put(R"({"a": 1, "b": 3,})");
  settle();
  EXPECT_EQ(heard, 0);
  EXPECT_EQ(storage.load(kDomain), (ValueMap{{"a", 1}, {"b", 2}}));
  EXPECT_EQ(content(), good) << "written back";
  EXPECT_EQ(content(aside(1)), R"({"a": 1, "b": 3,})");
  expectTold("and the settings from before stay in force");
  put(R"({"a": 1, "b": 3})");
  settle();
  EXPECT_EQ(heard, 1) << "mended";
  EXPECT_EQ(storage.load(kDomain), (ValueMap{{"a", 1}, {"b", 3}}));
}

TEST_F(FilePreferencesFaultsTest, aFileThatIsFoundBrokenWhenStoringCostsNoSetting) {
  auto storage = open();
  storage.store(kDomain, {{"a", 1}, {"b", 2}});
  put("half-writ");
  EXPECT_TRUE(storage.store(kDomain, {{"a", 1}, {"b", 3}}));
  EXPECT_EQ(open().load(kDomain), (ValueMap{{"a", 1}, {"b", 3}}));
  EXPECT_EQ(content(aside(1)), "half-writ");
  expectTold("set aside");
}

TEST_F(FilePreferencesFaultsTest, settingsThatCannotBeWrittenBackStayInForce) {
  bool full = false;
  FileCalls calls = FileCalls::system();
  calls.write = [&](int fd, const void* data, std::size_t size) -> ssize_t {
    errno = ENOSPC;
    return full ? -1 : ::write(fd, data, size);
  };
  auto storage = open(calls);
  storage.store(kDomain, {{"a", 1}});
  settle();
  full = true;
  put("broken");
  settle();
  EXPECT_EQ(told().size(), 2U) << "set aside; could not be written";
  settle();
  EXPECT_EQ(storage.load(kDomain), (ValueMap{{"a", 1}}));
  full = false;
  EXPECT_TRUE(storage.store(kDomain, {{"a", 1}, {"b", 1}}));
  EXPECT_EQ(open().load(kDomain), (ValueMap{{"a", 1}, {"b", 1}}));
}

TEST_F(FilePreferencesFaultsTest, aFileThatMayNotBeReadIsNotWrittenEither) {
  const OrdinaryUser user(root.path());
  put(R"({"a": 1})");
  ASSERT_EQ(::chmod(file().c_str(), 0), 0);
  auto storage = open();
  EXPECT_TRUE(storage.load(kDomain).empty());
  expectTold("cannot be read (Permission denied); nothing will be written over it");
  settle();
  EXPECT_TRUE(storage.load(kDomain).empty());
  EXPECT_TRUE(told().empty()) << "said once";
  EXPECT_FALSE(storage.store(kDomain, {{"b", 1}}));
  expectTold("cannot be read");
  ASSERT_EQ(::chmod(file().c_str(), 0600), 0);
  EXPECT_EQ(content(), R"({"a": 1})");
}

TEST_F(FilePreferencesFaultsTest, aFileThatMayBeReadAgainIsRead) {
  const OrdinaryUser user(root.path());
  put(R"({"a": 1})");
  ASSERT_EQ(::chmod(file().c_str(), 0), 0);
  auto storage = open();
  SimulatedLog log;
  DefaultsStore defaults(storage, log, kDomain);
  EXPECT_FALSE(defaults.set("b", 1));
  EXPECT_EQ(defaults.object("b"), Value(1));
  ASSERT_EQ(::chmod(file().c_str(), 0600), 0);
  settle();
  EXPECT_EQ(defaults.object("a"), Value(1));
  EXPECT_EQ(defaults.object("b"), Value(1)) << "still waiting to be written";
  EXPECT_TRUE(defaults.set("c", 1));
  EXPECT_EQ(open().load(kDomain), (ValueMap{{"a", 1}, {"b", 1}, {"c", 1}}));
}

TEST_F(FilePreferencesFaultsTest, aFileThatBecomesUnreadableKeepsItsSettingsInForce) {
  const OrdinaryUser user(root.path());
  auto storage = open();
  storage.store(kDomain, {{"a", 1}});
  int heard = 0;
  const Observation watching = storage.observe(kDomain, [&] { ++heard; });
  settle();
  ASSERT_EQ(::chmod(file().c_str(), 0), 0);
  settle();
  EXPECT_EQ(storage.load(kDomain), (ValueMap{{"a", 1}}));
  EXPECT_EQ(heard, 0);
  expectTold("cannot be read");
}

TEST_F(FilePreferencesFaultsTest, aFolderThatMayNotBeWrittenLeavesTheFile) {
  const OrdinaryUser user(root.path());
  auto storage = open();
  storage.store(kDomain, {{"a", 1}});
  const std::string before = content();
  ASSERT_EQ(::chmod(folder.c_str(), 0500), 0);
  EXPECT_FALSE(storage.store(kDomain, {{"a", 2}}));
  expectTold("could not be written (create: Permission denied); the file is as it was");
  EXPECT_EQ(content(), before);
  ASSERT_EQ(::chmod(folder.c_str(), 0700), 0);
  EXPECT_TRUE(storage.store(kDomain, {{"a", 2}}));
}

TEST_F(FilePreferencesFaultsTest, aBrokenFileThatCannotBeSetAsideIsNotWrittenOver) {
  const OrdinaryUser user(root.path());
  put("broken");
  ASSERT_EQ(::chmod(folder.c_str(), 0500), 0);
  auto storage = open();
  EXPECT_TRUE(storage.load(kDomain).empty());
  expectTold("cannot be set aside; nothing will be written over it");
  EXPECT_FALSE(storage.store(kDomain, {{"a", 1}}));
  expectTold("cannot be set aside");
  settle();
  EXPECT_TRUE(told().empty());
  EXPECT_EQ(content(), "broken");
  ASSERT_EQ(::chmod(folder.c_str(), 0700), 0);
  EXPECT_TRUE(storage.store(kDomain, {{"a", 1}})) << "what was in the way is gone";
  EXPECT_EQ(content(aside(1)), "broken");
  EXPECT_EQ(storage.load(kDomain), (ValueMap{{"a", 1}}));
}

TEST_F(FilePreferencesFaultsTest, aFolderThatCannotBeCreatedIsNamed) {
  put(folder.parent_path(), "a file where a folder should be");
  EXPECT_FALSE(open().store(kDomain, {{"a", 1}}));
  EXPECT_EQ(content(folder.parent_path()), "a file where a folder should be");
  ASSERT_FALSE(reports.empty());
  EXPECT_NE(reports.back().find("Not a directory"), std::string::npos) << reports.back();
}

TEST_F(FilePreferencesFaultsTest, aFileSizeLimitLeavesTheOldFile) {
  auto storage = open();
  storage.store(kDomain, {{"a", 1}});
  const std::string before = content();
  rlimit unlimited{};
  ASSERT_EQ(::getrlimit(RLIMIT_FSIZE, &unlimited), 0);
  const auto oldHandler = std::signal(SIGXFSZ, SIG_IGN);
  const rlimit limited = {.rlim_cur = 1000, .rlim_max = unlimited.rlim_max};
  ASSERT_EQ(::setrlimit(RLIMIT_FSIZE, &limited), 0);
  const bool written = storage.store(kDomain, {{"a", std::string(2000, 'x')}});
  ASSERT_EQ(::setrlimit(RLIMIT_FSIZE, &unlimited), 0);
  std::signal(SIGXFSZ, oldHandler);
  EXPECT_FALSE(written);
  expectTold("could not be written (write: File too large); the file is as it was");
  EXPECT_EQ(content(), before);
  EXPECT_EQ(names(), std::vector<std::string>{"app.example.json"});
}

TEST_F(FilePreferencesFaultsTest, aFullDiskLeavesTheOldFile) {
  fs::create_directories(folder);
  // Who may not mount a small disk has seen the same above, with a limit that anybody may set.
  if (::mount("velotap", folder.c_str(), "tmpfs", 0, "size=64k") != 0) return;
  auto storage = open();
  EXPECT_TRUE(storage.store(kDomain, {{"a", 1}}));
  const std::string before = content();
  EXPECT_FALSE(storage.store(kDomain, {{"a", std::string(100'000, 'x')}}));
  EXPECT_EQ(content(), before);
  EXPECT_EQ(names(), std::vector<std::string>{"app.example.json"});
  EXPECT_TRUE(storage.store(kDomain, {{"a", 2}})) << "nothing is left that takes space";
  ASSERT_EQ(::umount2(folder.c_str(), MNT_DETACH), 0);
  expectTold("could not be written (write: No space left on device); the file is as it was");
}

TEST_F(FilePreferencesFaultsTest, aKilledWriterLeavesAWholeFile) {
  for (int round = 0; round < 20; ++round) {
    int ends[2];
    ASSERT_EQ(::pipe(ends), 0);
    const pid_t writer = ::fork();
    if (writer == 0) {
      auto storage = open();
      for (int i = 0;; ++i) {
        storage.store(kDomain, {{"number", i}, {"text", std::string(5000, 'x')}});
        if (::write(ends[1], "x", 1) != 1) ::_exit(1);
      }
    }
    std::string writes(static_cast<std::size_t>(3 + round), ' ');
    for (char& byte : writes) ASSERT_EQ(::read(ends[0], &byte, 1), 1);
    ASSERT_EQ(::kill(writer, SIGKILL), 0);
    ASSERT_EQ(::waitpid(writer, nullptr, 0), writer);
    ::close(ends[0]);
    ::close(ends[1]);
    const ValueMap values = open().load(kDomain);
    ASSERT_EQ(values.size(), 2U);
    EXPECT_GE(*values.at("number").integer(), 2 + round);
    EXPECT_EQ(values.at("text").text()->size(), 5000U);
    EXPECT_EQ(names(), std::vector<std::string>{"app.example.json"}) << "leftovers are removed";
    EXPECT_TRUE(told().empty());
  }
}

}  // namespace
}  // namespace velotap
