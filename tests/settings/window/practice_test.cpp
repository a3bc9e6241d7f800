// Practising from the fingers to the count: frames of a simulated trackpad go through the engine
// and its rules, and what the engine posts arrives at the open window as a click of the pointer.

#include <QCoreApplication>
#include <QMouseEvent>
#include <QQuickItem>
#include <memory>
#include <utility>
#include <vector>

#include "gestures/engine_fixture.hpp"
#include "settings/capture/fixture.hpp"
#include "settings/views/bridge/practice_surface.hpp"
#include "settings/window/settings_window.hpp"
#include "view_fixture.hpp"

namespace velotap::test {
namespace {

class PracticeTest : public ViewTest, protected EngineKit {
 protected:
  PracticeTest() {
    set("padTap3", true);
    addDevices();
    EXPECT_TRUE(engine.start());
    deliver({});
    activate(kOwnApp);
    settings = std::make_unique<SettingsWindow>(
        context, SettingsWindow::Effects{
                     .texts = [this] { return fixture.texts(); },
                     .makePanes = [this](PanesObject& panes) { makePanes(panes); },
                     .observe = [](std::function<void()>) { return std::vector<Observation>(); },
                     .frameFile = {}});
    settings->show(PreferencesTab::gestures);
    settings->view()->requestActivate();
    awaitFrame();
    arrivals_ = events.observePosts([this](const PostedEvent& event) {
      if (const auto* click = std::get_if<MouseEvent>(&event)) underWay_.push_back(*click);
    });
  }

  void makePanes(PanesObject& panes) {
    fixture.makePanes(panes);
    delete panes.practice;
    panes.practice = new PracticeObject({.target = practice,
                                         .texts = [this] { return fixture.texts(); },
                                         .showGeneral = [] {},
                                         .showGestures = [] {},
                                         .showTuning = [] {}},
                                        &panes);
  }
  void awaitFrame() {
    QEventLoop shown;
    const auto connection = QObject::connect(settings->view(), &QQuickWindow::frameSwapped, &shown,
                                             &QEventLoop::quit, Qt::QueuedConnection);
    settings->view()->update();
    shown.exec();
    QObject::disconnect(connection);
  }
  void openPractice() {
    QMetaObject::invokeMethod(settings->view()->rootObject(), "showDetails", Q_ARG(QVariant, false),
                              Q_ARG(QVariant, true));
    awaitFrame();
    awaitFrame();
  }
  [[nodiscard]] QRectF surface() const {
    const PracticeSurface* const item = find(settings->view()->contentItem());
    return item == nullptr ? QRectF() : item->mapRectToScene(item->boundingRect());
  }
  static const PracticeSurface* find(const QQuickItem* root) {
    if (const auto* found = qobject_cast<const PracticeSurface*>(root)) return found;
    for (const QQuickItem* child : root->childItems()) {
      if (const PracticeSurface* const found = find(child)) return found;
    }
    return nullptr;
  }
  /// What scrolls the surface.
  [[nodiscard]] QQuickItem* scrolled() const {
    QQuickItem* item = find(settings->view()->contentItem())->parentItem();
    while (item != nullptr && !item->inherits("QQuickFlickable")) item = item->parentItem();
    return item;
  }
  /// The pointer's place in the window.
  void pointAt(QPointF place) {
    const QPointF global = settings->view()->mapToGlobal(place);
    events.setPointer(Point{global.x(), global.y()});
  }
  void deliver(const Frame& frame) {
    multitouch.deliver(pad, frame.data(), static_cast<std::int32_t>(frame.size()));
  }
  void tap() {
    time.advance(1);
    deliver(row(3));
    time.advance(0.125);
    deliver({});
    for (const MouseEvent& click : std::exchange(underWay_, {})) arrive(click);
  }
  /// As the desktop delivers a click: to the window, where the pointer is.
  void arrive(const MouseEvent& click) {
    const bool down = click.type == MouseEventType::otherDown;
    const QPointF global(click.location.x, click.location.y);
    const QPointF local = settings->view()->mapFromGlobal(global);
    const auto button = click.button == 2 ? Qt::MiddleButton : Qt::LeftButton;
    QMouseEvent event(down ? QEvent::MouseButtonPress : QEvent::MouseButtonRelease, local, local,
                      global, button, down ? button : Qt::NoButton, Qt::NoModifier);
    QCoreApplication::sendEvent(settings->view(), &event);
  }
  [[nodiscard]] QVariantList counts() const {
    const auto* pane = qobject_cast<PracticeObject*>(settings->panes()->practice);
    return pane->state()[QStringLiteral("counts")].toList();
  }

  Fixture fixture{"en"};
  std::unique_ptr<SettingsWindow> settings;
  std::vector<MouseEvent> underWay_;
  Observation arrivals_;
};

TEST_F(PracticeTest, ATapOnTheSurfaceIsCounted) {
  openPractice();
  pointAt(surface().center());
  tap();
  ASSERT_EQ(counts().size(), 1);
  EXPECT_EQ(counts()[0].toMap()[QStringLiteral("text")].toString(),
            QStringLiteral("Middle clicks: 1"));
  tap();
  EXPECT_EQ(counts()[0].toMap()[QStringLiteral("text")].toString(),
            QStringLiteral("Middle clicks: 2"));
  awaitFrame();
}

TEST_F(PracticeTest, BesideTheSurfaceNothingIsPosted) {
  openPractice();
  const QRectF place = surface();
  posted.take();
  pointAt(place.topLeft() - QPointF(2, 2));
  tap();
  EXPECT_EQ(posted.take(), Lines{}) << "the program's own window gets no gestures";
  EXPECT_TRUE(counts().isEmpty());
  pointAt(place.topLeft() + QPointF(2, 2));
  tap();
  EXPECT_EQ(posted.take().size(), 2U);
}

TEST_F(PracticeTest, TheSurfaceCountsOnlyWhileItShows) {
  pointAt({280, 200});
  posted.take();
  tap();
  EXPECT_EQ(posted.take(), Lines{}) << "the sheet is closed";
  openPractice();
  pointAt(surface().center());
  tap();
  EXPECT_EQ(posted.take().size(), 2U);
  const QRectF place = surface();
  settings->view()->showMinimized();
  QCoreApplication::processEvents();
  pointAt(place.center());
  tap();
  EXPECT_EQ(posted.take(), Lines{}) << "the window is in the dock";
}

// What a small window scrolls out of the sheet cannot be clicked, so it is no place for gestures.
TEST_F(PracticeTest, OnlyWhatShowsOfTheSurfaceTakesGestures) {
  // A screen may be smaller than the least size that the window asks for.
  settings->view()->setMinimumSize({});
  settings->view()->resize(PreferencesWindowSize::kLeastWidth, 240);
  openPractice();
  QQuickItem* sheet = scrolled();
  ASSERT_NE(sheet, nullptr);
  const double shown = sheet->mapRectToScene(sheet->boundingRect()).top();
  // Far enough that its upper edge lies above the sheet, and still in the window.
  sheet->setProperty("contentY", surface().top() - shown + 10);
  awaitFrame();
  awaitFrame();
  const QRectF place = surface();
  ASSERT_EQ(place.top(), shown - 10);
  ASSERT_GT(place.top(), 0);
  pointAt({place.center().x(), place.top() + 1});
  posted.take();
  tap();
  EXPECT_EQ(posted.take(), Lines{});
  sheet->setProperty("contentY", 0);
  awaitFrame();
  awaitFrame();
  pointAt({surface().center().x(), surface().top() + 1});
  tap();
  EXPECT_EQ(posted.take().size(), 2U);
}

TEST_F(PracticeTest, AWindowThatTakesNoMouseIsNoTarget) {
  openPractice();
  pointAt(surface().center());
  EXPECT_TRUE(practice.contains(*events.pointerLocation()));
  settings->view()->setFlag(Qt::WindowTransparentForInput);
  awaitFrame();
  EXPECT_FALSE(practice.contains(*events.pointerLocation()));
  settings->view()->setFlag(Qt::WindowTransparentForInput, false);
  awaitFrame();
  EXPECT_TRUE(practice.contains(*events.pointerLocation()));
}

TEST_F(PracticeTest, ClosingTheWindowGivesThePlaceUp) {
  openPractice();
  pointAt(surface().center());
  ASSERT_TRUE(practice.contains(*events.pointerLocation()));
  settings->close();
  QCoreApplication::processEvents();
  EXPECT_FALSE(practice.contains(*events.pointerLocation()));
}

TEST(PointerCoordinates, ArePixelsWhereTheServerCountsThem) {
  const QRectF place(1930, 20, 100, 50);
  EXPECT_EQ(pointerCoordinates(place, {1920, 0}, 2, false), place);
  EXPECT_EQ(pointerCoordinates(place, {1920, 0}, 2, true), QRectF(1940, 40, 200, 100))
      << "a screen begins where it begins for everybody";
  EXPECT_EQ(pointerCoordinates(place, {0, 0}, 1, true), place);
}

}  // namespace
}  // namespace velotap::test
