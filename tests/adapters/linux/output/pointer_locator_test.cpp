#include "adapters/linux/output/pointer_locator.hpp"

#include <gtest/gtest.h>
#include <xcb/xcb.h>

#include <csignal>
#include <cstdlib>
#include <memory>
#include <optional>
#include <string>
#include <utility>
#include <vector>

#include "support/x_server.hpp"

namespace velotap {
namespace {

class SteppedClock final : public Clock {
 public:
  [[nodiscard]] double uptime() const noexcept override { return now; }
  [[nodiscard]] std::chrono::system_clock::time_point date() const noexcept override { return {}; }
  double now = 1000;
};

// Keeps tasks until the test has them run.
class HeldQueue final : public MainQueue {
 public:
  void async(Task task) override { tasks.push_back(std::move(task)); }
  std::shared_ptr<DelayedWork> asyncAfter(double, Task) override { return nullptr; }
  [[nodiscard]] bool isCurrent() const override { return true; }
  void run() {
    for (const Task& task : std::exchange(tasks, {})) task();
  }
  std::vector<Task> tasks;
};

// Moves the pointer, and returns once the server has done so.
void movePointer(const test::XServer& server, std::int16_t x, std::int16_t y) {
  xcb_connection_t* connection = xcb_connect(server.display().c_str(), nullptr);
  const xcb_window_t root = xcb_setup_roots_iterator(xcb_get_setup(connection)).data->root;
  xcb_generic_error_t* error = xcb_request_check(
      connection, xcb_warp_pointer_checked(connection, XCB_NONE, root, 0, 0, 0, 0, x, y));
  ASSERT_EQ(error, nullptr);
  xcb_disconnect(connection);
}

class PointerLocatorTest : public testing::Test {
 protected:
  PointerLocatorTest() {
    unsetenv("DISPLAY");
    unsetenv("WAYLAND_DISPLAY");
  }
  static void use(const test::XServer& server) { setenv("DISPLAY", server.display().c_str(), 1); }

  SteppedClock clock;
  HeldQueue queue;
};

TEST_F(PointerLocatorTest, WithoutASessionThereIsNoLocationAndNoAttempt) {
  PointerLocator locator(clock, queue);
  clock.now += 100;
  EXPECT_EQ(locator.location(), std::nullopt);
  EXPECT_TRUE(queue.tasks.empty());
}

TEST_F(PointerLocatorTest, AServerThatIsNotThereIsNoError) {
  setenv("DISPLAY", ":987654", 1);
  PointerLocator locator(clock, queue);
  EXPECT_EQ(locator.location(), std::nullopt);
}

TEST_F(PointerLocatorTest, TellsWhereThePointerIs) {
  const test::XServer server;
  use(server);
  PointerLocator locator(clock, queue);
  movePointer(server, 23, 45);
  EXPECT_EQ(locator.location(), (Point{.x = 23, .y = 45}));
  movePointer(server, 0, 63);
  EXPECT_EQ(locator.location(), (Point{.x = 0, .y = 63}));
}

TEST_F(PointerLocatorTest, UnderWaylandTheXServerIsNotBelieved) {
  const test::XServer server;
  use(server);
  setenv("WAYLAND_DISPLAY", "wayland-0", 1);
  PointerLocator locator(clock, queue);
  EXPECT_EQ(locator.location(), std::nullopt);
}

TEST_F(PointerLocatorTest, UnderWaylandTheProgramsOwnWindowsTell) {
  setenv("WAYLAND_DISPLAY", "wayland-0", 1);
  PointerLocator locator(clock, queue);
  locator.tell(Point{.x = 30, .y = 40});
  EXPECT_EQ(locator.location(), (Point{.x = 30, .y = 40}));
  locator.tell(std::nullopt);
  EXPECT_EQ(locator.location(), std::nullopt) << "it left them";
}

TEST_F(PointerLocatorTest, AServerThatTellsIsBelievedMoreThanWindows) {
  const test::XServer server;
  use(server);
  PointerLocator locator(clock, queue);
  movePointer(server, 7, 8);
  locator.tell(Point{.x = 30, .y = 40});
  EXPECT_EQ(locator.location(), (Point{.x = 7, .y = 8}));
}

TEST_F(PointerLocatorTest, AHangingServerCostsTheAnswerOnly) {
  const test::XServer server;
  use(server);
  PointerLocator locator(clock, queue);
  server.signal(SIGSTOP);
  EXPECT_EQ(locator.location(), std::nullopt);
  server.signal(SIGCONT);
  movePointer(server, 7, 8);  // the server serves again once this has returned
  EXPECT_EQ(locator.location(), (Point{.x = 7, .y = 8}));
}

TEST_F(PointerLocatorTest, ADeadServerIsAskedForAgainOnTheMainThreadAfterAWhile) {
  std::optional<test::XServer> server;
  server.emplace();
  use(*server);
  PointerLocator locator(clock, queue);
  ASSERT_NE(locator.location(), std::nullopt);
  server->stop();
  EXPECT_EQ(locator.location(), std::nullopt);

  const test::XServer next;
  use(next);
  movePointer(next, 11, 12);
  clock.now += 9.9;
  EXPECT_EQ(locator.location(), std::nullopt);
  EXPECT_TRUE(queue.tasks.empty()) << "too soon";
  clock.now += 0.1;
  EXPECT_EQ(locator.location(), std::nullopt) << "the caller never waits for a connection";
  ASSERT_EQ(queue.tasks.size(), 1U);
  EXPECT_EQ(locator.location(), std::nullopt);
  EXPECT_EQ(queue.tasks.size(), 1U) << "one attempt at a time";
  queue.run();
  EXPECT_EQ(locator.location(), (Point{.x = 11, .y = 12}));
}

TEST_F(PointerLocatorTest, AnAttemptMayOutliveTheLocator) {
  setenv("DISPLAY", ":987654", 1);
  {
    PointerLocator locator(clock, queue);
    clock.now += 10;
    EXPECT_EQ(locator.location(), std::nullopt);
  }
  ASSERT_EQ(queue.tasks.size(), 1U);
  queue.run();
}

}  // namespace
}  // namespace velotap
