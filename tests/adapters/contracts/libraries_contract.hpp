// What every LibraryLoader promises, whoever links.
#pragma once

#include <gtest/gtest.h>

#include "platform/library_loader.hpp"

namespace velotap::test {

class LibrariesWorld {
 public:
  virtual ~LibrariesWorld() = default;
  [[nodiscard]] virtual LibraryLoader& loader() = 0;
  /// A library that is there, and a symbol that it has.
  [[nodiscard]] virtual const char* library() const = 0;
  [[nodiscard]] virtual const char* symbol() const = 0;
  /// What is not there, or not whole.
  [[nodiscard]] virtual const char* missingLibrary() = 0;
};

template <typename World>
class LibrariesContract : public ::testing::Test {
 protected:
  World world_;
  LibraryLoader& loader_ = world_.loader();
};

TYPED_TEST_SUITE_P(LibrariesContract);

TYPED_TEST_P(LibrariesContract, aLibraryIsOpenedAndAskedForWhatItHas) {
  void* const handle = this->loader_.open(this->world_.library());
  ASSERT_NE(handle, nullptr);
  void* const symbol = this->loader_.symbol(handle, this->world_.symbol());
  EXPECT_NE(symbol, nullptr);
  EXPECT_EQ(this->loader_.symbol(handle, this->world_.symbol()), symbol);
}

TYPED_TEST_P(LibrariesContract, whatALibraryLacksIsNotFound) {
  void* const handle = this->loader_.open(this->world_.library());
  ASSERT_NE(handle, nullptr);
  EXPECT_EQ(this->loader_.symbol(handle, "velotapHasNoSuchSymbol"), nullptr);
}

TYPED_TEST_P(LibrariesContract, openingAgainGivesTheSameSymbols) {
  void* const first = this->loader_.open(this->world_.library());
  void* const second = this->loader_.open(this->world_.library());
  ASSERT_NE(first, nullptr);
  ASSERT_NE(second, nullptr);
  EXPECT_EQ(this->loader_.symbol(first, this->world_.symbol()),
            this->loader_.symbol(second, this->world_.symbol()));
}

TYPED_TEST_P(LibrariesContract, whatIsNotThereIsNotOpened) {
  EXPECT_EQ(this->loader_.open(this->world_.missingLibrary()), nullptr);
}

TYPED_TEST_P(LibrariesContract, knowsWhereToLookForTouches) {
  ASSERT_NE(this->loader_.multitouchLibraryPath(), nullptr);
  EXPECT_STRNE(this->loader_.multitouchLibraryPath(), "");
}

REGISTER_TYPED_TEST_SUITE_P(LibrariesContract, aLibraryIsOpenedAndAskedForWhatItHas,
                            whatALibraryLacksIsNotFound, openingAgainGivesTheSameSymbols,
                            whatIsNotThereIsNotOpened, knowsWhereToLookForTouches);

}  // namespace velotap::test
