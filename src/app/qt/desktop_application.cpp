#include "app/qt/desktop_application.hpp"

#include <QApplication>
#include <QClipboard>
#include <QDBusConnection>
#include <QDBusMessage>
#include <QFile>
#include <QFileDialog>
#include <QFileInfo>
#include <QGuiApplication>
#include <QPalette>
#include <QSaveFile>
#include <QStyle>
#include <QSysInfo>
#include <QUrl>
#include <QVariantMap>
#include <utility>

#include "config/settings_keys.hpp"
#include "gestures/tap_activity_log.hpp"
#include "gestures/touch_engine.hpp"
#include "platform/platform.hpp"
#include "platform/shell_platform.hpp"
#include "settings/window/about_object.hpp"
#include "settings/window/apps_object.hpp"
#include "settings/window/general_object.hpp"
#include "settings/window/gestures_object.hpp"
#include "settings/window/practice_object.hpp"
#include "settings/window/tuning_object.hpp"
#include "settings/window/values.hpp"
#include "shell/updater.hpp"

namespace velotap {
namespace {

// Which wording of the onboarding is this system's.
constexpr const char* kVariant = "linux";

std::string localize(std::string_view key) {
  return SystemRegionalSettings::shared().texts()(key);
}

std::int64_t secondsOf(std::chrono::system_clock::time_point moment) {
  return std::chrono::duration_cast<std::chrono::seconds>(moment.time_since_epoch()).count();
}

DefaultsStore& defaults() {
  return DefaultsStore::shared();
}

bool copyText(const std::string& text) {
  QClipboard* clipboard = QGuiApplication::clipboard();
  clipboard->setText(qt(text));
  return clipboard->text() == qt(text);
}

bool openUrl(const std::string& url) {
  return ShellPlatform::current().urls.open(url);
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
  QSaveFile file(path);
  const QByteArray bytes = QByteArray::fromStdString(text);
  return file.open(QIODevice::WriteOnly) && file.write(bytes) == bytes.size() && file.commit();
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
      selection_(defaults()),
      touches_(TapActivityLog::shared()),
      application_(surroundings()),
      statusItem_(application_.trayMenu(), [this] { tellThatTrayIsMissing(); }),
      onboardingWindow_(application_.onboarding(), context, [this] { settings_.showPractice(); }),
      settings_(context, settingsEffects()) {
  application_.trayMenu().setView(statusItem_.view());
  application_.onboarding().setView(onboardingWindow_.view());
  QObject::connect(&appearance_, &DesktopAppearance::changed, &appearance_,
                   [this] { followAppearance(); });
  followAppearance();
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

Texts DesktopApplication::texts() {
  return SystemRegionalSettings::shared().texts();
}

void DesktopApplication::followAppearance() {
  context_.setLook({.scheme = appearance_.dark() ? ColorScheme::dark : ColorScheme::light,
                    .highContrast = appearance_.highContrast(),
                    .textScale = appearance_.textScale()});
  QApplication::setPalette(widgetPalette(context_.palette(), appearance_.dark()));
  statusItem_.setDarkPanel(panelIsDark(desktop_.currentDesktop, appearance_.dark()));
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
      .terminate = [] { QCoreApplication::quit(); },
      .openSettings =
          [this](SettingsPane pane) {
            showPane(pane == SettingsPane::about ? PreferencesTab::about : PreferencesTab::general);
          }};
}

void DesktopApplication::showPane(PreferencesTab tab) {
  settings_.show(tab);
}

SettingsWindow::Effects DesktopApplication::settingsEffects() {
  return {.texts = [] { return texts(); },
          .makePanes = [this](PanesObject& panes) { makePanes(panes); },
          .observe =
              [](std::function<void()> changed) {
                std::vector<Observation> observations;
                observations.push_back(defaults().observeChanges(changed));
                observations.push_back(
                    Controller::shared().observeRunning([changed](bool) { changed(); }));
                observations.push_back(
                    Permissions::shared().observeGranted([changed](bool) { changed(); }));
                return observations;
              },
          .frameFile = desktop_.frameFile};
}

GeneralFacts DesktopApplication::generalFacts() {
  Updater& updater = Updater::shared();
  const auto lastCheck = updater.lastCheck();
  return {.enabled = Config::shared().enabled(),
          .leftClickTogglesEnabled = defaults().boolean(keys::kLeftClickTogglesEnabled),
          .hideStatusBarIcon = defaults().boolean(keys::kHideStatusBarIcon),
          .accessibilityGranted = Permissions::shared().granted(),
          .listenersRunning = Controller::shared().isRunning(),
          .connectedDevices = TouchEngine::shared().connectedDeviceClasses(),
          .loginItemStatus = LoginItem::shared().status(),
          .automaticUpdateChecks = updater.automaticallyChecks(),
          .updatesUnavailable = updater.unavailableReason(),
          .lastUpdateCheck = lastCheck ? std::optional(secondsOf(*lastCheck)) : std::nullopt,
          .now = secondsOf(Platform::current().clock.date()),
          .desktop = {.hidesFrontApplication = desktop_.hidesFrontApplication(),
                      .hasTray = !trayIsMissing_}};
}

GestureFacts DesktopApplication::gestureFacts() {
  return {.enabled = Config::shared().enabled(),
          .accessibilityGranted = Permissions::shared().granted(),
          .listenersRunning = Controller::shared().isRunning(),
          .connectedDevices = TouchEngine::shared().connectedDeviceClasses()};
}

void DesktopApplication::setEnabled(bool on) {
  defaults().set(keys::kEnabled, on);
  synchronizeEnabledState({.refreshPermission = [] { Permissions::shared().refresh(); },
                           .enabled = [] { return Config::shared().enabled(); },
                           .listenersRunning = [] { return Controller::shared().isRunning(); },
                           .startController = [] { Controller::shared().start(); }});
  application_.trayMenu().updateIcon();
}

void DesktopApplication::toggleLaunchAtLogin() {
  const auto error = LoginItem::shared().toggle();
  if (!error) return;
  const LoginItemFailure failure = loginItemFailure(*error, texts());
  Platform& platform = Platform::current();
  if (platform.log.enabled()) platform.log.line(failure.logLine);
  platform.alerts.runModal({.message = failure.alertTitle,
                            .informativeText = failure.alertText,
                            .buttons = {failure.dismiss}});
}

SupportFacts DesktopApplication::supportFacts() {
  const Config& config = Config::shared();
  const CenterBand band = config.centerBand();
  return {.build = {.version = VELOTAP_VERSION, .build = VELOTAP_BUILD, .notice = VELOTAP_NOTICE},
          .system = QSysInfo::prettyProductName().section(u' ', 0, 0).toStdString(),
          .systemVersion =
              (QSysInfo::productVersion() + u' ' + QSysInfo::kernelVersion()).toStdString(),
          .enabled = config.enabled(),
          .accessibilityGranted = Permissions::shared().granted(),
          .tuning = {.maxTapDurationMs = static_cast<int>(config.maxTapDuration() * 1000 + 0.5),
                     .maxTapDrift = config.maxTapDrift(),
                     .pinchSensitivity = config.pinchSensitivity(),
                     .centerMinX = band.lower,
                     .centerMaxX = band.upper},
          .connectedDevices = TouchEngine::shared().connectedDeviceClasses(),
          .ignoredApps = config.ignoredApps().size(),
          .keystrokeZoomApps = config.keystrokeZoomApps().size()};
}

void DesktopApplication::makeListPanes(PanesObject& panes) {
  panes.apps = new AppsObject(
      {.config = Config::shared(),
       .applications = desktop_.applications,
       .options = {.compatibility = compatibilityAppsOfLinux(),
                   .suggestsInstalledOnly = true,
                   .hidesFrontApplication = desktop_.hidesFrontApplication()},
       .ownBundleID = std::string(kSettingsDomain),
       .texts = [] { return texts(); },
       .announce =
           [](const std::string& text) {
             AccessibilityAnnouncements::shared().post(text, AnnouncementPriority::high);
           },
       .choose = &chooseApplications,
       .copy = &copyText,
       .reveal =
           [](const std::string& location) {
             openUrl(QUrl::fromLocalFile(QFileInfo(qt(location)).path()).toEncoded().toStdString());
           },
       .icon = desktop_.icon},
      &panes);
  panes.about =
      new AboutObject({.texts = [] { return texts(); },
                       .facts = [this] { return supportFacts(); },
                       .canCheckForUpdates = [] { return Updater::shared().canCheckForUpdates(); },
                       .checkForUpdates = [] { Updater::shared().checkForUpdates(); },
                       .contact = {.open = &openUrl, .copy = &copyText},
                       .save = &saveText,
                       .notices = &notices},
                      &panes);
}

void DesktopApplication::makePanes(PanesObject& panes) {
  const auto words = [] { return texts(); };
  panes.general = new GeneralObject(
      {.texts = words,
       .facts = [this] { return generalFacts(); },
       .showPane = [this](PreferencesTab tab) { showPane(tab); },
       .chooseDevice = [this](GestureDevice device) { selection_.setDevice(device); },
       .setEnabled = [this](bool on) { setEnabled(on); },
       .setUpAccessibility = [this] { application_.onboarding().show(); },
       .startListeners = [] { Controller::shared().start(); },
       .toggleLaunchAtLogin = [this] { toggleLaunchAtLogin(); },
       .openLoginItems = [] { LoginItem::shared().openSettings(); },
       .setLeftClickToggles = [](bool on) { defaults().set(keys::kLeftClickTogglesEnabled, on); },
       .setHideIcon =
           [this](bool on) {
             defaults().set(keys::kHideStatusBarIcon, on);
             application_.trayMenu().applyVisibility();
           },
       .setAutomaticChecks = [](bool on) { Updater::shared().setAutomaticallyChecks(on); },
       .checkForUpdates = [] { Updater::shared().checkForUpdates(); }},
      &panes);
  panes.gestures = new GesturesObject(
      defaults(), selection_,
      {.texts = words,
       .facts = [this] { return gestureFacts(); },
       .openAccessibilitySettings = [this] { application_.onboarding().show(); },
       .startListeners = [] { Controller::shared().start(); },
       .showGeneral = [this] { showPane(PreferencesTab::general); },
       .didEnable =
           [this](std::string_view key) { application_.conflicts().checkAfterEnabling(key); }},
      &panes);
  panes.tuning = new TuningObject({.defaults = defaults(),
                                   .log = TapActivityLog::shared(),
                                   .notifications = Platform::current().notifications,
                                   .touches = touches_,
                                   .texts = words,
                                   .announce =
                                       [](std::string_view key) {
                                         AccessibilityAnnouncements::shared().post(
                                             localize(key), AnnouncementPriority::high);
                                       },
                                   .showGestures = [this] { showPane(PreferencesTab::gestures); }},
                                  &panes);
  makeListPanes(panes);
  panes.practice =
      new PracticeObject({.target = PracticeTarget::shared(),
                          .texts = words,
                          .showGeneral = [this] { showPane(PreferencesTab::general); },
                          .showGestures = [this] { showPane(PreferencesTab::gestures); },
                          .showTuning = [this] { showPane(PreferencesTab::tuning); }},
                         &panes);
}

}  // namespace velotap
