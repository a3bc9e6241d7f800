#include "adapters/linux/notices/sleep_notices.hpp"

#include <gtest/gtest.h>
#include <string>
#include <vector>

#include "adapters/linux/notices/linux_notices.hpp"
#include "support/child_process.hpp"
#include "support/login_manager.hpp"
#include "support/served_loop.hpp"

namespace velotap {
namespace {

using Lines = std::vector<std::string>;
using test::LoginManager;

TEST(SystemBusAddress, IsWhatTheEnvironmentSaysElseTheUsualPlace) {
  EXPECT_EQ(SleepNotices::systemBusAddress([](const char*) { return nullptr; }),
            "unix:path=/run/dbus/system_bus_socket");
  EXPECT_EQ(SleepNotices::systemBusAddress([](const char*) { return ""; }),
            "unix:path=/run/dbus/system_bus_socket");
  EXPECT_EQ(SleepNotices::systemBusAddress([](const char* name) {
              return std::string_view(name) == "DBUS_SYSTEM_BUS_ADDRESS" ? "unix:path=/x" : nullptr;
            }),
            "unix:path=/x");
}

class SleepNoticesTest : public ::testing::Test, protected test::ServedLoop {
 protected:
  Observation listen() {
    return notices_.observe([this] { note("sleep"); }, [this] { note("wake"); });
  }
  void note(const char* what) {
    heard_.emplace_back(what);
    check();
  }
  void announceUntilHeard(LoginManager& manager, bool begins, const char* expected) {
    // Who listens since when is the bus's matter: the first announcement may come too early.
    const auto again = std::make_shared<std::function<void()>>();
    *again = [this, &manager, begins, weak = std::weak_ptr(again)] {
      manager.prepareForSleep(begins);
      repeated_ = queue.asyncAfter(0.02, [weak] {
        if (const auto self = weak.lock()) (*self)();
      });
    };
    (*again)();
    serveUntil([this, expected] { return !heard_.empty() && heard_.back() == expected; });
    repeated_->cancel();
  }

  ChildProcess daemon_{{"dbus-daemon", "--session", "--nofork", "--nopidfile", "--print-address=3"},
                       3};
  Lines heard_;
  std::shared_ptr<DelayedWork> repeated_;
  SleepNotices notices_{queue, queue, daemon_.line()};
};

TEST_F(SleepNoticesTest, TellsOfSleepAndWake) {
  LoginManager manager(daemon_.line());
  const Observation observation = listen();
  announceUntilHeard(manager, true, "sleep");
  announceUntilHeard(manager, false, "wake");
}

TEST_F(SleepNoticesTest, HearsAManagerThatStartsLaterAndOneThatStartsAnew) {
  const Observation observation = listen();
  {
    LoginManager manager(daemon_.line());
    announceUntilHeard(manager, true, "sleep");
  }
  LoginManager manager(daemon_.line());
  announceUntilHeard(manager, false, "wake");
}

TEST_F(SleepNoticesTest, NobodyElseIsHeard) {
  LoginManager manager(daemon_.line());
  LoginManager stranger(daemon_.line(), "com.example.stranger");
  const Observation observation = listen();
  announceUntilHeard(manager, false, "wake");
  heard_.clear();
  stranger.prepareForSleep(true);
  manager.talkNonsense();
  announceUntilHeard(manager, false, "wake");
  for (const std::string& line : heard_) EXPECT_EQ(line, "wake");
}

TEST_F(SleepNoticesTest, AWithdrawnObserverIsNotTold) {
  LoginManager manager(daemon_.line());
  int told = 0;
  Observation first = notices_.observe([&told] { ++told; }, [&told] { ++told; });
  const Observation second = listen();
  announceUntilHeard(manager, true, "sleep");
  const int before = told;
  EXPECT_GT(before, 0);
  first.reset();
  heard_.clear();
  announceUntilHeard(manager, false, "wake");
  EXPECT_EQ(told, before);
}

TEST(SleepNoticesWithoutABus, CostOnlyThemselves) {
  test::ServedLoop loop;
  SleepNotices notices(loop.queue, loop.queue, "unix:path=/nonexistent/bus");
  const Observation observation = notices.observe([] { FAIL(); }, [] { FAIL(); });
  loop.queue.runReady();
}

TEST(LinuxNoticesWithoutServices, StillWatchDevices) {
  test::ServedLoop loop;
  LinuxNotices notices(loop.queue, loop.queue, SessionEnvironment{}, "unix:path=/nonexistent/bus");
  const Observation sleep = notices.watchSleep([] { FAIL(); }, [] { FAIL(); });
  const Observation displays = notices.watchDisplays([] { FAIL(); });
  const auto devices = notices.watchDevices([] { FAIL(); }, [] { FAIL(); });
  EXPECT_EQ(devices.observation.active(), !devices.portFailed && !devices.attachError);
  loop.queue.runReady();
}

}  // namespace
}  // namespace velotap
