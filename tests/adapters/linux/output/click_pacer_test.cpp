#include "adapters/linux/output/click_pacer.hpp"

#include <gtest/gtest.h>

#include <optional>
#include <random>
#include <vector>

namespace velotap {
namespace {

using Change = ClickPacer::Change;

constexpr double kStart = 100;
constexpr double kHold = ClickPacer::kSmallestHold;
constexpr double kGap = ClickPacer::kSmallestGap;
constexpr double kInstant = 1e-6;

// Writes what is due at `now`, as an output that takes no time would.
std::vector<Change> writeDue(ClickPacer& pacer, double now) {
  std::vector<Change> written;
  while (const auto change = pacer.takeDue(now)) {
    pacer.wrote(*change, now);
    written.push_back(*change);
  }
  return written;
}

using Changes = std::vector<Change>;

TEST(ClickPacer, FirstPressGoesOutAtOnce) {
  ClickPacer pacer;
  ASSERT_TRUE(pacer.submit(Change::press));
  EXPECT_EQ(writeDue(pacer, 0), Changes{Change::press});
  EXPECT_TRUE(pacer.isDown());
  EXPECT_EQ(pacer.nextDue(), std::nullopt);
}

TEST(ClickPacer, ReleaseWaitsForTheSmallestHold) {
  ClickPacer pacer;
  pacer.submit(Change::press);
  pacer.submit(Change::release);
  EXPECT_EQ(writeDue(pacer, kStart), Changes{Change::press});
  EXPECT_EQ(pacer.nextDue(), kStart + kHold);
  EXPECT_EQ(writeDue(pacer, kStart + kHold - kInstant), Changes{});
  EXPECT_EQ(writeDue(pacer, kStart + kHold), Changes{Change::release});
  EXPECT_FALSE(pacer.isDown());
}

TEST(ClickPacer, ReleaseOfALongHoldWaitsForNothing) {
  ClickPacer pacer;
  pacer.submit(Change::press);
  writeDue(pacer, kStart);
  pacer.submit(Change::release);
  EXPECT_EQ(writeDue(pacer, kStart + kHold + kInstant), Changes{Change::release});
}

TEST(ClickPacer, NextPressWaitsForTheSmallestGap) {
  ClickPacer pacer;
  for (int i = 0; i < 2; ++i) {
    pacer.submit(Change::press);
    pacer.submit(Change::release);
  }
  writeDue(pacer, kStart);
  writeDue(pacer, kStart + kHold);
  EXPECT_EQ(pacer.nextDue(), kStart + kHold + kGap);
  EXPECT_EQ(writeDue(pacer, kStart + kHold + kGap - kInstant), Changes{});
  EXPECT_EQ(writeDue(pacer, kStart + kHold + kGap), Changes{Change::press});
  EXPECT_EQ(writeDue(pacer, kStart + 2 * kHold + kGap), Changes{Change::release});
}

TEST(ClickPacer, SpacingCountsFromTheEndOfTheWrite) {
  ClickPacer pacer;
  pacer.submit(Change::press);
  pacer.submit(Change::release);
  ASSERT_EQ(pacer.takeDue(kStart), Change::press);
  const double late = kStart + 0.02;
  pacer.wrote(Change::press, late);
  EXPECT_EQ(pacer.nextDue(), late + kHold);
}

TEST(ClickPacer, LoneReleaseGoesOutAtOnceAndDelaysNoClick) {
  ClickPacer pacer;
  pacer.submit(Change::release);
  EXPECT_EQ(writeDue(pacer, kStart), Changes{Change::release});
  EXPECT_FALSE(pacer.isDown());
  pacer.submit(Change::press);
  EXPECT_EQ(writeDue(pacer, kStart), Changes{Change::press});
}

TEST(ClickPacer, RepeatedPressDoesNotLengthenTheHold) {
  ClickPacer pacer;
  pacer.submit(Change::press);
  writeDue(pacer, kStart);
  pacer.submit(Change::press);
  EXPECT_EQ(writeDue(pacer, kStart + 0.02), Changes{Change::press});
  pacer.submit(Change::release);
  EXPECT_EQ(pacer.nextDue(), kStart + kHold);
}

TEST(ClickPacer, RefusesWholeClicksWhenFull) {
  ClickPacer pacer;
  int accepted = 0;
  while (pacer.submit(Change::press)) {
    ASSERT_TRUE(pacer.submit(Change::release)) << "an accepted press has room for its release";
    ++accepted;
  }
  EXPECT_EQ(accepted, 16);
  EXPECT_FALSE(pacer.submit(Change::release)) << "goes the way of its press";
  EXPECT_FALSE(pacer.submit(Change::press));
  EXPECT_FALSE(pacer.submit(Change::release));

  double now = kStart;
  int presses = 0;
  int releases = 0;
  while (const auto due = pacer.nextDue()) {
    now = std::max(now, *due);
    for (const Change change : writeDue(pacer, now))
      ++(change == Change::press ? presses : releases);
  }
  EXPECT_EQ(presses, accepted);
  EXPECT_EQ(releases, accepted);
  EXPECT_FALSE(pacer.isDown());
  EXPECT_TRUE(pacer.submit(Change::press)) << "room again";
}

TEST(ClickPacer, ClearForgetsWhatWaitsAndKeepsWhatIsDown) {
  ClickPacer pacer;
  pacer.submit(Change::press);
  pacer.submit(Change::release);
  writeDue(pacer, kStart);
  pacer.clear();
  EXPECT_EQ(pacer.nextDue(), std::nullopt);
  EXPECT_TRUE(pacer.isDown());
}

// Whatever is asked for, whenever: changes alternate with both spacings kept, and nothing stays
// down that was asked to be released.
TEST(ClickPacer, AnySequenceKeepsTheSpacingAndEndsReleased) {
  std::mt19937 random(20240607);
  for (int round = 0; round < 200; ++round) {
    ClickPacer pacer;
    double now = kStart;
    bool down = false;
    double changedAt = -1;
    const auto write = [&](double at) {
      for (const Change change : writeDue(pacer, at)) {
        const bool press = change == Change::press;
        if (press == down) continue;
        if (changedAt >= 0) {
          ASSERT_GE(at - changedAt, (press ? kGap : kHold) - 1e-9);
        }
        down = press;
        changedAt = at;
      }
    };
    for (int i = 0; i < 100; ++i) {
      now += std::uniform_real_distribution<double>(0, 0.03)(random);
      while (pacer.nextDue() && *pacer.nextDue() <= now) write(std::max(*pacer.nextDue(), kStart));
      switch (std::uniform_int_distribution<int>(0, 3)(random)) {
        case 0:
          pacer.submit(Change::release);
          break;
        default:
          pacer.submit(Change::press);
          pacer.submit(Change::release);
      }
      write(now);
    }
    pacer.submit(Change::release);
    while (const auto due = pacer.nextDue()) write(now = std::max(now, *due));
    EXPECT_FALSE(down);
    EXPECT_FALSE(pacer.isDown());
  }
}

}  // namespace
}  // namespace velotap
