#include "adapters/linux/clicks/console_watch.hpp"

#include <gtest/gtest.h>

#include <fstream>
#include <vector>

#include "adapters/linux/runtime/posix_clock.hpp"
#include "adapters/linux/runtime/posix_main_queue.hpp"
#include "support/temporary_folder.hpp"

namespace velotap::test {
namespace {

TEST(ConsoleInFront, isTheOneWithOurTerminalsNumber) {
  EXPECT_TRUE(consoleInFront("tty2\n", "2"));
  EXPECT_FALSE(consoleInFront("tty1\n", "2"));
  EXPECT_FALSE(consoleInFront("tty22\n", "2"));
  EXPECT_FALSE(consoleInFront("tty2", "22"));
}

TEST(ConsoleInFront, withoutTerminalsEveryLoginIsInFront) {
  EXPECT_TRUE(consoleInFront("tty1\n", ""));
  EXPECT_TRUE(consoleInFront("tty1\n", "0"));
  EXPECT_TRUE(consoleInFront("", "2"));
}

class ConsoleWatchTest : public testing::Test {
 protected:
  std::string file(const std::string& text) {
    const std::string path = (folder.path() / "active").string();
    std::ofstream(path) << text;
    return path;
  }
  TemporaryFolder folder;
  PosixClock clock;
  PosixMainQueue queue{clock};
  std::vector<bool> told;
};

TEST_F(ConsoleWatchTest, anotherTerminalInFrontIsToldAtOnce) {
  const ConsoleWatch watch(
      queue, "2", [this](bool front) { told.push_back(front); }, file("tty1"));
  EXPECT_EQ(told, std::vector{false});
}

TEST_F(ConsoleWatchTest, ourOwnIsNotWorthTelling) {
  const ConsoleWatch watch(
      queue, "1", [this](bool front) { told.push_back(front); }, file("tty1"));
  EXPECT_TRUE(told.empty());
}

TEST_F(ConsoleWatchTest, withoutTerminalOrFileNothingIsTold) {
  const auto tell = [this](bool front) { told.push_back(front); };
  const ConsoleWatch none(queue, nullptr, tell, file("tty1"));
  const ConsoleWatch absent(queue, "2", tell, (folder.path() / "absent").string());
  EXPECT_TRUE(told.empty());
}

}  // namespace
}  // namespace velotap::test
