// docs/settings.md says what the settings table says.

#include <gtest/gtest.h>

#include <fstream>
#include <iterator>
#include <string>

#include "config/settings_table.hpp"

namespace velotap {
namespace {

TEST(SettingsDocumentation, namesEverySettingWithItsMeaning) {
  std::ifstream file(VELOTAP_SOURCE_DIR "/docs/settings.md");
  const std::string text{std::istreambuf_iterator<char>(file), {}};
  for (const SettingRow& row : settingsTable()) {
    const std::size_t key = text.find("| `" + std::string(row.key) + "` |");
    ASSERT_NE(key, std::string::npos) << row.key;
    const std::string line = text.substr(key, text.find('\n', key) - key);
    EXPECT_NE(line.find(row.meaning), std::string::npos) << row.meaning << " / " << line;
  }
}

}  // namespace
}  // namespace velotap
