#include "adapters/linux/applications/linux_applications.hpp"

#include <gtest/gtest.h>

#include <algorithm>
#include <string>
#include <vector>

#include "adapters/linux/runtime/posix_clock.hpp"
#include "adapters/linux/runtime/posix_main_queue.hpp"
#include "support/temporary_folder.hpp"

namespace velotap {
namespace {

using Names = std::vector<std::string>;

std::string entry(const std::string& name, const std::string& rest) {
  return "[Desktop Entry]\nType=Application\nName=" + name + "\n" + rest;
}

class LinuxApplicationsTest : public ::testing::Test {
 protected:
  LinuxApplicationsTest() {
    folder.replace("org.editor.desktop", entry("Editor", "Exec=/usr/bin/editor %f\n"));
    folder.replace("browser.desktop", entry("Browser", "Exec=browser\n"));
    folder.replace("webapp.desktop", entry("Web App", "Exec=browser --app\n"));
    folder.replace("helper.desktop", entry("Helper", "Exec=helper\nNoDisplay=true\n"));
  }
  Names running() {
    Names names;
    for (const RunningInstance& each : applications.running()) {
      names.push_back(each.bundleId + (each.regular ? "" : "!"));
    }
    std::sort(names.begin(), names.end());
    return names;
  }

  PosixClock clock;
  PosixMainQueue loop{clock};
  TemporaryFolder folder;
  InstalledApplications installed{loop, {folder.path().string()}, {}};
  std::vector<RunningProgram> programs;
  LinuxApplications applications{installed, [this] { return programs; }};
};

TEST_F(LinuxApplicationsTest, FindsAnApplicationByItsDesktopFile) {
  const auto found = applications.find("org.editor");
  ASSERT_TRUE(found);
  EXPECT_EQ(found->bundleId, "org.editor");
  EXPECT_EQ(found->displayName, "Editor");
  EXPECT_EQ(found->location, (folder.path() / "org.editor.desktop").string());
  EXPECT_FALSE(applications.find("org.missing"));
  EXPECT_FALSE(applications.find(""));
}

TEST_F(LinuxApplicationsTest, OffersWhatMenusShow) {
  Names names;
  for (const ApplicationBundle& each : applications.installed()) names.push_back(each.displayName);
  std::sort(names.begin(), names.end());
  EXPECT_EQ(names, (Names{"Browser", "Editor", "Web App"}));
}

TEST_F(LinuxApplicationsTest, KnowsWhatRuns) {
  EXPECT_TRUE(running().empty());
  programs = {{.program = "editor", .application = ""},
              {.program = "editor", .application = ""},
              {.program = "unknown", .application = "org.unknown"}};
  EXPECT_EQ(running(), (Names{"org.editor"}));
}

TEST_F(LinuxApplicationsTest, TrustsWhatAProcessWasStartedAs) {
  programs = {{.program = "browser", .application = "webapp"}};
  EXPECT_EQ(running(), (Names{"webapp"}));
  programs = {{.program = "browser", .application = ""}};
  EXPECT_TRUE(running().empty()) << "two entries name this program";
  programs = {{.program = "", .application = "helper"}};
  EXPECT_EQ(running(), (Names{"helper!"}));
}

}  // namespace
}  // namespace velotap
