// The whole settings window in memory: what a person does in it.

#include <QCoreApplication>
#include <QKeyEvent>
#include <QMouseEvent>
#include <QQuickItem>
#include <chrono>

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

TapActivity tapThatTook(double seconds) {
  return {.id = 0,
          .date = std::chrono::system_clock::time_point(std::chrono::seconds(1'704'192'300)),
          .deviceClass = DeviceClass::trackpad,
          .fingers = 3,
          .duration = seconds,
          .drift = 0.01,
          .maxDuration = 0.3,
          .maxDrift = 0.05,
          .outcome = seconds > 0.3 ? TapActivity::Outcome::tooLong : TapActivity::Outcome::click};
}

// The first item below `root` that has the property.
QQuickItem* itemWith(QQuickItem* root, const char* property) {
  if (root->property(property).isValid()) return root;
  for (QQuickItem* child : root->childItems()) {
    if (QQuickItem* const found = itemWith(child, property)) return found;
  }
  return nullptr;
}

TEST_F(SceneTest, TapsShowWhileTheyHappenAndAreMended) {
  open("en", PreferencesTab::tuning, {560, 600});
  auto* pane = qobject_cast<TuningObject*>(settings->panes()->tuning);
  ASSERT_NE(pane, nullptr);
  const auto newest = [pane](const char* field) {
    return pane->newestTap()->rows().first()[QLatin1String(field)].toString();
  };
  const int before = pane->otherTaps()->count();
  fixture->taps().record(tapThatTook(0.341));
  EXPECT_EQ(pane->otherTaps()->count(), before + 1);
  EXPECT_TRUE(newest("outcome").startsWith(QStringLiteral("Held too long")));
  EXPECT_EQ(newest("suggestion"), QStringLiteral("Allow 350\u00A0ms"));
  pane->applySuggestion(pane->newestTap()->rows().first()[QStringLiteral("id")].toInt());
  EXPECT_EQ(*fixture->defaults().object("maxTapDurationMs")->integer(), 350);
  EXPECT_EQ(newest("suggestion"), QString());
  pane->setPaused(true);
  fixture->taps().record(tapThatTook(0.1));
  EXPECT_TRUE(newest("outcome").startsWith(QStringLiteral("Held too long"))) << "it is paused";
  pane->setPaused(false);
  EXPECT_TRUE(newest("outcome").startsWith(QStringLiteral("Middle click")));
  awaitFrame();
}

class CenterBandTest : public SceneTest {
 protected:
  CenterBandTest() {
    open("en", PreferencesTab::tuning, {560, 2400});
    band = itemWith(settings->view()->rootObject(), "edgeAt");
  }
  [[nodiscard]] double edge(const char* key) { return *fixture->defaults().object(key)->real(); }
  void send(QEvent::Type type, double place) {
    const QPointF at = band->mapToScene({place * band->width(), band->height() / 2});
    QMouseEvent event(type, at, at, at, type == QEvent::MouseMove ? Qt::NoButton : Qt::LeftButton,
                      type == QEvent::MouseButtonRelease ? Qt::NoButton : Qt::LeftButton,
                      Qt::NoModifier);
    QCoreApplication::sendEvent(settings->view(), &event);
  }
  void drag(double from, double to) {
    send(QEvent::MouseButtonPress, from);
    send(QEvent::MouseMove, to);
    send(QEvent::MouseButtonRelease, to);
  }
  void press(QQuickItem* item, int key, Qt::KeyboardModifiers modifiers = Qt::NoModifier) {
    item->forceActiveFocus();
    QKeyEvent event(QEvent::KeyPress, key, modifiers);
    QCoreApplication::sendEvent(settings->view(), &event);
  }

  QQuickItem* band = nullptr;
};

TEST_F(CenterBandTest, TheNearerEdgeIsDragged) {
  ASSERT_NE(band, nullptr);
  drag(0.36, 0.25);
  EXPECT_DOUBLE_EQ(edge("centerMinX"), 0.25);
  drag(0.64, 0.801);
  EXPECT_DOUBLE_EQ(edge("centerMaxX"), 0.8);
  drag(0.8, 0.2);
  EXPECT_DOUBLE_EQ(edge("centerMaxX"), 0.5) << "as far as the slider goes";
  EXPECT_DOUBLE_EQ(edge("centerMinX"), 0.25);
}

TEST_F(CenterBandTest, EdgesInOnePlaceGoTheWayOfThePointer) {
  ASSERT_NE(band, nullptr);
  drag(0.35, 0.5);
  drag(0.65, 0.5);
  drag(0.5, 0.6);
  EXPECT_DOUBLE_EQ(edge("centerMaxX"), 0.6);
  drag(0.6, 0.5);
  drag(0.5, 0.3);
  EXPECT_DOUBLE_EQ(edge("centerMinX"), 0.3);
  EXPECT_DOUBLE_EQ(edge("centerMaxX"), 0.5);
}

TEST_F(CenterBandTest, EdgesMoveWithTheKeyboard) {
  ASSERT_NE(band, nullptr);
  QList<QQuickItem*> edges;
  for (QQuickItem* child : band->childItems()) {
    if (child->activeFocusOnTab()) edges.append(child);
  }
  ASSERT_EQ(edges.size(), 2);
  press(edges[0], Qt::Key_Left);
  EXPECT_DOUBLE_EQ(edge("centerMinX"), 0.34);
  press(edges[0], Qt::Key_Right, Qt::ShiftModifier);
  EXPECT_DOUBLE_EQ(edge("centerMinX"), 0.39);
  press(edges[1], Qt::Key_Up);
  EXPECT_DOUBLE_EQ(edge("centerMaxX"), 0.66);
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

// However much is installed, what adds it stays where it can be seen.
TEST_F(SceneTest, ALongListOfApplicationsLeavesTheButtonsInSight) {
  open("en", PreferencesTab::apps, {560, 600});
  fixture->install(200);
  auto* apps = qobject_cast<AppsObject*>(settings->panes()->apps);
  apps->openInstalled(QStringLiteral("ignored"));
  QMetaObject::invokeMethod(page(), "openChooser");
  awaitFrame();
  awaitFrame();
  EXPECT_GE(apps->running()->count(), 200);
  const QQuickItem* add = control(qt(fixture->texts()("Cancel")));
  ASSERT_NE(add, nullptr);
  EXPECT_LE(add->mapRectToScene(add->boundingRect()).bottom(), 600);
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
