#include "adapters/macos/runtime/standard_output_log.hpp"

#include <fcntl.h>
#include <gtest/gtest.h>
#include <unistd.h>

#include <array>
#include <string>

namespace velotap {
namespace {

TEST(StandardOutputLogTest, aLineIsOneWriteWithThePrefixAndNothingWhenSilent) {
  std::array<int, 2> ends{};
  ASSERT_EQ(::pipe2(ends.data(), O_NONBLOCK | O_CLOEXEC), 0);
  StandardOutputLog log(true, ends[1]);
  EXPECT_TRUE(log.enabled());
  log.line("event tap active");
  std::array<char, 256> buffer{};
  const ssize_t length = ::read(ends[0], buffer.data(), buffer.size());
  ASSERT_GT(length, 0);
  EXPECT_EQ(std::string(buffer.data(), static_cast<std::size_t>(length)),
            "[Velotap] event tap active\n");
  StandardOutputLog silent(false, ends[1]);
  silent.line("unheard");
  EXPECT_EQ(::read(ends[0], buffer.data(), buffer.size()), -1);
  ::close(ends[0]);
  ::close(ends[1]);
}

TEST(StandardOutputLogTest, nobodyToReadIsNoReasonToStop) {
  StandardOutputLog log(true, -1);
  log.line("lost");
}

}  // namespace
}  // namespace velotap
