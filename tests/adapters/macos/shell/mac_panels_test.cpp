#include "adapters/macos/shell/mac_panels.hpp"

#include <gtest/gtest.h>

#include <filesystem>

#include "fakes/fake_cocoa.hpp"

namespace velotap::test {
namespace {

using Texts = std::vector<std::string>;

class MacPanelsTest : public ::testing::Test {
 protected:
  MacPanelsTest() {
    workspace_.bundles = {
        {.path = "/Applications/Editor.app", .bundleId = "com.example.editor"},
        {.path = "/Applications/Viewer.app", .bundleId = "com.example.viewer"},
        {.path = "/Applications/Script.app"},
        {.path = "/Applications/Empty.app", .bundleId = ""},
    };
  }

  FakeDialogs dialogs_;
  FakeWorkspace workspace_;
  MacPanels panels_{dialogs_, workspace_};
};

TEST_F(MacPanelsTest, chosenApplicationsAreToldByTheirIdentifiers) {
  dialogs_.chosen = {"/Applications/Viewer.app", "/Applications/Editor.app"};
  EXPECT_EQ(panels_.chooseApplications("Choose"),
            (Texts{"com.example.viewer", "com.example.editor"}));
  EXPECT_EQ(dialogs_.messages, Texts{"Choose"});
}

TEST_F(MacPanelsTest, whatHasNoIdentifierIsLeftOut) {
  dialogs_.chosen = {"/Applications/Script.app", "/Applications/Empty.app", "/gone.app",
                     "/Applications/Editor.app"};
  EXPECT_EQ(panels_.chooseApplications("Choose"), Texts{"com.example.editor"});
}

TEST_F(MacPanelsTest, nobodyChosenIsNobodyTold) {
  EXPECT_TRUE(panels_.chooseApplications("Choose").empty());
}

TEST_F(MacPanelsTest, aTextIsWrittenWhereThePersonSays) {
  dialogs_.saveLocation = "/Users/p/support.txt";
  EXPECT_TRUE(panels_.saveText("Velotap-support.txt", "line\n"));
  EXPECT_EQ(dialogs_.proposed, Texts{"Velotap-support.txt"});
  EXPECT_EQ(dialogs_.files,
            (std::map<std::string, std::string>{{"/Users/p/support.txt", "line\n"}}));
}

TEST_F(MacPanelsTest, aTextThatIsNotWantedAfterAllIsNoFailure) {
  EXPECT_TRUE(panels_.saveText("name", "text"));
  EXPECT_TRUE(dialogs_.files.empty());
}

TEST_F(MacPanelsTest, aTextThatCannotBeWrittenIsAFailure) {
  dialogs_.saveLocation = "/Volumes/full/support.txt";
  dialogs_.writes = false;
  EXPECT_FALSE(panels_.saveText("name", "text"));
}

TEST_F(MacPanelsTest, aPasteboardThatRefusesIsAFailure) {
  EXPECT_TRUE(panels_.copyText("com.example.editor"));
  EXPECT_EQ(dialogs_.pasteboard, "com.example.editor");
  dialogs_.copies = false;
  EXPECT_FALSE(panels_.copyText("other"));
  EXPECT_EQ(dialogs_.pasteboard, "com.example.editor");
}

TEST_F(MacPanelsTest, aFileIsShownInItsFolder) {
  panels_.reveal("/Applications/Editor.app");
  EXPECT_EQ(workspace_.revealed, Texts{"/Applications/Editor.app"});
}

TEST_F(MacPanelsTest, anIconIsDrawnOnceIntoAFileOfItsOwn) {
  const std::string editor = panels_.icon("com.example.editor");
  const std::string viewer = panels_.icon("com.example.viewer");
  EXPECT_NE(editor, viewer);
  EXPECT_EQ(dialogs_.files[editor], "PNG");
  EXPECT_EQ(dialogs_.files[viewer], "PNG");
  EXPECT_EQ(panels_.icon("com.example.editor"), editor);
  EXPECT_EQ(dialogs_.drawn, (Texts{"/Applications/Editor.app 64", "/Applications/Viewer.app 64"}));
}

TEST_F(MacPanelsTest, whatIsNotInstalledHasNoIcon) {
  EXPECT_EQ(panels_.icon("com.example.gone"), "");
  EXPECT_TRUE(dialogs_.drawn.empty());
}

TEST_F(MacPanelsTest, anIconThatCannotBeDrawnOrKeptIsTriedAgain) {
  const auto image = std::exchange(dialogs_.image, {});
  EXPECT_EQ(panels_.icon("com.example.editor"), "");
  dialogs_.image = image;
  dialogs_.writes = false;
  EXPECT_EQ(panels_.icon("com.example.editor"), "");
  dialogs_.writes = true;
  EXPECT_NE(panels_.icon("com.example.editor"), "");
}

TEST_F(MacPanelsTest, theFolderOfIconsGoesWithThePanels) {
  std::filesystem::path folder;
  {
    MacPanels shortLived(dialogs_, workspace_);
    folder = std::filesystem::path(shortLived.icon("com.example.editor")).parent_path();
    EXPECT_TRUE(std::filesystem::is_directory(folder));
  }
  EXPECT_FALSE(std::filesystem::exists(folder));
}

}  // namespace
}  // namespace velotap::test
