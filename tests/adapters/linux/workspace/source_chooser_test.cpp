#include "adapters/linux/workspace/source_chooser.hpp"

#include <gtest/gtest.h>

#include <iterator>

#include "fake_sources.hpp"
#include "support/fake_ports.hpp"
#include "support/virtual_time.hpp"

namespace velotap {
namespace {

using Kind = FrontSourceKind;
using test::FakeRecovery;
using test::FakeSources;

constexpr Kind kFirst = Kind::wlroots;
constexpr Kind kSecond = Kind::kdeScript;

class SourceChooserTest : public testing::Test {
 protected:
  void absent(Kind kind, const std::string& reason = "absent") {
    sources[kind].failed(SourceFailure::absent, reason);
  }
  void unreachable(Kind kind, const std::string& reason = "unreachable") {
    sources[kind].failed(SourceFailure::unreachable, reason);
  }
  /// A chooser of one candidate that was live and is lost.
  void loseFirst() {
    sources[kFirst].live();
    unreachable(kFirst, "gone");
    queue.runDue();
  }
  [[nodiscard]] Kind live() const { return chooser->status().kind; }
  [[nodiscard]] const std::string& text() const { return chooser->status().text; }
  void make(const std::vector<Kind>& kinds) {
    std::vector<FrontSourceCandidate> candidates;
    candidates.reserve(kinds.size());
    for (const Kind kind : kinds) candidates.push_back(sources.candidate(kind));
    chooser = std::make_unique<SourceChooser>(
        std::move(candidates), recovery, queue, clock, log,
        SourceChooser::Callbacks{
            .statusChanged = [this](const FrontSourceStatus& s) { statuses.push_back(s.kind); },
            .front =
                [this](const std::optional<FrontWindow>& window) {
                  fronts.push_back(window ? window->appId : "-");
                }});
    chooser->start();
  }

  test::ManualClock clock;
  test::VirtualQueue queue{clock};
  test::RecordingLog log;
  FakeSources sources;
  FakeRecovery recovery;
  std::vector<Kind> statuses;
  std::vector<std::string> fronts;
  std::unique_ptr<SourceChooser> chooser;
};

TEST_F(SourceChooserTest, theFirstThatIsLiveWins) {
  make({kFirst, kSecond});
  sources[kFirst].live();
  EXPECT_EQ(live(), kFirst);
  sources[kFirst].front(FrontWindow{.appId = "app"});
  EXPECT_EQ(fronts, std::vector<std::string>{"app"});
  EXPECT_EQ(sources.started[kSecond], 0);
  EXPECT_EQ(queue.pending(), 0U) << "a live source needs no timer";
}

TEST_F(SourceChooserTest, theNextIsTriedWhenOneIsAbsent) {
  make({kFirst, kSecond});
  absent(kFirst);
  EXPECT_EQ(sources.started[kSecond], 1);
  sources[kSecond].live();
  EXPECT_EQ(live(), kSecond);
  queue.runDue();
  EXPECT_EQ(sources.at(kFirst), nullptr) << "let go";
}

TEST_F(SourceChooserTest, aSourceMayRefuseInsideItsStart) {
  sources.atOnce[kFirst] = [](FakeSources::Source& source) {
    source.said.failed(SourceFailure::absent, "not here");
  };
  sources.atOnce[kSecond] = [](FakeSources::Source& source) { source.said.live(); };
  make({kFirst, kSecond});
  EXPECT_EQ(live(), kSecond);
}

TEST_F(SourceChooserTest, withoutCandidatesThereIsNoSession) {
  make({});
  EXPECT_EQ(live(), Kind::none);
  EXPECT_EQ(text(), "there is no desktop session");
  EXPECT_EQ(queue.pending(), 0U);
}

TEST_F(SourceChooserTest, aDesktopThatOffersNothingCostsNothing) {
  make({kFirst, kSecond});
  absent(kFirst, "no list");
  absent(kSecond, "no script");
  EXPECT_EQ(live(), Kind::none);
  EXPECT_EQ(text(), "no list; no script");
  EXPECT_TRUE(recovery.armed());
  queue.runDue();
  EXPECT_EQ(queue.pending(), 0U);
}

TEST_F(SourceChooserTest, theSameReasonIsSaidOnce) {
  make({kFirst, kSecond});
  unreachable(kFirst, "nobody answers");
  unreachable(kSecond, "nobody answers");
  EXPECT_EQ(text(), "nobody answers");
}

TEST_F(SourceChooserTest, oneThatSleepsMayWakeUp) {
  make({kFirst, kSecond});
  sources[kFirst].dormant("asleep");
  absent(kSecond, "no script");
  EXPECT_EQ(live(), Kind::none);
  EXPECT_EQ(text(), "no script; asleep");
  queue.runDue();
  EXPECT_EQ(queue.pending(), 0U) << "it is waited for without a timer";
  sources[kFirst].live();
  EXPECT_EQ(live(), kFirst);
  EXPECT_FALSE(recovery.armed());
}

TEST_F(SourceChooserTest, whileOneSleepsALaterOneMayWin) {
  make({kFirst, kSecond});
  sources[kFirst].dormant("asleep");
  sources[kSecond].live();
  EXPECT_EQ(live(), kSecond);
  queue.runDue();
  EXPECT_EQ(sources.at(kFirst), nullptr);
}

TEST_F(SourceChooserTest, aNewReasonForSleepingIsTold) {
  make({kFirst});
  sources[kFirst].dormant("asleep");
  sources[kFirst].dormant("fast asleep");
  EXPECT_EQ(text(), "fast asleep");
  EXPECT_EQ(sources.started[kFirst], 1);
}

TEST_F(SourceChooserTest, oneThatSaysNothingIsPassedOverAndKept) {
  make({kFirst, kSecond});
  queue.advance(kAnswerLimit - 0.001);
  EXPECT_EQ(sources.started[kSecond], 0);
  queue.advance(0.001);
  EXPECT_EQ(sources.started[kSecond], 1);
  absent(kSecond, "no script");
  EXPECT_EQ(text(), "no script; wlroots has not answered yet");
  sources[kFirst].live();
  EXPECT_EQ(live(), kFirst);
}

TEST_F(SourceChooserTest, onePassedOverThatFailsStartsNobodyTwice) {
  make({kFirst, kSecond});
  queue.advance(kAnswerLimit);
  unreachable(kFirst);
  EXPECT_EQ(sources.started[kSecond], 1);
  sources[kSecond].live();
  EXPECT_EQ(live(), kSecond);
}

TEST_F(SourceChooserTest, aLossIsOneLineAndARecoveryAnother) {
  make({kFirst});
  sources[kFirst].live();
  EXPECT_EQ(log.take(), std::vector<std::string>{"front application: known from wlroots, the "
                                                 "compositor's list of windows"});
  unreachable(kFirst, "the compositor closed the connection");
  for (const double pause : kRetryPauses) {
    queue.advance(pause);
    unreachable(kFirst, "no Wayland compositor answers");
  }
  EXPECT_EQ(log.take(), std::vector<std::string>{"front application: unknown, the compositor "
                                                 "closed the connection"});
  recovery.tell();
  sources[kFirst].live();
  EXPECT_EQ(log.take().size(), 1U);
  EXPECT_EQ(live(), kFirst);
}

TEST_F(SourceChooserTest, aFirstAnswerOfNoneIsALineToo) {
  make({kFirst});
  absent(kFirst, "no list");
  EXPECT_EQ(log.take(), std::vector<std::string>{"front application: unknown, no list"});
}

TEST_F(SourceChooserTest, aSilentLogIsNotWrittenTo) {
  log.on = false;
  make({kFirst});
  absent(kFirst);
  EXPECT_TRUE(log.take().empty());
}

TEST_F(SourceChooserTest, aLostServerIsAskedAgainWithGrowingPauses) {
  make({kFirst});
  loseFirst();
  int attempts = 1;
  for (const double pause : kRetryPauses) {
    queue.advance(pause - 0.001);
    EXPECT_EQ(sources.started[kFirst], attempts) << pause;
    queue.advance(0.002);
    ASSERT_EQ(sources.started[kFirst], ++attempts) << pause;
    unreachable(kFirst);
  }
  queue.runDue();
  EXPECT_EQ(queue.pending(), 0U) << "the socket is watched: no timer for good";
  EXPECT_TRUE(recovery.armed());
}

TEST_F(SourceChooserTest, withoutAWatchItIsAskedForGood) {
  recovery.watchable = false;
  make({kFirst});
  loseFirst();
  for (const double pause : kRetryPauses) {
    queue.advance(pause);
    unreachable(kFirst);
  }
  const int attempts = sources.started[kFirst];
  for (int i = 1; i <= 3; ++i) {
    queue.advance(kUnwatchedPause - 0.001);
    EXPECT_EQ(sources.started[kFirst], attempts + i - 1);
    queue.advance(0.002);
    ASSERT_EQ(sources.started[kFirst], attempts + i);
    unreachable(kFirst);
  }
}

TEST_F(SourceChooserTest, aSocketThatAppearsIsTriedAtOnceAndPatiently) {
  make({kFirst});
  loseFirst();
  for (const double pause : kRetryPauses) {
    queue.advance(pause);
    unreachable(kFirst);
  }
  const int attempts = sources.started[kFirst];
  recovery.tell();
  EXPECT_EQ(sources.started[kFirst], attempts + 1);
  // The socket is there before its server listens.
  unreachable(kFirst);
  queue.advance(kRetryPauses[0]);
  EXPECT_EQ(sources.started[kFirst], attempts + 2);
  sources[kFirst].live();
  EXPECT_EQ(live(), kFirst);
}

TEST_F(SourceChooserTest, oneThatKeepsDyingIsAskedLessAndLess) {
  make({kFirst});
  for (const double pause : kRetryPauses) {
    sources[kFirst].live();
    unreachable(kFirst);
    queue.advance(pause);
    ASSERT_NE(sources.at(kFirst), nullptr) << pause;
  }
  const int attempts = sources.started[kFirst];
  sources[kFirst].live();
  queue.advance(kSettledAfter - 0.001);
  unreachable(kFirst);
  queue.advance(1000);
  EXPECT_EQ(sources.started[kFirst], attempts) << "only its socket's return is waited for";
  recovery.tell();
  EXPECT_EQ(sources.started[kFirst], attempts + 1);
}

TEST_F(SourceChooserTest, oneThatWasLiveForLongIsAskedSoonAgain) {
  make({kFirst});
  for (const double pause : kRetryPauses) {
    sources[kFirst].live();
    unreachable(kFirst);
    queue.advance(pause);
  }
  const int attempts = sources.started[kFirst];
  sources[kFirst].live();
  queue.advance(kSettledAfter);
  unreachable(kFirst);
  queue.advance(kRetryPauses[0]);
  EXPECT_EQ(sources.started[kFirst], attempts + 1);
}

TEST_F(SourceChooserTest, aLiveSourceMayFallAsleepAndWake) {
  make({kFirst, kSecond});
  sources[kFirst].live();
  sources[kFirst].front(FrontWindow{.appId = "app"});
  sources[kFirst].dormant("no window manager");
  EXPECT_EQ(live(), Kind::none);
  EXPECT_EQ(text(), "no window manager");
  sources[kFirst].front(FrontWindow{.appId = "stale"});
  EXPECT_EQ(fronts, std::vector<std::string>{"app"});
  queue.runDue();
  EXPECT_EQ(queue.pending(), 0U);
  sources[kFirst].live();
  EXPECT_EQ(live(), kFirst);
  EXPECT_EQ(statuses, (std::vector{kFirst, Kind::none, kFirst}));
}

TEST_F(SourceChooserTest, aSleepingSourceThatDiesIsAskedAgain) {
  make({kFirst});
  sources[kFirst].live();
  sources[kFirst].dormant("no window manager");
  unreachable(kFirst, "the X server closed the connection");
  EXPECT_EQ(text(), "the X server closed the connection");
  queue.advance(kRetryPauses[0]);
  EXPECT_EQ(sources.started[kFirst], 2);
}

TEST_F(SourceChooserTest, sourcesThatWereLetGoAreNotHeard) {
  make({kFirst, kSecond});
  const auto old = sources[kFirst];
  absent(kFirst);
  sources[kSecond].live();
  old.live();
  old.front(FrontWindow{.appId = "stale"});
  old.dormant("stale");
  old.failed(SourceFailure::unreachable, "stale");
  EXPECT_EQ(live(), kSecond);
  EXPECT_TRUE(fronts.empty());
}

TEST_F(SourceChooserTest, sourcesOfAnEarlierRoundAreNotHeard) {
  make({kFirst});
  const auto old = sources[kFirst];
  old.dormant("asleep");
  recovery.tell();
  old.live();
  EXPECT_EQ(live(), Kind::none);
  sources[kFirst].live();
  old.failed(SourceFailure::unreachable, "stale");
  EXPECT_EQ(live(), kFirst);
}

TEST_F(SourceChooserTest, aSourceIsNotDestroyedInsideItsOwnCallback) {
  make({kFirst});
  unreachable(kFirst);
  EXPECT_EQ(sources.destroyed, 0);
  queue.runDue();
  EXPECT_EQ(sources.destroyed, 1);
}

TEST_F(SourceChooserTest, nothingOutlivesTheChooser) {
  make({kFirst, kSecond});
  unreachable(kFirst);
  unreachable(kSecond);
  chooser.reset();
  EXPECT_EQ(sources.destroyed, 2);
  EXPECT_FALSE(recovery.armed());
  const int attempts = sources.started[kFirst];
  queue.advance(100);
  EXPECT_EQ(sources.started[kFirst], attempts);
}

TEST_F(SourceChooserTest, startsOnce) {
  make({kFirst});
  chooser->start();
  EXPECT_EQ(sources.started[kFirst], 1);
}

}  // namespace
}  // namespace velotap
