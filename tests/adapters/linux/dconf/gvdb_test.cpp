#include "adapters/linux/dconf/gvdb.hpp"

#include <gtest/gtest.h>

#include <fstream>
#include <iterator>
#include <string>

namespace velotap {
namespace {

std::string dataFile(const char* name) {
  std::ifstream file(std::string(VELOTAP_TEST_DATA) + "/" + name, std::ios::binary);
  std::string bytes{std::istreambuf_iterator<char>(file), std::istreambuf_iterator<char>()};
  EXPECT_FALSE(bytes.empty()) << name;
  return bytes;
}

TEST(Gvdb, findsKeysOfADatabase) {
  const std::string bytes = dataFile("user");
  const auto table = GvdbTable::open(bytes);
  ASSERT_TRUE(table);
  EXPECT_EQ(table->value("/org/gnome/desktop/peripherals/touchpad/tap-to-click")->boolean(), true);
  EXPECT_EQ(table->value("/org/gnome/desktop/peripherals/touchpad/click-method")->text(), "areas");
  EXPECT_TRUE(table->contains("/org/"));
}

TEST(Gvdb, lacksWhatIsNotThere) {
  const std::string bytes = dataFile("user");
  const auto table = GvdbTable::open(bytes);
  EXPECT_FALSE(table->value("/org/gnome/desktop/peripherals/touchpad/tap"));
  EXPECT_FALSE(table->value("tap-to-click"));
  EXPECT_FALSE(table->value(""));
  EXPECT_FALSE(table->value("/org/")) << "a folder is no value";
  EXPECT_FALSE(table->table("/org/")) << "nor a table";
}

TEST(Gvdb, opensTablesInside) {
  const std::string bytes = dataFile("site");
  const auto locks = GvdbTable::open(bytes)->table(".locks");
  ASSERT_TRUE(locks);
  EXPECT_TRUE(locks->contains("/org/gnome/desktop/peripherals/touchpad/click-method"));
  EXPECT_FALSE(locks->contains("/org/gnome/desktop/peripherals/touchpad/tap-to-click"));
}

TEST(Gvdb, whatIsNoDatabaseIsNotOpened) {
  EXPECT_FALSE(GvdbTable::open(""));
  EXPECT_FALSE(GvdbTable::open("GVariant"));
  EXPECT_FALSE(GvdbTable::open(std::string(64, '\0')));
  std::string version = dataFile("user");
  version[8] = 1;
  EXPECT_FALSE(GvdbTable::open(version));
}

std::size_t askEverything(const std::string& bytes) {
  std::size_t found = 0;
  const auto table = GvdbTable::open(bytes);
  if (!table) return found;
  for (const char* key :
       {"/", "/org/", "/org/gnome/desktop/peripherals/touchpad/tap-to-click",
        "/org/gnome/desktop/peripherals/touchpad/click-method", ".locks",
        "org.gnome.desktop.peripherals.touchpad", "/org/gnome/desktop/input-sources/mru-sources"}) {
    found += table->contains(key) ? 1 : 0;
    if (const auto value = table->value(key)) found += value->childCount();
    if (const auto inner = table->table(key)) {
      found += inner->contains("tap-to-click") ? 1 : 0;
      (void)inner->value("click-method");
    }
  }
  return found;
}

TEST(Gvdb, noCutAndNoFlippedByteLeadsAstray) {
  for (const char* name : {"user", "site", "gschemas.compiled"}) {
    const std::string bytes = dataFile(name);
    const std::size_t whole = askEverything(bytes);
    EXPECT_GT(whole, 0U);
    for (std::size_t length = 0; length < bytes.size(); ++length) {
      EXPECT_LE(askEverything(bytes.substr(0, length)), whole);
    }
    for (std::size_t i = 0; i < bytes.size(); ++i) {
      for (const char value : {'\0', '\1', '\x7f', '\xff'}) {
        std::string flipped = bytes;
        flipped[i] = value;
        (void)askEverything(flipped);
      }
    }
  }
}

TEST(Gvdb, aKeyWhosePartsGoRoundInACircleIsNotFound) {
  std::string bytes = dataFile("user");
  // Every item becomes its own parent with an empty part of the key.
  const auto table = GvdbTable::open(bytes);
  ASSERT_TRUE(table->contains("/org/"));
  const auto word = [&](std::size_t at) {
    return std::size_t{static_cast<unsigned char>(bytes[at])} |
           std::size_t{static_cast<unsigned char>(bytes[at + 1])} << 8;
  };
  const std::size_t begin = word(16);
  const std::size_t end = word(20);
  const std::size_t items = begin + 8 + 4 * (word(begin) + word(begin + 4));
  for (std::size_t i = 0; items + (i + 1) * 24 <= end; ++i) {
    const std::size_t item = items + i * 24;
    bytes[item + 4] = static_cast<char>(i);
    bytes[item + 5] = bytes[item + 6] = bytes[item + 7] = '\0';
    bytes[item + 12] = bytes[item + 13] = '\0';
  }
  EXPECT_FALSE(GvdbTable::open(bytes)->contains("/org/"));
}

}  // namespace
}  // namespace velotap
