// What every LoginItemService promises, whoever starts programs at login.
#pragma once

#include <gtest/gtest.h>

#include "platform/login_item.hpp"

namespace velotap::test {

class LoginItemWorld {
 public:
  virtual ~LoginItemWorld() = default;
  [[nodiscard]] virtual LoginItemService& service() = 0;
  /// The person switches the registered program off, where the system lets them.
  virtual void switchOffElsewhere() = 0;
  /// Nothing can be changed from now on.
  virtual void refuse() = 0;
  [[nodiscard]] virtual int settingsShown() = 0;
};

template <typename World>
class LoginItemContract : public ::testing::Test {
 protected:
  World world_;
  LoginItemService& service_ = world_.service();
};

TYPED_TEST_SUITE_P(LoginItemContract);

TYPED_TEST_P(LoginItemContract, registeringAndUnregisteringAreSeenAtOnce) {
  EXPECT_EQ(this->service_.status(), LoginItemStatus::notRegistered);
  EXPECT_EQ(this->service_.registerProgram(), std::nullopt);
  EXPECT_EQ(this->service_.status(), LoginItemStatus::enabled);
  EXPECT_EQ(this->service_.unregisterProgram(), std::nullopt);
  EXPECT_EQ(this->service_.status(), LoginItemStatus::notRegistered);
}

TYPED_TEST_P(LoginItemContract, whatIsSoAlreadyIsNoError) {
  EXPECT_EQ(this->service_.unregisterProgram(), std::nullopt);
  EXPECT_EQ(this->service_.registerProgram(), std::nullopt);
  EXPECT_EQ(this->service_.registerProgram(), std::nullopt);
  EXPECT_EQ(this->service_.status(), LoginItemStatus::enabled);
}

TYPED_TEST_P(LoginItemContract, onlyThePersonUndoesWhatThePersonDid) {
  EXPECT_EQ(this->service_.registerProgram(), std::nullopt);
  this->world_.switchOffElsewhere();
  EXPECT_EQ(this->service_.status(), LoginItemStatus::requiresApproval);
}

TYPED_TEST_P(LoginItemContract, aRefusalIsASentenceAndRegistersNothing) {
  this->world_.refuse();
  const auto refusal = this->service_.registerProgram();
  ASSERT_TRUE(refusal);
  EXPECT_FALSE(refusal->empty());
  EXPECT_NE(this->service_.status(), LoginItemStatus::enabled);
}

TYPED_TEST_P(LoginItemContract, thePersonIsShownWhereItIsManaged) {
  this->service_.openSettings();
  EXPECT_EQ(this->world_.settingsShown(), 1);
}

REGISTER_TYPED_TEST_SUITE_P(LoginItemContract, registeringAndUnregisteringAreSeenAtOnce,
                            whatIsSoAlreadyIsNoError, onlyThePersonUndoesWhatThePersonDid,
                            aRefusalIsASentenceAndRegistersNothing,
                            thePersonIsShownWhereItIsManaged);

}  // namespace velotap::test
