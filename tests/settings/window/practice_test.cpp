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

}  // namespace
}  // namespace velotap::test
