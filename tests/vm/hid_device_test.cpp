#include "hid_device.hpp"

#include <gtest/gtest.h>

#include <cstdint>
#include <string>
#include <vector>

namespace velotap::vm {
namespace {

using Bytes = std::vector<std::uint8_t>;

int signedBits(std::uint32_t value, int bits) {
  const std::uint32_t sign = 1U << (bits - 1);
  return static_cast<int>((value & (2 * sign - 1)) ^ sign) - static_cast<int>(sign);
}

/// A contact as the kernel's driver reads it, written after its source and not after the encoder.
HidContact decodeMouse(const std::uint8_t* t) {
  return {.id = ((t[6] << 2) | (t[5] >> 6)) & 0xf,
          .x = signedBits((t[1] << 8) | t[0], 12),
          .y = -signedBits((t[2] << 4) | (t[1] >> 4), 12),
          .major = t[3],
          .minor = t[4],
          .size = t[5] & 0x3f,
          .pressure = 0,
          .orientation = (t[6] >> 2) - 32,
          .state = static_cast<TouchState>(t[7] & 0xf0)};
}

HidContact decodeTrackpad1(const std::uint8_t* t) {
  return {.id = ((t[7] << 2) | (t[6] >> 6)) & 0xf,
          .x = signedBits((t[1] << 8) | t[0], 13),
          .y = -signedBits((t[3] << 11) | (t[2] << 3) | (t[1] >> 5), 13),
          .major = t[4],
          .minor = t[5],
          .size = t[6] & 0x3f,
          .pressure = 0,
          .orientation = (t[7] >> 2) - 32,
          .state = static_cast<TouchState>(t[8] & 0xf0)};
}

HidContact decodeTrackpad2(const std::uint8_t* t) {
  const bool down = (t[3] & 0xc0) == 0x80;
  return {.id = t[8] & 0xf,
          .x = signedBits((t[1] << 8) | t[0], 13),
          .y = -signedBits((t[3] << 11) | (t[2] << 3) | (t[1] >> 5), 13),
          .major = t[4],
          .minor = t[5],
          .size = t[6],
          .pressure = t[7],
          .orientation = (t[8] >> 5) - 4,
          .state = down ? TouchState::drag : TouchState::none};
}

TEST(HidDevice, EncodesTheFramesOfARealTrackpad) {
  const Bytes oneFinger{0x31, 0x48, 0x83, 0x83, 0x7e, 0x00, 0xe8,
                        0x8f, 0xa2, 0x64, 0x19, 0x0f, 0x85};
  HidContact contact = decodeTrackpad2(oneFinger.data() + 4);
  EXPECT_EQ(contact.id, 5);
  EXPECT_EQ(contact.x, 126);
  EXPECT_EQ(contact.major, 0xa2);
  Bytes encoded = encodeReport(HidKind::magicTrackpad2, {.contacts = {contact}});
  // The header's clock differs, and four bits beside the state that the driver does not read.
  encoded[7] = static_cast<std::uint8_t>(encoded[7] | (oneFinger[7] & 0x3c));
  EXPECT_EQ(Bytes(encoded.begin() + 4, encoded.end()),
            Bytes(oneFinger.begin() + 4, oneFinger.end()));

  const Bytes two{0x31, 0x60, 0x48, 0x84, 0x05, 0x61, 0xe8, 0x23, 0x75, 0x51, 0x1b,
                  0x07, 0xa5, 0x40, 0xde, 0xb8, 0x23, 0x5d, 0x4b, 0x1a, 0x0d, 0x89};
  contact = decodeTrackpad2(two.data() + 13);
  EXPECT_EQ(contact.id, 9);
  EXPECT_EQ(contact.pressure, 0x0d);
}

TEST(HidDevice, MouseContactsComeBackFromTheReport) {
  for (const HidKind kind : {HidKind::magicMouse1, HidKind::magicMouse2}) {
    const std::size_t header = kind == HidKind::magicMouse1 ? 6 : 14;
    const HidModel& model = hidModel(kind);
    for (const int x : {model.x.minimum, -1100, -1, 0, 1, 1258, model.x.maximum}) {
      for (const int y : {model.y.minimum, -1589, -1, 0, 1, 2047, model.y.maximum}) {
        for (const int id : {0, 3, 4, 15}) {
          const HidContact contact{.id = id,
                                   .x = x,
                                   .y = y,
                                   .major = 255,
                                   .minor = 1,
                                   .size = 63,
                                   .pressure = 0,
                                   .orientation = -32,
                                   .state = TouchState::start};
          ASSERT_EQ(contactProblem(model, contact), "");
          const Bytes report = encodeReport(kind, {.contacts = {contact, contact}});
          ASSERT_EQ(report.size(), header + 16);
          EXPECT_EQ(decodeMouse(report.data() + header), contact);
          EXPECT_EQ(decodeMouse(report.data() + header + 8), contact);
        }
      }
    }
  }
}

TEST(HidDevice, TrackpadContactsComeBackFromTheReport) {
  for (const int x : {-4096, -3678, -1, 0, 1, 3934, 4095}) {
    for (const int y : {-4095, -2478, -1, 0, 1, 2587, 4096}) {
      HidContact contact{.id = 13,
                         .x = x,
                         .y = y,
                         .major = 9,
                         .minor = 255,
                         .size = 33,
                         .pressure = 0,
                         .orientation = 3,
                         .state = TouchState::drag};
      const Bytes first = encodeReport(HidKind::magicTrackpad1, {.contacts = {contact}});
      ASSERT_EQ(first.size(), 13U);
      EXPECT_EQ(decodeTrackpad1(first.data() + 4), contact);
      contact.pressure = 253;
      const Bytes second = encodeReport(HidKind::magicTrackpad2, {.contacts = {contact}});
      ASSERT_EQ(second.size(), 13U);
      EXPECT_EQ(decodeTrackpad2(second.data() + 4), contact);
    }
  }
}

TEST(HidDevice, LiftedContactsAreNotDown) {
  const HidContact lifted{.id = 2, .x = 5, .y = 6, .state = TouchState::none};
  const Bytes mouse = encodeReport(HidKind::magicMouse2, {.contacts = {lifted}});
  EXPECT_EQ(decodeMouse(mouse.data() + 14).state, TouchState::none);
  const Bytes pad = encodeReport(HidKind::magicTrackpad2, {.contacts = {lifted}});
  EXPECT_EQ(decodeTrackpad2(pad.data() + 4).state, TouchState::none);
}

TEST(HidDevice, MotionAndButtonsAreInTheHeader) {
  const HidFrame frame{
      .buttons = 3, .dx = -5, .dy = 300, .wheel = -1, .timestamp = 0x123456, .contacts = {}};
  EXPECT_EQ(encodeReport(HidKind::magicMouse2, frame),
            (Bytes{0x12, 0x03, 0xfb, 0xff, 0x2c, 0x01, 0, 0, 0, 0, 0, 0x56, 0x34, 0x12}));
  EXPECT_EQ(encodeReport(HidKind::plainMouse, frame), (Bytes{0x03, 0xfb, 0x2c, 0xff}));
  const Bytes first = encodeReport(HidKind::magicMouse1, frame);
  EXPECT_EQ(signedBits(((first[3] & 0x0cU) << 6) | first[1], 10), -5);
  EXPECT_EQ(signedBits(((first[3] & 0x30U) << 4) | first[2], 10), 300);
  EXPECT_EQ(first[3] & 3, 3);
  EXPECT_EQ(encodeReport(HidKind::magicTrackpad2, frame)[1] & 1, 1);
}

TEST(HidDevice, WhatDoesNotFitIsRefusedWithItsName) {
  const HidModel& mouse = hidModel(HidKind::magicMouse2);
  EXPECT_EQ(contactProblem(mouse, {.x = 2047}), "");
  EXPECT_EQ(contactProblem(mouse, {.x = 2048}), "x 2048 is outside -2048..2047");
  EXPECT_EQ(contactProblem(mouse, {.y = 2048}), "");
  EXPECT_EQ(contactProblem(mouse, {.y = 2049}), "y 2049 is outside -2047..2048");
  EXPECT_EQ(contactProblem(mouse, {.id = 15}), "");
  EXPECT_NE(contactProblem(mouse, {.id = 16}), "");
  EXPECT_NE(contactProblem(mouse, {.id = -1}), "");
  EXPECT_EQ(contactProblem(mouse, {.size = 63}), "");
  EXPECT_NE(contactProblem(mouse, {.size = 64}), "");
  EXPECT_EQ(contactProblem(hidModel(HidKind::magicTrackpad2), {.size = 255}), "");
  EXPECT_EQ(contactProblem(hidModel(HidKind::plainMouse), {}), "plain-mouse has no touch surface");
}

TEST(HidDevice, EveryKindHasAModelAnOptionAndADescriptor) {
  for (const HidModel& model : hidModels()) {
    EXPECT_EQ(hidKindFromOption(model.option), model.kind);
    EXPECT_EQ(&hidModel(model.kind), &model);
    const Bytes descriptor = hidDescriptor(model.kind);
    ASSERT_FALSE(descriptor.empty());
    EXPECT_EQ(descriptor.back(), 0xc0) << "a descriptor ends with the end of its collection";
    if (model.multitouch) {
      EXPECT_EQ(contactProblem(model, model.finger), "");
    }
  }
  EXPECT_FALSE(hidKindFromOption("magic-mouse-3"));
}

}  // namespace
}  // namespace velotap::vm
