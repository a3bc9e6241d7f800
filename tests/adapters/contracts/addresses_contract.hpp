// What every UrlOpener promises, whoever opens addresses for the person.
#pragma once

#include <gtest/gtest.h>

#include <functional>
#include <string>
#include <vector>

#include "platform/url_opener.hpp"

namespace velotap::test {

class AddressesWorld {
 public:
  virtual ~AddressesWorld() = default;
  [[nodiscard]] virtual UrlOpener& urls() = 0;
  /// Whether the person has a program for addresses.
  virtual void havePrograms(bool have) = 0;
  /// Lets the system work until `done` holds.
  virtual void serveUntil(const std::function<bool()>& done) = 0;
  /// What arrived at the person's programs.
  [[nodiscard]] virtual std::vector<std::string> arrived() = 0;
};

template <typename World>
class AddressesContract : public ::testing::Test {
 protected:
  /// Opens it, and waits to be told.
  std::vector<bool> toldOf(const std::string& url) {
    std::vector<bool> told;
    world_.urls().open(url, [&told](bool taken) { told.push_back(taken); });
    world_.serveUntil([&told] { return !told.empty(); });
    return told;
  }

  World world_;
};

TYPED_TEST_SUITE_P(AddressesContract);

TYPED_TEST_P(AddressesContract, anAddressArrivesAsItIs) {
  const std::string url = "mailto:a@example.com?subject=$(b%20c)&body=`d`;'*";
  EXPECT_EQ(this->toldOf(url), std::vector<bool>{true});
  EXPECT_EQ(this->world_.arrived(), std::vector<std::string>{url});
}

TYPED_TEST_P(AddressesContract, whoeverAsksIsToldThatNobodyTookIt) {
  this->world_.havePrograms(false);
  EXPECT_EQ(this->toldOf("https://example.com/"), std::vector<bool>{false});
}

TYPED_TEST_P(AddressesContract, nobodyNeedsToBeTold) {
  this->world_.urls().open("https://example.com/one", {});
  this->world_.serveUntil([this] { return !this->world_.arrived().empty(); });
  EXPECT_EQ(this->world_.arrived(), std::vector<std::string>{"https://example.com/one"});
}

TYPED_TEST_P(AddressesContract, oneThatIsRefusedDoesNotStandInTheWayOfTheNext) {
  this->world_.havePrograms(false);
  EXPECT_EQ(this->toldOf("https://example.com/lost"), std::vector<bool>{false});
  this->world_.havePrograms(true);
  EXPECT_EQ(this->toldOf("https://example.com/found"), std::vector<bool>{true});
  EXPECT_EQ(this->world_.arrived().back(), "https://example.com/found");
}

REGISTER_TYPED_TEST_SUITE_P(AddressesContract, anAddressArrivesAsItIs,
                            whoeverAsksIsToldThatNobodyTookIt, nobodyNeedsToBeTold,
                            oneThatIsRefusedDoesNotStandInTheWayOfTheNext);

}  // namespace velotap::test
