// The program with a status item and windows, on Linux.
//
// People start `velotap`, which starts this one where there is a display.

#include <csignal>
#include <cstdlib>
#include <iostream>

#include "adapters/linux/applications/linux_applications.hpp"
#include "adapters/linux/desktop/linux_desktop.hpp"
#include "adapters/linux/desktop/linux_shell.hpp"
#include "adapters/linux/runtime/interrupts.hpp"
#include "adapters/linux/runtime/posix_clock.hpp"
#include "adapters/linux/runtime/posix_main_queue.hpp"
#include "adapters/linux/services/curl_fetch.hpp"
#include "adapters/linux/services/single_instance.hpp"
#include "adapters/updates/configured_source.hpp"

// After the headers above: Qt makes a macro of a word that they use.
#include <QApplication>
#include <QDir>
#include <QIcon>

#include "adapters/qt/desktop/qt_alerts.hpp"
#include "adapters/qt/desktop/qt_regional_settings.hpp"
#include "adapters/qt/desktop/unseen_announcer.hpp"
#include "adapters/qt/desktop/window_pointer.hpp"
#include "adapters/qt/runtime/qt_main_loop.hpp"
#include "app/linux_diagnostics.hpp"
#include "app/qt/desktop_application.hpp"
#include "app/qt/linux_desktop_facts.hpp"
#include "config/app_identity.hpp"
#include "platform/shell_platform.hpp"
#include "settings/capture/qt_pictures.hpp"

namespace velotap {
namespace {

std::string environmentOr(const char* name, const char* otherwise) {
  const char* value = std::getenv(name);
  return value == nullptr ? otherwise : value;
}

// Qt 6.4 has no name for the folder of state.
std::string stateFolder() {
  return environmentOr("XDG_STATE_HOME", (QDir::homePath() + "/.local/state").toUtf8().constData());
}

int run(QApplication& application, const Descriptor& interrupts) {
  const SessionEnvironment session = SessionEnvironment::ofThisProcess();
  auto instance = SingleInstance::claim(session.runtimeFolder);
  if (!instance) return SingleInstance::reopenOther(session.busAddress) ? 0 : 1;

  PosixClock clock;
  PosixMainQueue queue(clock);
  const QtMainLoop loop(queue);
  DesktopUrlOpener pages(queue, queue, session.currentDesktop);
  QtAlerts alerts([&pages](const std::string& url) { pages.open(url, {}); });
  const LinuxHost host{.clock = clock, .queue = queue, .loop = queue, .alerts = alerts};
  LinuxDesktop desktop(host, Config::debug());
  AppIdentity::migratePreferences(desktop.platform().preferences);
  Platform::setCurrent(desktop.platform());
  ViewContext context(false);
  UnseenAnnouncer announcements;
  CurlFetch curl(queue);
  FeedUpdates updates(
      configuredUpdateSource(VELOTAP_VERSION),
      {.fetch =
           [&curl](const std::string& url, std::function<void(std::optional<std::string>)> done) {
             curl.fetch(url, std::move(done));
           },
       .localize =
           [](std::string_view key) { return SystemRegionalSettings::shared().texts()(key); }},
      clock, queue, desktop.platform().preferences, alerts, pages);
  LinuxShell shell(host, desktop, announcements, updates);
  ShellPlatform::setCurrent(shell.platform());
  QtRegionalSettings regional;
  SystemRegionalSettings::setSystem(regional);

  std::optional<WindowPointer> pointer;
  if (QGuiApplication::platformName().startsWith(QStringLiteral("wayland"))) {
    pointer.emplace([&desktop](std::optional<QPointF> place) {
      desktop.pointerLocator().tell(place ? std::optional(Point{.x = place->x(), .y = place->y()})
                                          : std::nullopt);
    });
  }
  LinuxApplications applications(desktop.workspace().applications());
  DesktopApplication velotap(
      context, {.applications = applications,
                .icon = [&applications](const std::string& id) { return applications.icon(id); },
                .facts = [&desktop] { return linuxDesktopFacts(desktop); },
                .unknownApplication = kUnknownApplication,
                .currentDesktop = QString::fromStdString(session.currentDesktop),
                .frameFile = QString::fromStdString(stateFolder() + "/velotap/windows.ini")});
  instance->serve(queue, queue, session.busAddress, [&velotap] { velotap.reopen(); });
  const Observation interrupted = queue.watch(interrupts.get(), DescriptorLoop::Interest::readable,
                                              [] { QCoreApplication::quit(); });
  velotap.launch();
  const int status = application.exec();
  velotap.end();
  return status;
}

}  // namespace
}  // namespace velotap

int main(int argc, char** argv) {
  using namespace velotap;
  // Whoever starts this one directly is answered as by `velotap`, without a display.
  const CommandLine line = parseCommandLine(argc, argv);
  if (const auto status = answerInTerminal(argc, argv, line)) return *status;
  if (const auto status = takePicturesIfRequested(argc, argv, VELOTAP_VERSION, VELOTAP_BUILD)) {
    return *status;
  }
  std::cerr << unknownText(line);
  std::signal(SIGPIPE, SIG_IGN);
  const Descriptor interrupts = takeInterrupts();
  QApplication application(argc, argv);
  QApplication::setApplicationName(QStringLiteral("velotap"));
  QApplication::setApplicationDisplayName(QStringLiteral("Velotap"));
  QApplication::setApplicationVersion(QStringLiteral(VELOTAP_VERSION));
  QGuiApplication::setDesktopFileName(QStringLiteral("app.norwend.velotap"));
  // The theme's, where the program is installed; else the one that it carries.
  QApplication::setWindowIcon(
      QIcon::fromTheme(QGuiApplication::desktopFileName(),
                       QIcon(QStringLiteral(":/velotap/app.norwend.velotap.svg"))));
  QApplication::setQuitOnLastWindowClosed(false);
  return run(application, interrupts);
}
