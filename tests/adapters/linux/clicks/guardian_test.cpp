#include "adapters/linux/clicks/guardian.hpp"

#include <fcntl.h>
#include <gtest/gtest.h>
#include <linux/input.h>
#include <poll.h>
#include <sys/resource.h>
#include <unistd.h>

#include <algorithm>
#include <array>
#include <cerrno>
#include <csignal>
#include <cstdlib>
#include <filesystem>
#include <fstream>
#include <string>
#include <vector>

namespace velotap::test {
namespace {

/// Pipes in the place of the node and of the devices: to a guard a file is a file.
struct Pipe {
  Pipe() {
    std::array<int, 2> ends{};
    EXPECT_EQ(::pipe2(ends.data(), O_CLOEXEC | O_NONBLOCK), 0);
    read = Descriptor(ends[0]);
    write = Descriptor(ends[1]);
  }
  Descriptor read;
  Descriptor write;
};

/// Waits as long as a patient person would.
bool happens(int fd, short what) {
  pollfd wanted = {.fd = fd, .events = what, .revents = 0};
  return ::poll(&wanted, 1, 20'000) == 1 && wanted.revents != 0;
}

std::vector<pid_t> children() {
  std::vector<pid_t> all;
  for (const auto& task : std::filesystem::directory_iterator("/proc/self/task")) {
    std::ifstream list(task.path() / "children");
    for (pid_t child = 0; list >> child;) all.push_back(child);
  }
  return all;
}

std::string word(const std::string& path) {
  std::string text;
  std::getline(std::ifstream(path), text);
  return text;
}

int farewell = -1;

class GuardianTest : public testing::Test {
 protected:
  [[nodiscard]] Guardian::Watched watched() const {
    return {.node = node.read.get(), .mirror = mirror.write.get(), .pointer = pointer.write.get()};
  }
  /// The only child, once it has become the guard.
  static pid_t guard() {
    const std::vector<pid_t> all = children();
    EXPECT_EQ(all.size(), 1U);
    return all.empty() ? -1 : all.front();
  }
  /// Until the child has got past its own preparations.
  static std::vector<int> filesOf(pid_t child) {
    const std::string process = "/proc/" + std::to_string(child);
    std::vector<int> files;
    do {
      files.clear();
      for (const auto& file : std::filesystem::directory_iterator(process + "/fd")) {
        files.push_back(std::stoi(file.path().filename()));
      }
    } while (word(process + "/comm") != "velotap-guard" || files.size() > 4);
    std::sort(files.begin(), files.end());
    return files;
  }
  Pipe node;
  Pipe mirror;
  Pipe pointer;
  Guardian guardian;
};

TEST_F(GuardianTest, keepsNothingOpenButWhatItGuards) {
  ASSERT_EQ(guardian.start(watched()), 0);
  const std::vector<int> files = filesOf(guard());
  for (const int fd : {watched().node, watched().mirror, watched().pointer}) {
    EXPECT_TRUE(std::binary_search(files.begin(), files.end(), fd)) << fd;
  }
  EXPECT_EQ(files.size(), 4U) << "and the line to its program";
}

TEST_F(GuardianTest, saysWhyThereCanBeNone) {
  rlimit before{};
  ASSERT_EQ(::getrlimit(RLIMIT_NOFILE, &before), 0);
  const Guardian::Watched files = watched();
  const rlimit none = {.rlim_cur = 3, .rlim_max = before.rlim_max};
  ASSERT_EQ(::setrlimit(RLIMIT_NOFILE, &none), 0);
  const int error = guardian.start(files);
  ::setrlimit(RLIMIT_NOFILE, &before);
  EXPECT_EQ(error, EMFILE);
  EXPECT_EQ(guardian.lifeline(), -1);
  EXPECT_TRUE(children().empty());
  EXPECT_EQ(guardian.start(files), 0) << "once there are files again";
}

TEST_F(GuardianTest, endsWhenItIsStoppedAndLeavesNoProcess) {
  ASSERT_EQ(guardian.start(watched()), 0);
  EXPECT_EQ(children().size(), 1U);
  guardian.stop();
  EXPECT_TRUE(children().empty());
  EXPECT_EQ(guardian.lifeline(), -1);
}

TEST_F(GuardianTest, aSecondStartReplacesTheFirst) {
  ASSERT_EQ(guardian.start(watched()), 0);
  const pid_t first = guard();
  ASSERT_EQ(guardian.start(watched()), 0);
  EXPECT_NE(guard(), first);
}

TEST_F(GuardianTest, theLifelineTellsOfItsEnd) {
  ASSERT_EQ(guardian.start(watched()), 0);
  pollfd line = {.fd = guardian.lifeline(), .events = 0, .revents = 0};
  EXPECT_EQ(::poll(&line, 1, 0), 0) << "it lives";
  ::kill(guard(), SIGKILL);
  EXPECT_TRUE(happens(guardian.lifeline(), 0));
  guardian.stop();
  EXPECT_TRUE(children().empty());
}

TEST_F(GuardianTest, releasesTheButtonWhenNobodyServes) {
  ASSERT_EQ(guardian.start(watched()), 0);
  ASSERT_EQ(::write(node.write.get(), "x", 1), 1);
  ASSERT_TRUE(happens(pointer.read.get(), POLLIN));
  std::array<input_event, 2> release{};
  ASSERT_EQ(::read(pointer.read.get(), release.data(), sizeof release),
            static_cast<ssize_t>(sizeof release));
  EXPECT_EQ(release[0].code, BTN_MIDDLE);
  EXPECT_EQ(release[0].value, 0);
  EXPECT_EQ(release[1].type, EV_SYN);
  EXPECT_TRUE(happens(guardian.lifeline(), 0)) << "its work is done";
}

TEST_F(GuardianTest, goesWithTheDevice) {
  ASSERT_EQ(guardian.start(watched()), 0);
  node.write.reset();
  EXPECT_TRUE(happens(guardian.lifeline(), 0));
}

// Among what a program registers for its end is what would disturb a display it shares.
TEST_F(GuardianTest, runsNoneOfTheProgramsFarewells) {
  farewell = pointer.write.get();
  ASSERT_EQ(std::atexit([] {
              // Of the program itself the pipe is closed by then.
              static_cast<void>(!::write(farewell, "farewell", 8));
            }),
            0);
  ASSERT_EQ(guardian.start(watched()), 0);
  guardian.stop();
  char text = 0;
  EXPECT_EQ(::read(pointer.read.get(), &text, 1), -1);
  EXPECT_EQ(errno, EAGAIN);
  farewell = -1;
}

}  // namespace
}  // namespace velotap::test
