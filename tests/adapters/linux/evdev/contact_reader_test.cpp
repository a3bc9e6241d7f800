#include "adapters/linux/evdev/contact_reader.hpp"

#include <gtest/gtest.h>

#include <algorithm>
#include <limits>

#include "event_maker.hpp"

namespace velotap::test {
namespace {

using Step = ContactReader::Step;
using Ids = std::vector<std::int32_t>;

TEST(ContactReader, slotsNeedNotBeDense) {
  ContactReader reader(surfaceModel(magicMouse()));
  std::vector<input_event> events;
  append(events, contact(1, 10, 0, 0));
  append(events, contact(2, 11, 100, 0));
  append(events, contact(8, 12, 200, 0));
  EXPECT_EQ(feed(reader, events), Step::nothing);
  EXPECT_EQ(feed(reader, {report()}), Step::frame);
  EXPECT_EQ(ids(reader.contacts()), (Ids{10, 11, 12}));
  feed(reader, lift(2));
  feed(reader, {report()});
  EXPECT_EQ(ids(reader.contacts()), (Ids{10, 12}));
}

TEST(ContactReader, unchangedValuesAreKeptBetweenFrames) {
  ContactReader reader(surfaceModel(magicMouse()));
  feed(reader, contact(0, 1, 5, 6));
  feed(reader, {report(), event(EV_ABS, ABS_MT_POSITION_X, 7), report()});
  const RawContacts contacts = reader.contacts();
  ASSERT_EQ(contacts.size(), 1U);
  EXPECT_EQ(contacts[0].x, 7);
  EXPECT_EQ(contacts[0].y, 6);
}

TEST(ContactReader, aSlotTakenOverWithoutALiftIsANewContact) {
  ContactReader reader(surfaceModel(magicMouse()));
  feed(reader, contact(0, 1, 5, 6));
  feed(reader, {report(), event(EV_ABS, ABS_MT_TRACKING_ID, 2), report()});
  EXPECT_EQ(ids(reader.contacts()), (Ids{2}));
}

TEST(ContactReader, slotsThatTheDeviceDidNotAnnounceAreIgnored) {
  ContactReader reader(surfaceModel(magicMouse()));
  for (const int slot : {16, 63, 64, 1000, -1}) {
    feed(reader, contact(slot, 7, 1, 1));
    feed(reader, {report()});
    EXPECT_TRUE(reader.contacts().empty()) << slot;
  }
  feed(reader, contact(15, 8, 1, 1));
  feed(reader, {report()});
  EXPECT_EQ(ids(reader.contacts()), (Ids{8}));
}

TEST(ContactReader, moreThanSixteenSlotsAreFollowed) {
  EvdevDevice device = magicTrackpad();
  device.absoluteAxes[ABS_MT_SLOT]->maximum = 39;
  ContactReader reader(surfaceModel(device));
  for (int i = 0; i < 40; ++i) feed(reader, contact(i, i, i, i));
  feed(reader, {report()});
  EXPECT_EQ(reader.contacts().size(), kMaxContacts);
}

TEST(ContactReader, lostEventsAskForTheTruth) {
  ContactReader reader(surfaceModel(magicMouse()));
  feed(reader, contact(0, 1, 5, 6));
  feed(reader, {report(), event(EV_SYN, SYN_DROPPED, 0)});
  // Whatever comes until the next report is half a story.
  EXPECT_EQ(feed(reader, contact(1, 2, 50, 60)), Step::nothing);
  EXPECT_EQ(feed(reader, {report()}), Step::resynchronise);
  const std::vector<RawContact> truth = {{}, {}, {.id = 9, .x = 3, .y = 4}};
  reader.setSlots(truth, 2, 0);
  EXPECT_EQ(ids(reader.contacts()), (Ids{9}));
  // Events go on about the slot that is current in the kernel.
  feed(reader, {event(EV_ABS, ABS_MT_POSITION_X, 33), report()});
  EXPECT_EQ(reader.contacts()[0].x, 33);
}

TEST(ContactReader, fingersBeyondTheSlotsAreCountedByTheirTool) {
  EvdevDevice device = magicTrackpad();
  device.properties.set(INPUT_PROP_SEMI_MT);
  device.absoluteAxes[ABS_MT_SLOT]->maximum = 1;
  ContactReader reader(surfaceModel(device));
  feed(reader, contact(0, 1, 0, 0));
  feed(reader, contact(1, 2, 500, 500));
  feed(reader, {event(EV_KEY, BTN_TOOL_TRIPLETAP, 1), report()});
  const RawContacts three = reader.contacts();
  ASSERT_EQ(three.size(), 3U);
  EXPECT_NE(three[2].id, three[0].id);
  EXPECT_NE(three[2].id, three[1].id);
  feed(reader,
       {event(EV_KEY, BTN_TOOL_TRIPLETAP, 0), event(EV_KEY, BTN_TOOL_DOUBLETAP, 1), report()});
  EXPECT_EQ(reader.contacts().size(), 2U);
}

// The finger that nobody placed must not seem to jump when the one beside it lifts.
TEST(ContactReader, aFingerWithoutAPlaceStaysWhereItIs) {
  EvdevDevice device = magicTrackpad();
  device.absoluteAxes[ABS_MT_SLOT]->maximum = 1;
  ContactReader reader(surfaceModel(device));
  feed(reader, contact(0, 1, -3000, -2000));
  feed(reader, contact(1, 2, 3000, 2000));
  feed(reader, {event(EV_KEY, BTN_TOOL_TRIPLETAP, 1), report()});
  const RawContact before = reader.contacts()[2];
  feed(reader, lift(0));
  feed(reader, {report()});
  const RawContacts after = reader.contacts();
  ASSERT_EQ(after.size(), 3U) << "the tool still says three";
  const auto same = std::find_if(after.begin(), after.end(),
                                 [&](const RawContact& c) { return c.id == before.id; });
  ASSERT_NE(same, after.end());
  EXPECT_EQ(same->x, before.x);
  EXPECT_EQ(same->y, before.y);
}

TEST(ContactReader, aToolWithoutContactsIsNoFinger) {
  ContactReader reader(surfaceModel(magicTrackpad()));
  feed(reader, {event(EV_KEY, BTN_TOOL_QUINTTAP, 1), report()});
  EXPECT_TRUE(reader.contacts().empty());
}

TEST(ContactReader, anonymousContactsKeepTheirIdentityByPlace) {
  EvdevDevice device = magicTrackpad();
  device.absoluteAxes[ABS_MT_SLOT].reset();
  device.absoluteAxes[ABS_MT_TRACKING_ID].reset();
  device.keys.reset();
  ContactReader reader(surfaceModel(device));
  const auto put = [](int x, int y) {
    return std::vector<input_event>{event(EV_ABS, ABS_MT_POSITION_X, x),
                                    event(EV_ABS, ABS_MT_POSITION_Y, y),
                                    event(EV_SYN, SYN_MT_REPORT, 0)};
  };
  feed(reader, put(0, 0));
  feed(reader, put(2000, 0));
  feed(reader, {report()});
  const Ids before = ids(reader.contacts());
  ASSERT_EQ(before.size(), 2U);
  // In the other order, a little on.
  feed(reader, put(2010, 5));
  feed(reader, put(12, 3));
  feed(reader, {report()});
  EXPECT_EQ(ids(reader.contacts()), (Ids{before[1], before[0]}));
  // An empty report lifts all.
  feed(reader, {event(EV_SYN, SYN_MT_REPORT, 0), report()});
  EXPECT_TRUE(reader.contacts().empty());
  feed(reader, put(0, 0));
  feed(reader, {report()});
  EXPECT_NE(ids(reader.contacts())[0], before[0]);
}

TEST(ContactReader, anonymousContactsMayBeAsFarApartAsNumbersAre) {
  EvdevDevice device = magicTrackpad();
  device.absoluteAxes[ABS_MT_SLOT].reset();
  device.keys.reset();
  ContactReader reader(surfaceModel(device));
  Ids seen;
  for (const std::int32_t x :
       {std::numeric_limits<std::int32_t>::max(), std::numeric_limits<std::int32_t>::min()}) {
    feed(reader, {event(EV_ABS, ABS_MT_POSITION_X, x), event(EV_ABS, ABS_MT_POSITION_Y, x),
                  event(EV_SYN, SYN_MT_REPORT, 0), report()});
    ASSERT_EQ(reader.contacts().size(), 1U);
    seen.push_back(reader.contacts()[0].id);
  }
  EXPECT_NE(seen[0], seen[1]) << "no finger moves that far between two frames";
}

}  // namespace
}  // namespace velotap::test
