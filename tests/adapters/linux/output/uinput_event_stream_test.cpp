#include "adapters/linux/output/uinput_event_stream.hpp"

#include <gtest/gtest.h>

#include <cstdlib>
#include <vector>

#include "adapters/linux/runtime/posix_clock.hpp"
#include "adapters/linux/runtime/posix_main_queue.hpp"
#include "recording_device.hpp"

namespace velotap {
namespace {

void ignore(const char*, int) {}

// A layout on which the key at position 42 types "[".
class BracketElsewhere final : public KeyTranslator {
 public:
  [[nodiscard]] std::optional<std::string> translate(std::uint16_t keyCode) const override {
    if (keyCode == 42) return "[";
    return "x";
  }
};

class UinputEventStreamTest : public testing::Test {
 protected:
  UinputEventStreamTest() {
    unsetenv("DISPLAY");
    locator.emplace(clock, queue);
    stream.emplace(
        output, *locator, [this](const GestureEvent& e) { gestures.push_back(e); },
        [this] { ++announcements; });
  }

  void post(MouseEventType type, int button) {
    const auto event = stream->makeMouse(type, button, {.x = 3, .y = 4});
    ASSERT_TRUE(event);
    EXPECT_EQ(event->location, (Point{.x = 3, .y = 4}));
    stream->post(*event);
  }
  void press(std::uint16_t keyCode, std::uint64_t flags) {
    for (const bool down : {true, false}) {
      auto event = stream->makeKey(keyCode, down);
      ASSERT_TRUE(event);
      event->flags = flags;
      stream->post(*event);
    }
  }

  PosixClock clock;
  PosixMainQueue queue{clock};
  RecordingDevice device;
  PacedOutput output{device, clock, &ignore};
  std::vector<GestureEvent> gestures;
  int announcements = 0;
  std::optional<PointerLocator> locator;
  std::optional<UinputEventStream> stream;
};

TEST_F(UinputEventStreamTest, MiddleClickBecomesButtonEvents) {
  post(MouseEventType::otherDown, kMiddleButton);
  post(MouseEventType::otherUp, kMiddleButton);
  EXPECT_EQ(spoken(device.awaitFrames(2)), "+274 -274");
}

TEST_F(UinputEventStreamTest, OtherMouseEventsAreNotForThisDevice) {
  for (const auto type :
       {MouseEventType::leftDown, MouseEventType::leftUp, MouseEventType::rightDown,
        MouseEventType::rightUp, MouseEventType::leftDragged, MouseEventType::rightDragged,
        MouseEventType::otherDragged}) {
    post(type, 0);
  }
  EXPECT_TRUE(device.frames().empty());
}

TEST_F(UinputEventStreamTest, BackIsAltLeftWhereverTheLayoutHasItsKey) {
  press(33, kCommandFlag);
  EXPECT_EQ(spoken(device.frames()), "+56 +105 -105 -56");
  stream->setLayout(std::make_unique<BracketElsewhere>());
  press(42, kCommandFlag);
  EXPECT_EQ(spoken(device.frames()), "+56 +105 -105 -56 +56 +105 -105 -56");
}

TEST_F(UinputEventStreamTest, LayoutThatChangesBetweenPressAndReleaseLeavesNoKeyDown) {
  auto key = stream->makeKey(42, true);
  ASSERT_TRUE(key);
  key->flags = kCommandFlag;
  stream->setLayout(std::make_unique<BracketElsewhere>());
  stream->post(*key);
  stream->setLayout(nullptr);
  key->down = false;
  stream->post(*key);
  EXPECT_EQ(spoken(device.frames()), "+56 +105 -105 -56");
}

TEST_F(UinputEventStreamTest, SecondPressReleasesWhatTheFirstPutDown) {
  auto key = stream->makeKey(42, true);
  ASSERT_TRUE(key);
  key->flags = kCommandFlag;
  stream->setLayout(std::make_unique<BracketElsewhere>());
  stream->post(*key);
  stream->post(*key);
  key->down = false;
  stream->post(*key);
  EXPECT_EQ(spoken(device.frames()), "+56 +105 -105 -56 +56 +105 -105 -56");
}

TEST_F(UinputEventStreamTest, ReleaseOfWhatWasNotPressedPostsNothing) {
  auto key = stream->makeKey(33, false);
  ASSERT_TRUE(key);
  key->flags = kCommandFlag;
  stream->post(*key);
  EXPECT_TRUE(device.frames().empty());
}

TEST_F(UinputEventStreamTest, KeyWithoutAPlaceOnTheKeyboardPostsNothing) {
  press(52, 0);
  EXPECT_TRUE(device.frames().empty());
}

TEST_F(UinputEventStreamTest, GesturesAreHandedOn) {
  stream->post(GestureEvent{
      .kind = GestureKind::rotate, .phase = GesturePhase::changed, .value = 2.5, .location = {}});
  ASSERT_EQ(gestures.size(), 1U);
  EXPECT_EQ(gestures[0].kind, GestureKind::rotate);
  EXPECT_EQ(gestures[0].value, 2.5);
  EXPECT_EQ(announcements, 0);
  stream->prepareGestures();
  EXPECT_EQ(announcements, 1);
}

TEST_F(UinputEventStreamTest, WithoutAnXSessionNobodyKnowsWhereThePointerIs) {
  EXPECT_EQ(stream->pointerLocation(), std::nullopt);
}

}  // namespace
}  // namespace velotap
