#include <gtest/gtest.h>

#include "adapters/linux/runtime/posix_clock.hpp"
#include "adapters/linux/runtime/posix_main_queue.hpp"
#include "adapters/linux/workspace/linux_workspace.hpp"
#include "fake_sources.hpp"
#include "support/allocation_counter.hpp"
#include "support/fake_ports.hpp"

namespace velotap {
namespace {

TEST(LinuxWorkspaceAllocations, askingWhatIsInFrontAllocatesNothing) {
  PosixClock clock;
  PosixMainQueue loop(clock);
  test::RecordingLog log;
  test::FakeSources sources;
  LinuxWorkspace workspace(AppId::intern("own"),
                           {.candidates = {sources.candidate(FrontSourceKind::x11)},
                            .recovery = std::make_unique<test::FakeRecovery>(),
                            .applicationFolders = {},
                            .languages = {}},
                           {.loop = loop, .queue = loop, .clock = clock, .log = log});
  workspace.start();
  sources[FrontSourceKind::x11].live();
  sources[FrontSourceKind::x11].front(FrontWindow{.appId = "an application"});
  const std::size_t before = test::allocationsOfThisThread();
  const AppId front = workspace.frontmostBundleId();
  const AppId own = workspace.ownBundleId();
  EXPECT_EQ(test::allocationsOfThisThread(), before);
  EXPECT_EQ(front.text(), "an application");
  EXPECT_EQ(own.text(), "own");
}

}  // namespace
}  // namespace velotap
