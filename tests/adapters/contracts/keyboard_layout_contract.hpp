// What every KeyboardLayout promises, whoever knows the keys.
//
// A world makes one and selects layouts: keys by their virtual codes, or a layout that does not
// tell what its keys type.
#pragma once

#include <gtest/gtest.h>

#include <map>
#include <optional>
#include <string>

#include "platform/keyboard_layout.hpp"

namespace velotap::test {

class KeyboardLayoutWorld {
 public:
  using Keys = std::map<std::uint16_t, std::string>;
  virtual ~KeyboardLayoutWorld() = default;
  [[nodiscard]] virtual KeyboardLayout& layout() = 0;
  /// Everybody has heard of it when this returns.
  virtual void select(std::optional<Keys> keys) = 0;
};

template <typename World>
class KeyboardLayoutContract : public ::testing::Test {
 protected:
  World world_;
  KeyboardLayout& layout_ = world_.layout();
};

TYPED_TEST_SUITE_P(KeyboardLayoutContract);

TYPED_TEST_P(KeyboardLayoutContract, aKeyTypesItsCharacterOrNothing) {
  this->world_.select({{{33, "["}, {30, "\u00f6"}}});
  const auto translator = this->layout_.current();
  ASSERT_NE(translator, nullptr);
  EXPECT_EQ(translator->translate(33), "[");
  EXPECT_EQ(translator->translate(30), "\u00f6");
  EXPECT_EQ(translator->translate(24), std::nullopt);
}

TYPED_TEST_P(KeyboardLayoutContract, aTranslatorIsOfOneLayoutForEver) {
  this->world_.select({{{33, "["}}});
  const auto before = this->layout_.current();
  this->world_.select({{{33, "]"}}});
  EXPECT_EQ(before->translate(33), "[");
  EXPECT_EQ(this->layout_.current()->translate(33), "]");
}

TYPED_TEST_P(KeyboardLayoutContract, aLayoutThatTellsNothingHasNoTranslator) {
  this->world_.select(std::nullopt);
  EXPECT_EQ(this->layout_.current(), nullptr);
}

TYPED_TEST_P(KeyboardLayoutContract, everySelectionIsToldToWhoStillListens) {
  int told = 0;
  Observation watching = this->layout_.observeChanges([&] { ++told; });
  this->world_.select({{{33, "x"}}});
  this->world_.select({{{33, "y"}}});
  EXPECT_EQ(told, 2);
  watching.reset();
  this->world_.select({{{33, "z"}}});
  EXPECT_EQ(told, 2);
}

REGISTER_TYPED_TEST_SUITE_P(KeyboardLayoutContract, aKeyTypesItsCharacterOrNothing,
                            aTranslatorIsOfOneLayoutForEver, aLayoutThatTellsNothingHasNoTranslator,
                            everySelectionIsToldToWhoStillListens);

}  // namespace velotap::test
