#include "settings/device_cards.hpp"

#include <gtest/gtest.h>

#include <array>

#include "settings_fixture.hpp"

namespace velotap {
namespace {

constexpr std::array kTrackpadOnly = {DeviceClass::trackpad};

TEST(DeviceCards, StandTrackpadFirst) {
  const auto cards = connectedDeviceCards(kTrackpadOnly, test::english());
  ASSERT_EQ(cards.size(), 2U);
  EXPECT_EQ(cards[0].device, GestureDevice::trackpad);
  EXPECT_EQ(cards[0].name, "Trackpad");
  EXPECT_EQ(cards[0].symbol, "rectangle.and.hand.point.up.left");
  EXPECT_EQ(cards[0].status, "Connected");
  EXPECT_TRUE(cards[0].connected);
  EXPECT_EQ(cards[1].device, GestureDevice::mouse);
  EXPECT_EQ(cards[1].name, "Magic Mouse");
  EXPECT_EQ(cards[1].symbol, "computermouse");
  EXPECT_EQ(cards[1].status, "Not connected");
  EXPECT_FALSE(cards[1].connected);
  EXPECT_EQ(cards[1].help, "Show the gestures of this device: Magic Mouse");
}

TEST(DeviceConnectionStatus, TellsThreeStatesApart) {
  const auto connected =
      deviceConnectionStatus(GestureDevice::trackpad, kTrackpadOnly, true, test::english());
  EXPECT_EQ(connected.text, "Connected");
  EXPECT_EQ(connected.symbol, "cable.connector");
  const auto absent =
      deviceConnectionStatus(GestureDevice::mouse, kTrackpadOnly, true, test::english());
  EXPECT_EQ(absent.text, "Not connected");
  EXPECT_EQ(absent.symbol, "info.circle");
  EXPECT_FALSE(absent.connected);
  const auto impossible =
      deviceConnectionStatus(GestureDevice::trackpad, kTrackpadOnly, false, test::english());
  EXPECT_EQ(impossible.text, "Not available");
  EXPECT_FALSE(impossible.connected);
}

}  // namespace
}  // namespace velotap
