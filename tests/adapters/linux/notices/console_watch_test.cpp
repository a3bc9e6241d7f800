#include "adapters/linux/notices/console_watch.hpp"

#include <gtest/gtest.h>

#include <fstream>
#include <functional>
#include <string>

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
  std::function<void()> never = [] { FAIL() << "nothing changed"; };
};

TEST_F(ConsoleWatchTest, anotherTerminalInFrontIsKnownAtOnce) {
  EXPECT_FALSE(ConsoleWatch(queue, "2", never, file("tty1")).inFront());
}

TEST_F(ConsoleWatchTest, ourOwnIsInFront) {
  EXPECT_TRUE(ConsoleWatch(queue, "1", never, file("tty1")).inFront());
}

TEST_F(ConsoleWatchTest, withoutTerminalOrFileEveryLoginIsInFront) {
  EXPECT_TRUE(ConsoleWatch(queue, nullptr, never, file("tty1")).inFront());
  EXPECT_TRUE(ConsoleWatch(queue, "2", never, (folder.path() / "absent").string()).inFront());
}

}  // namespace
}  // namespace velotap::test
