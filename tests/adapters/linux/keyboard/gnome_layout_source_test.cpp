#include "adapters/linux/keyboard/gnome_layout_source.hpp"

#include <gtest/gtest.h>

#include <fstream>
#include <iterator>

#include "adapters/linux/runtime/posix_clock.hpp"
#include "adapters/linux/runtime/posix_main_queue.hpp"
#include "support/temporary_folder.hpp"

namespace velotap {
namespace {

const std::string kData = VELOTAP_DCONF_DATA;

TEST(GnomeLayout, theFirstSourceIsInUse) {
  EXPECT_EQ(layoutOfSources({{"xkb", "de+nodeadkeys"}, {"xkb", "us"}}),
            (LayoutNames{.model = "", .layout = "de", .variant = "nodeadkeys", .options = ""}));
  EXPECT_EQ(layoutOfSources({{"xkb", "us"}}),
            (LayoutNames{.model = "", .layout = "us", .variant = "", .options = ""}));
}

TEST(GnomeLayout, theLayoutUsedLastStandsInForAnInputMethod) {
  EXPECT_EQ(layoutOfSources({{"ibus", "mozc-jp"}, {"xkb", "fr"}})->layout, "fr");
  EXPECT_FALSE(layoutOfSources({{"ibus", "mozc-jp"}}));
  EXPECT_FALSE(layoutOfSources({{"xkb", ""}}));
  EXPECT_FALSE(layoutOfSources({}));
}

class GnomeLayoutSourceTest : public testing::Test {
 protected:
  /// Puts a database in the place of the user's.
  void useDatabase(const char* name) {
    std::ifstream file(kData + "/" + name, std::ios::binary);
    folder.replace("user",
                   {std::istreambuf_iterator<char>(file), std::istreambuf_iterator<char>()});
    queue.runReady();
  }
  TemporaryFolder folder;
  PosixClock clock;
  PosixMainQueue queue{clock};
  GnomeLayoutSource source{queue,
                           {.databases = {(folder.path() / "user").string()},
                            .schemas = {kData + "/gschemas.compiled"},
                            .desktops = {}}};
  int changes = 0;
};

TEST_F(GnomeLayoutSourceTest, readsAndFollowsTheUsersDatabase) {
  source.start([this] { ++changes; });
  EXPECT_FALSE(source.keys()) << "no sources are configured";
  useDatabase("user");
  ASSERT_TRUE(source.keys());
  EXPECT_EQ(source.keys()->translate(33), "ü");
  EXPECT_EQ(changes, 1);
}

TEST_F(GnomeLayoutSourceTest, otherSettingsOfTheDatabaseDoNotMatter) {
  useDatabase("user");
  source.start([this] { ++changes; });
  EXPECT_EQ(changes, 1);
  useDatabase("user");
  useDatabase("site");
  EXPECT_EQ(changes, 1);
  EXPECT_EQ(source.keys()->translate(33), "ü");
}

}  // namespace
}  // namespace velotap
