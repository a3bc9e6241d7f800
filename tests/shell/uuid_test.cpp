#include "shell/uuid.hpp"

#include <gtest/gtest.h>

#include <regex>
#include <set>

namespace velotap {
namespace {

TEST(Uuid, IsRandomAndCanonicalWithCapitals) {
  const std::regex form("[0-9A-F]{8}-[0-9A-F]{4}-4[0-9A-F]{3}-[89AB][0-9A-F]{3}-[0-9A-F]{12}");
  std::set<std::string> all;
  for (int i = 0; i < 200; ++i) {
    const std::string uuid = freshUuid();
    EXPECT_TRUE(std::regex_match(uuid, form)) << uuid;
    all.insert(uuid);
  }
  EXPECT_EQ(all.size(), 200U);
}

}  // namespace
}  // namespace velotap
