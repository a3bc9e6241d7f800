#include "adapters/linux/session/reconnection.hpp"

#include <gtest/gtest.h>

#include <iterator>
#include <numeric>
#include <optional>

#include "adapters/simulated/simulated_clock.hpp"
#include "adapters/simulated/simulated_main_queue.hpp"

namespace velotap {
namespace {

class FakeRecovery final : public RecoverySignal {
 public:
  struct State {
    bool watches = true;
    std::function<void()> mayBeBack;
  };
  explicit FakeRecovery(State& state) : state_(state) {}
  [[nodiscard]] bool arm(std::function<void()> mayBeBack) override {
    state_.mayBeBack = std::move(mayBeBack);
    return state_.watches;
  }
  void disarm() override { state_.mayBeBack = nullptr; }

 private:
  State& state_;
};

class ReconnectionTest : public testing::Test {
 protected:
  void pass(double seconds) { queue.runUntil(clock.now() + virtualTime(seconds)); }
  int tries() { return std::exchange(tries_, 0); }
  void signal() {
    const auto told = recovery.mayBeBack;
    ASSERT_TRUE(told);
    told();
  }

  SimulatedClock clock;
  SimulatedMainQueue queue{clock};
  FakeRecovery::State recovery;
  bool serverThere = false;
  int tries_ = 0;
  std::optional<Reconnection> connection{std::in_place, std::make_unique<FakeRecovery>(recovery),
                                         queue, [this] {
                                           ++tries_;
                                           return serverThere;
                                         }};
};

constexpr double kAllPauses = 25.5;

TEST_F(ReconnectionTest, aServerThatIsThereIsAskedOnce) {
  serverThere = true;
  connection->start();
  EXPECT_FALSE(recovery.mayBeBack);
  pass(1000);
  EXPECT_EQ(tries(), 1);
}

TEST_F(ReconnectionTest, anAbsentServerIsAskedAfterGrowingPausesUntilTheSignalIsTrusted) {
  connection->start();
  EXPECT_EQ(tries(), 1);
  for (const double pause : kRetryPauses) {
    pass(pause - 0.001);
    EXPECT_EQ(tries(), 0) << pause;
    pass(0.001);
    EXPECT_EQ(tries(), 1) << pause;
  }
  pass(1000);
  EXPECT_EQ(tries(), 0);
  serverThere = true;
  signal();
  EXPECT_EQ(tries(), 1);
  EXPECT_FALSE(recovery.mayBeBack) << "nobody waits any more";
}

TEST_F(ReconnectionTest, theSignalMayComeBeforeTheServerListens) {
  connection->start();
  pass(1000);
  tries();
  signal();
  EXPECT_EQ(tries(), 1);
  serverThere = true;
  pass(kRetryPauses[0]);
  EXPECT_EQ(tries(), 1) << "short pauses again";
  pass(1000);
  EXPECT_EQ(tries(), 0);
}

TEST_F(ReconnectionTest, withoutASignalItAsksForGood) {
  recovery.watches = false;
  connection->start();
  pass(kAllPauses);
  tries();
  pass(3 * kUnwatchedPause);
  EXPECT_EQ(tries(), 3);
}

TEST_F(ReconnectionTest, aLossIsNoOccasionToTryAtOnce) {
  serverThere = true;
  connection->start();
  tries();
  connection->lost();
  EXPECT_EQ(tries(), 0) << "whoever calls may be what is made anew";
  pass(kRetryPauses[0]);
  EXPECT_EQ(tries(), 1);
}

TEST_F(ReconnectionTest, aServerThatKeepsDroppingIsAskedEverMoreRarely) {
  serverThere = true;
  connection->start();
  tries();
  for (const double pause : kRetryPauses) {
    connection->lost();
    pass(pause);
    EXPECT_EQ(tries(), 1);
    pass(kSettledAfter - 0.001);
  }
  connection->lost();
  pass(1000);
  EXPECT_EQ(tries(), 0) << "only a sign of life counts now";
  signal();
  EXPECT_EQ(tries(), 1);
}

TEST_F(ReconnectionTest, aConnectionThatSettledStartsWithShortPauses) {
  serverThere = true;
  connection->start();
  connection->lost();
  pass(kRetryPauses[0]);
  pass(kSettledAfter);
  tries();
  connection->lost();
  pass(kRetryPauses[0]);
  EXPECT_EQ(tries(), 1);
}

TEST_F(ReconnectionTest, whoIsGoneTriesNoMore) {
  connection->start();
  tries();
  connection.reset();
  EXPECT_FALSE(recovery.mayBeBack);
  pass(1000);
  EXPECT_EQ(tries(), 0);
}

}  // namespace
}  // namespace velotap
