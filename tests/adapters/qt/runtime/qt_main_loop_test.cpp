#include "adapters/qt/runtime/qt_main_loop.hpp"

#include <gtest/gtest.h>
#include <unistd.h>

#include <QCoreApplication>
#include <QEventLoop>
#include <array>
#include <string>
#include <thread>

#include "adapters/linux/runtime/posix_clock.hpp"

namespace velotap {
namespace {

class QtMainLoopTest : public testing::Test {
 protected:
  // Qt keeps references to both for as long as the application object lives.
  int argc = 1;
  std::array<char, 5> name{"test"};
  std::array<char*, 2> argv{name.data(), nullptr};
  QCoreApplication application{argc, argv.data()};
  PosixClock clock;
  PosixMainQueue queue{clock};
  QtMainLoop loop{queue};
  std::string trace;
};

TEST_F(QtMainLoopTest, TasksRunInTheirOrder) {
  for (const char c : {'a', 'b', 'c'}) queue.async([this, c] { trace += c; });
  queue.async([] { QCoreApplication::quit(); });
  QCoreApplication::exec();
  EXPECT_EQ(trace, "abc");
}

TEST_F(QtMainLoopTest, TaskOfAnotherThreadRunsOnTheMainThread) {
  bool current = false;
  std::thread other([this, &current] {
    queue.async([this, &current] {
      current = queue.isCurrent();
      QCoreApplication::quit();
    });
  });
  QCoreApplication::exec();
  other.join();
  EXPECT_TRUE(current);
}

TEST_F(QtMainLoopTest, DelayedTasksRunInTheOrderOfTheirTimesAndNeverEarly) {
  const double start = clock.uptime();
  double end = 0;
  queue.asyncAfter(0.02, [this, &end] {
    trace += 'b';
    end = clock.uptime();
    QCoreApplication::quit();
  });
  queue.asyncAfter(0.01, [this] { trace += 'a'; });
  queue.asyncAfter(0.005, [this] { trace += 'x'; })->cancel();
  QCoreApplication::exec();
  EXPECT_EQ(trace, "ab");
  EXPECT_GE(end - start, 0.02);
}

TEST_F(QtMainLoopTest, DescriptorIsReportedUntilItIsRead) {
  std::array<int, 2> pipe{};
  ASSERT_EQ(::pipe(pipe.data()), 0);
  ASSERT_EQ(::write(pipe[1], "12", 2), 2);
  const Observation watch = queue.watch(pipe[0], DescriptorLoop::Interest::readable, [this, &pipe] {
    char c = 0;
    ASSERT_EQ(::read(pipe[0], &c, 1), 1);
    trace += c;
    if (c == '2') QCoreApplication::quit();
  });
  QCoreApplication::exec();
  EXPECT_EQ(trace, "12");
  ::close(pipe[0]);
  ::close(pipe[1]);
}

// What an alert does: it is opened by a task and runs a loop until it is answered, and meanwhile
// devices come and go.
TEST_F(QtMainLoopTest, LoopInsideATaskServesWhatWaitsBehindIt) {
  queue.async([this] {
    trace += 'a';
    QEventLoop modal;
    queue.asyncAfter(0.001, [this, &modal] {
      trace += 'c';
      modal.quit();
    });
    modal.exec();
    trace += 'd';
  });
  queue.async([this] { trace += 'b'; });
  queue.asyncAfter(0.03, [] { QCoreApplication::quit(); });
  QCoreApplication::exec();
  EXPECT_EQ(trace, "abcd");
}

}  // namespace
}  // namespace velotap
