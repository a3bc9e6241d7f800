// The windows that a Mac shows, over recorders of its frameworks and a screen in memory.
#include "app/macos/qt/qt_windows.hpp"

#include <gtest/gtest.h>

#include <QEventLoop>
#include <QGuiApplication>
#include <QKeyEvent>
#include <QKeySequence>
#include <QQuickItem>

#include "app/macos/mac_world.hpp"
#include "config/practice_target.hpp"
#include "settings/window/about_object.hpp"
#include "settings/window/apps_object.hpp"
#include "settings/window/gestures_object.hpp"

namespace velotap::test {
namespace {

struct WindowWorld : MacWorld {
  WindowWorld() {
    cocoa.bundles = {{.path = "/Applications/Editor.app",
                      .bundleId = "com.example.editor",
                      .displayName = "Editor"}};
  }

  FakeDialogs dialogs;
  FakeAppearance appearance;
  FakeProgram program;
  MacApplications applications{cocoa};
  MacPanels panels{dialogs, cocoa};
  int activations = 0;
  QtWindows windows{{.applications = applications,
                     .panels = panels,
                     .appearance = appearance,
                     .program = programFacts(program),
                     .stateFolder = folder.path().string(),
                     .activate = [this] { ++activations; }}};
};

class QtWindowsTest : public ::testing::Test {
 protected:
  static WindowWorld& world() {
    static WindowWorld instance;
    return instance;
  }
  static Application& application() {
    static Application instance([] {
      Application::Surroundings surroundings = world().surroundings();
      surroundings.effects.activate = [] { ++world().activations; };
      surroundings.effects.openSettings = [](SettingsPane pane) {
        world().windows.showSettings(pane);
      };
      return surroundings;
    }());
    return instance;
  }

  QtWindowsTest() {
    world().activations = 0;
    world().windows.connect(application());
  }
  ~QtWindowsTest() override { world().windows.close(); }

  static SettingsWindow& settings() { return *world().windows.settings(); }
  template <typename Pane>
  static Pane& pane(QObject* object) {
    return *qobject_cast<Pane*>(object);
  }
};

TEST_F(QtWindowsTest, settingsOpenOnThePaneThatIsWantedAndComeToTheFront) {
  world().windows.showSettings(SettingsPane::about);
  ASSERT_TRUE(settings().isOpen());
  EXPECT_TRUE(settings().view()->isVisible());
  EXPECT_EQ(settings().view()->errors().size(), 0);
  EXPECT_EQ(world().activations, 1);
  const QQuickView* window = settings().view();
  world().windows.showSettings(SettingsPane::general);
  EXPECT_EQ(settings().view(), window) << "the same window";
  EXPECT_EQ(world().activations, 2);
}

TEST_F(QtWindowsTest, theOnboardingOpensAndGoesOnToTheSettings) {
  application().onboarding().show();
  ASSERT_NE(world().windows.onboarding()->window(), nullptr);
  EXPECT_TRUE(application().onboarding().isVisible());
  EXPECT_EQ(world().windows.onboarding()->window()->title(), QStringLiteral("Set Up Velotap"));
  EXPECT_EQ(world().windows.onboarding()->window()->errors().size(), 0);
  application().onboarding().continueToSettings();
  EXPECT_TRUE(settings().isOpen());
}

// An object of this type among those that a window is made of; what is drawn inside of another
// thing need not be its child otherwise.
QObject* objectOfType(QObject* root, const char* type) {
  if (QByteArray(root->metaObject()->className()).contains(type)) return root;
  QObjectList inside;
  for (QObject* child : root->children()) {
    if (qobject_cast<QQuickItem*>(child) == nullptr) inside.append(child);
  }
  if (const auto* item = qobject_cast<QQuickItem*>(root)) {
    for (QQuickItem* child : item->childItems()) inside.append(child);
  }
  for (QObject* child : inside) {
    if (QObject* found = objectOfType(child, type)) return found;
  }
  return nullptr;
}

void await(const QObject* object, const char* signal) {
  QEventLoop loop;
  QObject::connect(object, signal, &loop, SLOT(quit()));
  loop.exec();
}

Point centreOnScreen(const QQuickItem& item) {
  const QPointF centre = item.mapToGlobal(QPointF(item.width() / 2, item.height() / 2));
  return {centre.x(), centre.y()};
}

TEST_F(QtWindowsTest, practisingOpensThePracticePlaceItself) {
  application().onboarding().show();
  application().onboarding().tryMiddleClick();
  ASSERT_TRUE(settings().isOpen());
  EXPECT_GE(world().activations, 1) << "a program without a Dock place opens behind the others";
  QObject* sheet = objectOfType(settings().view()->rootObject(), "PracticeSheet");
  ASSERT_NE(sheet, nullptr);
  await(sheet, SIGNAL(opened()));
  EXPECT_EQ(sheet->property("title").toString(), QStringLiteral("Try a middle click"));
  const auto* surface =
      qobject_cast<QQuickItem*>(objectOfType(settings().view()->contentItem(), "PracticeSurface"));
  ASSERT_NE(surface, nullptr);
  const Point centre = centreOnScreen(*surface);
  EXPECT_TRUE(PracticeTarget::shared().contains(centre)) << "gestures are delivered there";
  QMetaObject::invokeMethod(sheet, "close");
  await(sheet, SIGNAL(closed()));
  EXPECT_FALSE(PracticeTarget::shared().contains(centre));
}

TEST_F(QtWindowsTest, whatTheProgramIsStandsInItsBundle) {
  world().windows.showSettings(SettingsPane::about);
  const QVariantMap& about = pane<AboutObject>(settings().panes()->about).state();
  EXPECT_EQ(about.value(QStringLiteral("version")), QStringLiteral("Version 1.2.3 (45)"));
  EXPECT_EQ(about.value(QStringLiteral("notice")), QStringLiteral("© somebody"));
  const QString snapshot =
      about.value(QStringLiteral("snapshot")).toMap().value(QStringLiteral("text")).toString();
  EXPECT_TRUE(
      snapshot.startsWith(QStringLiteral("Velotap · Version 1.2.3 (45)\n"
                                         "macOS · Version 14.2 (Build 23C64)\n")))
      << snapshot.toStdString();
}

TEST_F(QtWindowsTest, chosenApplicationsBecomeRulesWithTheirIcons) {
  world().windows.showSettings(SettingsPane::general);
  auto& apps = pane<AppsObject>(settings().panes()->apps);
  world().dialogs.chosen = {"/Applications/Editor.app"};
  apps.chooseApplications(QStringLiteral("ignored"));
  EXPECT_EQ(Config::shared().ignoredApps(), std::vector<std::string>{"com.example.editor"});
  EXPECT_EQ(world().dialogs.drawn, std::vector<std::string>{"/Applications/Editor.app 64"});
  apps.remove(QStringLiteral("ignored"), QStringLiteral("com.example.editor"));
}

TEST_F(QtWindowsTest, aGestureWithoutPermissionLeadsToItsPageOfTheSystem) {
  world().windows.showSettings(SettingsPane::general);
  auto& gestures = pane<GesturesObject>(settings().panes()->gestures);
  gestures.setDevice(QStringLiteral("mouse"));
  gestures.setTrigger(QStringLiteral("mouseTap3"), true);
  world().cocoa.opened.clear();
  gestures.actOnNote(QStringLiteral("mouseTap3"));
  EXPECT_EQ(world().cocoa.opened,
            std::vector<std::string>{
                "x-apple.systempreferences:com.apple.preference.security?Privacy_Accessibility"});
  EXPECT_FALSE(application().onboarding().isVisible());
}

TEST_F(QtWindowsTest, windowsFollowTheAppearance) {
  world().windows.showSettings(SettingsPane::general);
  auto* context = qobject_cast<ViewContext*>(ViewContext::create(nullptr, nullptr));
  ASSERT_NE(context, nullptr);
  EXPECT_FALSE(context->dark());
  world().appearance.darkNow = true;
  world().appearance.contrastNow = true;
  world().appearance.changes.notify();
  EXPECT_TRUE(context->dark());
  EXPECT_TRUE(context->look().highContrast);
  world().appearance.darkNow = world().appearance.contrastNow = false;
  world().appearance.changes.notify();
}

class KeyRecorder final : public QWindow {
 public:
  QStringList keys;

 protected:
  void keyPressEvent(QKeyEvent* event) override {
    keys.append(QKeySequence(event->keyCombination()).toString());
  }
};

TEST_F(QtWindowsTest, editCommandsReachTheWindowWithTheKeyboardAsKeys) {
  const Windows::Editor edit = world().windows.editor();
  KeyRecorder window;
  window.show();
  window.requestActivate();
  QCoreApplication::processEvents();
  ASSERT_EQ(QGuiApplication::focusWindow(), &window);
  for (const ResponderCommand command :
       {ResponderCommand::undo, ResponderCommand::redo, ResponderCommand::cut,
        ResponderCommand::copy, ResponderCommand::paste, ResponderCommand::selectAll}) {
    EXPECT_TRUE(edit(command));
  }
  EXPECT_EQ(window.keys.join(u' '),
            QStringLiteral("Ctrl+Z Ctrl+Shift+Z Ctrl+X Ctrl+C Ctrl+V Ctrl+A"));
  EXPECT_FALSE(edit(ResponderCommand::close)) << "the system's own matter";
  EXPECT_FALSE(edit(ResponderCommand::minimize));
}

TEST_F(QtWindowsTest, withoutAWindowThatHasTheKeyboardTheSystemIsAsked) {
  ASSERT_EQ(QGuiApplication::focusWindow(), nullptr);
  world().menuBar.show(nativeMenuBar(
      {MenuItem{.submenu = {MenuItem{.title = "Copy", .responder = ResponderCommand::copy}}}},
      world().menuBar, world().windows.editor()));
  world().menuBar.choose("Copy");
  EXPECT_EQ(world().menuBar.sent, std::vector<std::string>{"copy:"});
}

TEST_F(QtWindowsTest, placesAndSizesAreKeptWhenTheProgramEnds) {
  world().windows.showSettings(SettingsPane::general);
  settings().view()->resize(600, 640);
  world().windows.close();
  EXPECT_EQ(world().windows.settings(), nullptr);
  world().windows.showSettings(SettingsPane::general);  // too late: nothing
  world().windows.connect(application());
  world().windows.showSettings(SettingsPane::general);
  EXPECT_EQ(settings().view()->size(), QSize(600, 640));
}

}  // namespace
}  // namespace velotap::test
