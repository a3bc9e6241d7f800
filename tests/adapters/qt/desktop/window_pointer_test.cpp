#include "adapters/qt/desktop/window_pointer.hpp"

#include <gtest/gtest.h>

#include <QEnterEvent>
#include <QGuiApplication>
#include <QHideEvent>
#include <QMouseEvent>
#include <QWindow>
#include <memory>
#include <optional>
#include <vector>

namespace velotap {
namespace {

using Places = std::vector<std::optional<QPointF>>;

class WindowPointerTest : public testing::Test {
 protected:
  static void SetUpTestSuite() {
    qputenv("QT_QPA_PLATFORM", "offscreen");
    static int count = 1;
    static char name[] = "test";
    static char* arguments[] = {name, nullptr};
    application = std::make_unique<QGuiApplication>(count, arguments);
  }
  // Its devices belong to it and need the rest of Qt to be there still.
  static void TearDownTestSuite() { application.reset(); }

  static inline std::unique_ptr<QGuiApplication> application;
  Places places;
  WindowPointer pointer{[this](std::optional<QPointF> place) { places.push_back(place); }};
  QWindow window;
};

TEST_F(WindowPointerTest, FollowsThePointerIntoAWindowAndOutOfIt) {
  QEnterEvent enter({1, 2}, {1, 2}, {101, 202});
  QCoreApplication::sendEvent(&window, &enter);
  QMouseEvent move(QEvent::MouseMove, QPointF(3, 4), QPointF(103, 204), Qt::NoButton, Qt::NoButton,
                   Qt::NoModifier);
  QCoreApplication::sendEvent(&window, &move);
  QEvent leave(QEvent::Leave);
  QCoreApplication::sendEvent(&window, &leave);
  EXPECT_EQ(places, (Places{QPointF(101, 202), QPointF(103, 204), std::nullopt}));
}

TEST_F(WindowPointerTest, IsNowhereOnceTheWindowIsGone) {
  QHideEvent hide;
  QCoreApplication::sendEvent(&window, &hide);
  EXPECT_EQ(places, Places{std::nullopt});
}

TEST_F(WindowPointerTest, HearsOfWindowsOnly) {
  QObject item;
  QMouseEvent move(QEvent::MouseMove, QPointF(3, 4), QPointF(103, 204), Qt::NoButton, Qt::NoButton,
                   Qt::NoModifier);
  QCoreApplication::sendEvent(&item, &move);
  EXPECT_TRUE(places.empty());
}

TEST_F(WindowPointerTest, TakesNothingAway) {
  class Hearing : public QWindow {
   public:
    int moves = 0;

   protected:
    void mouseMoveEvent(QMouseEvent*) override { ++moves; }
  };
  Hearing hearing;
  QMouseEvent move(QEvent::MouseMove, QPointF(3, 4), QPointF(103, 204), Qt::NoButton, Qt::NoButton,
                   Qt::NoModifier);
  QCoreApplication::sendEvent(&hearing, &move);
  EXPECT_EQ(hearing.moves, 1);
}

}  // namespace
}  // namespace velotap
