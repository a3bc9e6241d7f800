#include "base/app_id.hpp"

#include <gtest/gtest.h>

namespace velotap {
namespace {

TEST(AppId, equalTextsAreOneIdentifier) {
  EXPECT_EQ(AppId::intern("com.example.editor"), AppId::intern("com.example.editor"));
  EXPECT_EQ(AppId::intern("com.example.editor").text(), "com.example.editor");
}

TEST(AppId, caseAndBytesMatter) {
  EXPECT_NE(AppId::intern("com.example.Editor"), AppId::intern("com.example.editor"));
  EXPECT_NE(AppId::intern("a"), AppId::intern(std::string_view("a\0", 2)));
}

TEST(AppId, noApplicationDiffersFromAnEmptyText) {
  EXPECT_FALSE(AppId().present());
  EXPECT_TRUE(AppId::intern("").present());
  EXPECT_NE(AppId(), AppId::intern(""));
  EXPECT_EQ(AppId().text(), "");
}

}  // namespace
}  // namespace velotap
