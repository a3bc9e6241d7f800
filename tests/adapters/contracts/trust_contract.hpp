// What every AccessibilityTrust promises, whoever gives the permission.
#pragma once

#include <gtest/gtest.h>

#include "platform/system_notices.hpp"

namespace velotap::test {

class TrustWorld {
 public:
  virtual ~TrustWorld() = default;
  [[nodiscard]] virtual AccessibilityTrust& trust() = 0;
  virtual void give(bool given) = 0;
};

template <typename World>
class TrustContract : public ::testing::Test {
 protected:
  World world_;
};

TYPED_TEST_SUITE_P(TrustContract);

TYPED_TEST_P(TrustContract, thePermissionIsAsItIsWheneverItIsAsked) {
  for (const bool given : {false, true, true, false, true}) {
    this->world_.give(given);
    EXPECT_EQ(this->world_.trust().trusted(), given);
    EXPECT_EQ(this->world_.trust().trusted(), given) << "asking changes nothing";
  }
}

REGISTER_TYPED_TEST_SUITE_P(TrustContract, thePermissionIsAsItIsWheneverItIsAsked);

}  // namespace velotap::test
