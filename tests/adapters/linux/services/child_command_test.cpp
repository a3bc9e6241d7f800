#include "adapters/linux/services/child_command.hpp"

#include <gtest/gtest.h>
#include <sys/stat.h>

#include <csignal>
#include <fstream>

#include "support/temporary_folder.hpp"

namespace velotap {
namespace {

TEST(FindProgram, LooksThroughTheFolders) {
  const TemporaryFolder folder;
  const auto program = folder.path() / "tool";
  std::ofstream(program) << "#!/bin/sh\n";
  const std::string path = folder.path().string();
  EXPECT_EQ(findProgram("tool", path), std::nullopt) << "not executable";
  ::chmod(program.c_str(), 0700);
  EXPECT_EQ(findProgram("tool", path), program.string());
  EXPECT_EQ(findProgram("tool", "/nonexistent::" + path), program.string());
  EXPECT_EQ(findProgram("tool", "/nonexistent"), std::nullopt);
  EXPECT_EQ(findProgram("tool", ""), std::nullopt);
  EXPECT_EQ(findProgram("tool", ".:relative"), std::nullopt);
  EXPECT_EQ(findProgram(program.string(), ""), program.string());
  EXPECT_EQ(findProgram(path, ""), std::nullopt) << "a folder is no program";
}

TEST(ChildCommandTest, SaysHowItEnded) {
  EXPECT_EQ(ChildCommand::start({"/bin/sh", "-c", "exit 0"})->finish(20000), 0);
  EXPECT_EQ(ChildCommand::start({"/bin/sh", "-c", "exit 7"})->finish(20000), 7);
  EXPECT_EQ(ChildCommand::start({"/bin/sh", "-c", "kill -TERM $$"})->finish(20000), 128 + SIGTERM);
  auto child = ChildCommand::start({"/bin/sh", "-c", "exit 7"});
  EXPECT_EQ(child->finish(20000), 7);
  EXPECT_EQ(child->finish(0), 7) << "and says it again";
}

TEST(ChildCommandTest, SaysWhenItCannotStart) {
  EXPECT_FALSE(ChildCommand::start({}));
  EXPECT_FALSE(ChildCommand::start({"velotap-no-such-program"}));
  EXPECT_FALSE(ChildCommand::start({"/nonexistent/program"}));
}

TEST(ChildCommandTest, GivesTheChildOrdinarySignals) {
  sigset_t blocked;
  sigset_t before;
  sigemptyset(&blocked);
  sigaddset(&blocked, SIGTERM);
  sigprocmask(SIG_BLOCK, &blocked, &before);
  auto* const ignored = std::signal(SIGPIPE, SIG_IGN);
  EXPECT_EQ(ChildCommand::start({"/bin/sh", "-c", "kill -TERM $$; exit 1"})->finish(20000),
            128 + SIGTERM);
  EXPECT_EQ(ChildCommand::start({"/bin/sh", "-c", "kill -PIPE $$; exit 1"})->finish(20000),
            128 + SIGPIPE);
  std::signal(SIGPIPE, ignored);
  sigprocmask(SIG_SETMASK, &before, nullptr);
}

}  // namespace
}  // namespace velotap
