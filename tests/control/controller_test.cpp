#include "control/controller.hpp"

#include <gtest/gtest.h>

#include "support/desktop.hpp"

namespace velotap {
namespace {

using test::Lines;

class ControllerTest : public ::testing::Test, protected test::Desktop {
 protected:
  Lines take() { return std::exchange(calls_, {}); }
  bool mayRun_ = true;
  bool starts_ = true;
  Lines calls_;
  Controller controller_{
      {.canRun =
           [this] {
             calls_.emplace_back("canRun");
             return mayRun_;
           },
       .startListeners =
           [this] {
             calls_.emplace_back("start");
             return starts_;
           },
       .stopListeners = [this] { calls_.emplace_back("stop"); },
       .didChangeState =
           [this] {
             calls_.emplace_back(controller_.isRunning() ? "now running" : "now stopped");
           }},
      log};
};

TEST_F(ControllerTest, IsNotRunningAtFirst) {
  EXPECT_FALSE(controller_.isRunning());
  EXPECT_EQ(take(), Lines{});
}

TEST_F(ControllerTest, StartsWhenItMay) {
  controller_.start();
  EXPECT_EQ(take(), (Lines{"canRun", "start", "now running"}));
  EXPECT_TRUE(controller_.isRunning());
}

TEST_F(ControllerTest, StartingWhileRunningCallsNobody) {
  controller_.start();
  take();
  controller_.start();
  EXPECT_EQ(take(), Lines{"canRun"});
  EXPECT_TRUE(controller_.isRunning());
}

TEST_F(ControllerTest, AFailedStartIsAnnouncedAndNotRetried) {
  starts_ = false;
  controller_.start();
  EXPECT_EQ(take(), (Lines{"canRun", "start", "now stopped"}));
  EXPECT_FALSE(controller_.isRunning());
  starts_ = true;
  controller_.start();
  EXPECT_EQ(take(), (Lines{"canRun", "start", "now running"}));
}

TEST_F(ControllerTest, StopsWhenItMayNotRun) {
  controller_.start();
  take();
  mayRun_ = false;
  controller_.start();
  EXPECT_EQ(take(), (Lines{"canRun", "stop", "now stopped"}));
  EXPECT_FALSE(controller_.isRunning());
  controller_.start();
  EXPECT_EQ(take(), (Lines{"canRun", "stop", "now stopped"})) << "a stop that changes nothing too";
}

TEST_F(ControllerTest, RestartsByStoppingFirst) {
  controller_.start();
  take();
  controller_.restart();
  EXPECT_EQ(take(), (Lines{"stop", "now stopped", "canRun", "start", "now running"}));
  EXPECT_EQ(said.take(), Lines{"restarting listeners"});
}

TEST_F(ControllerTest, RestartingWhileSwitchedOffStopsEverything) {
  controller_.start();
  take();
  mayRun_ = false;
  controller_.restart();
  EXPECT_EQ(take(), (Lines{"stop", "now stopped", "canRun", "stop", "now stopped"}));
  EXPECT_FALSE(controller_.isRunning());
}

TEST_F(ControllerTest, StoppingIsAnnouncedEvenIfNothingRan) {
  controller_.stop();
  EXPECT_EQ(take(), (Lines{"stop", "now stopped"}));
}

TEST_F(ControllerTest, ObserversSeeChangesOnly) {
  std::vector<bool> seen;
  const Observation observation =
      controller_.observeRunning([&seen](bool running) { seen.push_back(running); });
  controller_.stop();
  controller_.start();
  controller_.start();
  controller_.restart();
  controller_.stop();
  controller_.stop();
  starts_ = false;
  controller_.start();
  EXPECT_EQ(seen, (std::vector<bool>{true, false, true, false}));
}

TEST_F(ControllerTest, SomebodyWhoShowsTheStateIsNotNeeded) {
  controller_.closures.didChangeState = {};
  controller_.start();
  controller_.restart();
  controller_.stop();
  EXPECT_FALSE(controller_.isRunning());
}

TEST_F(ControllerTest, SaysNothingWhenNobodyAsked) {
  log.setEnabled(false);
  controller_.restart();
  EXPECT_EQ(said.take(), Lines{});
}

}  // namespace
}  // namespace velotap
