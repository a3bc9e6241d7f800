#include "localization/localization.hpp"

#include <gtest/gtest.h>

#include <array>
#include <string>
#include <vector>

#include "localization/text_format.hpp"

namespace velotap {
namespace {

using Languages = std::vector<std::string>;

constexpr std::array kSources = {
    LocalizationSource{.language = "en", .strings = "\"greeting\" = \"Hello\";"},
    LocalizationSource{.language = "de", .strings = "\"greeting\" = \"Hallo\";"},
    LocalizationSource{.language = "fr", .strings = "\"greeting\" = \"Bonjour"},
};

TEST(Localization, TakesTheFirstPreferredLanguageItHas) {
  const Localization localization(kSources);
  EXPECT_EQ(localization.language(Languages{"ja-JP", "de-AT", "en"}), "de");
  EXPECT_EQ(localization.language(Languages{"EN-gb"}), "en");
  EXPECT_EQ(localization.language(Languages{"de_CH.UTF-8"}), "de");
  EXPECT_EQ(localization.bundle(Languages{"de"}).localizedString("greeting"), "Hallo");
}

TEST(Localization, FallsBackToEnglish) {
  const Localization localization(kSources);
  for (const Languages& none : {Languages{}, Languages{"ja"}, Languages{""}, Languages{"dex"}}) {
    EXPECT_EQ(localization.language(none), "en");
    EXPECT_EQ(localization.bundle(none).localizedString("greeting"), "Hello");
  }
}

TEST(Localization, LeavesOutABrokenTableAndSaysWhy) {
  const Localization localization(kSources);
  EXPECT_EQ(localization.languages(), (Languages{"en", "de"}));
  EXPECT_EQ(localization.errors(), (Languages{"fr:1: a text without end"}));
  EXPECT_EQ(localization.language(Languages{"fr"}), "en");
}

TEST(Localization, KeepsATableThatHasAKeyTwice) {
  const Localization localization(
      std::array{LocalizationSource{.language = "en", .strings = "a = \"1\";\na = \"2\";"}});
  EXPECT_EQ(localization.errors(), (Languages{"en:2: the key \"a\" occurs twice"}));
  EXPECT_EQ(localization.bundle(Languages{"en"}).localizedString("a"), "1");
}

TEST(Localization, AnswersWithTheKeyWhenThereIsNoText) {
  const Localization localization(kSources);
  EXPECT_EQ(localization.bundle(Languages{"de"}).localizedString("no such key"), "no such key");
  const Localization empty({});
  EXPECT_EQ(empty.language(Languages{"de"}), "en");
  EXPECT_EQ(empty.bundle(Languages{"de"}).localizedString("greeting"), "greeting");
}

TEST(Localization, OfTheProgramHasFiveWholeTables) {
  const Localization& localization = Localization::shared();
  EXPECT_EQ(localization.errors(), Languages{});
  EXPECT_EQ(localization.languages(), (Languages{"en", "bg", "de", "es", "fr"}));
}

// Every key in every language, with the same arguments, and nothing left blank.
TEST(Localization, OfTheProgramSaysTheSameInEveryLanguage) {
  const Localization& localization = Localization::shared();
  const StringTable& english = localization.bundle(Languages{"en"}).texts();
  ASSERT_GT(english.size(), 70U);
  for (const std::string& language : localization.languages()) {
    const StringTable& texts = localization.bundle(Languages{language}).texts();
    EXPECT_EQ(texts.size(), english.size()) << language;
    for (const auto& [key, text] : english) {
      const auto found = texts.find(key);
      ASSERT_NE(found, texts.end()) << language << ": " << key;
      EXPECT_FALSE(found->second.empty()) << language << ": " << key;
      EXPECT_EQ(formatSpecifiers(found->second), formatSpecifiers(text)) << language << ": " << key;
    }
    EXPECT_EQ(texts.at("language.code"), language);
  }
}

}  // namespace
}  // namespace velotap
