#include "config/trackpad_mode.hpp"

#include <gtest/gtest.h>

namespace velotap {
namespace {

TEST(TrackpadMode, chosenByItselfTheProgramStaysOutOfWhatTheDesktopAnswers) {
  EXPECT_TRUE(programAnswers(TrackpadMode::automatic, false));
  EXPECT_FALSE(programAnswers(TrackpadMode::automatic, true));
}

TEST(TrackpadMode, theSettingOverridesWhatTheDesktopDoes) {
  for (const bool desktopClicks : {false, true}) {
    EXPECT_FALSE(programAnswers(TrackpadMode::native, desktopClicks));
    EXPECT_TRUE(programAnswers(TrackpadMode::post, desktopClicks));
  }
}

TEST(TrackpadMode, anyOtherTextLeavesTheChoiceToTheProgram) {
  EXPECT_EQ(trackpadMode("native"), TrackpadMode::native);
  EXPECT_EQ(trackpadMode("post"), TrackpadMode::post);
  for (const char* text : {"automatic", "", "Native", "native ", "own"}) {
    EXPECT_EQ(trackpadMode(text), TrackpadMode::automatic) << text;
  }
}

}  // namespace
}  // namespace velotap
