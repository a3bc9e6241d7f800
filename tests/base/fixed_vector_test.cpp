#include "base/fixed_vector.hpp"

#include <gtest/gtest.h>

namespace velotap {
namespace {

TEST(FixedVector, refusesWhatDoesNotFit) {
  FixedVector<int, 2> v;
  EXPECT_TRUE(v.push(1));
  EXPECT_TRUE(v.push(2));
  EXPECT_TRUE(v.full());
  EXPECT_FALSE(v.push(3));
  EXPECT_EQ(v.size(), 2U);
  EXPECT_EQ(v[1], 2);
}

TEST(FixedVector, eraseKeepsTheOrder) {
  FixedVector<int, 4> v;
  for (const int i : {1, 2, 3, 4}) v.push(i);
  v.erase(1);
  EXPECT_EQ((std::vector<int>(v.begin(), v.end())), (std::vector{1, 3, 4}));
  v.erase(2);
  EXPECT_EQ((std::vector<int>(v.begin(), v.end())), (std::vector{1, 3}));
}

}  // namespace
}  // namespace velotap
