#include "settings/recent_taps.hpp"

#include <gtest/gtest.h>

#include <vector>

#include "settings_fixture.hpp"
#include "tap_activities.hpp"

namespace velotap {
namespace {

using test::english;

std::vector<int> ids(const std::vector<TapActivity>& taps) {
  std::vector<int> result;
  for (const TapActivity& tap : taps) result.push_back(tap.id);
  return result;
}

TapActivity onMouse(TapActivity tap) {
  tap.deviceClass = DeviceClass::magicMouse;
  return tap;
}

std::vector<TapActivity> someTaps() {
  return {test::tapNumber(1), onMouse(test::tooLong(2, 0.4)), test::moved(3, 0.08),
          onMouse(test::tapNumber(4)), test::tooSoon(5)};
}

TEST(RecentTaps, AreFilteredByDeviceAndOutcome) {
  EXPECT_EQ(ids(filteredTapActivity(someTaps(), "all", "all", true)), (std::vector{5, 4, 3, 2, 1}));
  EXPECT_EQ(ids(filteredTapActivity(someTaps(), "mouse", "all", true)), (std::vector{4, 2}));
  EXPECT_EQ(ids(filteredTapActivity(someTaps(), "trackpad", "rejected", true)),
            (std::vector{5, 3}));
  EXPECT_EQ(ids(filteredTapActivity(someTaps(), "all", "accepted", true)), (std::vector{4, 1}));
  EXPECT_EQ(ids(filteredTapActivity(someTaps(), "whatever", "whatever", true)),
            (std::vector{5, 3}));
}

TEST(RecentTaps, OfOneDateStandInTheOrderOfTheirNumbers) {
  std::vector<TapActivity> taps = {test::tapNumber(2), test::tapNumber(1), test::tapNumber(3)};
  for (TapActivity& tap : taps) tap.date = test::atSecond(5);
  EXPECT_EQ(ids(filteredTapActivity(taps, "all", "all", false)), (std::vector{1, 2, 3}));
  EXPECT_EQ(ids(filteredTapActivity(taps, "all", "all", true)), (std::vector{3, 2, 1}));
}

TEST(RecentTaps, GoByDateBeforeNumber) {
  TapActivity late = test::tapNumber(1);
  late.date = test::atSecond(9000);
  EXPECT_EQ(ids(filteredTapActivity({late, test::tapNumber(2)}, "all", "all", true)),
            (std::vector{1, 2}));
}

TEST(RecentTaps, SayWhatBecameOfThem) {
  const auto outcome = [](const TapActivity& tap) {
    return tapActivityRow(tap, {}, english()).outcome;
  };
  EXPECT_EQ(outcome(test::tapNumber(1)), "Middle click (120\u00A0ms · 0.013)");
  EXPECT_EQ(outcome(test::tooLong(1, 0.341)), "Held too long: 341\u00A0ms (limit 300\u00A0ms)");
  EXPECT_EQ(outcome(test::moved(1, 0.0612)), "Moved too much: 0.061 (limit 0.05)");
  EXPECT_EQ(outcome(test::tooSoon(1)), "Ignored: too soon after the previous middle click");
}

TEST(RecentTaps, HaveARowWithAWayToAllowThem) {
  const TapActivityRow row = tapActivityRow(onMouse(test::tooLong(7, 0.341)), {}, english());
  EXPECT_EQ(row.id, 7);
  EXPECT_EQ(row.device, "Magic Mouse");
  EXPECT_EQ(row.fingers, "3 fingers");
  EXPECT_EQ(row.time, "12:16:47\u00A0AM");
  EXPECT_FALSE(row.accepted);
  EXPECT_EQ(row.suggestionTitle, "Allow 350\u00A0ms");
  EXPECT_EQ(row.suggestionContext, "Max tap duration");
  const TapActivityRow good = tapActivityRow(test::tapNumber(1), {}, english());
  EXPECT_EQ(good.device, "Trackpad");
  EXPECT_TRUE(good.accepted);
  EXPECT_FALSE(good.suggestion);
  EXPECT_EQ(good.suggestionTitle, "");
}

TEST(RecentTaps, CountFiltersAwayFromTheirStart) {
  EXPECT_EQ(TapActivityFilter{}.activeCount(), 0);
  EXPECT_EQ((TapActivityFilter{.device = "mouse"}.activeCount()), 1);
  EXPECT_EQ((TapActivityFilter{.device = "mouse", .outcome = "rejected", .newestFirst = false}
                 .activeCount()),
            3);
}

TEST(RecentTaps, AreCountedWholeWhateverTheFilterShows) {
  const RecentTapsView view = recentTapsView(someTaps(), {.device = "mouse"}, false, {}, english());
  EXPECT_EQ(view.rows.size(), 2U);
  EXPECT_EQ(view.shownCount, "2 of 5 taps");
  EXPECT_EQ(view.summary, "Accepted: 2 · Refused: 3");
  using Choice = std::pair<std::string_view, std::string>;
  EXPECT_EQ(view.reasonChoices, (std::vector<Choice>{{"all", "All taps"},
                                                     {"tooLong", "Held too long: 1"},
                                                     {"moved", "Moved too much: 1"},
                                                     {"tooSoon", "Too soon: 1"}}));
  EXPECT_TRUE(recentTapsView({}, {}, false, {}, english()).reasonChoices.empty());
  EXPECT_EQ(view.moreTitle, "Earlier taps (1)");
  EXPECT_EQ(view.filters.title, "Filter (1 active)");
  EXPECT_TRUE(view.canClear);
}

TEST(RecentTaps, AreShownByTheReasonOfTheirRefusal) {
  for (const auto& [reason, shown] :
       {std::pair{"all", 5U}, {"tooLong", 1U}, {"moved", 1U}, {"tooSoon", 1U}, {"no reason", 5U}}) {
    EXPECT_EQ(tapsOfReason(someTaps(), reason).size(), shown) << reason;
    EXPECT_EQ(recentTapsView(someTaps(), {.reason = reason}, false, {}, english()).rows.size(),
              shown);
  }
  EXPECT_EQ(tapsOfReason(someTaps(), "moved")[0].outcome, TapActivity::Outcome::moved);
  const RecentTapsView none =
      recentTapsView(someTaps(), {.outcome = "accepted", .reason = "moved"}, false, {}, english());
  EXPECT_EQ(none.empty, "No taps match the filter") << "both filters hold";
  EXPECT_EQ(TapActivityFilter{.reason = "moved"}.activeCount(), 0)
      << "the choice is in sight, so nobody needs to be told of it";
}

TEST(RecentTaps, SayWhyThereAreNone) {
  EXPECT_EQ(recentTapsView({}, {}, false, {}, english()).empty, "No taps yet");
  EXPECT_FALSE(recentTapsView({}, {}, false, {}, english()).canClear);
  const RecentTapsView hidden =
      recentTapsView({test::tapNumber(1)}, {.outcome = "rejected"}, false, {}, english());
  EXPECT_EQ(hidden.empty, "No taps match the filter");
  EXPECT_EQ(hidden.moreTitle, "");
  EXPECT_EQ(recentTapsView({test::tapNumber(1)}, {}, false, {}, english()).empty, "");
}

TEST(RecentTaps, SayThatTheListIsPaused) {
  EXPECT_EQ(recentTapsView({}, {}, false, {}, english()).pausedNote, "");
  EXPECT_NE(recentTapsView({}, {}, true, {}, english()).pausedNote, "");
}

}  // namespace
}  // namespace velotap
