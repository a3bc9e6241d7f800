// The whole settings window in memory: what a person does in it.

#include <QCoreApplication>

#include "scene.hpp"
#include "settings/window/values.hpp"

namespace velotap::test {
namespace {

TEST_F(SceneTest, GesturesAreSwitchedExplainedAndUndone) {
  open("en", PreferencesTab::gestures, {560, 600});
  auto* pane = qobject_cast<GesturesObject*>(settings->panes()->gestures);
  ASSERT_NE(pane, nullptr);
  pane->setDevice(QStringLiteral("mouse"));
  pane->setTrigger(QStringLiteral("mouseTap3"), false);
  EXPECT_FALSE(fixture->defaults().boolean("mouseTap3"));
  pane->setTrigger(QStringLiteral("mouseTap3"), true);
  pane->disableAll();
  EXPECT_FALSE(fixture->defaults().boolean("mouseClick3"));
  pane->undo();
  EXPECT_TRUE(fixture->defaults().boolean("mouseClick3"));
  pane->setModifiedOnly(true);
  pane->restoreDefaults();
  EXPECT_TRUE(
      pane->state().value(QStringLiteral("empty")).toMap()[QStringLiteral("shown")].toBool());
}

TEST_F(SceneTest, SearchLeadsToItsPane) {
  open("en", PreferencesTab::general, {560, 600});
  auto* pane = qobject_cast<GeneralObject*>(settings->panes()->general);
  ASSERT_NE(pane, nullptr);
  pane->setQuery(QStringLiteral("PINCH"));
  ASSERT_GE(pane->results()->count(), 2) << "in Gestures and in Tuning";
  EXPECT_LE(pane->results()->count(), 8);
  pane->openResult(pane->results()->rows().first()[QStringLiteral("id")].toString());
  auto* frame = qobject_cast<WindowObject*>(settings->panes()->window);
  EXPECT_EQ(frame->tab(), PreferencesTab::gestures);
  frame->setTab(7);
  frame->setTab(-1);
  EXPECT_EQ(frame->tab(), PreferencesTab::gestures) << "a number that is no tab's";
}

TEST_F(SceneTest, ClosingForgetsAndOpeningStartsAfresh) {
  open("en", PreferencesTab::general, {560, 600});
  qobject_cast<GeneralObject*>(settings->panes()->general)->setQuery(QStringLiteral("tap"));
  settings->close();
  while (settings->isOpen()) QCoreApplication::processEvents(QEventLoop::WaitForMoreEvents);
  EXPECT_EQ(settings->panes(), nullptr);
  settings->show(PreferencesTab::general);
  const auto* pane = qobject_cast<GeneralObject*>(settings->panes()->general);
  EXPECT_FALSE(
      pane->state().value(QStringLiteral("search")).toMap()[QStringLiteral("active")].toBool());
}

// Words, numbers, dates and percents: all that a window says in a new language when it opens in it,
// it says as well when the language changes while it is open.
TEST_F(SceneTest, ANewLanguageRedrawsAnOpenWindow) {
  for (const SceneState& state : sceneStates()) {
    open("de_DE", state, 560);
    const QStringList wanted = texts();
    open("en_US", state, 560);
    EXPECT_NE(texts(), wanted) << state.name;
    fixture->setLocale("de_DE");
    settings->refreshLocalizedLabels();
    awaitFrame();
    EXPECT_EQ(texts().join(u'\n').toStdString(), wanted.join(u'\n').toStdString()) << state.name;
  }
}

TEST_F(SceneTest, NumbersFollowTheRegion) {
  open("de_DE", PreferencesTab::tuning, {560, 600});
  QString shown = texts().join(u'\n');
  EXPECT_TRUE(shown.contains(QStringLiteral("0,05")) && shown.contains(u"35\u00a0%"))
      << shown.toStdString();
  fixture->setLocale("de_CH");
  settings->refreshLocalizedLabels();
  awaitFrame();
  shown = texts().join(u'\n');
  EXPECT_TRUE(shown.contains(QStringLiteral("0.05")) && shown.contains(u"35%"))
      << shown.toStdString();
  EXPECT_FALSE(shown.contains(QStringLiteral("0,05")) || shown.contains(u"35\u00a0%"));
}

TEST_F(SceneTest, WhoAnswersThreeFingersCanBeChosen) {
  open("en", PreferencesTab::gestures, {560, 600});
  gestures().setDevice(QStringLiteral("trackpad"));
  awaitFrame();
  EXPECT_EQ(control(QStringLiteral("Desktop")), nullptr) << "where desktops never click";
  fixture->gestureFacts.desktopClicks = DesktopClicks{.threeFingerTap = true};
  settings->panes()->refresh();
  awaitFrame();
  press(QStringLiteral("Desktop"));
  EXPECT_EQ(fixture->defaults().text("padThreeFingerMode"), "native");
  EXPECT_TRUE(control(QStringLiteral("Desktop"))->property("checked").toBool());
  gestures().setTrackpadMode(QStringLiteral("both"));
  EXPECT_EQ(fixture->defaults().text("padThreeFingerMode"), "native") << "no such mode";
}

// A note that comes while the pane is open takes its place at once.
TEST_F(SceneTest, ANoteAppearsWhileItsGestureIsShown) {
  open("en", PreferencesTab::gestures, {560, 600});
  gestures().setDevice(QStringLiteral("mouse"));
  awaitFrame();
  const double before = page()->property("contentHeight").toReal();
  fixture->gestureFacts.listenersRunning = false;
  settings->panes()->refresh();
  awaitFrame();
  EXPECT_NE(control(qt(fixture->texts()("Try Again"))), nullptr);
  EXPECT_GT(page()->property("contentHeight").toReal(), before);
  fixture->gestureFacts.listenersRunning = true;
  settings->panes()->refresh();
  awaitFrame();
  EXPECT_EQ(page()->property("contentHeight").toReal(), before);
}

}  // namespace
}  // namespace velotap::test
