#include "app/program_choice.hpp"

#include <gtest/gtest.h>

#include <map>

namespace velotap {
namespace {

ProgramChoice choice(const std::vector<std::string_view>& arguments,
                     const std::map<std::string, std::string>& environment) {
  return programChoice(arguments, [&environment](const char* name) -> const char* {
    const auto found = environment.find(name);
    return found == environment.end() ? nullptr : found->second.c_str();
  });
}

TEST(ProgramChoice, DisplayDecides) {
  EXPECT_EQ(choice({}, {}), ProgramChoice::background);
  EXPECT_EQ(choice({}, {{"DISPLAY", ":0"}}), ProgramChoice::desktop);
  EXPECT_EQ(choice({}, {{"WAYLAND_DISPLAY", "wayland-0"}}), ProgramChoice::desktop);
  EXPECT_EQ(choice({}, {{"DISPLAY", ""}, {"WAYLAND_DISPLAY", ""}}), ProgramChoice::background);
}

TEST(ProgramChoice, BackgroundCanBeAskedFor) {
  EXPECT_EQ(choice({"--background"}, {{"DISPLAY", ":0"}}), ProgramChoice::background);
}

TEST(ProgramChoice, PicturesNeedNoDisplay) {
  EXPECT_EQ(choice({"--listlane-capture", "/tmp"}, {}), ProgramChoice::desktop);
  EXPECT_EQ(choice({"--background", "--listlane-capture"}, {}), ProgramChoice::desktop);
}

TEST(ProgramChoice, OtherProgramLiesBeside) {
  EXPECT_EQ(desktopProgramBeside("/opt/velotap/bin/velotap"), "/opt/velotap/bin/velotap-desktop");
  EXPECT_EQ(desktopProgramBeside("velotap"), "velotap-desktop");
}

}  // namespace
}  // namespace velotap
