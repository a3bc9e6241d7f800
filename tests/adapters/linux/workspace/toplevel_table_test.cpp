#include "adapters/linux/workspace/toplevel_table.hpp"

#include <gtest/gtest.h>

namespace velotap {
namespace {

class ToplevelTableTest : public testing::Test {
 protected:
  void open(const char& key, const std::string& id) {
    table.open(&key);
    table.setAppId(&key, id);
    table.setDescribed(&key);
  }
  std::string front() {
    const auto window = table.front();
    return window ? window->appId : "-";
  }
  ToplevelTable table;
  const char one = 0;
  const char two = 0;
};

TEST_F(ToplevelTableTest, nothingIsInFrontWhileNoWindowIsActive) {
  EXPECT_EQ(front(), "-");
  open(one, "one");
  EXPECT_EQ(front(), "-");
}

TEST_F(ToplevelTableTest, theActiveWindowIsInFront) {
  open(one, "one");
  open(two, "two");
  table.setActive(&two, true);
  EXPECT_EQ(front(), "two");
  table.setActive(&two, false);
  EXPECT_EQ(front(), "-");
}

TEST_F(ToplevelTableTest, ofSeveralActiveOnesTheLatest) {
  open(one, "one");
  open(two, "two");
  table.setActive(&two, true);
  table.setActive(&one, true);
  EXPECT_EQ(front(), "one");
  // Being told again is not becoming active again.
  table.setActive(&two, true);
  EXPECT_EQ(front(), "one");
  table.setActive(&two, false);
  table.setActive(&two, true);
  EXPECT_EQ(front(), "two");
  table.close(&two);
  EXPECT_EQ(front(), "one");
}

TEST_F(ToplevelTableTest, aWindowThatIsNotDescribedYetIsNotInFront) {
  table.open(&one);
  table.setActive(&one, true);
  EXPECT_EQ(front(), "-");
  table.setAppId(&one, "one");
  EXPECT_EQ(front(), "-");
  table.setDescribed(&one);
  EXPECT_EQ(front(), "one");
}

TEST_F(ToplevelTableTest, aClosedWindowLeavesNothing) {
  open(one, "one");
  table.setActive(&one, true);
  table.close(&one);
  EXPECT_EQ(front(), "-");
  table.close(&one);
  EXPECT_EQ(front(), "-");
}

TEST_F(ToplevelTableTest, tellsProcessAndIdentifier) {
  open(one, "one");
  table.setPid(&one, 42);
  table.setActive(&one, true);
  EXPECT_EQ(table.front(), (FrontWindow{.appId = "one", .pid = 42}));
}

TEST(FrontChange, passesOnOnlyWhatChanged) {
  FrontChange change;
  const std::optional<FrontWindow> one = FrontWindow{.appId = "one"};
  EXPECT_TRUE(change.changedTo(std::nullopt));  // the first answer is news, whatever it is
  EXPECT_FALSE(change.changedTo(std::nullopt));
  EXPECT_TRUE(change.changedTo(one));
  EXPECT_FALSE(change.changedTo(one));
  EXPECT_TRUE(change.changedTo(std::nullopt));
}

}  // namespace
}  // namespace velotap
