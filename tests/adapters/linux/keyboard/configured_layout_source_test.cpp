#include "adapters/linux/keyboard/configured_layout_source.hpp"

#include <gtest/gtest.h>

#include "adapters/linux/runtime/posix_clock.hpp"
#include "adapters/linux/runtime/posix_main_queue.hpp"
#include "support/temporary_folder.hpp"

namespace velotap {
namespace {

TEST(ConfiguredLayout, readsShellAssignments) {
  EXPECT_EQ(
      layoutOfAssignments("# XKBLAYOUT=\"us\"\nXKBMODEL=\"pc105\"\nXKBLAYOUT='de,us'\n"
                          "  XKBVARIANT = nodeadkeys \r\nXKBOPTIONS=\"\"\nBACKSPACE=guess\n"),
      (LayoutNames{.model = "pc105", .layout = "de,us", .variant = "nodeadkeys", .options = ""}));
  EXPECT_FALSE(layoutOfAssignments("XKBMODEL=pc105\nXKBLAYOUT=\"\"\n"));
  EXPECT_FALSE(layoutOfAssignments(""));
  EXPECT_FALSE(layoutOfAssignments("KEYMAP=de\nXKBLAYOUT\n"));
}

TEST(ConfiguredLayout, readsTheXServersOptions) {
  EXPECT_EQ(layoutOfServerOptions("# written by systemd-localed\nSection \"InputClass\"\n"
                                  "        Identifier \"system-keyboard\"\n"
                                  "        Option \"XkbLayout\" \"fr\"\n"
                                  "        Option \"XkbVariant\" \"oss\"\nEndSection\n"),
            (LayoutNames{.model = "", .layout = "fr", .variant = "oss", .options = ""}));
  EXPECT_FALSE(layoutOfServerOptions("Option \"XkbLayout\n"));
  EXPECT_FALSE(layoutOfServerOptions("Option \"XkbLayout\"\n"));
  EXPECT_FALSE(layoutOfServerOptions(""));
}

class ConfiguredLayoutSourceTest : public testing::Test {
 protected:
  void start() {
    source.start([this] { ++changes; });
  }
  TemporaryFolder root;
  PosixClock clock;
  PosixMainQueue queue{clock};
  ConfiguredLayoutSource source{queue, root.path().string()};
  int changes = 0;
};

TEST_F(ConfiguredLayoutSourceTest, knowsNothingWithoutFiles) {
  start();
  EXPECT_FALSE(source.keys());
  EXPECT_EQ(changes, 0);
}

TEST_F(ConfiguredLayoutSourceTest, aFolderInTheFilesPlaceSaysNothing) {
  root.makeFolder("etc/default/keyboard");
  start();
  EXPECT_FALSE(source.keys());
}

TEST_F(ConfiguredLayoutSourceTest, followsTheFile) {
  root.replace("etc/default/keyboard", "XKBLAYOUT=de\n");
  start();
  EXPECT_EQ(changes, 1);
  EXPECT_EQ(source.keys()->translate(33), "ü");
  root.replace("etc/default/keyboard", "XKBLAYOUT=us\n");
  queue.runReady();
  EXPECT_EQ(changes, 2);
  EXPECT_EQ(source.keys()->translate(33), "[");
}

TEST_F(ConfiguredLayoutSourceTest, theFirstFileWithAUsableLayoutAnswers) {
  root.replace("etc/default/keyboard", "XKBLAYOUT=no-such-layout\n");
  root.replace("etc/vconsole.conf", "KEYMAP=de\n");
  root.replace("etc/X11/xorg.conf.d/00-keyboard.conf",
               "Section \"InputClass\"\nOption \"XkbLayout\" \"fr\"\nEndSection\n");
  start();
  EXPECT_EQ(source.keys()->translate(22), "-");
  root.replace("etc/vconsole.conf", "XKBLAYOUT=se\n");
  queue.runReady();
  EXPECT_EQ(source.keys()->translate(27), "+");
}

TEST_F(ConfiguredLayoutSourceTest, whatWasKnownStaysWhenTheFileIsTakenAway) {
  root.replace("etc/default/keyboard", "XKBLAYOUT=de\n");
  start();
  std::filesystem::remove(root.path() / "etc/default/keyboard");
  queue.runReady();
  EXPECT_EQ(source.keys()->translate(33), "ü");
  EXPECT_EQ(changes, 1);
}

}  // namespace
}  // namespace velotap
