// Replays every scenario of this folder and compares what is printed with what stands beside it.
//
//   run_scenarios --rewrite     writes what is printed as what is expected
//
// Each scenario is also told otherwise (see rerun.hpp) and must come to the same verdict. A file
// whose point is exactly what such a telling changes says so in a comment of its own:
//
//   # no rerun: mirrored, shifted
//
// and one that expects diagnostic lines too says
//
//   # replay: --debug

#include <gtest/gtest.h>

#include <algorithm>
#include <filesystem>
#include <fstream>
#include <iostream>
#include <sstream>
#include <string>
#include <variant>
#include <vector>

#include "lab/replay.hpp"
#include "lab/scenario_parser.hpp"
#include "rerun.hpp"
#include "text_diff.hpp"

namespace velotap::test {
namespace {

namespace fs = std::filesystem;

constexpr std::string_view kNoRerun = "# no rerun:";
constexpr std::string_view kDebug = "# replay: --debug";

std::string contentsOf(const fs::path& file) {
  std::ostringstream text;
  text << std::ifstream(file, std::ios::binary).rdbuf();
  return text.str();
}

fs::path expectationOf(const fs::path& scenario) {
  return fs::path(scenario).replace_extension(".expected");
}

std::vector<fs::path> filesWith(const fs::path& folder, std::string_view extension) {
  std::vector<fs::path> files;
  for (const auto& entry : fs::recursive_directory_iterator(folder)) {
    if (entry.path().extension() == extension) files.push_back(entry.path());
  }
  std::sort(files.begin(), files.end());
  return files;
}

// "swipe/fourth_finger" for .../swipe/fourth-finger.scenario: a '-' would begin the second half of
// a test filter.
std::string nameOf(const fs::path& file) {
  std::string name = file.parent_path().filename().string() + "/" + file.stem().string();
  std::replace(name.begin(), name.end(), '-', '_');
  return name;
}

struct Outcome {
  std::vector<std::string> lines;
  std::vector<std::string> faults;
};

Outcome outcomeOf(const lab::Scenario& scenario, std::string_view text) {
  const lab::ReplayOptions options = {.debug = text.find(kDebug) != std::string_view::npos,
                                      .settings = {}};
  Outcome outcome;
  outcome.faults = lab::replay(
      scenario, options, [&outcome](const std::string& line) { outcome.lines.push_back(line); });
  return outcome;
}

std::string joined(const std::vector<std::string>& lines) {
  std::string text;
  for (const std::string& line : lines) text.append(line).append("\n");
  return text;
}

lab::Scenario parsed(const fs::path& file, std::string_view text) {
  auto result = lab::parseScenario(text);
  if (const auto* error = std::get_if<lab::ScenarioError>(&result)) {
    ADD_FAILURE() << file.string() << ':' << error->line << ": " << error->message;
    return {};
  }
  return std::get<lab::Scenario>(std::move(result));
}

class ScenarioTest : public testing::Test {
 public:
  explicit ScenarioTest(fs::path file) : file_(std::move(file)) {}
  void TestBody() override {
    ASSERT_TRUE(fs::exists(expectationOf(file_))) << "nothing is expected of " << file_;
    const std::string text = contentsOf(file_);
    const Outcome outcome = outcomeOf(parsed(file_, text), text);
    EXPECT_TRUE(outcome.faults.empty()) << joined(outcome.faults);
    const std::string diff = lineDiff(contentsOf(expectationOf(file_)), joined(outcome.lines));
    EXPECT_TRUE(diff.empty()) << diff;
  }

 private:
  fs::path file_;
};

class RerunTest : public testing::Test {
 public:
  explicit RerunTest(fs::path file) : file_(std::move(file)) {}
  void TestBody() override {
    const std::string text = contentsOf(file_);
    const lab::Scenario told = parsed(file_, text);
    const auto verdict = verdictOf(outcomeOf(told, text).lines);
    for (const Rerun& rerun : reruns()) {
      if (isLeftOut(text, rerun.name)) continue;
      lab::Scenario changed = told;
      rerun.change(changed);
      auto expected = verdict;
      rerun.expect(expected);
      auto actual = verdictOf(outcomeOf(changed, text).lines);
      if (!rerun.sameSteps) {
        dropSteps(expected);
        dropSteps(actual);
      }
      const std::string diff = lineDiff(joined(expected), joined(actual));
      EXPECT_TRUE(diff.empty()) << rerun.name << ":\n" << diff;
    }
  }

 private:
  static bool isLeftOut(const std::string& text, std::string_view rerun) {
    const std::size_t start = text.find(kNoRerun);
    if (start == std::string::npos) return false;
    const std::string line = text.substr(start, text.find('\n', start) - start);
    return line.find(rerun) != std::string::npos;
  }

  fs::path file_;
};

// An expectation without a scenario would never be looked at.
TEST(Scenarios, everyExpectationHasItsScenario) {
  for (const fs::path& file : filesWith(VELOTAP_SCENARIOS, ".expected")) {
    EXPECT_TRUE(fs::exists(fs::path(file).replace_extension(".scenario"))) << file;
  }
}

template <typename Test>
void registerTest(const char* suite, const fs::path& file) {
  testing::RegisterTest(suite, nameOf(file).c_str(), nullptr, nullptr, __FILE__, __LINE__,
                        [file]() -> testing::Test* { return new Test(file); });
}

int rewriteExpectations() {
  for (const fs::path& file : filesWith(VELOTAP_SCENARIOS, ".scenario")) {
    const std::string text = contentsOf(file);
    const auto result = lab::parseScenario(text);
    if (const auto* error = std::get_if<lab::ScenarioError>(&result)) {
      std::cerr << file.string() << ':' << error->line << ": " << error->message << '\n';
      return 2;
    }
    const std::string printed = joined(outcomeOf(std::get<lab::Scenario>(result), text).lines);
    const fs::path expectation = expectationOf(file);
    if (fs::exists(expectation) && printed == contentsOf(expectation)) continue;
    std::ofstream(expectation, std::ios::binary) << printed;
    std::cout << "rewritten: " << nameOf(file) << '\n';
  }
  return 0;
}

}  // namespace
}  // namespace velotap::test

int main(int argc, char** argv) {
  using namespace velotap::test;
  testing::InitGoogleTest(&argc, argv);
  if (argc == 2 && std::string_view(argv[1]) == "--rewrite") return rewriteExpectations();
  for (const auto& file : filesWith(VELOTAP_SCENARIOS, ".scenario")) {
    registerTest<ScenarioTest>("Scenario", file);
    registerTest<RerunTest>("Rerun", file);
  }
  return RUN_ALL_TESTS();
}
