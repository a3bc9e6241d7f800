#include "adapters/linux/dconf/dconf_places.hpp"

#include <gtest/gtest.h>

#include <filesystem>
#include <fstream>
#include <map>
#include <string>

#include "support/temporary_folder.hpp"

namespace velotap {
namespace {

namespace fs = std::filesystem;
using Texts = std::vector<std::string>;

class DconfPlacesTest : public testing::Test {
 protected:
  void write(const fs::path& path, const std::string& text) {
    fs::create_directories((root / path).parent_path());
    std::ofstream(root / path) << text;
  }
  [[nodiscard]] DconfPlaces read() const {
    return DconfPlaces::read(
        [this](const char* name) -> const char* {
          const auto found = environment.find(name);
          return found == environment.end() ? nullptr : found->second.c_str();
        },
        root.string());
  }

  TemporaryFolder folder;
  const fs::path root = folder.path();
  std::map<std::string, std::string> environment = {{"HOME", "/home/ann"},
                                                    {"XDG_DATA_DIRS", "/usr/share"}};
};

TEST_F(DconfPlacesTest, withoutAProfileThereIsTheUsersDatabase) {
  EXPECT_EQ(read().databases, Texts{"/home/ann/.config/dconf/user"});
  environment["XDG_CONFIG_HOME"] = "/c";
  EXPECT_EQ(read().databases, Texts{"/c/dconf/user"});
  environment["XDG_CONFIG_HOME"] = "relative";
  EXPECT_EQ(read().databases, Texts{"/home/ann/.config/dconf/user"});
}

TEST_F(DconfPlacesTest, withoutAHomeThereIsNone) {
  environment.erase("HOME");
  EXPECT_EQ(read().databases, Texts{});
}

TEST_F(DconfPlacesTest, theProfileNamesTheDatabasesInTheirOrder) {
  write(
      "etc/dconf/profile/user",
      "# comment\nuser-db:user\n\n  system-db:local # why\nfile-db:/srv/db\nservice-db:x/y\nodd\n");
  EXPECT_EQ(read().databases, (Texts{"/home/ann/.config/dconf/user",
                                     root.string() + "/etc/dconf/db/local", "/srv/db"}));
}

TEST_F(DconfPlacesTest, theEnvironmentNamesAnotherProfile) {
  write("etc/dconf/profile/kiosk", "system-db:kiosk\n");
  environment["DCONF_PROFILE"] = "kiosk";
  EXPECT_EQ(read().databases, Texts{root.string() + "/etc/dconf/db/kiosk"});
  write("elsewhere", "user-db:other\n");
  environment["DCONF_PROFILE"] = (root / "elsewhere").string();
  EXPECT_EQ(read().databases, Texts{"/home/ann/.config/dconf/other"});
}

TEST_F(DconfPlacesTest, schemasAreWhereTheSettingsLibraryLooks) {
  environment["XDG_DATA_DIRS"] = "/a::/b";
  EXPECT_EQ(read().schemas, (Texts{"/home/ann/.local/share/glib-2.0/schemas/gschemas.compiled",
                                   "/a/glib-2.0/schemas/gschemas.compiled",
                                   "/b/glib-2.0/schemas/gschemas.compiled"}));
  environment["GSETTINGS_SCHEMA_DIR"] = "/own";
  EXPECT_EQ(read().schemas.front(), "/own/gschemas.compiled");
  environment.erase("XDG_DATA_DIRS");
  EXPECT_EQ(read().schemas.back(), "/usr/share/glib-2.0/schemas/gschemas.compiled");
}

TEST_F(DconfPlacesTest, theDesktopsNamesAreSeparatedByColons) {
  EXPECT_EQ(read().desktops, Texts{});
  environment["XDG_CURRENT_DESKTOP"] = "ubuntu:GNOME";
  EXPECT_EQ(read().desktops, (Texts{"ubuntu", "GNOME"}));
}

}  // namespace
}  // namespace velotap
