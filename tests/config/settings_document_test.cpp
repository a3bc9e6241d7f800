// docs/settings.md lists the settings as the table has them. With VELOTAP_UPDATE_DOCS set in the
// environment this test writes the list instead of comparing it.
#include <gtest/gtest.h>

#include <cstdlib>
#include <fstream>
#include <sstream>
#include <string>

#include "config/settings_keys.hpp"
#include "config/settings_table.hpp"

namespace velotap {
namespace {

constexpr const char* kDocument = VELOTAP_DOCS "/settings.md";
const std::string kBegin = "<!-- settings table: begin -->\n";
const std::string kEnd = "<!-- settings table: end -->\n";

std::string typeName(SettingType type) {
  switch (type) {
    case SettingType::boolean:
      return "boolean";
    case SettingType::integer:
      return "integer";
    case SettingType::real:
      return "real";
    case SettingType::text:
      return "text";
    case SettingType::texts:
      return "list of texts";
  }
  return "";
}

std::string numberText(double number) {
  std::ostringstream text;
  text << number;
  return text.str();
}

std::string factoryText(const SettingRow& row) {
  if (row.fallback == SettingFallback::none) return "-";
  const std::string value = [&row]() -> std::string {
    switch (row.type) {
      case SettingType::boolean:
        return row.factoryNumber != 0 ? "true" : "false";
      case SettingType::integer:
      case SettingType::real:
        return numberText(row.factoryNumber);
      case SettingType::text:
        return "\"" + std::string(row.factoryText) + "\"";
      case SettingType::texts:
        return "empty";
    }
    return "";
  }();
  return row.fallback == SettingFallback::declared ? "(" + value + ")" : value;
}

std::string rangeText(const SettingRow& row) {
  if (!row.range) return "";
  return numberText(row.range->lowest) + " to " + numberText(row.range->highest);
}

std::string expectedTable() {
  std::string table = "| Key | Type | Factory value | Range | Meaning |\n|---|---|---|---|---|\n";
  for (const SettingRow& row : settingsTable()) {
    table += "| `" + std::string(row.key) + "` | " + typeName(row.type) + " | " + factoryText(row) +
             " | " + rangeText(row) + " | " + std::string(row.meaning) + " |\n";
  }
  return table;
}

std::string contentOf(const char* path) {
  std::ifstream file(path, std::ios::binary);
  std::ostringstream text;
  text << file.rdbuf();
  return text.str();
}

TEST(SettingsDocument, listsTheSettingsAsTheTableHasThem) {
  const std::string document = contentOf(kDocument);
  const std::size_t begin = document.find(kBegin);
  const std::size_t end = document.find(kEnd);
  ASSERT_NE(begin, std::string::npos) << kDocument;
  ASSERT_NE(end, std::string::npos) << kDocument;
  const std::size_t first = begin + kBegin.size();
  ASSERT_LE(first, end);
  if (std::getenv("VELOTAP_UPDATE_DOCS") != nullptr) {
    std::ofstream(kDocument, std::ios::binary)
        << document.substr(0, first) << expectedTable() << document.substr(end);
    return;
  }
  EXPECT_EQ(document.substr(first, end - first), expectedTable())
      << "run this test with VELOTAP_UPDATE_DOCS=1 and read the difference";
}

TEST(SettingsDocument, explainsTheKeysThatFollowFromTriggers) {
  EXPECT_NE(contentOf(kDocument).find("`" + std::string(keys::kConflictWarnedPrefix) + "`"),
            std::string::npos);
}

}  // namespace
}  // namespace velotap
