#include "adapters/macos/trust/mac_trust.hpp"

#include <gtest/gtest.h>

#include "fakes/fake_runtime.hpp"

namespace velotap::test {
namespace {

TEST(MacTrustTest, trustIsAskedEachTimeAndWithoutAPrompt) {
  FakeCoreFoundation cf;
  FakeAccessibility accessibility(cf);
  MacTrust trust(cf.api(), accessibility.api());
  EXPECT_FALSE(trust.trusted());
  accessibility.trusted = true;
  EXPECT_TRUE(trust.trusted());
  EXPECT_EQ(accessibility.prompts, 0);
}

TEST(MacTrustTest, aRequestPromptsOnceForEachCall) {
  FakeCoreFoundation cf;
  FakeAccessibility accessibility(cf);
  MacTrust trust(cf.api(), accessibility.api());
  trust.request();
  EXPECT_EQ(accessibility.prompts, 1);
  cf.fail("CFDictionaryCreate");
  trust.request();
  EXPECT_EQ(accessibility.prompts, 1) << "no options, no prompt: asking without is no request";
}

}  // namespace
}  // namespace velotap::test
