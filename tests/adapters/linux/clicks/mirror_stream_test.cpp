#include "adapters/linux/clicks/mirror_stream.hpp"

#include <gtest/gtest.h>

#include <string>

#include "../evdev/event_maker.hpp"

namespace velotap::test {
namespace {

// What left, in order: "[type:code=value …]" for a frame, "+code" and "-code" for buttons.
class Spoken final : public MirrorSink {
 public:
  void forward(std::span<const input_event> frame) override {
    ASSERT_FALSE(frame.empty());
    EXPECT_EQ(frame.back().type, EV_SYN);
    EXPECT_EQ(frame.back().code, SYN_REPORT);
    text += "[";
    for (const input_event& e : frame.first(frame.size() - 1)) {
      if (text.back() != '[') text += " ";
      text += std::to_string(e.type) + ":" + std::to_string(e.code) + "=" + std::to_string(e.value);
    }
    text += "]";
    ++frames;
  }
  void button(std::uint16_t code, bool down) override {
    text += (down ? "+" : "-") + std::to_string(code);
  }
  void lost() override { text += "lost"; }

  std::string text;
  int frames = 0;
};

std::vector<input_event> moved(int x, double time = 0) {
  return {event(EV_REL, REL_X, x, time), report(time)};
}

std::vector<input_event> scrolled(double time = 0) {
  return {event(EV_REL, REL_X, 1, time),
          event(EV_REL, REL_WHEEL, 1, time),
          event(EV_REL, REL_WHEEL_HI_RES, 120, time),
          event(EV_REL, REL_HWHEEL, 1, time),
          event(EV_REL, REL_HWHEEL_HI_RES, 120, time),
          report(time)};
}

std::string handled(MirrorStream& stream, const std::vector<input_event>& events) {
  Spoken sink;
  stream.handle(events, sink);
  return sink.text;
}

constexpr const char* kAllWheels = "[2:0=1 2:8=1 2:11=120 2:6=1 2:12=120]";

TEST(MirrorStream, motionPassesAndTheTouchSurfaceOfAMouseStaysHere) {
  MirrorStream stream(magicMouse());
  std::vector<input_event> events = contact(1, 5, 10, 20);
  append(events, moved(3));
  EXPECT_EQ(handled(stream, events), "[2:0=3]");
  EXPECT_EQ(handled(stream, {event(EV_ABS, ABS_MT_POSITION_X, 11), report()}), "");
}

TEST(MirrorStream, saysWhetherContactsWereSpokenOf) {
  MirrorStream stream(magicMouse());
  Spoken sink;
  const auto told = [&](const std::vector<input_event>& events) {
    stream.handle(events, sink);
    return stream.toldOfContacts();
  };
  EXPECT_FALSE(told({event(EV_REL, REL_X, 1), report()}));
  EXPECT_TRUE(told({event(EV_REL, REL_X, 1), event(EV_ABS, ABS_MT_POSITION_X, 7), report()}));
  EXPECT_FALSE(told({event(EV_KEY, BTN_LEFT, 1), report()}));
  EXPECT_TRUE(told({event(EV_SYN, SYN_DROPPED, 0)})) << "contacts may be among what was lost";
  EXPECT_TRUE(told({event(EV_REL, REL_X, 1), report()})) << "the end of what was lost";
  EXPECT_FALSE(told({event(EV_REL, REL_X, 1), report()}));
  EXPECT_TRUE(told({event(EV_ABS, ABS_MT_POSITION_X, 8)}));
  EXPECT_TRUE(told({report()})) << "a frame in two pieces";
  EXPECT_FALSE(told({}));
}

TEST(MirrorStream, aButtonFollowsTheFrameItCameIn) {
  MirrorStream stream(magicMouse());
  EXPECT_EQ(handled(stream, {event(EV_KEY, BTN_LEFT, 1), event(EV_REL, REL_X, 2), report()}),
            "[2:0=2]+272");
  EXPECT_EQ(handled(stream, {event(EV_KEY, BTN_LEFT, 0), report()}), "-272");
}

TEST(MirrorStream, autorepeatIsNoClick) {
  MirrorStream stream(magicMouse());
  EXPECT_EQ(handled(stream, {event(EV_KEY, BTN_LEFT, 2), report()}), "");
}

TEST(MirrorStream, aFrameMayComeInPieces) {
  MirrorStream stream(magicMouse());
  EXPECT_EQ(handled(stream, {event(EV_REL, REL_X, 2)}), "");
  EXPECT_EQ(handled(stream, {event(EV_REL, REL_Y, 3), report()}), "[2:0=2 2:1=3]");
}

TEST(MirrorStream, aTouchpadPassesWholeButForItsButton) {
  MirrorStream stream(magicTrackpad());
  std::vector<input_event> events = contact(1, 5, 10, 20);
  events.push_back(event(EV_KEY, BTN_TOUCH, 1));
  events.push_back(event(EV_KEY, BTN_LEFT, 1));
  events.push_back(report());
  EXPECT_EQ(handled(stream, events), "[3:47=1 3:57=5 3:53=10 3:54=20 1:330=1]+272");
}

TEST(MirrorStream, oneFingerScrollsAndTwoOrThreeDoNot) {
  MirrorStream stream(magicMouse());
  stream.setWheelLimit(2);
  handled(stream, {contact(0, 1, 0, 0)});
  EXPECT_EQ(handled(stream, scrolled()), kAllWheels);
  handled(stream, {contact(1, 2, 0, 0)});
  EXPECT_EQ(handled(stream, scrolled()), "[2:0=1]");
  handled(stream, {contact(2, 3, 0, 0)});
  EXPECT_EQ(handled(stream, scrolled()), "[2:0=1]");
}

TEST(MirrorStream, twoFingersScrollWithTheHigherLimit) {
  MirrorStream stream(magicMouse());
  stream.setWheelLimit(3);
  handled(stream, {contact(0, 1, 0, 0)});
  handled(stream, {contact(1, 2, 0, 0)});
  EXPECT_EQ(handled(stream, scrolled()), kAllWheels);
  handled(stream, {contact(2, 3, 0, 0)});
  EXPECT_EQ(handled(stream, scrolled()), "[2:0=1]");
}

TEST(MirrorStream, theWheelTurnsAgainOnceTheGestureIsOver) {
  MirrorStream stream(magicMouse());
  handled(stream, {contact(0, 1, 0, 0)});
  handled(stream, {contact(1, 2, 0, 0)});
  EXPECT_EQ(handled(stream, scrolled(1)), "[2:0=1]");
  handled(stream, lift(1));
  EXPECT_EQ(handled(stream, scrolled(1.1)), "[2:0=1]");
  EXPECT_EQ(handled(stream, scrolled(1.2)), kAllWheels);
}

TEST(MirrorStream, aPalmIsNoFinger) {
  MirrorStream stream(magicMouse());
  handled(stream, {contact(0, 1, 0, 0)});
  std::vector<input_event> palm = contact(1, 2, 0, 0);
  palm.push_back(event(EV_ABS, ABS_MT_TOUCH_MAJOR, 700));
  palm.push_back(report());
  handled(stream, palm);
  EXPECT_EQ(handled(stream, scrolled()), kAllWheels);
  handled(stream, {event(EV_ABS, ABS_MT_TOUCH_MAJOR, 699), report()});
  EXPECT_EQ(handled(stream, scrolled()), "[2:0=1]");
}

TEST(MirrorStream, eightFramesAtOncePassAndNineAreMerged) {
  for (const int count : {8, 9}) {
    MirrorStream stream(magicMouse());
    std::vector<input_event> events;
    for (int i = 0; i < count; ++i) append(events, moved(2));
    Spoken sink;
    stream.handle(events, sink);
    EXPECT_EQ(sink.frames, count == 8 ? 8 : 1);
    if (count == 9) {
      EXPECT_EQ(sink.text, "[2:0=18]");
    }
  }
}

TEST(MirrorStream, clicksKeepTheirPlaceInABacklog) {
  MirrorStream stream(magicMouse());
  std::vector<input_event> events;
  for (int i = 0; i < 5; ++i) append(events, moved(2));
  append(events, {event(EV_KEY, BTN_LEFT, 1), report()});
  for (int i = 0; i < 5; ++i) append(events, moved(3));
  append(events, {event(EV_KEY, BTN_LEFT, 0), report()});
  EXPECT_EQ(handled(stream, events), "[2:0=10]+272[2:0=15]-272");
}

TEST(MirrorStream, landingsKeepTheirPlaceInABacklogOfATouchpad) {
  MirrorStream stream(magicTrackpad());
  std::vector<input_event> events = contact(0, 1, 0, 0);
  events.push_back(report());
  for (int i = 1; i <= 10; ++i) append(events, {event(EV_ABS, ABS_MT_POSITION_X, i), report()});
  append(events, contact(3, 2, 7, 7));
  events.push_back(report());
  for (int i = 1; i <= 4; ++i) append(events, {event(EV_ABS, ABS_MT_POSITION_X, 7 + i), report()});
  EXPECT_EQ(handled(stream, events),
            "[3:47=0 3:57=1 3:53=0 3:54=0][3:47=0 3:53=10][3:47=3 3:57=2 3:53=7 3:54=7]"
            "[3:47=3 3:53=11]");
}

TEST(MirrorStream, lostEventsAskForTheTruthAndNothingOfTheirFramePasses) {
  MirrorStream stream(magicMouse());
  EXPECT_EQ(handled(stream, {event(EV_REL, REL_X, 2), event(EV_SYN, SYN_DROPPED, 0),
                             event(EV_KEY, BTN_LEFT, 1), report()}),
            "lost");
  EXPECT_EQ(handled(stream, moved(4)), "[2:0=4]");
}

TEST(MirrorStream, contactsThatAreToldOfCount) {
  MirrorStream stream(magicMouse());
  const std::vector<RawContact> down = {{.id = 1}, {.id = 2}};
  stream.setContacts(down, 0);
  EXPECT_EQ(handled(stream, scrolled()), "[2:0=1]");
  stream.setContacts({}, 0);
  handled(stream, {report()});
  EXPECT_EQ(handled(stream, scrolled()), kAllWheels);
}

TEST(MirrorStream, slotsBeyondAllBoundsAreLeftAlone) {
  MirrorStream stream(magicMouse());
  EXPECT_EQ(handled(stream, {event(EV_ABS, ABS_MT_SLOT, 1 << 20),
                             event(EV_ABS, ABS_MT_TRACKING_ID, 1), event(EV_ABS, ABS_MT_SLOT, -5),
                             event(EV_ABS, ABS_MT_TRACKING_ID, 1), report()}),
            "");
}

}  // namespace
}  // namespace velotap::test
