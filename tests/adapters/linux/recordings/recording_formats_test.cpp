#include <gtest/gtest.h>

#include <array>
#include <ostream>
#include <string>

#include "adapters/linux/recordings/evdev_recording.hpp"

namespace velotap::test {
namespace {

constexpr const char* kEvemu =
    "# EVEMU 1.3\n"
    "# a comment\n"
    "N: Magic Mouse 2 #1\n"
    "I: 0005 004c 0269 0001\n"
    "P: 01 00 00 00 00 00 00 00\n"
    "B: 01 00 00 00 00 00 00 00 00\n"
    "B: 01 00 00 00 00 00 00 00 00\n"
    "B: 01 00 00 00 00 00 00 00 00\n"
    "B: 01 00 00 00 00 00 00 00 00\n"
    "B: 01 00 00 07 00 00 00 00 00\n"
    "B: 02 03 00 00 00 00 00 00 00\n"
    "A: 35 -1100 1258 4 0 26\n"
    "E: 12.000345 0003 0035 -638\t# EV_ABS / ABS_MT_POSITION_X\n"
    "E: 12.000345 0000 0000 0000\n";

constexpr const char* kEvtest =
    "Input driver version is 1.0.1\n"
    "Input device ID: bus 0x5 vendor 0x4c product 0x269 version 0x1\n"
    "Input device name: \"Magic Mouse 2\"\n"
    "Supported events:\n"
    "  Event type 1 (EV_KEY)\n"
    "    Event code 272 (BTN_LEFT)\n"
    "  Event type 3 (EV_ABS)\n"
    "    Event code 53 (ABS_MT_POSITION_X)\n"
    "      Value      0\n"
    "      Min    -1100\n"
    "      Max     1258\n"
    "      Fuzz       4\n"
    "      Resolution      26\n"
    "Properties:\n"
    "  Property type 0 (INPUT_PROP_POINTER)\n"
    "Testing ... (interrupt to exit)\n"
    "Event: time 12.000345, type 3 (EV_ABS), code 53 (ABS_MT_POSITION_X), value -638\n"
    "Event: time 12.000345, type 4 (EV_MSC), code 4 (MSC_SCAN), value 90001\n"
    "Event: time 12.000345, -------------- SYN_REPORT ------------\n";

constexpr const char* kYaml =
    "# libinput record\n"
    "ndevices: 1\n"
    "devices:\n"
    "- node: /dev/input/event1\n"
    "  evdev:\n"
    "    name: \"Magic Mouse 2\"\n"
    "    id: [5, 76, 617, 1]\n"
    "    codes:\n"
    "      1: [272, 273, 274] # EV_KEY\n"
    "      2: [0, 1]\n"
    "    absinfo:\n"
    "      53: [-1100, 1258, 4, 0, 26]\n"
    "    properties: [0]\n"
    "  events:\n"
    "  - evdev:\n"
    "    - [ 12, 345, 3, 53, -638]\n"
    "    - [ 12, 345, 0, 0, 0]\n";

const EvdevRecording* good(const RecordingResult& result) {
  if (const auto* error = std::get_if<RecordingError>(&result)) {
    ADD_FAILURE() << error->line << ": " << error->message;
  }
  return std::get_if<EvdevRecording>(&result);
}

class RecordingFormats : public testing::TestWithParam<const char*> {};

TEST_P(RecordingFormats, tellTheSameStory) {
  const RecordingResult result = parseRecording(GetParam());
  const EvdevRecording* recording = good(result);
  ASSERT_NE(recording, nullptr);
  const EvdevDevice& device = recording->device;
  EXPECT_TRUE(device.name.starts_with("Magic Mouse 2"));
  EXPECT_EQ(device.bus, BUS_BLUETOOTH);
  EXPECT_EQ(device.vendor, 0x004C);
  EXPECT_EQ(device.product, 0x0269);
  EXPECT_TRUE(device.properties[INPUT_PROP_POINTER]);
  EXPECT_TRUE(device.keys[BTN_LEFT]);
  ASSERT_TRUE(device.absoluteAxes[ABS_MT_POSITION_X]);
  EXPECT_EQ(device.absoluteAxes[ABS_MT_POSITION_X]->minimum, -1100);
  EXPECT_EQ(device.absoluteAxes[ABS_MT_POSITION_X]->maximum, 1258);
  EXPECT_EQ(device.absoluteAxes[ABS_MT_POSITION_X]->resolution, 26);
  ASSERT_EQ(recording->events.size(), 2U);
  EXPECT_EQ(recording->events[0].input_event_sec, 12);
  EXPECT_EQ(recording->events[0].input_event_usec, 345);
  EXPECT_EQ(recording->events[0].code, ABS_MT_POSITION_X);
  EXPECT_EQ(recording->events[0].value, -638);
  EXPECT_EQ(recording->events[1].type, EV_SYN);
}

std::string formatName(const testing::TestParamInfo<const char*>& tested) {
  constexpr std::array kNames = {"evemu", "evtest", "libinput"};
  return kNames[tested.index];
}

INSTANTIATE_TEST_SUITE_P(All, RecordingFormats, testing::Values(kEvemu, kEvtest, kYaml),
                         formatName);

TEST(RecordingDetails, aNameKeepsItsNumberSign) {
  EXPECT_EQ(good(parseEvemu(kEvemu))->device.name, "Magic Mouse 2 #1");
}

TEST(RecordingDetails, windowsLineEndsAreLineEnds) {
  std::string text(kEvemu);
  for (std::size_t i = text.find('\n'); i != std::string::npos; i = text.find('\n', i + 2)) {
    text.insert(i, "\r");
  }
  EXPECT_EQ(good(parseEvemu(text))->events.size(), 2U);
}

struct BadCase {
  const char* text;
  int line;
};

std::ostream& operator<<(std::ostream& out, const BadCase& c) {
  return out << testing::PrintToString(std::string(c.text));
}

class BadRecordings : public testing::TestWithParam<BadCase> {};

TEST_P(BadRecordings, areNamedWithTheirLine) {
  const RecordingResult result = parseRecording(GetParam().text);
  const auto* error = std::get_if<RecordingError>(&result);
  ASSERT_NE(error, nullptr);
  EXPECT_EQ(error->line, GetParam().line);
  EXPECT_FALSE(error->message.empty());
}

INSTANTIATE_TEST_SUITE_P(
    All, BadRecordings,
    testing::Values(BadCase{"", 0}, BadCase{"hello\n", 0},
                    BadCase{"N: x\nE: 1.5 0003 0035 1\n", 2},     // six digits after the point
                    BadCase{"N: x\nE: 1.500000 0003 0035\n", 2},  // no value
                    BadCase{"N: x\nE: 1.500000 zz 0035 1\n", 2}, BadCase{"N: x\nI: 5 4c\n", 2},
                    BadCase{"N: x\nA: 99 0 1 0 0\n", 2},            // no such axis
                    BadCase{"N: x\nA: 35 0 99999999999 0 0\n", 2},  // too large a number
                    BadCase{"N: x\n?: 1\n", 2}, BadCase{"N: x\nnonsense\n", 2},
                    BadCase{"# EVEMU 1.3\nI: 5 4c 269 1\n", 0},  // no name
                    BadCase{"Input device ID: bus 0x5\nEvent: time 1.5, type 3\n", 2},
                    BadCase{"ndevices: 1\ndevices: [\n", 3}, BadCase{"ndevices: 1\n", 0},
                    BadCase{"ndevices: 1\ndevices:\n- evdev:\n    absinfo:\n      53: [0,1,0,0,0]\n"
                            "  events:\n  - evdev:\n    - [1, 2, 3]\n",
                            8},
                    // Ten lines like this could stand for more events than memory holds.
                    BadCase{"ndevices: 1\ndevices:\n- &a\n  evdev: 1\n- *a\n", 5}));

}  // namespace
}  // namespace velotap::test
