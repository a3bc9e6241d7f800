#include "adapters/linux/runtime/thread_stacks.hpp"

#include <gtest/gtest.h>
#include <pthread.h>

#include <cstddef>
#include <thread>

namespace velotap {
namespace {

std::size_t stackOfANewThread() {
  std::size_t size = 0;
  std::thread([&size] {
    pthread_attr_t attributes;
    ASSERT_EQ(::pthread_getattr_np(::pthread_self(), &attributes), 0);
    ::pthread_attr_getstacksize(&attributes, &size);
    ::pthread_attr_destroy(&attributes);
  }).join();
  return size;
}

TEST(ThreadStacks, areTooSmallForAHugePage) {
  boundThreadStacks();
  constexpr std::size_t kHugePage = 2 * 1024 * 1024;
  EXPECT_GE(stackOfANewThread(), kThreadStackBytes);
  EXPECT_LT(stackOfANewThread(), kHugePage);
}

}  // namespace
}  // namespace velotap
