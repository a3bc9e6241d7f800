#include "control/tap_needs.hpp"

#include <gtest/gtest.h>

#include <array>
#include <string>
#include <vector>

#include "config/settings_keys.hpp"
#include "support/desktop.hpp"

namespace velotap {
namespace {

// Keeps what it is told; taps themselves are not asked for.
class ToldTaps final : public EventTaps {
 public:
  std::unique_ptr<InstalledTap> install(TapLocation, std::uint64_t, Callbacks) override {
    return nullptr;
  }
  void setNeeds(const TapNeeds& needs) override { told.push_back(needs); }
  std::vector<TapNeeds> told;
};

class TapNeedsTest : public ::testing::Test, protected test::Desktop {
 protected:
  TapNeedsTest() {
    set(keys::kEnabled, true);
    for (std::size_t i = 0; i < kTriggerCount; ++i) {
      set(triggerKey(static_cast<Trigger>(i)), false);
    }
  }
  void set(std::string_view key, bool on) { defaults.set(key, Value(on)); }

  DefaultsStore defaults{preferences, log};
  Config config{defaults, notifications};
  ToldTaps taps;
};

TEST_F(TapNeedsTest, EachTriggerNeedsWhatItAnswers) {
  const TapNeeds clicks = {.mouseClicks = true};
  const TapNeeds gestures = {.mouseGestures = true};
  const TapNeeds pad = {.trackpadClicks = true};
  const std::array<TapNeeds, kTriggerCount> expected = {
      clicks,     clicks,     clicks,   TapNeeds(), pad,
      TapNeeds(), TapNeeds(), gestures, gestures,   gestures};
  for (std::size_t i = 0; i < kTriggerCount; ++i) {
    const std::string_view key = triggerKey(static_cast<Trigger>(i));
    set(key, true);
    EXPECT_EQ(tapNeeds(config), expected[i]) << key;
    set(keys::kEnabled, false);
    EXPECT_EQ(tapNeeds(config), TapNeeds()) << key;
    set(keys::kEnabled, true);
    set(key, false);
  }
}

TEST_F(TapNeedsTest, ToldAtOnceAndAfterEveryChangeThatMatters) {
  const TapNeedsTeller teller(config, taps);
  EXPECT_EQ(taps.told, std::vector{TapNeeds()});
  set(keys::kMouseClick3, true);
  set(keys::kMouseClick2, true);
  set(keys::kMouseTap3, true);
  EXPECT_EQ(taps.told.size(), 2U);
  EXPECT_EQ(taps.told.back(), TapNeeds{.mouseClicks = true});
  set(keys::kEnabled, false);
  EXPECT_EQ(taps.told.back(), TapNeeds());
}

}  // namespace
}  // namespace velotap
