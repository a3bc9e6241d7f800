// The program with a status item and windows, on Linux.
//
// People start `velotap`, which starts this one where there is a display.

#include <sys/signalfd.h>

#include <csignal>
#include <iostream>

#include "adapters/linux/desktop/linux_desktop.hpp"
#include "adapters/linux/notices/linux_notices.hpp"
#include "adapters/linux/notices/session_activity.hpp"
#include "adapters/linux/runtime/descriptor.hpp"
#include "adapters/linux/runtime/posix_clock.hpp"
#include "adapters/linux/runtime/posix_main_queue.hpp"
#include "adapters/linux/session/access_watch.hpp"
#include "adapters/linux/session/autostart_item.hpp"
#include "adapters/linux/session/desktop_url_opener.hpp"
#include "adapters/linux/session/pkexec_prompt.hpp"
#include "adapters/linux/session/seat_trust.hpp"
#include "adapters/linux/session/single_instance.hpp"

// After the headers above: Qt makes a macro of a word that they use.
#include <QApplication>
#include <QDir>
#include <QStandardPaths>

#include "adapters/qt/desktop/qt_alerts.hpp"
#include "adapters/qt/desktop/qt_regional_settings.hpp"
#include "adapters/qt/runtime/qt_main_loop.hpp"
#include "app/qt/desktop_application.hpp"
#include "config/app_identity.hpp"
#include "platform/shell_platform.hpp"
#include "shell/no_updates.hpp"

namespace velotap {
namespace {

constexpr const char* kSystemBus = "unix:path=/run/dbus/system_bus_socket";

// Interrupts become an orderly end. They are taken from a descriptor, so every thread that is
// started later must have them blocked: this comes first.
Descriptor takeInterrupts() {
  sigset_t interrupts;
  sigemptyset(&interrupts);
  sigaddset(&interrupts, SIGINT);
  sigaddset(&interrupts, SIGTERM);
  sigaddset(&interrupts, SIGHUP);
  sigprocmask(SIG_BLOCK, &interrupts, nullptr);
  return Descriptor(::signalfd(-1, &interrupts, SFD_CLOEXEC | SFD_NONBLOCK));
}

std::string environmentOr(const char* name, const char* otherwise) {
  const char* value = std::getenv(name);
  return value == nullptr ? otherwise : value;
}

// Qt 6.4 has no name for the folder of state.
std::string stateFolder() {
  return environmentOr("XDG_STATE_HOME", (QDir::homePath() + "/.local/state").toUtf8().constData());
}

std::string place(QStandardPaths::StandardLocation location) {
  return QStandardPaths::writableLocation(location).toStdString();
}

// The small program beside this one, which is what people start.
std::string programToStart() {
  return (QCoreApplication::applicationDirPath() + QStringLiteral("/velotap")).toStdString();
}

// The Linux services of the shell, and the platform with the notices and the permission that
// know of sessions.
struct LinuxShell {
  LinuxShell(LinuxDesktop& desktop, PosixMainQueue& queue, Announcements& announcements)
      : session(SessionEnvironment::ofThisProcess()),
        activity(queue),
        trust(desktop.platform().trust, activity),
        notices(queue, queue, session, environmentOr("DBUS_SYSTEM_BUS_ADDRESS", kSystemBus)),
        access(queue, queue),
        urls(session.currentDesktop),
        prompt(queue,
               {.helper = findAccessHelper(VELOTAP_ACCESS_HELPER, VELOTAP_SOURCE_HELPER),
                .program = programToStart()},
               access, activity, urls),
        login(place(QStandardPaths::GenericConfigLocation) + "/autostart", programToStart(), urls),
        platform{.clock = desktop.platform().clock,
                 .mainQueue = queue,
                 .libraries = desktop.platform().libraries,
                 .events = desktop.platform().events,
                 .taps = desktop.platform().taps,
                 .preferences = desktop.platform().preferences,
                 .systemPreferences = desktop.platform().systemPreferences,
                 .workspace = desktop.platform().workspace,
                 .keyboardLayout = desktop.platform().keyboardLayout,
                 .notices = notices,
                 .trust = trust,
                 .alerts = desktop.platform().alerts,
                 .notifications = desktop.platform().notifications,
                 .log = desktop.platform().log},
        shell{.trustPrompt = prompt,
              .loginItem = login,
              .updates = updates,
              .announcements = announcements,
              .urls = urls,
              .crashFolder = place(QStandardPaths::GenericDataLocation) + "/velotap/Crashes"} {
    AppIdentity::migratePreferences(platform.preferences);
    Platform::setCurrent(platform);
    ShellPlatform::setCurrent(shell);
  }

  SessionEnvironment session;
  SessionActivity activity;
  SeatTrust trust;
  LinuxNotices notices;
  AccessWatch access;
  DesktopUrlOpener urls;
  PkexecPrompt prompt;
  AutostartItem login;
  NoUpdates updates;
  Platform platform;
  ShellPlatform shell;
};

int run(QApplication& application, const Descriptor& interrupts) {
  const SessionEnvironment session = SessionEnvironment::ofThisProcess();
  auto instance = SingleInstance::claim(session.runtimeFolder);
  if (!instance) return SingleInstance::reopenOther(session.busAddress) ? 0 : 1;

  PosixClock clock;
  PosixMainQueue queue(clock);
  const QtMainLoop loop(queue);
  QtAlerts alerts;
  LinuxDesktop desktop({.clock = clock, .queue = queue, .loop = queue, .alerts = alerts},
                       Config::debug());
  ViewContext context(false);
  ViewAnnouncements announcements(context);
  LinuxShell shell(desktop, queue, announcements);
  QtRegionalSettings regional;
  SystemRegionalSettings::setSystem(regional);

  DesktopApplication velotap(
      context,
      {.hidesFrontApplication =
           [&desktop] { return desktop.workspace().source().kind == FrontSourceKind::none; },
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
  std::signal(SIGPIPE, SIG_IGN);
  const Descriptor interrupts = takeInterrupts();
  QApplication application(argc, argv);
  QApplication::setApplicationName(QStringLiteral("velotap"));
  QApplication::setApplicationDisplayName(QStringLiteral("Velotap"));
  QApplication::setApplicationVersion(QStringLiteral(VELOTAP_VERSION));
  QGuiApplication::setDesktopFileName(QStringLiteral("app.norwend.velotap"));
  QApplication::setQuitOnLastWindowClosed(false);
  return run(application, interrupts);
}
