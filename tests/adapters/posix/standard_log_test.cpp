#include "adapters/posix/standard_log.hpp"

#include <fcntl.h>
#include <gtest/gtest.h>
#include <unistd.h>

#include <array>
#include <csignal>
#include <string>
#include <thread>
#include <utility>
#include <vector>

namespace velotap {
namespace {

class StandardLogTest : public testing::Test {
 protected:
  StandardLogTest() {
    if (::pipe(ends.data()) == 0) ::fcntl(ends[0], F_SETFL, O_NONBLOCK);
  }
  ~StandardLogTest() override {
    for (const int end : ends) ::close(end);
  }
  std::string read() const {
    std::array<char, 4096> buffer;
    const ssize_t n = ::read(ends[0], buffer.data(), buffer.size());
    return n > 0 ? std::string(buffer.data(), static_cast<std::size_t>(n)) : std::string();
  }

  std::array<int, 2> ends{-1, -1};  ///< to read from, to write to
};

TEST_F(StandardLogTest, LineHasThePrefixAndIsThereAtOnce) {
  StandardLog log(true, ends[1]);
  EXPECT_TRUE(log.enabled());
  log.line("restarting listeners");
  EXPECT_EQ(read(), "[Velotap] restarting listeners\n");
  log.line("");
  EXPECT_EQ(read(), "[Velotap] \n");
}

TEST_F(StandardLogTest, SilentWhenNotEnabled) {
  StandardLog log(false, ends[1]);
  EXPECT_FALSE(log.enabled());
  log.line("restarting listeners");
  EXPECT_EQ(read(), "");
}

TEST_F(StandardLogTest, LinesOfSeveralThreadsNeverMix) {
  StandardLog log(true, ends[1]);
  std::vector<std::thread> writers;
  for (const char letter : {'a', 'b', 'c', 'd'}) {
    writers.emplace_back([&log, letter] {
      for (int i = 0; i < 10; ++i) log.line(std::string(30, letter));
    });
  }
  for (auto& thread : writers) thread.join();
  const std::string all = read();
  const std::size_t length = std::string("[Velotap] ").size() + 30 + 1;
  ASSERT_EQ(all.size(), 40 * length);
  for (std::size_t i = 0; i < all.size(); i += length) {
    const char letter = all[i + 10];
    EXPECT_EQ(all.substr(i, length), "[Velotap] " + std::string(30, letter) + "\n");
  }
}

TEST_F(StandardLogTest, AReaderThatIsGoneIsNoError) {
  const auto handler = std::signal(SIGPIPE, SIG_IGN);
  StandardLog log(true, ends[1]);
  ::close(std::exchange(ends[0], -1));
  log.line("nobody reads this");
  std::signal(SIGPIPE, handler);
}

TEST_F(StandardLogTest, AnOutputThatIsClosedIsNoError) {
  StandardLog log(true, -1);
  log.line("nobody reads this");
}

}  // namespace
}  // namespace velotap
