#include "adapters/linux/dconf/dconf_snapshot.hpp"

#include <gtest/gtest.h>

#include <string>
#include <utility>

namespace velotap {
namespace {

const std::string kData = VELOTAP_TEST_DATA;
constexpr const char* kTouchpad = "org.gnome.desktop.peripherals.touchpad";
constexpr const char* kSources = "org.gnome.desktop.input-sources";

DconfSnapshot loaded(std::vector<std::string> databases, std::vector<std::string> desktops = {}) {
  for (auto& database : databases) database.insert(0, kData + "/");
  return DconfSnapshot::load({.databases = databases,
                              .schemas = {kData + "/gschemas.compiled"},
                              .desktops = std::move(desktops)});
}

TEST(DconfSnapshot, whatIsSetWins) {
  const auto snapshot = loaded({"user"});
  EXPECT_EQ(snapshot.boolean(kTouchpad, "tap-to-click"), true);
  EXPECT_EQ(snapshot.text(kTouchpad, "click-method"), "areas");
}

TEST(DconfSnapshot, whatIsNotSetHasTheSchemasDefault) {
  const auto snapshot = loaded({"user"});
  EXPECT_EQ(snapshot.text(kTouchpad, "send-events"), "enabled");
  const auto bare = loaded({});
  EXPECT_EQ(bare.boolean(kTouchpad, "tap-to-click"), false);
  EXPECT_EQ(bare.text(kTouchpad, "click-method"), "fingers");
}

TEST(DconfSnapshot, aDesktopsOwnDefaultComesBeforeTheSchemas) {
  const auto ubuntu = loaded({}, {"ubuntu", "GNOME"});
  EXPECT_EQ(ubuntu.boolean(kTouchpad, "tap-to-click"), true);
  EXPECT_EQ(ubuntu.text(kTouchpad, "click-method"), "default");
  EXPECT_EQ(ubuntu.text(kTouchpad, "send-events"), "enabled");
  EXPECT_EQ(loaded({"user"}, {"ubuntu"}).text(kTouchpad, "click-method"), "areas");
  EXPECT_EQ(loaded({}, {"Ubuntu"}).boolean(kTouchpad, "tap-to-click"), false) << "case counts";
}

TEST(DconfSnapshot, theSystemsDatabaseFillsWhatTheUserLeftOut) {
  const auto snapshot = loaded({"user", "site"});
  EXPECT_EQ(snapshot.text(kTouchpad, "send-events"), "disabled");
  EXPECT_EQ(snapshot.boolean(kTouchpad, "tap-to-click"), true);
}

TEST(DconfSnapshot, aLockHidesWhatTheUserSet) {
  EXPECT_EQ(loaded({"user", "site"}).text(kTouchpad, "click-method"), "none");
}

TEST(DconfSnapshot, readsListsAndPairs) {
  const auto snapshot = loaded({"user"});
  using Pairs = std::vector<std::pair<std::string, std::string>>;
  EXPECT_EQ(snapshot.pairs(kSources, "mru-sources"),
            (Pairs{{"xkb", "de+nodeadkeys"}, {"xkb", "us"}}));
  EXPECT_EQ(snapshot.texts(kSources, "xkb-options"), (std::vector<std::string>{"compose:caps"}));
  EXPECT_EQ(loaded({}).pairs(kSources, "mru-sources"), Pairs{});
}

TEST(DconfSnapshot, withoutItsSchemaASettingDoesNotExist) {
  const auto snapshot =
      DconfSnapshot::load({.databases = {kData + "/user"}, .schemas = {}, .desktops = {}});
  EXPECT_FALSE(snapshot.boolean(kTouchpad, "tap-to-click"));
  EXPECT_FALSE(loaded({"user"}).boolean(kTouchpad, "no-such-key"));
  EXPECT_FALSE(loaded({"user"}).boolean("org.example", "tap-to-click"));
}

TEST(DconfSnapshot, aSettingOfAnotherTypeIsNotConverted) {
  const auto snapshot = loaded({"user"});
  EXPECT_FALSE(snapshot.text(kTouchpad, "tap-to-click"));
  EXPECT_FALSE(snapshot.boolean(kTouchpad, "click-method"));
  EXPECT_FALSE(snapshot.texts(kSources, "mru-sources"));
  EXPECT_FALSE(snapshot.pairs(kSources, "xkb-options"));
}

TEST(DconfSnapshot, filesThatAreAbsentOrNoDatabasesLeaveTheDefaults) {
  const auto snapshot = loaded({"absent", "README.md"});
  EXPECT_EQ(snapshot.boolean(kTouchpad, "tap-to-click"), false);
}

}  // namespace
}  // namespace velotap
