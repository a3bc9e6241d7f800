#include "localization/system_regional_settings.hpp"

#include <gtest/gtest.h>

#include <string>
#include <utility>
#include <vector>

namespace velotap {
namespace {

class FakeRegion final : public RegionalSettings {
 public:
  [[nodiscard]] std::vector<std::string> preferredLanguages() const override { return languages; }
  [[nodiscard]] std::string locale() const override { return region; }
  [[nodiscard]] std::string timeZone() const override { return "Europe/Sofia"; }
  [[nodiscard]] std::int64_t secondsFromUniversalTime(std::int64_t) const override { return 7200; }
  [[nodiscard]] Observation observeChanges(std::function<void()> changed) override {
    return changes.add(std::move(changed));
  }

  std::vector<std::string> languages = {"bg-BG", "en"};
  std::string region = "de_DE";
  ObserverList<> changes;
};

TEST(SystemRegionalSettings, SpeaksOneLanguageInTheNotationOfAnother) {
  FakeRegion system;
  const SystemRegionalSettings settings(system, Localization::shared());
  EXPECT_EQ(settings.language(), "bg");
  EXPECT_EQ(settings.texts()("Cancel"), "Отказ");
  EXPECT_EQ(settings.texts().format().number(0.5, 1), "0,5");
  EXPECT_EQ(settings.texts().format().timeOfDay(0), "02:00:00");
  EXPECT_EQ(settings.locale(), "de_DE");
  EXPECT_EQ(settings.timeZone(), "Europe/Sofia");
}

TEST(SystemRegionalSettings, EveryChangeMakesANewRevision) {
  FakeRegion system;
  SystemRegionalSettings settings(system, Localization::shared());
  std::vector<int> seen;
  Observation observation = settings.observeRevision([&] { seen.push_back(settings.revision()); });
  EXPECT_EQ(settings.revision(), 0);
  system.languages = {"fr"};
  system.changes.notify();
  EXPECT_EQ(settings.texts()("Cancel"), "Annuler");
  system.changes.notify();
  EXPECT_EQ(seen, (std::vector<int>{1, 2}));
  observation.reset();
  system.changes.notify();
  EXPECT_EQ(seen.size(), 2U);
  EXPECT_EQ(settings.revision(), 3);
}

TEST(SystemRegionalSettings, OneInstanceServesTheProcess) {
  static FakeRegion system;
  SystemRegionalSettings::setSystem(system);
  EXPECT_EQ(&SystemRegionalSettings::shared(), &SystemRegionalSettings::shared());
  EXPECT_EQ(SystemRegionalSettings::shared().language(), "bg");
}

}  // namespace
}  // namespace velotap
