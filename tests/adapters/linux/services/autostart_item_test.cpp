#include "adapters/linux/services/autostart_item.hpp"

#include <gtest/gtest.h>
#include <sys/stat.h>

#include <fstream>
#include <iterator>

#include "support/recording_urls.hpp"
#include "support/temporary_folder.hpp"

namespace velotap {
namespace {

TEST(AutostartEntry, ReadsWhatItWrites) {
  for (const char* program :
       {"/usr/bin/velotap", "/opt/a b/velotap", "/opt/100%/velotap", "/opt/\"x\"/velotap",
        "/opt/$HOME/`id`/velotap", "/opt/back\\slash/velotap", "/opt/%%/velotap"}) {
    const AutostartEntry entry = parseAutostartEntry(autostartEntry(program));
    EXPECT_TRUE(entry.valid);
    EXPECT_FALSE(entry.disabled);
    EXPECT_EQ(entry.program, program);
  }
}

TEST(AutostartEntry, QuotesAsTheDesktopsReadIt) {
  EXPECT_NE(autostartEntry("/opt/a $b/velotap").find("Exec=\"/opt/a \\\\$b/velotap\"\n"),
            std::string::npos);
  EXPECT_NE(autostartEntry("/o\\p").find("Exec=\"/o\\\\\\\\p\"\n"), std::string::npos);
  EXPECT_NE(autostartEntry("/o%p").find("Exec=\"/o%%p\"\n"), std::string::npos);
}

TEST(AutostartEntry, UnderstandsOthersHands) {
  const auto parse = [](const std::string& more) {
    return parseAutostartEntry("[Desktop Entry]\nType=Application\n" + more);
  };
  EXPECT_EQ(parse("Exec=velotap --quiet\n").program, "velotap");
  EXPECT_EQ(parse("Exec = \"/opt/a b/velotap\" %U\r\n").program, "/opt/a b/velotap");
  EXPECT_FALSE(parse("").valid);
  EXPECT_FALSE(parse("Exec=\n").valid);
  EXPECT_TRUE(parse("Exec=x\nHidden=true\n").disabled);
  EXPECT_FALSE(parse("Exec=x\nHidden=false\n").disabled);
  EXPECT_TRUE(parse("Exec=x\nX-GNOME-Autostart-enabled=false\n").disabled);
  EXPECT_FALSE(parse("Exec=x\n# Hidden=true\n").disabled);
  EXPECT_FALSE(parse("Exec=x\n[Desktop Action y]\nHidden=true\nExec=z\n").disabled);
  EXPECT_FALSE(parseAutostartEntry("").valid);
  EXPECT_FALSE(parseAutostartEntry("[Desktop Entry]\nType=Link\nExec=x\n").valid);
  EXPECT_FALSE(parseAutostartEntry("Exec=x\nType=Application\n").valid);
}

class AutostartItemTest : public ::testing::Test {
 protected:
  void write(const std::string& text) const {
    std::filesystem::create_directories(folder_.path() / "autostart");
    std::ofstream(item_.file()) << text;
  }
  TemporaryFolder folder_;
  test::RecordingUrls urls_;
  const std::string autostart_ = (folder_.path() / "autostart").string();
  AutostartItem item_{autostart_, "/bin/sh", urls_};
};

TEST_F(AutostartItemTest, RegistersAndUnregisters) {
  EXPECT_EQ(item_.status(), LoginItemStatus::notRegistered);
  EXPECT_EQ(item_.registerProgram(), std::nullopt);
  EXPECT_EQ(item_.status(), LoginItemStatus::enabled);
  EXPECT_EQ(item_.registerProgram(), std::nullopt) << "again is fine";
  EXPECT_EQ(item_.unregisterProgram(), std::nullopt);
  EXPECT_EQ(item_.status(), LoginItemStatus::notRegistered);
  EXPECT_EQ(item_.unregisterProgram(), std::nullopt) << "again is fine";
}

TEST_F(AutostartItemTest, ADesktopThatSwitchedItOffMustApproveIt) {
  EXPECT_EQ(item_.registerProgram(), std::nullopt);
  write(autostartEntry("/bin/sh") + "Hidden=true\n");
  EXPECT_EQ(item_.status(), LoginItemStatus::requiresApproval);
  write("[Desktop Entry]\nHidden=true\n");
  EXPECT_EQ(item_.status(), LoginItemStatus::requiresApproval);
}

TEST_F(AutostartItemTest, AProgramThatIsGoneIsNotFoundAndCanBeRegisteredAnew) {
  write(autostartEntry("/nonexistent/velotap"));
  EXPECT_EQ(item_.status(), LoginItemStatus::notFound);
  EXPECT_EQ(item_.registerProgram(), std::nullopt);
  EXPECT_EQ(item_.status(), LoginItemStatus::enabled);
}

TEST_F(AutostartItemTest, AFileThatMakesNoSenseIsNotFound) {
  write("nonsense");
  EXPECT_EQ(item_.status(), LoginItemStatus::notFound);
  std::filesystem::remove(item_.file());
  std::filesystem::create_directory(item_.file());
  EXPECT_EQ(item_.status(), LoginItemStatus::notFound);
}

TEST_F(AutostartItemTest, AFolderThatCannotBeMadeIsAnErrorInWords) {
  std::ofstream(autostart_) << "a file where the folder should be";
  EXPECT_NE(item_.registerProgram().value_or(""), "");
  EXPECT_NE(item_.status(), LoginItemStatus::enabled);
}

TEST_F(AutostartItemTest, AnEntryThatCannotBeRemovedIsAnErrorInWords) {
  std::filesystem::create_directories(std::filesystem::path(item_.file()) / "inside");
  EXPECT_NE(item_.unregisterProgram().value_or(""), "");
}

TEST_F(AutostartItemTest, ShowsTheDesktopsPageElseTheFolder) {
  item_.openSettings();
  ASSERT_EQ(urls_.opened.size(), 1U);
  urls_.works = false;
  item_.openSettings();
  ASSERT_EQ(urls_.opened.size(), 3U);
  EXPECT_EQ(urls_.opened[2], "file://" + autostart_);
}

}  // namespace
}  // namespace velotap
