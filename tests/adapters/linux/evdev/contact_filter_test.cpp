#include "adapters/linux/evdev/contact_filter.hpp"

#include <gtest/gtest.h>

#include "event_maker.hpp"

namespace velotap::test {
namespace {

// The middle of a Magic Trackpad.
constexpr int kX = 128;
constexpr int kY = 54;
constexpr int kUnitsPerMm = 47;

RawContact finger(std::int32_t id, int x = kX, int y = kY, int major = 400) {
  return {.id = id, .x = x, .y = y, .major = major, .minor = 300, .pressure = 40};
}

RawContacts frame(std::initializer_list<RawContact> list) {
  RawContacts contacts;
  for (const RawContact& contact : list) contacts.push(contact);
  return contacts;
}

class ContactFilterTest : public testing::Test {
 protected:
  ContactFilter filter_{surfaceModel(magicTrackpad())};
};

TEST_F(ContactFilterTest, fingertipsPass) {
  filter_.update(frame({finger(1), finger(2, kX + 900), finger(3, kX + 1800)}), 0);
  for (const int id : {1, 2, 3}) EXPECT_EQ(filter_.refusal(id), Refusal::none);
}

TEST_F(ContactFilterTest, aPalmIsAsLargeAsNoFingertip) {
  filter_.update(frame({finger(1, kX, kY, 899)}), 0);
  EXPECT_EQ(filter_.refusal(1), Refusal::none);
  filter_.update(frame({finger(1, kX, kY, 900)}), 0.01);
  EXPECT_EQ(filter_.refusal(1), Refusal::palm);
}

TEST_F(ContactFilterTest, aRefusedContactStaysRefusedUntilItLifts) {
  filter_.update(frame({finger(1, kX, kY, 950)}), 0);
  filter_.update(frame({finger(1, kX, kY, 300)}), 0.01);
  EXPECT_EQ(filter_.refusal(1), Refusal::palm);
  filter_.update(frame({}), 0.02);
  filter_.update(frame({finger(1, kX, kY, 300)}), 0.03);
  EXPECT_EQ(filter_.refusal(1), Refusal::none);
}

TEST_F(ContactFilterTest, whatComesDownWithAPalmBesideItIsPartOfTheHand) {
  filter_.update(frame({finger(1, kX, kY, 950), finger(2, kX + 39 * kUnitsPerMm),
                        finger(3, kX + 41 * kUnitsPerMm)}),
                 0);
  EXPECT_EQ(filter_.refusal(2), Refusal::besidePalm);
  EXPECT_EQ(filter_.refusal(3), Refusal::none) << "too far away";
}

TEST_F(ContactFilterTest, aFingerThatComesLaterIsNotPartOfTheHand) {
  filter_.update(frame({finger(1, kX, kY, 950)}), 0);
  filter_.update(frame({finger(1, kX, kY, 950), finger(2, kX + 20 * kUnitsPerMm)}), 0.101);
  EXPECT_EQ(filter_.refusal(2), Refusal::none);
}

TEST_F(ContactFilterTest, whatRestsAtTheRimIsNotATappingFinger) {
  const RawContact thumb = finger(1, kX, 2500);  // the lowest two millimetres
  filter_.update(frame({thumb}), 0);
  filter_.update(frame({thumb}), 0.3);
  EXPECT_EQ(filter_.refusal(1), Refusal::none) << "it may still be a tap";
  filter_.update(frame({thumb}), 0.301);
  EXPECT_EQ(filter_.refusal(1), Refusal::restingEdge);
}

TEST_F(ContactFilterTest, aFingerThatMovesAwayFromTheRimIsAFinger) {
  filter_.update(frame({finger(1, kX, 2500)}), 0);
  filter_.update(frame({finger(1, kX, 2500 - 4 * 44)}), 0.2);
  filter_.update(frame({finger(1, kX, 2500 - 4 * 44)}), 1);
  EXPECT_EQ(filter_.refusal(1), Refusal::none);
}

TEST_F(ContactFilterTest, aFingerThatRestsInTheMiddleStaysAFinger) {
  filter_.update(frame({finger(1)}), 0);
  filter_.update(frame({finger(1)}), 100);
  EXPECT_EQ(filter_.refusal(1), Refusal::none);
}

}  // namespace
}  // namespace velotap::test
