// The whole settings window in memory: every pane in every language, as narrow as it gets.

#include <QCoreApplication>
#include <QKeyEvent>
#include <QMouseEvent>
#include <QQuickItem>
#include <chrono>
#include <memory>

#include "settings/capture/fixture.hpp"
#include "settings/window/settings_window.hpp"
#include "view_fixture.hpp"

namespace velotap::test {
namespace {

constexpr std::array<const char*, 5> kLanguages = {"en", "bg", "de", "es", "fr"};
constexpr std::array<const char*, 5> kTabs = {"general", "gestures", "tuning", "apps", "about"};

class SceneTest : public ViewTest {
 protected:
  // Opens the window with a pane in front.
  void open(const char* locale, PreferencesTab tab, QSize size) {
    settings.reset();
    fixture = std::make_unique<Fixture>(locale);
    settings = std::make_unique<SettingsWindow>(
        context, SettingsWindow::Effects{
                     .texts = [this] { return fixture->texts(); },
                     .makePanes = [this](PanesObject& panes) { fixture->makePanes(panes); },
                     .observe = [](std::function<void()>) { return std::vector<Observation>(); },
                     .frameFile = {}});
    settings->show(tab);
    settings->view()->resize(size);
    awaitFrame();
  }
  void awaitFrame() {
    QEventLoop shown;
    const auto connection = QObject::connect(settings->view(), &QQuickWindow::frameSwapped, &shown,
                                             &QEventLoop::quit, Qt::QueuedConnection);
    settings->view()->update();
    shown.exec();
    QObject::disconnect(connection);
  }
  void keep(const QString& name) {
    const QString folder = qEnvironmentVariable("VELOTAP_PICTURES");
    if (folder.isEmpty()) return;
    settings->view()->grabWindow().save(folder + u'/' + name + QStringLiteral(".png"));
  }

  std::unique_ptr<Fixture> fixture;
  std::unique_ptr<SettingsWindow> settings;
};

TEST_F(SceneTest, NothingIsCutOffInAnyLanguage) {
  for (const char* language : kLanguages) {
    for (std::size_t tab = 0; tab < 5; ++tab) {
      open(language, static_cast<PreferencesTab>(tab), {480, 2600});
      EXPECT_EQ(truncatedTexts(settings->view()->rootObject()), QStringList())
          << language << " " << kTabs[tab];
      keep(QStringLiteral("%1-%2").arg(QLatin1String(kTabs[tab]), QLatin1String(language)));
    }
  }
}

// What is behind disclosures and in sheets is read as much as what is in front.
TEST_F(SceneTest, DetailsAreNotCutOffEither) {
  for (const char* language : kLanguages) {
    for (std::size_t tab = 0; tab < 4; ++tab) {
      open(language, static_cast<PreferencesTab>(tab), {480, 3000});
      QMetaObject::invokeMethod(settings->view()->rootObject(), "showDetails",
                                Q_ARG(QVariant, true), Q_ARG(QVariant, tab == 1));
      awaitFrame();
      EXPECT_EQ(truncatedTexts(settings->view()->contentItem()), QStringList())
          << language << " " << kTabs[tab];
      keep(QStringLiteral("%1-%2-details").arg(QLatin1String(kTabs[tab]), QLatin1String(language)));
    }
  }
}

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

TEST_F(SceneTest, LightAndDark) {
  for (const auto& [look, name] :
       {std::pair(Look{}, "light"), std::pair(Look{ColorScheme::dark}, "dark")}) {
    context.setLook(look);
    for (std::size_t tab = 0; tab < 5; ++tab) {
      open("en", static_cast<PreferencesTab>(tab), {560, 2400});
      keep(QStringLiteral("%1-%2").arg(QLatin1String(kTabs[tab]), QLatin1String(name)));
    }
  }
}

}  // namespace
}  // namespace velotap::test
