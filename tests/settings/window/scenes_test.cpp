// The whole settings window in memory: every pane in every language, as narrow as it gets.

#include <QCoreApplication>
#include <QQuickItem>
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
