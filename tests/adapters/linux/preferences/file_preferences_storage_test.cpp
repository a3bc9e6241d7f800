// What settings files hold, where they are, and links to them.
#include "adapters/linux/preferences/file_preferences_storage.hpp"

#include <gtest/gtest.h>

#include <sys/wait.h>

#include <cstdlib>

#include "adapters/simulated/simulated_log.hpp"
#include "config/app_identity.hpp"
#include "config/config.hpp"
#include "settings_folder.hpp"

namespace velotap {
namespace {

namespace fs = std::filesystem;
using test::kDomain;
using FilePreferencesStorageTest = test::SettingsFolder;

/// Sets a variable of the environment until its end.
class Variable {
 public:
  Variable(const char* name, const char* value) : name_(name) {
    if (const char* old = std::getenv(name)) old_ = old;
    set(value);
  }
  ~Variable() { set(old_ ? old_->c_str() : nullptr); }
  Variable(const Variable&) = delete;
  Variable& operator=(const Variable&) = delete;

 private:
  void set(const char* value) const {
    if (value != nullptr) {
      ::setenv(name_, value, 1);
    } else {
      ::unsetenv(name_);
    }
  }
  const char* name_;
  std::optional<std::string> old_;
};

TEST(ConfigurationFolder, followsTheEnvironment) {
  {
    const Variable xdg("XDG_CONFIG_HOME", "/somewhere/else");
    EXPECT_EQ(configurationFolder(), "/somewhere/else/velotap");
  }
  const Variable home("HOME", "/home/me");
  {
    const Variable xdg("XDG_CONFIG_HOME", nullptr);
    EXPECT_EQ(configurationFolder(), "/home/me/.config/velotap");
  }
  for (const char* wrong : {"", "relative", "./x"}) {
    const Variable xdg("XDG_CONFIG_HOME", wrong);
    EXPECT_EQ(configurationFolder(), "/home/me/.config/velotap");
  }
}

TEST(ConfigurationFolder, withoutAHomeTheUsersOneCounts) {
  const Variable xdg("XDG_CONFIG_HOME", nullptr);
  for (const char* wrong : {static_cast<const char*>(nullptr), "", "home"}) {
    const Variable home("HOME", wrong);
    const std::string folder = configurationFolder();
    EXPECT_EQ(folder.front(), '/');
    EXPECT_TRUE(folder.ends_with("/.config/velotap")) << folder;
  }
}

TEST_F(FilePreferencesStorageTest, nothingIsCreatedBeforeSomethingIsStored) {
  auto storage = open();
  EXPECT_TRUE(storage.load(kDomain).empty());
  const Observation watching = storage.observe(kDomain, [] {});
  settle();
  EXPECT_FALSE(fs::exists(root.path() / "config"));
  EXPECT_TRUE(told().empty());
}

TEST_F(FilePreferencesStorageTest, whatIsStoredIsForTheUserAlone) {
  for (const mode_t mask : {mode_t{0}, mode_t{022}, mode_t{077}}) {
    const mode_t before = ::umask(mask);
    fs::remove_all(root.path() / "config");
    auto storage = open();
    EXPECT_TRUE(storage.store(kDomain, {{"a", 1}}));
    ::umask(before);
    EXPECT_EQ(modeOf(file()), 0600U);
    EXPECT_EQ(modeOf(folder), 0700U);
    EXPECT_EQ(modeOf(folder.parent_path()), 0700U);
  }
}

TEST_F(FilePreferencesStorageTest, theModeOfAFileIsKept) {
  put("{}");
  for (const mode_t mode : {0640U, 0644U, 0600U, 0660U}) {
    ASSERT_EQ(::chmod(file().c_str(), mode), 0);
    auto storage = open();
    EXPECT_TRUE(storage.store(kDomain, {{"a", static_cast<int>(mode)}}));
    EXPECT_EQ(modeOf(file()), mode);
  }
}

TEST_F(FilePreferencesStorageTest, anotherStorageReadsWhatWasStored) {
  const ValueMap values = {{"boolean", true},
                           {"integer", 1},
                           {"real", 1.0},
                           {"text", "é \" \n"},
                           {"list", Value::strings({"a", "b"})},
                           {"map", ValueMap{{"inner", 0.5}}}};
  EXPECT_TRUE(open().store(kDomain, values));
  EXPECT_EQ(open().load(kDomain), values);
  EXPECT_EQ(names(), std::vector<std::string>{"app.example.json"});
  EXPECT_TRUE(told().empty());
}

TEST_F(FilePreferencesStorageTest, storingReplacesTheDictionary) {
  auto storage = open();
  storage.store(kDomain, {{"a", 1}, {"b", 2}});
  storage.store(kDomain, {{"b", 3}});
  EXPECT_EQ(content(), "{\n  \"b\": 3\n}\n");
  storage.store(kDomain, {});
  EXPECT_EQ(content(), "{}\n");
  EXPECT_EQ(storage.load(kDomain), ValueMap());
}

TEST_F(FilePreferencesStorageTest, domainsHaveFilesOfTheirOwn) {
  auto storage = open();
  storage.store("one", {{"a", 1}});
  storage.store("two", {{"a", 2}});
  EXPECT_EQ(storage.load("one"), (ValueMap{{"a", 1}}));
  EXPECT_EQ(storage.load("two"), (ValueMap{{"a", 2}}));
  EXPECT_EQ(names(), (std::vector<std::string>{"one.json", "two.json"}));
}

TEST_F(FilePreferencesStorageTest, valuesOfALaterVersionSurvive) {
  put(R"({"enabled": true, "future": {"list": [1, 2.0, "x"]}})");
  auto storage = open();
  SimulatedLog log;
  DefaultsStore defaults(storage, log, kDomain);
  EXPECT_TRUE(defaults.set("enabled", false));
  EXPECT_EQ(
      open().load(kDomain),
      (ValueMap{{"enabled", false},
                {"future", ValueMap{{"list", ValueArray{Value(1), Value(2.0), Value("x")}}}}}));
  EXPECT_NE(content().find("2.0"), std::string::npos) << "still a real";
}

TEST_F(FilePreferencesStorageTest, anEditedFileIsInForceAtTheNextRead) {
  auto storage = open();
  SimulatedLog log;
  NotificationCenter notifications;
  DefaultsStore defaults(storage, log, kDomain);
  const Config config(defaults, notifications);
  EXPECT_EQ(config.maxTapDrift(), 0.05);
  put(R"({"maxTapDrift": 0.5, "padTap3": false})");
  settle();
  EXPECT_EQ(config.maxTapDrift(), 0.5);
  EXPECT_FALSE(config.isOn(Trigger::padTap3));
  fs::remove(file());
  settle();
  EXPECT_EQ(config.maxTapDrift(), 0.05);
}

TEST_F(FilePreferencesStorageTest, preferencesOfTheFormerIdentityAreMergedOnce) {
  const fs::path legacy = folder / "app.norwend.Velotap.json";
  put(legacy, R"({"enabled": false, "padTap4": true})");
  put(folder / "app.norwend.velotap.json", R"({"enabled": true})");
  auto storage = open();
  AppIdentity::migratePreferences(storage);
  const ValueMap merged = {
      {"enabled", true}, {"padTap4", true}, {"lowercaseIdentityMigrationCompleted", true}};
  EXPECT_EQ(open().load("app.norwend.velotap"), merged);
  EXPECT_EQ(content(legacy), R"({"enabled": false, "padTap4": true})");
  put(legacy, R"({"mouseRotate": true})");
  auto later = open();
  AppIdentity::migratePreferences(later);
  EXPECT_EQ(open().load("app.norwend.velotap"), merged);
}

TEST_F(FilePreferencesStorageTest, aLinkedFileIsReplacedWhereItIs) {
  const fs::path target = root.path() / "dotfiles" / "velotap.json";
  put(target, R"({"a": 1})");
  fs::create_directories(folder);
  fs::create_symlink(target, file());
  auto storage = open();
  EXPECT_EQ(storage.load(kDomain), (ValueMap{{"a", 1}}));
  EXPECT_TRUE(storage.store(kDomain, {{"a", 2}}));
  EXPECT_TRUE(fs::is_symlink(file()));
  EXPECT_FALSE(fs::is_symlink(target));
  EXPECT_EQ(content(target), "{\n  \"a\": 2\n}\n");
  EXPECT_EQ(names(), std::vector<std::string>{"app.example.json"});
  EXPECT_EQ(names(target.parent_path()), std::vector<std::string>{"velotap.json"});
}

TEST_F(FilePreferencesStorageTest, relativeLinksAndLinksToLinksAreFollowed) {
  put(root.path() / "dotfiles" / "real.json", "{}");
  fs::create_symlink("real.json", root.path() / "dotfiles" / "link.json");
  fs::create_directories(folder);
  fs::create_symlink("../../dotfiles/link.json", file());
  EXPECT_TRUE(open().store(kDomain, {{"a", 2}}));
  EXPECT_TRUE(fs::is_symlink(file()));
  EXPECT_TRUE(fs::is_symlink(root.path() / "dotfiles" / "link.json"));
  EXPECT_EQ(content(root.path() / "dotfiles" / "real.json"), "{\n  \"a\": 2\n}\n");
}

TEST_F(FilePreferencesStorageTest, aLinkToNothingYetIsFilled) {
  const fs::path target = root.path() / "dotfiles" / "velotap.json";
  fs::create_directories(target.parent_path());
  fs::create_directories(folder);
  fs::create_symlink(target, file());
  auto storage = open();
  EXPECT_TRUE(storage.load(kDomain).empty());
  EXPECT_TRUE(storage.store(kDomain, {{"a", 1}}));
  EXPECT_TRUE(fs::is_symlink(file()));
  EXPECT_EQ(content(target), "{\n  \"a\": 1\n}\n");
}

TEST_F(FilePreferencesStorageTest, aLinkIntoAFolderThatIsNotThereFailsWithAMessage) {
  fs::create_directories(folder);
  fs::create_symlink(root.path() / "nowhere" / "velotap.json", file());
  EXPECT_FALSE(open().store(kDomain, {{"a", 1}}));
  EXPECT_TRUE(fs::is_symlink(file()));
  ASSERT_EQ(reports.size(), 1U);
  EXPECT_NE(reports[0].find("could not be written"), std::string::npos) << reports[0];
}

TEST_F(FilePreferencesStorageTest, linksInACircleAreLeftAlone) {
  fs::create_directories(folder);
  fs::create_symlink("other.json", file());
  fs::create_symlink(file(), folder / "other.json");
  auto storage = open();
  EXPECT_TRUE(storage.load(kDomain).empty());
  EXPECT_FALSE(storage.store(kDomain, {{"a", 1}}));
  EXPECT_TRUE(fs::is_symlink(file()));
  EXPECT_EQ(names(), (std::vector<std::string>{"app.example.json", "other.json"}));
  EXPECT_NE(told().at(0).find("cannot be read"), std::string::npos);
}

TEST_F(FilePreferencesStorageTest, aLinkedFolderIsFollowed) {
  fs::create_directories(root.path() / "dotfiles");
  fs::create_directories(folder.parent_path());
  fs::create_symlink(root.path() / "dotfiles", folder);
  EXPECT_TRUE(open().store(kDomain, {{"a", 1}}));
  EXPECT_TRUE(fs::is_symlink(folder));
  EXPECT_TRUE(fs::is_regular_file(root.path() / "dotfiles" / "app.example.json"));
}

TEST_F(FilePreferencesStorageTest, whatAKilledWriterLeftIsRemoved) {
  const pid_t gone = ::fork();
  if (gone == 0) ::_exit(0);
  ASSERT_EQ(::waitpid(gone, nullptr, 0), gone);
  put(R"({"a": 1})");
  const std::string fresh = file().string() + ".new-";
  const auto leave = [&](const std::string& suffix) { put(fs::path(fresh + suffix), "{"); };
  leave(std::to_string(gone));
  leave(std::to_string(::getpid()));
  leave(std::to_string(::getppid()));
  leave("x");
  leave("12x");
  leave("-5");
  leave("");
  put(folder / ("other.json.new-" + std::to_string(gone)), "{");
  EXPECT_EQ(open().load(kDomain), (ValueMap{{"a", 1}}));
  EXPECT_FALSE(fs::exists(fresh + std::to_string(gone)));
  EXPECT_FALSE(fs::exists(fresh + std::to_string(::getpid())));
  EXPECT_TRUE(fs::exists(fresh + std::to_string(::getppid()))) << "it may be at work";
  for (const char* foreign : {"x", "12x", "-5", ""}) EXPECT_TRUE(fs::exists(fresh + foreign));
  EXPECT_TRUE(fs::exists(folder / ("other.json.new-" + std::to_string(gone))));
}

}  // namespace
}  // namespace velotap
