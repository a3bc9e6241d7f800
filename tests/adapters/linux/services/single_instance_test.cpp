#include "adapters/linux/services/single_instance.hpp"

#include <gtest/gtest.h>
#include <sys/wait.h>
#include <systemd/sd-bus.h>
#include <unistd.h>

#include <csignal>
#include <fstream>
#include <thread>

#include "support/child_process.hpp"
#include "support/served_loop.hpp"
#include "support/temporary_folder.hpp"

namespace velotap {
namespace {

TEST(SingleInstanceLock, HasOneHolder) {
  const TemporaryFolder folder;
  auto first = SingleInstance::claim(folder.path().string());
  ASSERT_TRUE(first);
  EXPECT_FALSE(SingleInstance::claim(folder.path().string()));
  first.reset();
  EXPECT_TRUE(SingleInstance::claim(folder.path().string()));
}

TEST(SingleInstanceLock, IsFreeAfterItsHolderWasKilled) {
  const TemporaryFolder folder;
  int ready[2];
  ASSERT_EQ(pipe(ready), 0);
  const pid_t child = fork();
  if (child == 0) {
    const auto held = SingleInstance::claim(folder.path().string());
    const char byte = held ? 'y' : 'n';
    if (write(ready[1], &byte, 1) != 1) _exit(1);
    pause();
    _exit(0);
  }
  char byte = 0;
  ASSERT_EQ(read(ready[0], &byte, 1), 1);
  EXPECT_EQ(byte, 'y');
  EXPECT_FALSE(SingleInstance::claim(folder.path().string()));
  kill(child, SIGKILL);
  waitpid(child, nullptr, 0);
  EXPECT_TRUE(SingleInstance::claim(folder.path().string()));
  close(ready[0]);
  close(ready[1]);
}

TEST(SingleInstanceLock, WithoutAFolderEverybodyIsFirst) {
  const auto first = SingleInstance::claim("");
  EXPECT_TRUE(first);
  EXPECT_TRUE(SingleInstance::claim(""));
  EXPECT_TRUE(SingleInstance::claim("/nonexistent"));
}

TEST(SingleInstanceLock, DoesNotFollowALinkThatSomebodyLeft) {
  const TemporaryFolder folder;
  std::ofstream(folder.path() / "precious") << "x";
  std::filesystem::create_symlink(folder.path() / "precious", folder.path() / "velotap.lock");
  EXPECT_TRUE(SingleInstance::claim(folder.path().string()));
  EXPECT_EQ(std::filesystem::file_size(folder.path() / "precious"), 1U);
}

class ReopenTest : public ::testing::Test, protected test::ServedLoop {
 protected:
  void serve() {
    first_ = SingleInstance::claim(folder_.path().string());
    first_->serve(queue, queue, daemon_.line(), [this] {
      ++reopened_;
      check();
    });
  }
  /// A second program, as it were; tried until the first one has its name.
  void startAgain(const std::function<bool()>& attempt) {
    std::atomic<bool> answered = false;
    std::thread second([&] {
      while (!attempt()) std::this_thread::yield();
      answered = true;
      queue.async([this] { check(); });
    });
    serveUntil([&] { return answered && reopened_ > 0; });
    second.join();
  }

  ChildProcess daemon_{{"dbus-daemon", "--session", "--nofork", "--nopidfile", "--print-address=3"},
                       3};
  TemporaryFolder folder_;
  std::optional<SingleInstance> first_;
  int reopened_ = 0;
};

TEST_F(ReopenTest, TheSecondBringsTheFirstToTheFront) {
  serve();
  startAgain([this] { return SingleInstance::reopenOther(daemon_.line()); });
  EXPECT_EQ(reopened_, 1);
}

TEST_F(ReopenTest, TheDesktopMayDoSoToo) {
  serve();
  startAgain([this] {
    sd_bus* bus = nullptr;
    sd_bus_new(&bus);
    sd_bus_set_address(bus, daemon_.line().c_str());
    sd_bus_set_bus_client(bus, 1);
    sd_bus_start(bus);
    const int answer =
        sd_bus_call_method(bus, "app.norwend.velotap", "/app/norwend/velotap",
                           "org.freedesktop.Application", "Activate", nullptr, nullptr, "a{sv}", 0);
    sd_bus_flush_close_unref(bus);
    return answer >= 0;
  });
  EXPECT_EQ(reopened_, 1);
}

TEST_F(ReopenTest, WithoutAFirstOneNobodyAnswers) {
  EXPECT_FALSE(SingleInstance::reopenOther(daemon_.line()));
}

TEST(ReopenWithoutABus, NobodyAnswersAndServingCostsNothing) {
  EXPECT_FALSE(SingleInstance::reopenOther("unix:path=/nonexistent/bus"));
  test::ServedLoop loop;
  auto first = SingleInstance::claim("");
  first->serve(loop.queue, loop.queue, "unix:path=/nonexistent/bus", [] { FAIL(); });
  loop.queue.runReady();
}

}  // namespace
}  // namespace velotap
