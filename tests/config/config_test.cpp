#include "config/config.hpp"

#include <gtest/gtest.h>

#include <atomic>
#include <cmath>
#include <limits>
#include <thread>

#include "adapters/simulated/simulated_log.hpp"
#include "adapters/simulated/simulated_preferences.hpp"

namespace velotap {
namespace {

constexpr double kInfinity = std::numeric_limits<double>::infinity();
constexpr double kNaN = std::numeric_limits<double>::quiet_NaN();

class ConfigTest : public testing::Test {
 protected:
  SimulatedPreferences preferences_;
  SimulatedLog log_;
  NotificationCenter notifications_;
  DefaultsStore defaults_{preferences_, log_};
  Config config_{defaults_, notifications_};
};

TEST_F(ConfigTest, factoryValues) {
  EXPECT_TRUE(config_.enabled());
  EXPECT_DOUBLE_EQ(config_.maxTapDuration(), 0.3);
  EXPECT_DOUBLE_EQ(config_.maxTapDrift(), 0.05);
  EXPECT_DOUBLE_EQ(config_.pinchSensitivity(), 1);
  EXPECT_EQ(config_.centerBand(), (CenterBand{0.35F, 0.65F}));
  const std::vector<std::pair<Trigger, bool>> triggers = {
      {Trigger::mouseClick1Center, false}, {Trigger::mouseClick2, false},
      {Trigger::mouseClick3, true},        {Trigger::mouseTap3, true},
      {Trigger::padClick3, true},          {Trigger::padTap3, true},
      {Trigger::padTap4, false},           {Trigger::mousePinchZoom, true},
      {Trigger::mouseRotate, false},       {Trigger::mouseSwipe3Nav, false}};
  ASSERT_EQ(triggers.size(), kTriggerCount);
  for (const auto& [trigger, on] : triggers) {
    EXPECT_EQ(config_.isOn(trigger), on) << triggerKey(trigger);
    EXPECT_EQ(Config::triggerDefaults()[static_cast<std::size_t>(trigger)], on);
    EXPECT_EQ(defaults_.boolean(triggerKey(trigger)), on);
  }
}

TEST_F(ConfigTest, factoryValuesAreNeverWritten) {
  EXPECT_TRUE(preferences_.load(kSettingsDomain).empty());
}

TEST_F(ConfigTest, everyTriggerIsSwitchedByItsOwnKey) {
  for (std::size_t i = 0; i < kTriggerCount; ++i) {
    const auto trigger = static_cast<Trigger>(i);
    const bool before = config_.isOn(trigger);
    defaults_.set(triggerKey(trigger), !before);
    EXPECT_EQ(config_.isOn(trigger), !before) << triggerKey(trigger);
    for (std::size_t other = 0; other < i; ++other) {
      EXPECT_NE(config_.isOn(static_cast<Trigger>(other)), Config::triggerDefaults()[other]);
    }
  }
  EXPECT_TRUE(config_.enabled());
  defaults_.set("enabled", false);
  EXPECT_FALSE(config_.enabled());
}

struct NumberCase {
  Value stored;
  double expected;
};

TEST_F(ConfigTest, tapDurationIsClampedAndInSeconds) {
  for (const NumberCase& c :
       {NumberCase{500, 0.5}, NumberCase{49, 0.05}, NumberCase{50, 0.05}, NumberCase{51, 0.051},
        NumberCase{10, 0.05}, NumberCase{1999, 1.999}, NumberCase{2000, 2.0}, NumberCase{2001, 2.0},
        NumberCase{5000, 2.0}, NumberCase{-1, 0.05}, NumberCase{"500", 0.3}, NumberCase{true, 0.3},
        NumberCase{450.5, 0.4505}, NumberCase{kNaN, 0.3}, NumberCase{kInfinity, 0.3},
        NumberCase{ValueArray(), 0.3}}) {
    defaults_.set("maxTapDurationMs", c.stored);
    EXPECT_DOUBLE_EQ(config_.maxTapDuration(), c.expected);
  }
}

TEST_F(ConfigTest, tapDriftIsClamped) {
  for (const NumberCase& c :
       {NumberCase{0.2, 0.2}, NumberCase{-0.001, 0}, NumberCase{0.0, 0}, NumberCase{1, 1},
        NumberCase{1.001, 1}, NumberCase{true, 0.05}, NumberCase{"1", 0.05},
        NumberCase{-kInfinity, 0.05}, NumberCase{ValueMap(), 0.05}}) {
    defaults_.set("maxTapDrift", c.stored);
    EXPECT_DOUBLE_EQ(config_.maxTapDrift(), c.expected);
  }
}

TEST_F(ConfigTest, pinchSensitivityIsClamped) {
  for (const NumberCase& c :
       {NumberCase{0.09, 0.1}, NumberCase{0.1, 0.1}, NumberCase{0.11, 0.11}, NumberCase{4.99, 4.99},
        NumberCase{5, 5}, NumberCase{5.01, 5}, NumberCase{kNaN, 1}, NumberCase{false, 1}}) {
    defaults_.set("pinchSensitivity", c.stored);
    EXPECT_DOUBLE_EQ(config_.pinchSensitivity(), c.expected);
  }
}

TEST_F(ConfigTest, centerBandReadsBothEdges) {
  defaults_.set("centerMinX", 0.2);
  defaults_.set("centerMaxX", 0.4);
  EXPECT_EQ(config_.centerBand(), (CenterBand{0.2F, 0.4F}));
  defaults_.set("centerMaxX", 0.1);
  EXPECT_EQ(config_.centerBand(), CenterBand()) << "the wrong way round";
}

TEST(ValidatedCenterBand, clampsAndRefusesInvertedBands) {
  EXPECT_EQ(Config::validatedCenterBand(0.7, 0.3), (CenterBand{0.35F, 0.65F}));
  EXPECT_EQ(Config::validatedCenterBand(-1, 2), (CenterBand{0, 1}));
  EXPECT_EQ(Config::validatedCenterBand(0.5, 0.5), (CenterBand{0.5F, 0.5F}));
  EXPECT_EQ(Config::validatedCenterBand(kNaN, 0.5), CenterBand());
  EXPECT_EQ(Config::validatedCenterBand(0.5, kInfinity), CenterBand());
  EXPECT_EQ(Config::validatedCenterBand(2, 3), (CenterBand{1, 1}));
}

TEST(CenterBand, isClosedOnBothSides) {
  constexpr CenterBand band{0.25F, 0.75F};
  EXPECT_TRUE(band.contains(0.25F));
  EXPECT_TRUE(band.contains(0.75F));
  EXPECT_FALSE(band.contains(std::nextafter(0.25F, 0.0F)));
  EXPECT_FALSE(band.contains(std::nextafter(0.75F, 1.0F)));
}

TEST_F(ConfigTest, listsAreCleanedOnWritingAndAnnounced) {
  int announced = 0;
  const auto observation = notifications_.observe(kAppListsDidChange, [&] { ++announced; });
  config_.setIgnoredApps({" com.Example.App\n", "", "com.Example.App", "com.example.app"});
  EXPECT_EQ(config_.ignoredApps(),
            (std::vector<std::string>{"com.Example.App", "com.example.app"}));
  EXPECT_EQ(announced, 1);
  config_.setKeystrokeZoomApps({"a"});
  EXPECT_EQ(config_.keystrokeZoomApps(), (std::vector<std::string>{"a"}));
  EXPECT_EQ(announced, 2);
}

TEST_F(ConfigTest, anotherWritersChangeIsInForceAtTheNextRead) {
  preferences_.storeAsAnotherWriter(kSettingsDomain, {{"enabled", false}});
  EXPECT_FALSE(config_.enabled());
}

TEST(NormalizedAppIDs, keepsOrderCaseAndFirstOccurrence) {
  using Ids = std::vector<std::string>;
  EXPECT_EQ(Config::normalizedAppIDs({"b", "a", "b", "B"}), (Ids{"b", "a", "B"}));
  EXPECT_EQ(Config::normalizedAppIDs({"\t a b \n", "\u00A0c\u2003"}), (Ids{"a b", "c"}));
  EXPECT_EQ(Config::normalizedAppIDs({std::string(255, 'x')}).size(), 1U);
  EXPECT_EQ(Config::normalizedAppIDs({std::string(256, 'x')}).size(), 0U);
  EXPECT_EQ(Config::normalizedAppIDs({" " + std::string(255, 'x') + " "}).size(), 1U);
  EXPECT_EQ(Config::normalizedAppIDs({"a\x01z", "a\x7Fz", "a\u0085z", "a\u200Ez", "a\tz"}), Ids());
  EXPECT_EQ(Config::normalizedAppIDs({"a\xFF", "\xC0\x80", "\xED\xA0\x80", "a\xE2\x82"}), Ids());
  EXPECT_EQ(Config::normalizedAppIDs({"org.знак.app"}), (Ids{"org.знак.app"}));
}

TEST(StoredNumber, aBooleanIsNoNumber) {
  EXPECT_DOUBLE_EQ(Config::storedNumber(std::nullopt, 7), 7);
  EXPECT_DOUBLE_EQ(Config::storedNumber(Value(true), 7), 7);
  EXPECT_DOUBLE_EQ(Config::storedNumber(Value("3"), 7), 7);
  EXPECT_DOUBLE_EQ(Config::storedNumber(Value(3), 7), 3);
  EXPECT_DOUBLE_EQ(Config::storedNumber(Value(3.5), 7), 3.5);
}

// The frame thread reads while the main thread writes; both edges of the band belong together.
TEST_F(ConfigTest, readersNeverSeeHalfABand) {
  defaults_.set("centerMinX", 0.1);
  defaults_.set("centerMaxX", 0.1);
  std::atomic<bool> done{false};
  std::thread reader([&] {
    while (!done) {
      const CenterBand band = config_.centerBand();
      EXPECT_LE(band.lower, band.upper);
      EXPECT_GE(config_.maxTapDuration(), 0.05);
    }
  });
  for (int i = 0; i < 200; ++i) {
    defaults_.set("centerMaxX", i % 2 == 0 ? 0.9 : 0.2);
    defaults_.set("maxTapDurationMs", 100 + i);
  }
  done = true;
  reader.join();
}

}  // namespace
}  // namespace velotap
