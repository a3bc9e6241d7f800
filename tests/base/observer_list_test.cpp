#include "base/observer_list.hpp"

#include <gtest/gtest.h>

namespace velotap {
namespace {

TEST(ObserverList, callsInOrderOfRegistration) {
  ObserverList<int> list;
  std::vector<int> seen;
  const auto first = list.add([&](int v) { seen.push_back(v); });
  const auto second = list.add([&](int v) { seen.push_back(10 * v); });
  list.notify(3);
  EXPECT_EQ(seen, (std::vector{3, 30}));
}

TEST(ObserverList, aDroppedObservationIsNotCalledAgain) {
  ObserverList<> list;
  int calls = 0;
  {
    const auto observation = list.add([&] { ++calls; });
    list.notify();
  }
  list.notify();
  EXPECT_EQ(calls, 1);
}

TEST(ObserverList, anObserverMayWithdrawItselfWhileNotified) {
  ObserverList<> list;
  int calls = 0;
  Observation observation = list.add([&] {
    ++calls;
    observation.reset();
  });
  list.notify();
  list.notify();
  EXPECT_EQ(calls, 1);
}

TEST(ObserverList, anObservationMayOutliveItsList) {
  Observation observation;
  {
    ObserverList<> list;
    observation = list.add([] {});
  }
  EXPECT_TRUE(observation.active());
  observation.reset();
  EXPECT_FALSE(observation.active());
}

}  // namespace
}  // namespace velotap
