#include "config/app_tracker.hpp"

#include <gtest/gtest.h>

#include <thread>

#include "config/defaults_store.hpp"
#include "support/desktop.hpp"

namespace velotap {
namespace {

constexpr const char* kOwn = "app.norwend.velotap";
constexpr const char* kEditor = "com.example.editor";
constexpr const char* kBrowser = "com.example.browser";

AppId id(const char* text) {
  return AppId::intern(text);
}

class AppTrackerTest : public ::testing::Test, protected test::Desktop {
 protected:
  void startWith(const char* front) {
    activate(front);
    tracker_.start();
  }
  std::string context() const {
    const auto answer = tracker_.gestureContext();
    if (!answer) return "none";
    return std::string(answer->bundleID.text()) + (answer->usesKeystrokeZoom ? " keystrokes" : "") +
           (answer->isPractice ? " practice" : "");
  }
  std::string front() const {
    const auto app = tracker_.frontApp();
    return app ? std::string(app->bundleID.text()) + "/" + app->name : "none";
  }
  bool mayDeliver(const char* target, bool allowPractice = false) const {
    return tracker_.mayDeliver(id(target), allowPractice);
  }
  void showPracticeUnderThePointer() { practice_.set(Rect{500, 300, 100, 100}); }

  DefaultsStore defaults_{preferences, log};
  Config config_{defaults_, notifications};
  PracticeTarget practice_;
  AppTracker tracker_{config_, workspace, events, practice_, notifications};
};

TEST_F(AppTrackerTest, KnowsNothingBeforeItIsStarted) {
  activate(kEditor, "Editor");
  EXPECT_EQ(context(), "none");
  EXPECT_EQ(front(), "none");
}

TEST_F(AppTrackerTest, StartsWithTheApplicationInFrontAndTheStoredRules) {
  config_.setKeystrokeZoomApps({kEditor});
  startWith(kEditor);
  EXPECT_EQ(context(), "com.example.editor keystrokes");
  EXPECT_EQ(front(), "com.example.editor/com.example.editor") << "named after itself";
}

TEST_F(AppTrackerTest, StartsWithNobodyInFront) {
  workspace.activate(std::nullopt);
  tracker_.start();
  EXPECT_EQ(context(), "none");
  EXPECT_EQ(front(), "none");
}

TEST_F(AppTrackerTest, FollowsActivations) {
  startWith(kEditor);
  activate(kBrowser, "Browser");
  EXPECT_EQ(context(), kBrowser);
  EXPECT_EQ(front(), "com.example.browser/Browser");
}

TEST_F(AppTrackerTest, AnActivationWithoutAnApplicationClearsEverything) {
  startWith(kEditor);
  workspace.activate(std::nullopt);
  EXPECT_EQ(context(), "none");
  EXPECT_EQ(front(), "none");
  activate(kEditor);
  EXPECT_EQ(context(), kEditor);
}

TEST_F(AppTrackerTest, AnApplicationWithoutAnIdentifierCountsAsNone) {
  startWith(kEditor);
  workspace.activate(RunningApplication{AppId(), "Nameless"});
  EXPECT_EQ(context(), "none");
  EXPECT_EQ(front(), "none");
}

TEST_F(AppTrackerTest, OurOwnWindowKeepsTheApplicationThatTheUserCameFrom) {
  startWith(kEditor);
  activate(kOwn, "Velotap");
  EXPECT_EQ(front(), "com.example.editor/com.example.editor");
  EXPECT_EQ(context(), "none");
}

TEST_F(AppTrackerTest, OurOwnWindowGetsGesturesOnlyOverThePracticeTarget) {
  startWith(kOwn);
  EXPECT_EQ(context(), "none");
  showPracticeUnderThePointer();
  EXPECT_EQ(context(), "app.norwend.velotap practice");
  events.setPointer(Point{499, 300});
  EXPECT_EQ(context(), "none");
  events.setPointer(Point{500, 300});
  EXPECT_EQ(context(), "app.norwend.velotap practice");
  practice_.set(std::nullopt);
  EXPECT_EQ(context(), "none");
}

TEST_F(AppTrackerTest, WithoutAPointerItIsAtTheOrigin) {
  startWith(kOwn);
  events.setPointer(std::nullopt);
  practice_.set(Rect{0, 0, 10, 10});
  EXPECT_EQ(context(), "app.norwend.velotap practice");
}

TEST_F(AppTrackerTest, ThePracticeTargetMeansNothingOverOtherApplications) {
  startWith(kEditor);
  showPracticeUnderThePointer();
  EXPECT_EQ(context(), kEditor);
}

TEST_F(AppTrackerTest, IgnoredApplicationsGetNothing) {
  startWith(kEditor);
  config_.setIgnoredApps({kBrowser, kEditor});
  EXPECT_EQ(context(), "none");
  activate("com.example.other");
  EXPECT_EQ(context(), "com.example.other");
  activate(kBrowser);
  EXPECT_EQ(context(), "none");
  config_.setIgnoredApps({});
  EXPECT_EQ(context(), kBrowser);
}

TEST_F(AppTrackerTest, EvenWeMayBeIgnored) {
  startWith(kOwn);
  showPracticeUnderThePointer();
  config_.setIgnoredApps({kOwn});
  EXPECT_EQ(context(), "none");
}

TEST_F(AppTrackerTest, ComparesIdentifiersExactly) {
  startWith(kEditor);
  config_.setIgnoredApps({"Com.Example.Editor", "com.example.edito", "com.example.editor2"});
  config_.setKeystrokeZoomApps({"COM.EXAMPLE.EDITOR"});
  EXPECT_EQ(context(), kEditor);
  config_.setIgnoredApps({"  com.example.editor "});
  EXPECT_EQ(context(), "none") << "blanks around an identifier are not part of it";
}

TEST_F(AppTrackerTest, ARuleMayBeInBothLists) {
  startWith(kEditor);
  config_.setKeystrokeZoomApps({kEditor});
  EXPECT_EQ(context(), "com.example.editor keystrokes");
  config_.setIgnoredApps({kEditor});
  EXPECT_EQ(context(), "none");
  config_.setIgnoredApps({});
  EXPECT_EQ(context(), "com.example.editor keystrokes");
  config_.setKeystrokeZoomApps({});
  EXPECT_EQ(context(), kEditor);
}

TEST_F(AppTrackerTest, LongListsAreSearchedWhole) {
  startWith(kEditor);
  std::vector<std::string> many;
  for (int i = 0; i < 500; ++i) many.push_back("com.example.app" + std::to_string(i));
  config_.setIgnoredApps(many);
  EXPECT_EQ(context(), kEditor);
  for (const std::string& app : many) {
    activate(app);
    ASSERT_EQ(context(), "none") << app;
    ASSERT_FALSE(mayDeliver(app.c_str()));
  }
}

TEST_F(AppTrackerTest, StoredRulesAreCleanedWhenTheyAreRead) {
  defaults_.set("ignoredApps", Value::strings({" com.example.editor", ""}));
  startWith(kEditor);
  EXPECT_EQ(context(), "none");
}

TEST_F(AppTrackerTest, RulesThatAreNoListsOfTextsCountAsEmpty) {
  defaults_.set("ignoredApps", "com.example.editor");
  defaults_.set("keystrokeZoomApps", 7);
  startWith(kEditor);
  EXPECT_EQ(context(), kEditor);
}

TEST_F(AppTrackerTest, RulesAreReadOnNoticeOnly) {
  startWith(kEditor);
  defaults_.set("ignoredApps", Value::strings({kEditor}));
  EXPECT_EQ(context(), kEditor);
  notifications.post("VelotapAppListsDidChange");
  EXPECT_EQ(context(), "none");
}

TEST_F(AppTrackerTest, RefreshingIsPossibleWithoutANotice) {
  startWith(kEditor);
  defaults_.set("ignoredApps", Value::strings({kEditor}));
  tracker_.refreshConfiguredApps();
  EXPECT_EQ(context(), "none");
}

// Delivery.

TEST_F(AppTrackerTest, DeliversOnlyToWhoIsInFrontRightNow) {
  startWith(kEditor);
  EXPECT_TRUE(mayDeliver(kEditor));
  EXPECT_FALSE(mayDeliver(kBrowser));
  workspace.setLive(id(kBrowser));
  EXPECT_FALSE(mayDeliver(kEditor)) << "the notification is not waited for";
  EXPECT_TRUE(mayDeliver(kBrowser));
  EXPECT_EQ(context(), kEditor) << "the context is";
  workspace.setLive(AppId());
  EXPECT_FALSE(mayDeliver(kEditor));
  EXPECT_FALSE(tracker_.mayDeliver(AppId(), false)) << "nobody is not an addressee";
}

TEST_F(AppTrackerTest, NothingIsDeliveredToIgnoredApplications) {
  startWith(kEditor);
  config_.setIgnoredApps({kEditor});
  EXPECT_FALSE(mayDeliver(kEditor));
  EXPECT_FALSE(mayDeliver(kEditor, true));
  config_.setIgnoredApps({"COM.EXAMPLE.EDITOR"});
  EXPECT_TRUE(mayDeliver(kEditor));
}

TEST_F(AppTrackerTest, OurOwnWindowIsDeliveredToOnlyForPractice) {
  startWith(kOwn);
  EXPECT_FALSE(mayDeliver(kOwn));
  EXPECT_FALSE(mayDeliver(kOwn, true)) << "no practice target is shown";
  showPracticeUnderThePointer();
  EXPECT_FALSE(mayDeliver(kOwn)) << "not every gesture may be practised";
  EXPECT_TRUE(mayDeliver(kOwn, true));
  events.setPointer(Point{0, 0});
  EXPECT_FALSE(mayDeliver(kOwn, true));
  events.setPointer(Point{512, 384});
  config_.setIgnoredApps({kOwn});
  EXPECT_FALSE(mayDeliver(kOwn, true));
}

TEST_F(AppTrackerTest, PracticeAllowsNoOtherAddressee) {
  startWith(kEditor);
  showPracticeUnderThePointer();
  EXPECT_TRUE(mayDeliver(kEditor, true));
  EXPECT_FALSE(mayDeliver(kOwn, true));
}

TEST_F(AppTrackerTest, WithoutAnIdentityOfOurOwnNobodyInFrontTellsNothing) {
  workspace.setOwnBundleId(AppId());
  startWith(kEditor);
  workspace.activate(std::nullopt);
  EXPECT_EQ(front(), "com.example.editor/com.example.editor") << "it keeps whom it knew";
  EXPECT_EQ(context(), "none");
  EXPECT_FALSE(tracker_.mayDeliver(AppId(), true));
  activate(kEditor);
  EXPECT_EQ(context(), kEditor);
}

TEST_F(AppTrackerTest, StopsFollowingWhenGone) {
  {
    AppTracker other(config_, workspace, events, practice_, notifications);
    other.start();
  }
  activate(kBrowser);
  config_.setIgnoredApps({kBrowser});  // would touch a tracker that is gone
  EXPECT_EQ(context(), "none");
}

TEST_F(AppTrackerTest, IsReadWhileItChanges) {
  startWith(kEditor);
  std::vector<std::thread> readers;
  for (int i = 0; i < 3; ++i) {
    readers.emplace_back([this] {
      for (int k = 0; k < 5000; ++k) {
        if (const auto seen = tracker_.gestureContext()) {
          EXPECT_EQ(seen->isPractice, seen->bundleID == id(kOwn));
        }
        static_cast<void>(mayDeliver(kEditor, true));
        static_cast<void>(tracker_.frontApp());
      }
    });
  }
  std::thread rules([this] {
    for (int k = 0; k < 200; ++k) {
      config_.setIgnoredApps({k % 2 == 0 ? kEditor : kBrowser});
      config_.setKeystrokeZoomApps({k % 2 == 0 ? kBrowser : kEditor});
    }
  });
  for (int k = 0; k < 1000; ++k) {
    activate(k % 3 == 0 ? kOwn : k % 3 == 1 ? kEditor : kBrowser);
    if (k % 10 == 0) showPracticeUnderThePointer();
    if (k % 10 == 5) practice_.set(std::nullopt);
  }
  rules.join();
  for (auto& reader : readers) reader.join();
}

}  // namespace
}  // namespace velotap
