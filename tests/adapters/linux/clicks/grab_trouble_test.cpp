#include "adapters/linux/clicks/grab_trouble.hpp"

#include <gtest/gtest.h>

#include <cerrno>
#include <set>

namespace velotap::test {
namespace {

constexpr const char* kMouse = "Magic Mouse 2 (/dev/input/event3)";

TEST(GrabTrouble, aForeignGrabIsCalledOne) {
  EXPECT_EQ(refusalText(GrabTrouble::device, EBUSY, kMouse),
            "another program holds Magic Mouse 2 (/dev/input/event3): its clicks are left as they "
            "are (EBUSY)");
}

TEST(GrabTrouble, everyTroubleHasItsOwnWords) {
  std::set<std::string> texts;
  for (const GrabTrouble trouble : {GrabTrouble::device, GrabTrouble::mirror, GrabTrouble::guard}) {
    for (const int error : {EBUSY, EACCES, EIO}) {
      const std::string text = refusalText(trouble, error, kMouse);
      EXPECT_NE(text.find(kMouse), std::string::npos) << text;
      EXPECT_TRUE(texts.insert(text).second) << text;
    }
  }
  for (const GrabTrouble trouble : {GrabTrouble::mirror, GrabTrouble::guard}) {
    const std::string text = lossText(trouble, kMouse);
    EXPECT_NE(text.find(kMouse), std::string::npos) << text;
    EXPECT_TRUE(texts.insert(text).second) << text;
  }
}

TEST(GrabTrouble, noTroubleNeedsNoWords) {
  EXPECT_EQ(refusalText(GrabTrouble::none, 0, kMouse), "");
  EXPECT_EQ(lossText(GrabTrouble::none, kMouse), "");
}

}  // namespace
}  // namespace velotap::test
