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
    for (std::size_t tab = 0; tab < 3; ++tab) {
      open(language, static_cast<PreferencesTab>(tab), {480, 2600});
      EXPECT_EQ(truncatedTexts(settings->view()->rootObject()), QStringList())
          << language << " " << kTabs[tab];
      keep(QStringLiteral("%1-%2").arg(QLatin1String(kTabs[tab]), QLatin1String(language)));
    }
  }
}

TEST_F(SceneTest, LightAndDark) {
  for (const auto& [look, name] :
       {std::pair(Look{}, "light"), std::pair(Look{ColorScheme::dark}, "dark")}) {
    context.setLook(look);
    for (std::size_t tab = 0; tab < 3; ++tab) {
      open("en", static_cast<PreferencesTab>(tab), {560, 2400});
      keep(QStringLiteral("%1-%2").arg(QLatin1String(kTabs[tab]), QLatin1String(name)));
    }
  }
}

}  // namespace
}  // namespace velotap::test
