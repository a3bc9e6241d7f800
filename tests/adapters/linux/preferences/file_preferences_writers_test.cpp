// Several writers on one file: who hears of what, and that nobody undoes anybody.
#include <gtest/gtest.h>
#include <unistd.h>

#include <cerrno>

#include "adapters/linux/preferences/file_preferences_storage.hpp"
#include "adapters/simulated/simulated_log.hpp"
#include "config/defaults_store.hpp"
#include "settings_folder.hpp"

namespace velotap {
namespace {

namespace fs = std::filesystem;
using test::kDomain;

class FilePreferencesWritersTest : public test::SettingsFolder {
 protected:
  FilePreferencesWritersTest() {
    watching_ = storage_.observe(kDomain, [this] { ++heard_; });
  }
  /// How often the storage told of another writer since the last time.
  int heard() {
    settle();
    return std::exchange(heard_, 0);
  }
  FilePreferencesStorage storage_ = open();
  int heard_ = 0;
  Observation watching_;
};

TEST_F(FilePreferencesWritersTest, otherWritersAreHeard) {
  put(R"({"a": 1})");
  EXPECT_EQ(heard(), 1) << "file and folders appeared";
  EXPECT_EQ(storage_.load(kDomain), (ValueMap{{"a", 1}}));
  put(R"({"a": 2})");
  EXPECT_EQ(heard(), 1) << "written in place";
  EXPECT_EQ(storage_.load(kDomain), (ValueMap{{"a", 2}}));
  replace(R"({"a": 3})");
  EXPECT_EQ(heard(), 1) << "replaced";
  EXPECT_EQ(storage_.load(kDomain), (ValueMap{{"a", 3}}));
  fs::remove(file());
  EXPECT_EQ(heard(), 1) << "removed";
  EXPECT_EQ(storage_.load(kDomain), ValueMap());
  EXPECT_TRUE(told().empty());
}

TEST_F(FilePreferencesWritersTest, whatWeWriteIsNobodysChange) {
  for (int i = 0; i < 3; ++i) {
    storage_.store(kDomain, {{"a", i}});
    EXPECT_EQ(heard(), 0);
  }
}

TEST_F(FilePreferencesWritersTest, whatChangesNoValueIsNoChange) {
  put(R"({"a": 1})");
  EXPECT_EQ(heard(), 1);
  put("{\n \"a\" : 1 }\n");
  EXPECT_EQ(heard(), 0);
  fs::last_write_time(file(), fs::file_time_type::clock::now());
  fs::permissions(file(), fs::perms::owner_all);
  put(folder / "other.json", R"({"a": 2})");
  EXPECT_EQ(heard(), 0);
}

TEST_F(FilePreferencesWritersTest, aChangeAndItsUndoingWithinOneTickOfTheClockAreBothSeen) {
  put(R"({"a": 1})");
  EXPECT_EQ(heard(), 1);
  for (int i = 0; i < 20; ++i) {
    put(R"({"a": 2})");
    EXPECT_EQ(heard(), 1);
    put(R"({"a": 1})");
    EXPECT_EQ(heard(), 1);
  }
}

TEST_F(FilePreferencesWritersTest, whoWithdrewHearsNothing) {
  watching_.reset();
  put(R"({"a": 1})");
  EXPECT_EQ(heard(), 0);
}

TEST_F(FilePreferencesWritersTest, onlyTheChangedDomainIsTold) {
  int others = 0;
  const Observation other = storage_.observe("other", [&] { ++others; });
  put(folder / "other.json", R"({"a": 1})");
  EXPECT_EQ(heard(), 0);
  EXPECT_EQ(others, 1);
}

TEST_F(FilePreferencesWritersTest, anObserverMayWriteAndOpenOtherDomains) {
  int rounds = 0;
  const Observation busy = storage_.observe(kDomain, [&] {
    ++rounds;
    EXPECT_TRUE(storage_.store("another" + std::to_string(rounds), {{"a", 1}}));
    ValueMap values = storage_.load(kDomain);
    values.insert_or_assign("echo", 1);
    EXPECT_TRUE(storage_.store(kDomain, values));
  });
  put(R"({"a": 1})");
  EXPECT_EQ(heard(), 1);
  EXPECT_EQ(heard(), 0);
  EXPECT_EQ(rounds, 1);
  EXPECT_EQ(open().load(kDomain), (ValueMap{{"a", 1}, {"echo", 1}}));
}

TEST_F(FilePreferencesWritersTest, aFolderThatIsTakenAwayAndComesBackIsFollowed) {
  put(R"({"a": 1})");
  EXPECT_EQ(heard(), 1);
  fs::remove_all(folder);
  EXPECT_EQ(heard(), 1);
  EXPECT_EQ(storage_.load(kDomain), ValueMap());
  put(R"({"a": 2})");
  EXPECT_EQ(heard(), 1);
  fs::remove_all(root.path() / "config");
  EXPECT_EQ(heard(), 1);
  EXPECT_TRUE(storage_.store(kDomain, {{"a", 3}}));
  EXPECT_EQ(heard(), 0);
  replace(R"({"a": 4})");
  EXPECT_EQ(heard(), 1);
}

TEST_F(FilePreferencesWritersTest, linksAreFollowedWhereverTheyLead) {
  const fs::path first = root.path() / "one" / "a.json";
  const fs::path second = root.path() / "two" / "b.json";
  put(first, R"({"a": 1})");
  put(second, R"({"a": 2})");
  fs::create_directories(folder);
  fs::create_symlink(first, file());
  EXPECT_EQ(heard(), 1);
  put(first, R"({"a": 3})");
  EXPECT_EQ(heard(), 1) << "in another folder";
  fs::create_symlink(second, folder / "fresh");
  fs::rename(folder / "fresh", file());
  EXPECT_EQ(heard(), 1) << "leads elsewhere";
  put(second, R"({"a": 4})");
  EXPECT_EQ(heard(), 1);
  put(first, R"({"a": 5})");
  EXPECT_EQ(heard(), 0) << "no longer ours";
  EXPECT_EQ(storage_.load(kDomain), (ValueMap{{"a", 4}}));
}

TEST_F(FilePreferencesWritersTest, twoWritersDoNotUndoEachOther) {
  storage_.store(kDomain, {{"shared", 0}, {"ours", 0}, {"theirs", 0}, {"gone", 0}});
  auto other = open();
  const ValueMap common = other.load(kDomain);

  ValueMap theirs = common;
  theirs.insert_or_assign("theirs", 1);
  theirs.insert_or_assign("shared", 1);
  theirs.erase("gone");
  EXPECT_TRUE(other.store(kDomain, theirs));

  // Not told yet, so what we want to write is still based on what was there before.
  ValueMap ours = common;
  ours.insert_or_assign("ours", 2);
  ours.insert_or_assign("shared", 2);
  ours.insert_or_assign("new", 2);
  EXPECT_TRUE(storage_.store(kDomain, ours));

  const ValueMap merged = {{"shared", 2}, {"ours", 2}, {"theirs", 1}, {"new", 2}};
  EXPECT_EQ(open().load(kDomain), merged);
  EXPECT_EQ(storage_.load(kDomain), merged);
  EXPECT_EQ(heard(), 1) << "we took their changes in";
  EXPECT_EQ(other.load(kDomain), merged);
}

TEST_F(FilePreferencesWritersTest, whatWeRemoveIsGoneAndWhatTheyAddStays) {
  storage_.store(kDomain, {{"a", 1}, {"b", 1}});
  put(R"({"a": 5, "b": 1, "c": 1})");
  EXPECT_TRUE(storage_.store(kDomain, {{"b", 1}}));
  EXPECT_EQ(open().load(kDomain), (ValueMap{{"b", 1}, {"c", 1}}));
}

TEST_F(FilePreferencesWritersTest, whatIsWrittenAsItWasReadIsNoChangeOfOurs) {
  storage_.store(kDomain, {{"a", 1}, {"b", 1}});
  put(R"({"a": 5, "b": 1})");
  EXPECT_TRUE(storage_.store(kDomain, {{"a", 1}, {"b", 2}}));
  EXPECT_EQ(storage_.load(kDomain), (ValueMap{{"a", 5}, {"b", 2}}));
}

TEST_F(FilePreferencesWritersTest, whoNeverReadRemovesNothing) {
  put(R"({"a": 1, "b": 1})");
  const Observation watching = storage_.observe(kDomain, [] {});
  EXPECT_TRUE(storage_.store(kDomain, {{"b", 2}}));
  EXPECT_EQ(open().load(kDomain), (ValueMap{{"a", 1}, {"b", 2}}));
  EXPECT_TRUE(storage_.store(kDomain, {{"b", 2}, {"c", 3}}));
  EXPECT_EQ(open().load(kDomain), (ValueMap{{"a", 1}, {"b", 2}, {"c", 3}})) << "told is not read";
  EXPECT_TRUE(storage_.store(kDomain, {{"c", 3}}));
  EXPECT_EQ(open().load(kDomain), (ValueMap{{"a", 1}, {"c", 3}})) << "written by ourselves before";
  EXPECT_EQ(storage_.load(kDomain), (ValueMap{{"a", 1}, {"c", 3}}));
  EXPECT_TRUE(storage_.store(kDomain, {{"c", 3}}));
  EXPECT_EQ(open().load(kDomain), (ValueMap{{"c", 3}})) << "read by now, and left out";
}

TEST_F(FilePreferencesWritersTest, whatWasHeardOfButNotReadIsNotRemoved) {
  storage_.store(kDomain, {{"a", 1}});
  put(R"({"a": 1, "theirs": 1})");
  EXPECT_EQ(heard(), 1);
  EXPECT_TRUE(storage_.store(kDomain, {{"a", 2}}));
  EXPECT_EQ(open().load(kDomain), (ValueMap{{"a", 2}, {"theirs", 1}}));
}

TEST_F(FilePreferencesWritersTest, ofAFileThatSomebodyRemovedOnlyOurChangesComeBack) {
  storage_.store(kDomain, {{"a", 1}, {"b", 1}});
  fs::remove(file());
  EXPECT_TRUE(storage_.store(kDomain, {{"a", 1}, {"b", 2}}));
  EXPECT_EQ(open().load(kDomain), (ValueMap{{"b", 2}}));
}

TEST_F(FilePreferencesWritersTest, twoStoresOnOneFileAgreeInTheEnd) {
  auto otherStorage = open();
  SimulatedLog log;
  DefaultsStore ours(storage_, log, kDomain);
  DefaultsStore theirs(otherStorage, log, kDomain);
  for (int round = 0; round < 20; ++round) {
    ours.set("ours", round);
    theirs.set("theirs", round);
    ours.set("both", round);
    settle();
    theirs.remove("both");
    if (round % 3 == 0) settle();
  }
  settle();
  for (const DefaultsStore* store : {&ours, &theirs}) {
    EXPECT_EQ(store->object("ours"), Value(19));
    EXPECT_EQ(store->object("theirs"), Value(19));
    EXPECT_FALSE(store->object("both"));
  }
  EXPECT_EQ(open().load(kDomain), (ValueMap{{"ours", 19}, {"theirs", 19}}));
}

TEST_F(FilePreferencesWritersTest, aFailedWriteStillTellsOfTheOtherWriterThatItMet) {
  bool fails = false;
  FileCalls calls = FileCalls::system();
  calls.sync = [&fails](int fd) {
    errno = EIO;
    return fails ? -1 : ::fsync(fd);
  };
  auto storage = open(calls);
  SimulatedLog log;
  DefaultsStore defaults(storage, log, kDomain);
  defaults.set("a", 1);
  fails = true;
  put(R"({"a": 1, "theirs": 1})");
  EXPECT_FALSE(defaults.set("ours", 1));
  EXPECT_EQ(defaults.object("theirs"), Value(1));
  EXPECT_EQ(defaults.object("ours"), Value(1)) << "in force though not written";
  fails = false;
  EXPECT_TRUE(defaults.set("more", 1));
  EXPECT_EQ(open().load(kDomain), (ValueMap{{"a", 1}, {"theirs", 1}, {"ours", 1}, {"more", 1}}));
}

}  // namespace
}  // namespace velotap
