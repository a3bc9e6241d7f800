#include "adapters/linux/runtime/standard_log.hpp"

#include <fcntl.h>
#include <gtest/gtest.h>
#include <unistd.h>

#include <array>
#include <csignal>
#include <string>
#include <thread>
#include <vector>

#include "adapters/linux/runtime/descriptor.hpp"

namespace velotap {
namespace {

class StandardLogTest : public testing::Test {
 protected:
  StandardLogTest() {
    std::array<int, 2> ends{};
    if (pipe2(ends.data(), O_CLOEXEC | O_NONBLOCK) != 0) return;
    reader = Descriptor(ends[0]);
    writer = Descriptor(ends[1]);
  }
  std::string read() const {
    std::array<char, 4096> buffer;
    const ssize_t n = ::read(reader.get(), buffer.data(), buffer.size());
    return n > 0 ? std::string(buffer.data(), static_cast<std::size_t>(n)) : std::string();
  }

  Descriptor reader;
  Descriptor writer;
};

TEST_F(StandardLogTest, LineHasThePrefixAndIsThereAtOnce) {
  StandardLog log(true, writer.get());
  EXPECT_TRUE(log.enabled());
  log.line("restarting listeners");
  EXPECT_EQ(read(), "[Velotap] restarting listeners\n");
  log.line("");
  EXPECT_EQ(read(), "[Velotap] \n");
}

TEST_F(StandardLogTest, SilentWhenNotEnabled) {
  StandardLog log(false, writer.get());
  EXPECT_FALSE(log.enabled());
  log.line("restarting listeners");
  EXPECT_EQ(read(), "");
}

TEST_F(StandardLogTest, LinesOfSeveralThreadsNeverMix) {
  StandardLog log(true, writer.get());
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
  StandardLog log(true, writer.get());
  reader.reset();
  log.line("nobody reads this");
  std::signal(SIGPIPE, handler);
}

}  // namespace
}  // namespace velotap
