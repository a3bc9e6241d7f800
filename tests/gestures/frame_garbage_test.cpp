// Frames of a library that has lost its mind: nothing crashes, and recognising allocates nothing.

#include <gtest/gtest.h>

#include <array>
#include <bit>
#include <limits>
#include <memory>
#include <random>

#include "engine_fixture.hpp"
#include "support/allocation_counter.hpp"
#include "support/random_hand.hpp"

namespace velotap {
namespace {

using namespace test;  // NOLINT: the fixture's vocabulary

constexpr std::int32_t kSmallest = std::numeric_limits<std::int32_t>::min();
constexpr std::int32_t kLargest = std::numeric_limits<std::int32_t>::max();

class FrameGarbage : public EngineTest {
 protected:
  FrameGarbage() {
    log.setEnabled(false);
    posted.stop();  // writing down allocates
    set("mouseRotate", true);
    // Memory beyond these sixteen records belongs to somebody else, as the sanitizer will tell.
    records_.resize(16);
  }
  void onlyRecognise() {
    for (const char* key : {"mouseTap3", "padTap3", "padTap4", "mouseSwipe3Nav"}) set(key, false);
  }

  std::int32_t randomCount() {
    const std::int32_t odd[] = {0, -1, -2, kSmallest, kLargest, 17, 1000, 1 << 20};
    if (random_() % 4 == 0) return odd[random_() % std::size(odd)];
    return static_cast<std::int32_t>(random_() % 17);
  }
  void scramble(MTTouch& record) {
    std::array<std::uint32_t, sizeof(MTTouch) / 4> words;
    for (std::uint32_t& word : words) word = static_cast<std::uint32_t>(random_());
    record = std::bit_cast<MTTouch>(words);
  }
  /// Any bytes at all, or a record that passes the first checks with numbers of any size.
  void randomRecords() {
    for (MTTouch& record : records_) {
      scramble(record);
      if (random_() % 3 == 0) continue;
      record.stage = static_cast<std::int32_t>(2 + random_() % 5);
      record.identifier = static_cast<std::int32_t>(random_() % 8);
      if (random_() % 2 == 0) continue;
      const float scale = random_() % 4 == 0 ? std::numeric_limits<float>::max() : 1.0F;
      const auto number = [&] {
        return scale * std::uniform_real_distribution<float>(-0.1F, 1.0F)(random_);
      };
      record.position = {number(), number()};
      record.velocity = {number(), number()};
      record.millimetres = {number(), number()};
      record.size = 1;
      record.density = 1;
    }
  }
  void frameOfAnything(const char* device) {
    randomRecords();
    const MTTouch* touches = random_() % 20 == 0 ? nullptr : records_.data();
    multitouch.deliver(device, touches, randomCount());
    time.advance(0.008);
  }

  std::mt19937 random_{99};
  std::vector<MTTouch> records_;
};

TEST_F(FrameGarbage, RecognisingItAllocatesNothing) {
  onlyRecognise();
  for (int i = 0; i < 1000; ++i) frameOfAnything(i % 2 == 0 ? pad : mouse);
  const std::size_t before = allocationsOfThisThread();
  for (int i = 0; i < 100000; ++i) frameOfAnything(random_() % 2 == 0 ? pad : mouse);
  EXPECT_EQ(allocationsOfThisThread() - before, 0U);
}

TEST_F(FrameGarbage, NothingCrashesWithEverythingOn) {
  for (const char* key : {"mouseTap3", "padTap3", "padTap4", "mouseSwipe3Nav"}) set(key, true);
  config.setKeystrokeZoomApps({kBrowser});
  log.setEnabled(true);
  for (int i = 0; i < 20000; ++i) {
    frameOfAnything(random_() % 2 == 0 ? pad : mouse);
    if (random_() % 100 == 0) activate(random_() % 2 == 0 ? kEditor : kBrowser);
    if (random_() % 50 == 0) static_cast<void>(engine.shouldConvertClick(Button::left));
    if (random_() % 50 == 0) engine.endConversion(Button::left);
    if (i % 1000 == 0) {
      said.take();
      mainQueue.runDue();
    }
  }
  lift(pad);
  lift(mouse);
  EXPECT_FALSE(pinch.isPinching());
  static_cast<void>(engine.abandonConversion());
  EXPECT_FALSE(engine.hasActiveContact());
}

TEST_F(FrameGarbage, OrdinaryTouchesAllocateNothingEither) {
  onlyRecognise();
  RandomHand hand(5);
  std::vector<Frame> frames;
  for (int i = 0; i < 20000; ++i) frames.push_back(hand.next());
  const auto play = [&] {
    for (const Frame& contacts : frames) {
      deliver(pad, contacts);
      deliver(mouse, contacts);
      time.advance(0.008);
    }
  };
  play();
  const std::size_t before = allocationsOfThisThread();
  play();
  EXPECT_EQ(allocationsOfThisThread() - before, 0U);
}

TEST_F(FrameGarbage, TheCounterCounts) {
  const std::size_t before = allocationsOfThisThread();
  auto number = std::make_unique<int>(5);
  EXPECT_EQ(allocationsOfThisThread() - before, 1U) << *number;
}

}  // namespace
}  // namespace velotap
