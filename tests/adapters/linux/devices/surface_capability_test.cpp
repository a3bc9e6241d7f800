#include "adapters/linux/devices/surface_capability.hpp"

#include <gtest/gtest.h>
#include <linux/input-event-codes.h>

#include <initializer_list>
#include <sstream>
#include <string>
#include <vector>

namespace velotap {
namespace {

// A bitmap as the kernel prints it: words of the machine's width, the most significant first,
// leading words of zero left out.
std::string bitmapOf(std::initializer_list<unsigned> bits) {
  constexpr unsigned kWidth = 8 * sizeof(long);
  std::vector<unsigned long> words(1);
  for (const unsigned bit : bits) {
    if (words.size() <= bit / kWidth) words.resize(bit / kWidth + 1);
    words[bit / kWidth] |= 1UL << (bit % kWidth);
  }
  std::ostringstream text;
  text << std::hex;
  for (auto word = words.rbegin(); word != words.rend(); ++word) {
    if (word != words.rbegin()) text << ' ';
    text << *word;
  }
  text << '\n';
  return text.str();
}

const std::string kTouchAxes = bitmapOf(
    {ABS_MT_SLOT, ABS_MT_TOUCH_MAJOR, ABS_MT_POSITION_X, ABS_MT_POSITION_Y, ABS_MT_TRACKING_ID});

TEST(SurfaceCapability, BitsOfABitmapAreFound) {
  EXPECT_TRUE(bitmapHas("1\n", 0));
  EXPECT_FALSE(bitmapHas("1\n", 1));
  EXPECT_TRUE(bitmapHas("8\n", 3));
  EXPECT_FALSE(bitmapHas("0\n", 0));
}

TEST(SurfaceCapability, WordsCountFromTheRight) {
  constexpr unsigned kWidth = 8 * sizeof(long);
  const std::string bitmap = bitmapOf({0, kWidth - 1, kWidth, 3 * kWidth + 5});
  for (const unsigned bit : {0U, kWidth - 1, kWidth, 3 * kWidth + 5}) {
    EXPECT_TRUE(bitmapHas(bitmap, bit)) << bit;
  }
  for (const unsigned bit : {1U, kWidth + 1, 2 * kWidth, 3 * kWidth + 4, 4 * kWidth, 40 * kWidth}) {
    EXPECT_FALSE(bitmapHas(bitmap, bit)) << bit;
  }
}

TEST(SurfaceCapability, WhatIsNoBitmapHasNoBits) {
  for (const char* text : {"", "\n", " ", "zz", "1g", "-1", "10000000000000000f"}) {
    EXPECT_FALSE(bitmapHas(text, 0)) << '"' << text << '"';
  }
}

TEST(SurfaceCapability, MouseWithATouchSurfaceIsOne) {
  EXPECT_TRUE(isMultitouchSurface({.absoluteAxes = kTouchAxes, .properties = "0\n", .phys = ""}));
}

TEST(SurfaceCapability, TrackpadIsOne) {
  EXPECT_TRUE(
      isMultitouchSurface({.absoluteAxes = bitmapOf({ABS_X, ABS_Y, ABS_MT_SLOT, ABS_MT_POSITION_X,
                                                     ABS_MT_POSITION_Y, ABS_MT_PRESSURE}),
                           .properties = bitmapOf({INPUT_PROP_POINTER, INPUT_PROP_BUTTONPAD}),
                           .phys = "usb-0000:00:14.0-1/input1"}));
}

TEST(SurfaceCapability, TouchScreenIsNot) {
  EXPECT_FALSE(isMultitouchSurface(
      {.absoluteAxes = kTouchAxes, .properties = bitmapOf({INPUT_PROP_DIRECT}), .phys = ""}));
}

TEST(SurfaceCapability, DeviceWithoutBothAxesIsNot) {
  for (const std::string& axes : {bitmapOf({}), bitmapOf({ABS_X, ABS_Y}),
                                  bitmapOf({ABS_MT_POSITION_X}), bitmapOf({ABS_MT_POSITION_Y})}) {
    EXPECT_FALSE(isMultitouchSurface({.absoluteAxes = axes, .properties = "0\n", .phys = ""}));
  }
}

TEST(SurfaceCapability, DeviceOfOurOwnIsNot) {
  for (const char* phys : {"velotap/", "velotap/clone", "velotap/gesture"}) {
    EXPECT_FALSE(
        isMultitouchSurface({.absoluteAxes = kTouchAxes, .properties = "0\n", .phys = phys}));
  }
  for (const char* phys : {"velotap", "usb-velotap/1", "Velotap/clone"}) {
    EXPECT_TRUE(
        isMultitouchSurface({.absoluteAxes = kTouchAxes, .properties = "0\n", .phys = phys}))
        << phys;
  }
}

}  // namespace
}  // namespace velotap
