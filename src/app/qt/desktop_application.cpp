#include "app/qt/desktop_application.hpp"

#include <malloc.h>

#include <QApplication>
#include <QClipboard>
#include <QDBusConnection>
#include <QDBusMessage>
#include <QFile>
#include <QFileDialog>
#include <QFileInfo>
#include <QGuiApplication>
#include <QPalette>
#include <QStyle>
#include <QSysInfo>
#include <QUrl>
#include <QVariantMap>
#include <utility>

#include "adapters/qt/desktop/text_file.hpp"
#include "platform/shell_platform.hpp"
#include "settings/window/values.hpp"

namespace velotap {
namespace {

// Which wording of the onboarding is this system's.
constexpr const char* kVariant = "linux";

std::string localize(std::string_view key) {
  return SystemRegionalSettings::shared().texts()(key);
}

bool copyText(const std::string& text) {
  QClipboard* clipboard = QGuiApplication::clipboard();
  clipboard->setText(qt(text));
  return clipboard->text() == qt(text);
}

// Identifiers of the desktop entries that the person picks.
std::vector<std::string> chooseApplications(const std::string& message) {
  std::vector<std::string> ids;
  const QStringList files = QFileDialog::getOpenFileNames(
      nullptr, qt(message), QStringLiteral("/usr/share/applications"), QStringLiteral("*.desktop"));
  for (const QString& file : files) {
    ids.push_back(QFileInfo(file).completeBaseName().toStdString());
  }
  return ids;
}

bool saveText(std::string_view name, const std::string& text) {
  const QString path = QFileDialog::getSaveFileName(nullptr, {}, qt(name));
  if (path.isEmpty()) return true;
  return writeTextFile(path, text);
}

std::string notices() {
  QFile file(QStringLiteral(":/velotap/ThirdPartyNotices.txt"));
  if (!file.open(QIODevice::ReadOnly)) return {};
  return file.readAll().toStdString();
}

// Menus and alerts are drawn by Qt, which before 6.5 does not ask whether the desktop is dark.
QPalette widgetPalette(const QVariantMap& colors, bool dark) {
  QPalette usual = QApplication::style()->standardPalette();
  if (!dark || usual.color(QPalette::Window).lightness() < 128) return usual;
  const auto color = [&colors](const char* name) {
    return colors.value(QString::fromLatin1(name)).value<QColor>();
  };
  QPalette palette(color("text"), color("button"), color("line"), color("sunken"), color("edge"),
                   color("text"), color("text"), color("card"), color("card"));
  palette.setColor(QPalette::Highlight, color("fill"));
  palette.setColor(QPalette::HighlightedText, color("fillText"));
  for (const auto role : {QPalette::Text, QPalette::WindowText, QPalette::ButtonText}) {
    palette.setColor(QPalette::Disabled, role, color("edge"));
  }
  return palette;
}

}  // namespace

DesktopApplication::DesktopApplication(ViewContext& context, Desktop desktop)
    : context_(context),
      desktop_(std::move(desktop)),
      application_(surroundings()),
      statusItem_(application_.trayMenu(), [this] { tellThatTrayIsMissing(); }),
      onboardingWindow_(application_.onboarding(), context, [this] { settings_.showPractice(); }),
      panes_(application_, panesDesktop(), [this](PreferencesTab tab) { showPane(tab); }),
      settings_(context, settingsEffects()) {
  application_.trayMenu().setView(statusItem_.view());
  application_.onboarding().setView(onboardingWindow_.view());
  QObject::connect(&appearance_, &DesktopAppearance::changed, &appearance_,
                   [this] { followAppearance(); });
  followAppearance();
}

SettingsWindow::Effects DesktopApplication::settingsEffects() {
  SettingsWindow::Effects effects = panes_.effects(desktop_.frameFile);
  // What a window took the C library would keep for the next.
  effects.closed = [] { malloc_trim(0); };
  effects.quit = [] { QCoreApplication::quit(); };
  return effects;
}

Application::Surroundings DesktopApplication::surroundings() {
  return {.effects = effects(),
          .localize = &localize,
          .observeRegionalSettings =
              [](std::function<void()> changed) {
                return SystemRegionalSettings::shared().observeRevision(std::move(changed));
              },
          .variant = kVariant,
          .version = VELOTAP_VERSION,
          .unknownApplication = desktop_.unknownApplication,
          .refreshLocalizedLabels = [this] { settings_.refreshLocalizedLabels(); },
          // Windows have their own shortcuts; there is no menu bar to fill.
          .showMainMenu = [](const std::vector<MenuItem>&) {}};
}

void DesktopApplication::launch() {
  application_.delegate().applicationDidFinishLaunching();
  QObject::connect(qGuiApp, &QGuiApplication::applicationStateChanged, &appearance_,
                   [this](Qt::ApplicationState state) {
                     if (state == Qt::ApplicationActive)
                       application_.delegate().applicationDidBecomeActive();
                   });
}

void DesktopApplication::reopen() {
  static_cast<void>(application_.delegate().applicationShouldHandleReopen());
}

void DesktopApplication::end() {
  settings_.close();
  application_.delegate().applicationWillTerminate();
}

void DesktopApplication::followAppearance() {
  context_.setLook({.scheme = appearance_.dark() ? ColorScheme::dark : ColorScheme::light,
                    .highContrast = appearance_.highContrast(),
                    .textScale = appearance_.textScale()});
  QApplication::setPalette(widgetPalette(context_.palette(), appearance_.dark()));
  statusItem_.setDarkPanel(expectsDarkPanel(desktop_.currentDesktop, appearance_.dark()));
}

// Once, where the desktop shows notices; the General pane says it too.
void DesktopApplication::tellThatTrayIsMissing() {
  if (std::exchange(trayIsMissing_, true)) return;
  QDBusMessage notice = QDBusMessage::createMethodCall(
      QStringLiteral("org.freedesktop.Notifications"),
      QStringLiteral("/org/freedesktop/Notifications"),
      QStringLiteral("org.freedesktop.Notifications"), QStringLiteral("Notify"));
  notice << QStringLiteral("Velotap") << 0U << QStringLiteral("velotap")
         << QStringLiteral("Velotap") << qt(localize("desktop.no.tray")) << QStringList()
         << QVariantMap() << -1;
  QDBusConnection::sessionBus().send(notice);
}

ApplicationEffects DesktopApplication::effects() {
  return {
      .activate =
          [] {
            for (QWindow* window : QGuiApplication::topLevelWindows()) {
              if (window->isVisible()) window->requestActivate();
            }
          },
      // The launch may want it before there is a loop to leave.
      .terminate =
          [] { QMetaObject::invokeMethod(qApp, &QCoreApplication::quit, Qt::QueuedConnection); },
      .openSettings =
          [this](SettingsPane pane) {
            showPane(pane == SettingsPane::about ? PreferencesTab::about : PreferencesTab::general);
          }};
}

void DesktopApplication::showPane(PreferencesTab tab) {
  settings_.show(tab);
}

DesktopFacts DesktopApplication::desktopFacts() const {
  DesktopFacts facts = desktop_.facts();
  facts.hasTray = !trayIsMissing_;
  return facts;
}

SettingsPanes::Desktop DesktopApplication::panesDesktop() {
  return {.applications = desktop_.applications,
          .appsOptions =
              [this] {
                const bool hidden = desktop_.facts().frontTeller == FrontTeller::nobody;
                return AppsPane::Options{.compatibility = compatibilityAppsOfLinux(),
                                         .suggestsInstalledOnly = true,
                                         .hidesFrontApplication = hidden,
                                         .listsInstalled = true};
              },
          .facts = [this] { return desktopFacts(); },
          .answersTouchpads = true,
          .system = QSysInfo::prettyProductName().section(u' ', 0, 0).toStdString(),
          .systemVersion =
              (QSysInfo::productVersion() + u' ' + QSysInfo::kernelVersion()).toStdString(),
          .chooseApplications = &chooseApplications,
          .save = &saveText,
          .copy = &copyText,
          .reveal =
              [](const std::string& location) {
                const QUrl folder = QUrl::fromLocalFile(QFileInfo(qt(location)).path());
                ShellPlatform::current().urls.open(folder.toEncoded().toStdString(), {});
              },
          .icon = desktop_.icon,
          .notices = &notices};
}

}  // namespace velotap
