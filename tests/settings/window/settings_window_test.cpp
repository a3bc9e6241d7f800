// The settings window itself: what stays of it when it closes, and how it follows the desktop.

#include "settings/window/settings_window.hpp"

#include <QCoreApplication>
#include <QFile>
#include <QGuiApplication>
#include <QScreen>
#include <QSettings>
#include <QTemporaryDir>

#include "scene.hpp"

namespace velotap::test {
namespace {

class SettingsWindowTest : public SceneTest {
 protected:
  ~SettingsWindowTest() override { settings.reset(); }  // it tells what is below that it closes
  void make() {
    fixture = std::make_unique<Fixture>("en");
    settings = std::make_unique<SettingsWindow>(
        context, SettingsWindow::Effects{
                     .texts = [this] { return fixture->texts(); },
                     .makePanes = [this](PanesObject& panes) { fixture->makePanes(panes); },
                     .observe = [](std::function<void()>) { return std::vector<Observation>(); },
                     .frameFile = file,
                     .closed = [this] { ++timesClosed; }});
  }
  void show(PreferencesTab tab = PreferencesTab::general) {
    settings->show(tab);
    awaitFrame();
  }
  void close() {
    settings->close();
    while (settings->isOpen()) QCoreApplication::processEvents(QEventLoop::WaitForMoreEvents);
  }
  void remember(const QVariant& frame) {
    QSettings(file, QSettings::IniFormat).setValue(QStringLiteral("VelotapSettings"), frame);
  }
  [[nodiscard]] QRect frame() { return settings->view()->geometry(); }
  [[nodiscard]] static QRect screen() {
    return QGuiApplication::primaryScreen()->availableGeometry();
  }

  QTemporaryDir folder;
  QString file = folder.filePath(QStringLiteral("windows.ini"));
  int timesClosed = 0;
};

TEST_F(SettingsWindowTest, OpensInTheMiddleInItsOwnSize) {
  make();
  show();
  EXPECT_EQ(frame().size(), QSize(560, 600));
  EXPECT_EQ(settings->view()->minimumSize(), QSize(480, 420));
  EXPECT_LE((frame().center() - screen().center()).manhattanLength(), 2);
  EXPECT_EQ(settings->view()->title(), QStringLiteral("General"));
}

TEST_F(SettingsWindowTest, ComesBackWhereItWasClosed) {
  make();
  show();
  const QRect moved(screen().topLeft() + QPoint(40, 30), QSize(500, 430));
  settings->view()->setGeometry(moved);
  awaitFrame();
  close();
  EXPECT_EQ(timesClosed, 1);
  show();
  EXPECT_EQ(frame(), moved) << "after closing";
  settings.reset();
  make();
  show();
  EXPECT_EQ(frame(), moved) << "after a restart of the program";
}

TEST_F(SettingsWindowTest, ComesToTheMiddleWhereItsDisplayIsGone) {
  remember(QRect(screen().right() + 4000, 30, 700, 500));
  make();
  show();
  EXPECT_EQ(frame().size(), QSize(700, 500)) << "its size is still right";
  EXPECT_LE((frame().center() - screen().center()).manhattanLength(), 2);
}

TEST_F(SettingsWindowTest, IsNeverSmallerThanItCanBe) {
  remember(QRect(screen().topLeft() + QPoint(10, 10), QSize(30, 20)));
  make();
  show();
  EXPECT_EQ(frame().size(), QSize(480, 420));
}

TEST_F(SettingsWindowTest, OpensAsEverWhereWhatItRememberedIsNoFrame) {
  for (const QVariant& nonsense : {QVariant(QStringLiteral("wide")), QVariant(QRect())}) {
    remember(nonsense);
    make();
    show();
    EXPECT_EQ(frame().size(), QSize(560, 600));
    settings.reset();
  }
  QFile broken(file);
  ASSERT_TRUE(broken.open(QIODevice::WriteOnly));
  broken.write("\xff\x00[[[=", 6);
  broken.close();
  make();
  show();
  EXPECT_EQ(frame().size(), QSize(560, 600));
}

TEST_F(SettingsWindowTest, ShowingItAgainKeepsTheWindow) {
  make();
  show();
  const QQuickView* const view = settings->view();
  show(PreferencesTab::apps);
  EXPECT_EQ(settings->view(), view);
  EXPECT_EQ(settings->view()->title(), QStringLiteral("Apps"));
}

TEST_F(SettingsWindowTest, ComesBackFromTheDock) {
  make();
  show();
  const QQuickView* const view = settings->view();
  settings->view()->showMinimized();
  settings->show(PreferencesTab::tuning);
  EXPECT_EQ(settings->view(), view);
  EXPECT_EQ(settings->view()->windowStates() & Qt::WindowMinimized, Qt::WindowNoState);
}

TEST_F(SettingsWindowTest, LooksEachSecondOnlyWhileThereIsSomethingToSee) {
  make();
  show();
  EXPECT_TRUE(settings->isFollowing());
  settings->show(PreferencesTab::gestures);
  EXPECT_TRUE(settings->isFollowing());
  for (const auto tab : {PreferencesTab::tuning, PreferencesTab::apps, PreferencesTab::about}) {
    settings->show(tab);
    EXPECT_FALSE(settings->isFollowing());
  }
  settings->show(PreferencesTab::general);
  EXPECT_TRUE(settings->isFollowing());
  settings->view()->showMinimized();
  EXPECT_FALSE(settings->isFollowing());
  settings->show(PreferencesTab::general);
  EXPECT_TRUE(settings->isFollowing());
  close();
  EXPECT_FALSE(settings->isFollowing());
}

// A device that is plugged in, an item that another program switched off: nobody tells.
TEST_F(SettingsWindowTest, FactsThatNobodyTellsShowByThemselves) {
  make();
  fixture->generalFacts.connectedDevices.clear();
  show();
  fixture->generalFacts.connectedDevices = {DeviceClass::trackpad};
  QEventLoop seen;
  QObject::connect(general().devices(), &QAbstractItemModel::dataChanged, &seen, &QEventLoop::quit);
  seen.exec();
  EXPECT_TRUE(general().devices()->rows().first()[QStringLiteral("connected")].toBool());
}

TEST_F(SettingsWindowTest, EveryOpeningStartsFresh) {
  make();
  show(PreferencesTab::gestures);
  const QStringList fresh = texts();
  gestures().setQuery(QStringLiteral("pinch"));
  gestures().setEnabledOnly(true);
  QMetaObject::invokeMethod(page(), "showDetails");
  awaitFrame();
  EXPECT_NE(texts(), fresh);
  close();
  show(PreferencesTab::gestures);
  EXPECT_EQ(texts(), fresh) << "search, filters and what was unfolded";
  gestures().setDevice(QStringLiteral("trackpad"));
  close();
  show(PreferencesTab::gestures);
  EXPECT_EQ(
      gestures().state()[QStringLiteral("device")].toMap()[QStringLiteral("value")].toString(),
      QStringLiteral("trackpad"))
      << "the device outlives the window";
}

// A live change leaves nothing behind: the picture is that of a window opened in the new look.
TEST_F(SettingsWindowTest, FollowsTheLookOfTheDesktopWhileItIsOpen) {
  const std::array<Look, 5> looks = {
      Look{.scheme = ColorScheme::dark},
      Look{.scheme = ColorScheme::dark, .highContrast = true},
      Look{.scheme = ColorScheme::light, .highContrast = true},
      Look{.scheme = ColorScheme::light, .textScale = 1.4},
      Look{.scheme = ColorScheme::light},
  };
  for (const auto tab : {PreferencesTab::general, PreferencesTab::gestures}) {
    context.setLook({});
    make();
    show(tab);
    std::vector<QImage> live;
    for (const Look& look : looks) {
      context.setLook(look);
      awaitFrame();
      awaitFrame();  // what moves on a change of sizes
      EXPECT_EQ(settings->view()->color(), context.palette()[QStringLiteral("window")]);
      live.push_back(settings->view()->grabWindow());
    }
    for (std::size_t i = 0; i < looks.size(); ++i) {
      context.setLook(looks[i]);
      settings.reset();
      make();
      show(tab);
      EXPECT_EQ(live[i], settings->view()->grabWindow())
          << "look " << i << " of pane " << static_cast<int>(tab);
    }
  }
}

}  // namespace
}  // namespace velotap::test
