#include "shell/mail_link.hpp"

#include <gtest/gtest.h>

namespace velotap {
namespace {

TEST(MailLink, EncodesEveryByteThatCouldMeanSomething) {
  EXPECT_EQ(percentEncoded("aZ09-._~"), "aZ09-._~");
  EXPECT_EQ(percentEncoded(" &=?#+%\n\""), "%20%26%3D%3F%23%2B%25%0A%22");
  EXPECT_EQ(percentEncoded("ä"), "%C3%A4");
  EXPECT_EQ(percentEncoded(""), "");
}

TEST(MailLink, HasSubjectAndBody) {
  EXPECT_EQ(mailLink("a@example.com", "Hello you", "x&cc=b@example.com"),
            "mailto:a@example.com?subject=Hello%20you&body=x%26cc%3Db%40example.com");
}

TEST(MailLink, LeavesOutAnEmptyBody) {
  EXPECT_EQ(mailLink("a@example.com", "Hi", ""), "mailto:a@example.com?subject=Hi");
}

TEST(MailLink, KnowsAnAddress) {
  EXPECT_NE(supportAddress().find('@'), std::string_view::npos);
}

}  // namespace
}  // namespace velotap
