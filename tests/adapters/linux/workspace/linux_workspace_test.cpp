#include "adapters/linux/workspace/linux_workspace.hpp"

#include <gtest/gtest.h>
#include <signal.h>
#include <sys/wait.h>
#include <unistd.h>

#include <array>
#include <atomic>
#include <filesystem>
#include <thread>

#include "adapters/linux/runtime/posix_clock.hpp"
#include "adapters/linux/runtime/posix_main_queue.hpp"
#include "desktop_entry_text.hpp"
#include "fake_sources.hpp"
#include "support/recording_log.hpp"
#include "support/temporary_folder.hpp"
#include "support/virtual_time.hpp"

namespace velotap {
namespace {

using Kind = FrontSourceKind;
using Texts = std::vector<std::string>;
using test::desktopEntry;

// Virtual time for the workspace, the kernel's own word on files.
class LinuxWorkspaceTest : public testing::Test {
 protected:
  LinuxWorkspaceTest() {
    workspace.start();
    seen = workspace.observeActivations([this](const std::optional<RunningApplication>& a) {
      const AppId id = a ? a->bundleId : AppId();
      EXPECT_EQ(workspace.frontmostBundleId(), id) << "as new as what observers hear";
      activations.push_back(!a                ? "-"
                            : a->name.empty() ? std::string(id.text())
                                              : std::string(id.text()) + " " + a->name);
    });
  }
  LinuxWorkspace::Desktop desktop() {
    auto recoverySignal = std::make_unique<test::FakeRecovery>();
    recovery = recoverySignal.get();
    return {.candidates = {sources.candidate(Kind::x11)},
            .recovery = std::move(recoverySignal),
            .applicationFolders = {folder / "applications"},
            .languages = {"de"}};
  }
  void live() { sources[Kind::x11].live(); }
  void front(const FrontWindow& window) { sources[Kind::x11].front(window); }
  void front(const std::string& appId) { front(FrontWindow{.appId = appId}); }
  void nothing() { sources[Kind::x11].front(std::nullopt); }
  Texts take() { return std::exchange(activations, {}); }
  [[nodiscard]] std::string asked() { return std::string(workspace.frontmostBundleId().text()); }

  PosixClock realClock;
  PosixMainQueue loop{realClock};
  test::ExactClock clock;
  test::VirtualQueue queue{clock};
  test::RecordingLog log;
  TemporaryFolder folder;
  test::FakeSources sources;
  test::FakeRecovery* recovery = nullptr;
  LinuxWorkspace workspace{AppId::intern("app.norwend.velotap"),
                           desktop(),
                           {.loop = loop, .queue = queue, .clock = clock, .log = log}};
  Observation seen;
  Texts activations;
};

TEST_F(LinuxWorkspaceTest, theUnknownApplicationIsInFrontUntilSomethingIsKnown) {
  EXPECT_EQ(asked(), kUnknownApplication);
  ASSERT_TRUE(workspace.frontmostApplication());
  EXPECT_EQ(workspace.frontmostApplication()->bundleId.text(), kUnknownApplication);
  EXPECT_EQ(workspace.source().kind, Kind::none);
}

TEST_F(LinuxWorkspaceTest, observersHearOfEachChangeAtOnce) {
  live();
  front("one");
  front("two");
  EXPECT_EQ(take(), (Texts{"one", "two"}));
  EXPECT_EQ(asked(), "two");
}

TEST_F(LinuxWorkspaceTest, anotherWindowOfTheSameApplicationIsNoActivation) {
  live();
  front(FrontWindow{.windowClass = "App", .instance = "first", .pid = 1});
  front(FrontWindow{.windowClass = "App", .instance = "second", .pid = 2});
  EXPECT_EQ(take(), Texts{"App"});
}

TEST_F(LinuxWorkspaceTest, nothingBetweenTwoWindowsIsNotHeardOf) {
  live();
  front("one");
  nothing();
  EXPECT_EQ(asked(), "one");
  queue.advance(kEmptyGrace - 0.001);
  front("two");
  queue.advance(1);
  EXPECT_EQ(take(), (Texts{"one", "two"}));
}

TEST_F(LinuxWorkspaceTest, nothingThatStaysIsHeardOfOnce) {
  live();
  front("one");
  nothing();
  queue.advance(kEmptyGrace - 0.001);
  EXPECT_EQ(take(), Texts{"one"});
  queue.advance(0.001);
  EXPECT_EQ(take(), Texts{"-"});
  EXPECT_FALSE(workspace.frontmostApplication());
  EXPECT_FALSE(workspace.frontmostBundleId());
  nothing();
  queue.advance(1);
  EXPECT_TRUE(take().empty());
  front("one");
  EXPECT_EQ(take(), Texts{"one"});
  EXPECT_EQ(queue.pending(), 0U);
}

TEST_F(LinuxWorkspaceTest, aLostSourceBringsTheUnknownApplicationToTheFront) {
  live();
  front("one");
  nothing();
  sources[Kind::x11].failed(SourceFailure::unreachable, "gone");
  EXPECT_EQ(take(), (Texts{"one", kUnknownApplication}));
  EXPECT_EQ(workspace.source().text, "gone");
  queue.advance(kEmptyGrace);
  EXPECT_TRUE(take().empty()) << "the pending nothing is forgotten";
  recovery->tell();
  live();
  front("one");
  EXPECT_EQ(take(), Texts{"one"});
}

TEST_F(LinuxWorkspaceTest, observersOfTheSourceHearWhichOneIsLive) {
  Texts kinds;
  const auto observed = workspace.observeSource(
      [&](const FrontSourceStatus& status) { kinds.push_back(frontSourceName(status.kind)); });
  live();
  sources[Kind::x11].dormant("asleep");
  EXPECT_EQ(kinds, (Texts{"x11", "none"}));
}

TEST_F(LinuxWorkspaceTest, applicationsAreNamedByTheirEntries) {
  folder.write("applications/org.a.Editor.desktop",
               desktopEntry("Editor", "Name[de]=Schreiber\nStartupWMClass=editor\n"));
  live();
  front(FrontWindow{.windowClass = "Editor", .instance = "editor"});
  front("org.b.Unknown");
  EXPECT_EQ(take(), (Texts{"org.a.Editor Schreiber", "org.b.Unknown"}));
}

TEST_F(LinuxWorkspaceTest, anApplicationInstalledMeanwhileIsKnown) {
  live();
  front("editor");
  folder.write("applications/org.a.editor.desktop", desktopEntry("Editor"));
  loop.runReady();
  // A window seen before is answered from memory, and put right before anything else happens.
  front("other");
  front("editor");
  EXPECT_EQ(take(), (Texts{"editor", "other", "org.a.editor Editor"}));
}

TEST_F(LinuxWorkspaceTest, aWindowInFrontIsPutRightAfterAChange) {
  folder.write("applications/editor.desktop", desktopEntry("Editor"));
  live();
  front("editor");
  EXPECT_EQ(take(), Texts{"editor Editor"});
  folder.write("applications/editor.desktop", desktopEntry("Better editor"));
  loop.runReady();
  front("editor");
  EXPECT_TRUE(take().empty()) << "not read while somebody waits for the answer";
  queue.runDue();
  EXPECT_EQ(take(), Texts{"editor Better editor"});
  queue.runDue();
  EXPECT_EQ(queue.pending(), 0U);
}

TEST_F(LinuxWorkspaceTest, ourOwnWindowsAreOurs) {
  live();
  front(FrontWindow{.windowClass = "anything", .pid = getpid()});
  EXPECT_EQ(asked(), "app.norwend.velotap");
  front("app.norwend.velotap");
  EXPECT_EQ(take(), Texts{"app.norwend.velotap"});
}

TEST_F(LinuxWorkspaceTest, aNamelessWindowIsNamedByItsProgram) {
  std::array<char, 4096> path{};
  ASSERT_GT(readlink("/proc/self/exe", path.data(), path.size() - 1), 0);
  const std::string program = std::filesystem::path(path.data()).filename();
  const pid_t child = fork();
  if (child == 0) {
    pause();
    _exit(0);
  }
  live();
  front(FrontWindow{.pid = child});
  EXPECT_EQ(take(), Texts{program});
  kill(child, SIGKILL);
  waitpid(child, nullptr, 0);
}

TEST_F(LinuxWorkspaceTest, anApplicationThatSaysNothingHasNoIdentifier) {
  live();
  front(FrontWindow{});
  ASSERT_TRUE(workspace.frontmostApplication());
  EXPECT_FALSE(workspace.frontmostApplication()->bundleId);
  EXPECT_FALSE(workspace.frontmostBundleId());
  EXPECT_EQ(take(), Texts{""});
}

TEST_F(LinuxWorkspaceTest, manyDifferentWindowsAreAllAnswered) {
  live();
  for (int i = 0; i < 1000; ++i) {
    front("window-" + std::to_string(i));
    ASSERT_EQ(asked(), "window-" + std::to_string(i));
  }
}

TEST_F(LinuxWorkspaceTest, anObserverMayBringAboutTheNextChange) {
  live();
  const auto meddler = workspace.observeActivations([&](const auto& application) {
    if (application && application->bundleId.text() == "one") front("two");
  });
  front("one");
  EXPECT_EQ(asked(), "two");
  EXPECT_EQ(take(), (Texts{"one", "two"}));
}

TEST_F(LinuxWorkspaceTest, anyThreadMayAsk) {
  live();
  std::atomic<bool> done = false;
  bool sound = true;
  std::thread reader([&] {
    while (!done) {
      const std::string_view text = workspace.frontmostBundleId().text();
      sound = sound && (text == "one" || text == "two" || text == kUnknownApplication);
    }
  });
  for (int i = 0; i < 2000; ++i) front(i % 2 == 0 ? "one" : "two");
  done = true;
  reader.join();
  EXPECT_TRUE(sound);
}

}  // namespace
}  // namespace velotap
