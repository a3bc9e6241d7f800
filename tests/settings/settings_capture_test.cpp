#include "settings/settings_capture.hpp"

#include <gtest/gtest.h>

#include <map>
#include <string>
#include <vector>

#include "config/settings_table.hpp"

namespace velotap {
namespace {

using Arguments = std::vector<std::string_view>;
using Names = std::vector<std::string>;

constexpr std::string_view kFolderError =
    "--listlane-capture requires an absolute output directory\n";
constexpr std::string_view kScenesError =
    "--scenes takes a comma-separated list of: gestures,tuning,apps,practice,devices\n";

class FakeStudio final : public CaptureStudio {
 public:
  [[nodiscard]] CaptureEnvironment environment() override {
    return {.executable = "velotap",
            .version = "1.4.2",
            .build = "318",
            .language = "en",
            .locale = "en_US",
            .timeZone = "Europe/Sofia",
            .largeTextSupported = true};
  }
  [[nodiscard]] std::optional<std::string> prepare(const CaptureRequest& request,
                                                   const ValueMap& settings) override {
    dark = request.dark;
    suite = settings;
    return prepareError;
  }
  [[nodiscard]] std::variant<CapturedImage, std::string> render(const CaptureShot& shot,
                                                                const std::string& path) override {
    rendered.push_back(path);
    if (renderError) return *renderError;
    CapturedImage image{.contentWidth = shot.width(),
                        .contentHeight = shot.height(),
                        .reachedBottom = reachesBottom,
                        .pixelWidth = shot.width() * 2,
                        .pixelHeight = shot.height() * 2};
    image.contentWidth += grown;
    return image;
  }
  [[nodiscard]] std::optional<std::string> writeFile(const std::string& path,
                                                     std::string_view text) override {
    files[path] = text;
    return writeError;
  }

  std::optional<std::string> prepareError;
  std::optional<std::string> renderError;
  std::optional<std::string> writeError;
  bool reachesBottom = true;
  int grown = 0;
  bool dark = false;
  ValueMap suite;
  Names rendered;
  std::map<std::string, std::string> files;
};

class SettingsCaptureTest : public ::testing::Test {
 protected:
  std::optional<int> run(const Arguments& arguments) {
    errors.clear();
    return captureSettingsIfRequested(
        arguments,
        [this]() -> CaptureStudio& {
          ++studiosMade;
          return studio;
        },
        [this](std::string_view text) { errors += text; });
  }
  FakeStudio studio;
  int studiosMade = 0;
  std::string errors;
};

TEST_F(SettingsCaptureTest, WithoutTheOptionStartUpGoesOn) {
  EXPECT_FALSE(run({"velotap"}));
  EXPECT_FALSE(run({"velotap", "--scenes", "tuning", "--dark"}));
  EXPECT_FALSE(run({}));
  EXPECT_EQ(errors, "");
  EXPECT_EQ(studiosMade, 0);
}

TEST_F(SettingsCaptureTest, AFolderMustBeAbsolute) {
  for (const Arguments& wrong :
       {Arguments{"velotap", "--listlane-capture"},
        Arguments{"velotap", "--listlane-capture", "shots"},
        Arguments{"velotap", "--listlane-capture", ""},
        Arguments{"velotap", "--listlane-capture", "--dark"},
        Arguments{"velotap", "--scenes", "nonsense", "--listlane-capture", "shots"}}) {
    EXPECT_EQ(run(wrong), 2);
    EXPECT_EQ(errors, kFolderError);
  }
  EXPECT_EQ(studiosMade, 0) << "nothing is written";
}

TEST_F(SettingsCaptureTest, UnknownScenesAreRefused) {
  for (const std::string_view scenes : {"tuning,nonsense", "", ",", "tuning,", "Tuning", "all"}) {
    EXPECT_EQ(run({"velotap", "--listlane-capture", "/shots", "--scenes", scenes}), 2) << scenes;
    EXPECT_EQ(errors, kScenesError);
  }
  EXPECT_EQ(run({"velotap", "--listlane-capture", "/shots", "--scenes"}), 2);
  EXPECT_EQ(studiosMade, 0);
}

TEST_F(SettingsCaptureTest, RendersAllScenesInTheirOrder) {
  EXPECT_EQ(run({"velotap", "--listlane-capture", "/shots"}), 0);
  EXPECT_EQ(errors, "");
  EXPECT_EQ(
      studio.rendered,
      (Names{"/shots/gestures-narrow.png", "/shots/gestures-default.png",
             "/shots/gestures-default-details.png", "/shots/tuning-narrow.png",
             "/shots/tuning-default.png", "/shots/tuning-default-details.png",
             "/shots/tuning-narrow-bottom.png", "/shots/tuning-default-bottom.png",
             "/shots/apps-narrow.png", "/shots/apps-default.png", "/shots/apps-default-details.png",
             "/shots/practice-narrow.png", "/shots/practice-default.png",
             "/shots/practice-default-details.png", "/shots/devices-narrow.png",
             "/shots/devices-default.png", "/shots/devices-default-details.png"}));
  EXPECT_FALSE(studio.dark);
}

TEST_F(SettingsCaptureTest, RendersTheChosenScenesOnceEach) {
  EXPECT_EQ(
      run({"velotap", "--dark", "--scenes", "apps,gestures,apps", "--listlane-capture", "/shots"}),
      0);
  EXPECT_EQ(studio.rendered.size(), 6U);
  EXPECT_EQ(studio.rendered.front(), "/shots/gestures-narrow.png");
  EXPECT_TRUE(studio.dark);
}

TEST_F(SettingsCaptureTest, TheManifestListsWhatWasRendered) {
  EXPECT_EQ(run({"velotap", "--listlane-capture", "/shots", "--scenes", "tuning"}), 0);
  ASSERT_EQ(studio.files.size(), 1U);
  const std::string& manifest = studio.files.at("/shots/capture.json");
  for (const std::string_view part :
       {"\"schemaVersion\": 1,", "\"kind\": \"functionalQA\",", "\"fictionalData\": true,",
        "\"executable\": \"velotap\",", "\"version\": \"1.4.2\",", "\"build\": \"318\",",
        "\"language\": \"en\",", "\"appearance\": \"light\",", "\"locale\": \"en_US\",",
        "\"timeZone\": \"Europe/Sofia\",", "\"largeTextSupported\": true,",
        "{\"scene\": \"tuning\", \"layout\": \"narrow\", \"path\": \"tuning-narrow.png\", "
        "\"scrollPosition\": \"top\", \"width\": 960, \"height\": 1200},",
        "{\"scene\": \"tuning\", \"layout\": \"default\", \"path\": "
        "\"tuning-default-bottom.png\", \"scrollPosition\": \"bottom\", \"width\": 1120, "
        "\"height\": 1200}\n"}) {
    EXPECT_NE(manifest.find(part), std::string::npos) << part << "\n" << manifest;
  }
  EXPECT_EQ(manifest.find("gestures"), std::string::npos);
}

TEST_F(SettingsCaptureTest, AFailureOfTheStudioEndsTheCapture) {
  studio.prepareError = "no display";
  EXPECT_EQ(run({"velotap", "--listlane-capture", "/shots"}), 1);
  EXPECT_EQ(errors, "Settings capture failed: no display\n");
  EXPECT_TRUE(studio.rendered.empty());
  studio.prepareError.reset();
  studio.renderError = "disk full";
  EXPECT_EQ(run({"velotap", "--listlane-capture", "/shots"}), 1);
  EXPECT_EQ(errors, "Settings capture failed: disk full\n");
  EXPECT_EQ(studio.rendered.size(), 1U);
  studio.renderError.reset();
  studio.writeError = "read-only";
  EXPECT_EQ(run({"velotap", "--listlane-capture", "/shots"}), 1);
  EXPECT_EQ(errors, "Settings capture failed: read-only\n");
}

TEST_F(SettingsCaptureTest, AnImageMustKeepToItsWindow) {
  studio.grown = 1;
  EXPECT_EQ(run({"velotap", "--listlane-capture", "/shots"}), 1);
  EXPECT_EQ(errors,
            "Settings capture failed: fixture expanded beyond its requested window size.\n");
}

TEST_F(SettingsCaptureTest, TheLowerControlsMustBeReached) {
  studio.reachesBottom = false;
  EXPECT_EQ(run({"velotap", "--listlane-capture", "/shots", "--scenes", "apps"}), 0);
  EXPECT_EQ(run({"velotap", "--listlane-capture", "/shots", "--scenes", "tuning"}), 1);
  EXPECT_EQ(errors,
            "Settings capture failed: The Tuning capture could not reach its lower controls.\n");
}

TEST_F(SettingsCaptureTest, ShowsFictionalSettingsOnly) {
  EXPECT_EQ(run({"velotap", "--listlane-capture", "/shots"}), 0);
  EXPECT_EQ(studio.suite, captureSettings());
  for (const SettingRow& row : triggerTable()) {
    ASSERT_TRUE(studio.suite.contains(std::string(row.key))) << row.key;
    EXPECT_NE(studio.suite.at(std::string(row.key)).boolean(), nullptr) << row.key;
  }
  EXPECT_EQ(studio.suite.at("ignoredApps"),
            Value::strings({"com.apple.Safari", "com.apple.TextEdit"}));
  for (const auto& [key, value] : studio.suite) EXPECT_NE(findSetting(key), nullptr) << key;
}

TEST(CaptureTaps, ShowSomethingToLoosen) {
  int refused = 0;
  for (const TapActivity& tap : captureTaps()) {
    refused += tap.outcome == TapActivity::Outcome::click ? 0 : 1;
  }
  EXPECT_EQ(captureTaps().size(), 4U);
  EXPECT_EQ(refused, 2);
}

TEST(CaptureProblem, IsNoneWithinTheWindow) {
  const CaptureShot shot{CaptureScene::apps, CaptureLayout::narrow, CaptureScroll::top};
  EXPECT_EQ(shot.width(), 480);
  EXPECT_EQ(shot.height(), 600);
  EXPECT_FALSE(captureProblem(shot, {.contentWidth = 480, .contentHeight = 600}));
  EXPECT_TRUE(captureProblem(shot, {.contentWidth = 481, .contentHeight = 600}));
  EXPECT_TRUE(captureProblem(shot, {.contentWidth = 480, .contentHeight = 601}));
}

TEST(CaptureManifest, EscapesWhatItQuotes) {
  CaptureEnvironment environment;
  environment.version = "a\"b\\c\n";
  const std::string manifest = captureManifest(environment, true, {});
  EXPECT_NE(manifest.find("\"version\": \"a\\\"b\\\\c\\u000a\","), std::string::npos);
  EXPECT_NE(manifest.find("\"appearance\": \"dark\","), std::string::npos);
  EXPECT_NE(manifest.find("\"images\": []"), std::string::npos);
}

}  // namespace
}  // namespace velotap
