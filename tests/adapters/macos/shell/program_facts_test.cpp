#include "adapters/macos/shell/program_facts.hpp"

#include <gtest/gtest.h>

#include "fakes/fake_cocoa.hpp"

namespace velotap::test {
namespace {

TEST(ProgramFactsTest, theBundleTellsThem) {
  FakeProgram program;
  const ProgramFacts facts = programFacts(program);
  EXPECT_EQ(facts.version, "1.2.3");
  EXPECT_EQ(facts.build, "45");
  EXPECT_EQ(facts.notice, "© somebody");
  EXPECT_EQ(facts.systemVersion, "Version 14.2 (Build 23C64)");
}

TEST(ProgramFactsTest, whatIsMissingOrNoTextHasAValueAllTheSame) {
  FakeProgram program;
  program.entries.clear();
  const ProgramFacts facts = programFacts(program);
  EXPECT_EQ(facts.version, "dev");
  EXPECT_EQ(facts.build, "dev");
  EXPECT_EQ(facts.notice, "");
}

}  // namespace
}  // namespace velotap::test
