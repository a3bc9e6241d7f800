// Every bundled recording through the real decoder and recogniser: what is told of it must be what
// tests/recordings/told.txt says. After a deliberate change of behaviour write that file anew with
// `velotap-lab demo tests/recordings/*.evemu` and read the difference.

#include <gtest/gtest.h>

#include <algorithm>
#include <filesystem>
#include <fstream>
#include <iterator>
#include <sstream>
#include <string>
#include <vector>

#include "lab/replay_command.hpp"
#include "lab/touches/touch_commands.hpp"

namespace velotap::lab {
namespace {

const std::filesystem::path kRecordings = VELOTAP_RECORDINGS;

std::vector<std::string> recordings(const char* extension) {
  std::vector<std::string> paths;
  for (const auto& entry : std::filesystem::directory_iterator(kRecordings)) {
    if (entry.path().extension() == extension) paths.push_back(entry.path().string());
  }
  std::sort(paths.begin(), paths.end());
  return paths;
}

std::vector<std::string_view> views(const std::vector<std::string>& texts) {
  return {texts.begin(), texts.end()};
}

TEST(Recordings, areToldAsBefore) {
  std::ostringstream out;
  std::ostringstream errors;
  const auto paths = recordings(".evemu");
  ASSERT_GE(paths.size(), 15U);
  EXPECT_EQ(runDemoCommand(views(paths), out, errors), kExitGood) << errors.str();
  std::ifstream file(kRecordings / "told.txt");
  const std::string expected{std::istreambuf_iterator<char>(file), {}};
  EXPECT_EQ(out.str(), expected);
}

TEST(Recordings, bothFormatsBecomeTheSameScenario) {
  const auto yaml = recordings(".yml");
  ASSERT_FALSE(yaml.empty());
  for (const std::string& path : yaml) {
    std::string evemu = path;
    evemu.replace(evemu.size() - 4, 4, ".evemu");
    std::ostringstream fromYaml;
    std::ostringstream fromEvemu;
    std::ostringstream errors;
    EXPECT_EQ(runImportCommand({path}, fromYaml, errors), kExitGood) << errors.str();
    EXPECT_EQ(runImportCommand({evemu}, fromEvemu, errors), kExitGood) << errors.str();
    EXPECT_EQ(fromYaml.str(), fromEvemu.str()) << path;
  }
}

TEST(Recordings, anImportedRecordingReplaysAsTheClickItWas) {
  std::ostringstream scenario;
  std::ostringstream errors;
  const std::string recording = kRecordings / "magic-trackpad-2-three-finger-tap.evemu";
  ASSERT_EQ(runImportCommand({recording}, scenario, errors), kExitGood);
  const auto file = std::filesystem::temp_directory_path() / "velotap-imported.scenario";
  std::ofstream(file) << scenario.str();
  std::ostringstream replayed;
  EXPECT_EQ(runReplayCommand({file.c_str()}, replayed, errors), kExitGood) << errors.str();
  std::filesystem::remove(file);
  EXPECT_NE(replayed.str().find("\"event\":\"otherMouseDown\""), std::string::npos);
  EXPECT_NE(replayed.str().find("\"outcome\":\"click\""), std::string::npos);
}

TEST(TouchCommands, refuseWhatTheyCannotRead) {
  std::ostringstream out;
  std::ostringstream errors;
  EXPECT_EQ(runImportCommand({"/nonexistent/recording"}, out, errors), kExitUsage);
  EXPECT_NE(errors.str().find("/nonexistent"), std::string::npos);
  EXPECT_EQ(runImportCommand({"/"}, out, errors), kExitUsage);
  EXPECT_NE(errors.str().find("Is a directory"), std::string::npos);
  EXPECT_EQ(runImportCommand({}, out, errors), kExitUsage);
  EXPECT_EQ(runDemoCommand({}, out, errors), kExitUsage);
  EXPECT_EQ(runRecordCommand({"/dev/null"}, out, errors), kExitFailed);
  EXPECT_EQ(runRecordCommand({"999"}, out, errors), kExitFailed);
}

TEST(TouchCommands, helpIsNoError) {
  std::ostringstream out;
  std::ostringstream errors;
  EXPECT_EQ(runImportCommand({"--help"}, out, errors), kExitGood);
  EXPECT_EQ(runRecordCommand({"--help"}, out, errors), kExitGood);
  EXPECT_EQ(runDemoCommand({"--help"}, out, errors), kExitGood);
  EXPECT_EQ(errors.str(), "");
}

}  // namespace
}  // namespace velotap::lab
