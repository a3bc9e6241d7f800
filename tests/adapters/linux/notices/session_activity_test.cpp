#include "adapters/linux/notices/session_activity.hpp"

#include <gtest/gtest.h>
#include <sys/eventfd.h>
#include <unistd.h>

#include <cerrno>
#include <cstring>
#include <fstream>
#include <string>

#include "adapters/linux/notices/login_functions.hpp"
#include "support/served_loop.hpp"
#include "support/temporary_folder.hpp"

namespace velotap {
namespace {

/// A login manager that says what a test wants. Plain functions, as the library's are.
struct Book {
  const char* pidSession = nullptr;      ///< null: the process is in no session
  const char* displaySession = nullptr;  ///< null: the user has none at a display
  int active = 1;                        ///< the answer for a session; negative when unknown
  std::string asked;                     ///< the session that was asked about last
  bool monitors = true;
  int descriptor = -1;
  int open = 0;
};
Book book;

int answerSession(const char* session, char** name) {
  if (session == nullptr) return -ENODATA;
  *name = strdup(session);
  return 0;
}

const LoginFunctions kFunctions = {
    .pidSession = [](pid_t, char** name) { return answerSession(book.pidSession, name); },
    .displaySession = [](uid_t, char** name) { return answerSession(book.displaySession, name); },
    .isActive =
        [](const char* session) {
          book.asked = session;
          return book.active;
        },
    .newMonitor =
        [](const char*, sd_login_monitor** monitor) {
          if (!book.monitors) return -ENOENT;
          book.descriptor = eventfd(0, EFD_NONBLOCK | EFD_CLOEXEC);
          ++book.open;
          *monitor = reinterpret_cast<sd_login_monitor*>(&book);
          return 0;
        },
    .endMonitor = [](sd_login_monitor*) -> sd_login_monitor* {
      --book.open;
      close(book.descriptor);
      return nullptr;
    },
    .descriptorOf = [](sd_login_monitor*) { return book.descriptor; },
    .flush =
        [](sd_login_monitor*) {
          eventfd_t value = 0;
          return eventfd_read(book.descriptor, &value);
        }};

class SessionActivityTest : public ::testing::Test, protected test::ServedLoop {
 protected:
  SessionActivityTest() { book = {}; }
};

TEST_F(SessionActivityTest, WithoutALoginManagerEverySessionIsActive) {
  SessionActivity activity(queue, nullptr, nullptr);
  EXPECT_TRUE(activity.active());
  const Observation observation = activity.observe([] { FAIL(); });
  queue.runReady();
}

TEST_F(SessionActivityTest, AProcessBelongsToItsOwnSession) {
  book.pidSession = "c2";
  book.displaySession = "7";
  const SessionActivity activity(queue, &kFunctions, nullptr);
  EXPECT_TRUE(activity.active());
  EXPECT_EQ(book.asked, "c2");
  book.active = 0;
  EXPECT_FALSE(activity.active());
}

TEST_F(SessionActivityTest, AServiceBelongsToTheUsersDisplay) {
  book.displaySession = "7";
  book.active = 0;
  const SessionActivity activity(queue, &kFunctions, nullptr);
  EXPECT_FALSE(activity.active());
  EXPECT_EQ(book.asked, "7");
}

TEST_F(SessionActivityTest, WhereNobodyKnowsItIsActive) {
  const SessionActivity activity(queue, &kFunctions, nullptr);
  EXPECT_TRUE(activity.active()) << "no session at all";
  book.pidSession = "c2";
  book.active = -ENXIO;
  EXPECT_TRUE(activity.active()) << "a session that is unknown";
}

TEST_F(SessionActivityTest, EveryChangeIsTold) {
  SessionActivity activity(queue, &kFunctions, nullptr);
  int told = 0;
  Observation observation = activity.observe([&] {
    ++told;
    check();
  });
  eventfd_write(book.descriptor, 1);
  serveUntil([&told] { return told == 1; });
  queue.runReady();
  EXPECT_EQ(told, 1) << "once for each";
  observation.reset();
  eventfd_write(book.descriptor, 1);
  queue.runReady();
  EXPECT_EQ(told, 1);
}

TEST_F(SessionActivityTest, GivesItsMonitorBack) {
  { const SessionActivity activity(queue, &kFunctions, nullptr); }
  EXPECT_EQ(book.open, 0);
}

TEST_F(SessionActivityTest, WithoutAMonitorItStillAnswers) {
  book.monitors = false;
  book.pidSession = "c2";
  book.active = 0;
  const SessionActivity activity(queue, &kFunctions, nullptr);
  EXPECT_FALSE(activity.active());
}

/// The kernel's file that names the console in front.
std::string consoleFile(const TemporaryFolder& folder, const std::string& text) {
  const std::string path = (folder.path() / "active").string();
  std::ofstream(path) << text;
  return path;
}

TEST_F(SessionActivityTest, WhereNobodyKnowsTheConsoleInFrontDecides) {
  const TemporaryFolder folder;
  const std::string console = consoleFile(folder, "tty2\n");
  EXPECT_TRUE(SessionActivity(queue, nullptr, "2", console).active());
  EXPECT_FALSE(SessionActivity(queue, nullptr, "3", console).active());
  EXPECT_FALSE(SessionActivity(queue, &kFunctions, "3", console).active()) << "no session at all";
  book.pidSession = "c2";
  book.active = -ENXIO;
  EXPECT_FALSE(SessionActivity(queue, &kFunctions, "3", console).active()) << "an unknown one";
}

TEST_F(SessionActivityTest, TheLoginManagersWordStandsAboveTheConsoles) {
  const TemporaryFolder folder;
  const std::string console = consoleFile(folder, "tty2\n");
  book.pidSession = "c2";
  EXPECT_TRUE(SessionActivity(queue, &kFunctions, "3", console).active());
  book.active = 0;
  EXPECT_FALSE(SessionActivity(queue, &kFunctions, "2", console).active());
}

TEST(SessionActivityOfThisSystem, Answers) {
  test::ServedLoop loop;
  const SessionActivity activity(loop.queue, nullptr);
  static_cast<void>(activity.active());
}

}  // namespace
}  // namespace velotap
