#include "config/config.hpp"

#include <gtest/gtest.h>

#include <cmath>
#include <limits>
#include <map>
#include <memory>
#include <string>
#include <vector>

#include "support/fake_ports.hpp"

namespace velotap {
namespace {

constexpr double kInfinity = std::numeric_limits<double>::infinity();
constexpr double kNaN = std::numeric_limits<double>::quiet_NaN();
constexpr std::string_view kNumbers[] = {"maxTapDurationMs", "maxTapDrift", "pinchSensitivity",
                                         "centerMinX", "centerMaxX"};

/// Everything that no number setting can mean.
std::vector<Value> noNumbers() {
  return {true,         false,
          "500",        "0.5",
          "",           "YES",
          ValueArray(), ValueArray{Value(0.5)},
          ValueMap(),   ValueMap{{"value", Value(0.5)}}};
}

class ConfigTest : public ::testing::Test {
 protected:
  ConfigTest() {
    posts_ =
        notifications_.observeAll([this](std::string_view name) { posted_.emplace_back(name); });
  }
  /// As if the domain had been written before the program started.
  Config& startWith(const ValueMap& stored) {
    config_.reset();
    defaults_.reset();
    storage_.domains[std::string(kSettingsDomain)] = stored;
    defaults_ = std::make_unique<DefaultsStore>(storage_, log_);
    config_ = std::make_unique<Config>(*defaults_, notifications_);
    return *config_;
  }
  [[nodiscard]] const ValueMap& onDisk() { return storage_.domains[std::string(kSettingsDomain)]; }

  test::MemoryPreferences storage_;
  test::RecordingLog log_;
  NotificationCenter notifications_;
  std::vector<std::string> posted_;
  Observation posts_;
  std::unique_ptr<DefaultsStore> defaults_;
  std::unique_ptr<Config> config_;
};

TEST_F(ConfigTest, nothingStoredReadsAsTheFactorySettings) {
  const Config& config = startWith({});
  EXPECT_TRUE(config.enabled());
  EXPECT_EQ(config.maxTapDuration(), 0.3);
  EXPECT_EQ(config.maxTapDrift(), 0.05);
  EXPECT_EQ(config.pinchSensitivity(), 1.0);
  EXPECT_EQ(config.centerBand(), (CenterBand{0.35F, 0.65F}));
  EXPECT_TRUE(config.ignoredApps().empty());
  EXPECT_TRUE(config.keystrokeZoomApps().empty());
  for (std::size_t i = 0; i < kTriggerCount; ++i) {
    const auto trigger = static_cast<Trigger>(i);
    EXPECT_EQ(config.isOn(trigger), Config::triggerDefaults()[i]) << triggerKey(trigger);
  }
}

TEST_F(ConfigTest, factoryTriggers) {
  const std::array<bool, kTriggerCount> expected = {false, false, true, true,  true,
                                                    true,  false, true, false, false};
  EXPECT_EQ(Config::triggerDefaults(), expected);
}

TEST_F(ConfigTest, factorySettingsAreNeverWritten) {
  startWith({});
  EXPECT_TRUE(onDisk().empty());
  defaults_->set("padTap4", true);
  EXPECT_EQ(onDisk(), (ValueMap{{"padTap4", true}}));
}

TEST_F(ConfigTest, everySwitchIsReadByItsOwnKey) {
  Config& config = startWith({});
  for (std::size_t i = 0; i < kTriggerCount; ++i) {
    const auto trigger = static_cast<Trigger>(i);
    const bool factory = Config::triggerDefaults()[i];
    defaults_->set(triggerKey(trigger), !factory);
    for (std::size_t j = 0; j < kTriggerCount; ++j) {
      EXPECT_EQ(config.isOn(static_cast<Trigger>(j)), (i == j) != Config::triggerDefaults()[j]);
    }
    EXPECT_TRUE(config.enabled());
    defaults_->remove(triggerKey(trigger));
    EXPECT_EQ(config.isOn(trigger), factory);
  }
  defaults_->set("enabled", false);
  EXPECT_FALSE(config.enabled());
  EXPECT_TRUE(config.isOn(Trigger::padTap3));
}

TEST_F(ConfigTest, tapDurationIsStoredInMillisecondsReadInSecondsAndClamped) {
  struct Row {
    Value stored;
    double seconds;
  };
  const Row rows[] = {{300, 0.3},    {49, 0.05},       {50, 0.05},       {51, 0.051},
                      {1999, 1.999}, {2000, 2.0},      {2001, 2.0},      {10, 0.05},
                      {5000, 2.0},   {0, 0.05},        {-300, 0.05},     {250.5, 0.2505},
                      {1e300, 2.0},  {INT64_MAX, 2.0}, {INT64_MIN, 0.05}};
  for (const Row& row : rows) {
    EXPECT_EQ(startWith({{"maxTapDurationMs", row.stored}}).maxTapDuration(), row.seconds);
  }
}

TEST_F(ConfigTest, tapDriftIsClamped) {
  for (const auto& [stored, read] : std::vector<std::pair<Value, double>>{{-0.001, 0.0},
                                                                          {0.0, 0.0},
                                                                          {0, 0.0},
                                                                          {0.001, 0.001},
                                                                          {0.999, 0.999},
                                                                          {1.0, 1.0},
                                                                          {1, 1.0},
                                                                          {1.001, 1.0},
                                                                          {-5, 0.0},
                                                                          {7, 1.0}}) {
    EXPECT_EQ(startWith({{"maxTapDrift", stored}}).maxTapDrift(), read);
  }
}

TEST_F(ConfigTest, pinchSensitivityIsClamped) {
  for (const auto& [stored, read] : std::vector<std::pair<Value, double>>{{0.099, 0.1},
                                                                          {0.1, 0.1},
                                                                          {0.101, 0.101},
                                                                          {4.999, 4.999},
                                                                          {5.0, 5.0},
                                                                          {5, 5.0},
                                                                          {5.001, 5.0},
                                                                          {0, 0.1},
                                                                          {-1, 0.1},
                                                                          {2, 2.0}}) {
    EXPECT_EQ(startWith({{"pinchSensitivity", stored}}).pinchSensitivity(), read);
  }
}

TEST_F(ConfigTest, numbersThatAreNotFiniteReadAsTheFactoryValue) {
  for (const double junk : {kNaN, kInfinity, -kInfinity}) {
    const Config& config = startWith({{"maxTapDurationMs", junk},
                                      {"maxTapDrift", junk},
                                      {"pinchSensitivity", junk},
                                      {"centerMinX", junk}});
    EXPECT_EQ(config.maxTapDuration(), 0.3);
    EXPECT_EQ(config.maxTapDrift(), 0.05);
    EXPECT_EQ(config.pinchSensitivity(), 1.0);
    EXPECT_EQ(config.centerBand(), (CenterBand{0.35F, 0.65F}));
  }
}

TEST_F(ConfigTest, whatIsNoNumberReadsAsTheFactoryValue) {
  for (const Value& junk : noNumbers()) {
    ValueMap stored;
    for (const std::string_view key : kNumbers) stored.emplace(key, junk);
    const Config& config = startWith(stored);
    EXPECT_EQ(config.maxTapDuration(), 0.3);
    EXPECT_EQ(config.maxTapDrift(), 0.05);
    EXPECT_EQ(config.pinchSensitivity(), 1.0);
    EXPECT_EQ(config.centerBand(), (CenterBand{0.35F, 0.65F}));
  }
}

TEST_F(ConfigTest, anUnreadableEdgeFallsBackOnItsOwn) {
  EXPECT_EQ(startWith({{"centerMinX", "left"}, {"centerMaxX", 0.5}}).centerBand(),
            (CenterBand{0.35F, 0.5F}));
  EXPECT_EQ(startWith({{"centerMinX", 0.1}, {"centerMaxX", true}}).centerBand(),
            (CenterBand{0.1F, 0.65F}));
  EXPECT_EQ(startWith({{"centerMinX", 0.7}}).centerBand(), (CenterBand{0.35F, 0.65F}))
      << "to the right of the other edge's factory value";
}

TEST_F(ConfigTest, junkInSwitchesReadsAsAPlainBooleanLookUp) {
  struct Row {
    Value stored;
    bool on;
  };
  const Row rows[] = {{true, true},    {false, false},        {1, true},          {0, false},
                      {-1, true},      {0.5, true},           {0.0, false},       {"YES", true},
                      {"no", false},   {"true", true},        {"1", true},        {"0", false},
                      {"junk", false}, {ValueArray(), false}, {ValueMap(), false}};
  for (const Row& row : rows) {
    ValueMap stored{{"enabled", row.stored}};
    for (const SettingRow& trigger : triggerTable()) stored.emplace(trigger.key, row.stored);
    const Config& config = startWith(stored);
    EXPECT_EQ(config.enabled(), row.on);
    for (std::size_t i = 0; i < kTriggerCount; ++i) {
      EXPECT_EQ(config.isOn(static_cast<Trigger>(i)), row.on);
    }
  }
}

TEST_F(ConfigTest, ourOwnChangeIsInForceAtTheNextRead) {
  Config& config = startWith({});
  defaults_->set("maxTapDurationMs", 500);
  EXPECT_EQ(config.maxTapDuration(), 0.5);
  defaults_->set("maxTapDrift", 0.2);
  EXPECT_EQ(config.maxTapDrift(), 0.2);
  defaults_->set("pinchSensitivity", 3.5);
  EXPECT_EQ(config.pinchSensitivity(), 3.5);
  defaults_->set("centerMinX", 0.25);
  EXPECT_EQ(config.centerBand(), (CenterBand{0.25F, 0.65F}));
  defaults_->set("centerMaxX", 0.75);
  EXPECT_EQ(config.centerBand(), (CenterBand{0.25F, 0.75F}));
  for (const std::string_view key : kNumbers) defaults_->remove(key);
  EXPECT_EQ(config.maxTapDuration(), 0.3);
  EXPECT_EQ(config.centerBand(), (CenterBand{0.35F, 0.65F}));
}

TEST_F(ConfigTest, anotherWritersChangeIsInForceAtTheNextRead) {
  Config& config = startWith({});
  storage_.domains[std::string(kSettingsDomain)] = {{"enabled", false},
                                                    {"padTap4", true},
                                                    {"maxTapDrift", 0.5},
                                                    {"ignoredApps", Value::strings({"a"})}};
  storage_.changes.notify();
  EXPECT_FALSE(config.enabled());
  EXPECT_TRUE(config.isOn(Trigger::padTap4));
  EXPECT_EQ(config.maxTapDrift(), 0.5);
  EXPECT_EQ(config.ignoredApps(), std::vector<std::string>{"a"});
  EXPECT_TRUE(posted_.empty()) << "only what is written through here is announced";
}

TEST_F(ConfigTest, aChangeThatCouldNotBeWrittenIsInForceAllTheSame) {
  Config& config = startWith({});
  storage_.refuses = true;
  EXPECT_FALSE(defaults_->set("enabled", false));
  EXPECT_FALSE(config.enabled());
  config.setIgnoredApps({"com.example.a"});
  EXPECT_EQ(config.ignoredApps(), std::vector<std::string>{"com.example.a"});
  EXPECT_EQ(posted_.size(), 1U);
}

TEST_F(ConfigTest, listsAreNormalisedStoredAndAnnounced) {
  Config& config = startWith({});
  config.setIgnoredApps({" com.Example.App\t", "", "com.Example.App", "com.example.app"});
  const std::vector<std::string> expected = {"com.Example.App", "com.example.app"};
  EXPECT_EQ(config.ignoredApps(), expected);
  EXPECT_EQ(onDisk().at("ignoredApps"), Value::strings(expected));
  EXPECT_EQ(posted_, std::vector<std::string>{"VelotapAppListsDidChange"});

  config.setKeystrokeZoomApps({"b ", "a"});
  EXPECT_EQ(config.keystrokeZoomApps(), (std::vector<std::string>{"b", "a"}));
  EXPECT_EQ(posted_.size(), 2U);
  EXPECT_EQ(config.ignoredApps(), expected) << "the other list is left alone";

  config.setIgnoredApps({});
  EXPECT_TRUE(config.ignoredApps().empty());
  EXPECT_EQ(onDisk().at("ignoredApps"), Value(ValueArray()));
  config.setIgnoredApps({});
  EXPECT_EQ(posted_.size(), 4U) << "every write is announced, even one that changes nothing";
}

TEST_F(ConfigTest, whoHearsTheAnnouncementReadsTheNewList) {
  Config& config = startWith({});
  std::vector<std::string> heard;
  const Observation listener =
      notifications_.observe(kAppListsDidChange, [&] { heard = config.ignoredApps(); });
  config.setIgnoredApps({"com.example.new"});
  EXPECT_EQ(heard, std::vector<std::string>{"com.example.new"});
}

TEST_F(ConfigTest, listsThatHoldAnythingButTextsReadAsEmpty) {
  for (const Value& junk : {Value(true), Value(1), Value(0.5), Value("com.example.a"),
                            Value(ValueMap()), Value(ValueArray{Value("a"), Value(1)})}) {
    const Config& config = startWith({{"ignoredApps", junk}, {"keystrokeZoomApps", junk}});
    EXPECT_TRUE(config.ignoredApps().empty());
    EXPECT_TRUE(config.keystrokeZoomApps().empty());
  }
}

TEST_F(ConfigTest, changesAfterItsEndDoNotReachIt) {
  startWith({});
  config_.reset();
  EXPECT_TRUE(defaults_->set("enabled", false));
}

TEST(ConfigStoredNumber, onlyNumbersCount) {
  EXPECT_EQ(Config::storedNumber(std::nullopt, 7), 7);
  EXPECT_EQ(Config::storedNumber(Value(3), 7), 3);
  EXPECT_EQ(Config::storedNumber(Value(-3.5), 7), -3.5);
  EXPECT_EQ(Config::storedNumber(Value(0), 7), 0);
  EXPECT_EQ(Config::storedNumber(Value(INT64_MAX), 7), 9223372036854775807.0);
  EXPECT_TRUE(std::isnan(Config::storedNumber(Value(kNaN), 7))) << "judging it is not its job";
  for (const Value& junk : noNumbers()) EXPECT_EQ(Config::storedNumber(junk, 7), 7);
}

TEST(ConfigCenterBand, edges) {
  struct Row {
    double minimum, maximum;
    CenterBand band;
  };
  constexpr CenterBand kFactory{0.35F, 0.65F};
  const double justBelowHalf = std::nextafter(0.5, 0.0);
  const Row rows[] = {
      {0.2, 0.8, {0.2F, 0.8F}},
      {0.7, 0.3, kFactory},
      {-1, 2, {0, 1}},
      {0.5, 0.5, {0.5F, 0.5F}},
      {0.5, justBelowHalf, kFactory},
      {justBelowHalf, 0.5, {static_cast<float>(justBelowHalf), 0.5F}},
      {0, 0, {0, 0}},
      {1, 1, {1, 1}},
      {2, 3, {1, 1}},
      {-3, -2, {0, 0}},
      {3, 2, {1, 1}},
      {-0.0, 1, {0, 1}},
      {kNaN, 0.5, kFactory},
      {0.5, kNaN, kFactory},
      {-kInfinity, 0.5, kFactory},
      {0.5, kInfinity, kFactory},
  };
  for (const Row& row : rows) {
    EXPECT_EQ(Config::validatedCenterBand(row.minimum, row.maximum), row.band)
        << row.minimum << " to " << row.maximum;
  }
}

TEST(ConfigCenterBand, bothEdgesAreInside) {
  constexpr CenterBand kBand{0.25F, 0.75F};
  EXPECT_FALSE(kBand.contains(std::nextafter(0.25F, 0.0F)));
  EXPECT_TRUE(kBand.contains(0.25F));
  EXPECT_TRUE(kBand.contains(0.75F));
  EXPECT_FALSE(kBand.contains(std::nextafter(0.75F, 1.0F)));
  EXPECT_FALSE(kBand.contains(std::numeric_limits<float>::quiet_NaN()));
}

TEST(ConfigAppIds, orderAndFirstOccurrenceAreKept) {
  EXPECT_EQ(Config::normalizedAppIDs({"b", " a", "b ", "A", "a", "\nb\n"}),
            (std::vector<std::string>{"b", "a", "A"}));
  EXPECT_TRUE(Config::normalizedAppIDs({}).empty());
  EXPECT_TRUE(Config::normalizedAppIDs({"", " ", "\t\n"}).empty());
}

TEST(ConfigDebug, onlyPresenceCounts) {
  const auto asked = [](const std::map<std::string, const char*>& environment) {
    return Config::debugAsked([&](const char* name) {
      const auto found = environment.find(name);
      return found != environment.end() ? found->second : nullptr;
    });
  };
  EXPECT_FALSE(asked({}));
  EXPECT_TRUE(asked({{"VELOTAP_DEBUG", "1"}}));
  EXPECT_TRUE(asked({{"VELOTAP_DEBUG", ""}}));
  EXPECT_TRUE(asked({{"VELOTAP_DEBUG", "0"}}));
  EXPECT_TRUE(asked({{"QUILLON_DEBUG", "no"}}));
  EXPECT_TRUE(asked({{"VELOTAP_DEBUG", "0"}, {"QUILLON_DEBUG", "0"}}));
  EXPECT_FALSE(asked({{"velotap_debug", "1"}, {"DEBUG", "1"}}));
}

}  // namespace
}  // namespace velotap
