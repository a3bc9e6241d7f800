#include "adapters/qt/desktop/tray_host.hpp"

#include <xcb/xcb.h>

#include <QDBusConnection>
#include <QDBusConnectionInterface>
#include <cstdlib>
#include <memory>
#include <string>

namespace velotap {
namespace {

const QString kWatcher = QStringLiteral("org.kde.StatusNotifierWatcher");
constexpr int kLookEveryMs = 500;  // an X selection tells nobody that it got an owner
constexpr int kPatienceMs = 10'000;

struct Disconnect {
  void operator()(xcb_connection_t* connection) const { xcb_disconnect(connection); }
};
struct Free {
  void operator()(void* memory) const { std::free(memory); }  // NOLINT: xcb allocates so
};

bool hasOwner(xcb_connection_t* connection, const std::string& selection) {
  const std::unique_ptr<xcb_intern_atom_reply_t, Free> atom(xcb_intern_atom_reply(
      connection,
      xcb_intern_atom(connection, 1, static_cast<std::uint16_t>(selection.size()),
                      selection.c_str()),
      nullptr));
  if (!atom || atom->atom == XCB_ATOM_NONE) return false;
  const std::unique_ptr<xcb_get_selection_owner_reply_t, Free> owner(xcb_get_selection_owner_reply(
      connection, xcb_get_selection_owner(connection, atom->atom), nullptr));
  return owner && owner->owner != XCB_WINDOW_NONE;
}

bool xTrayExists() {
  if (std::getenv("DISPLAY") == nullptr) return false;
  int screen = 0;
  const std::unique_ptr<xcb_connection_t, Disconnect> connection(xcb_connect(nullptr, &screen));
  if (xcb_connection_has_error(connection.get()) != 0) return false;
  return hasOwner(connection.get(), "_NET_SYSTEM_TRAY_S" + std::to_string(screen));
}

bool notifierExists() {
  const QDBusConnection bus = QDBusConnection::sessionBus();
  return bus.isConnected() && bus.interface()->isServiceRegistered(kWatcher);
}

}  // namespace

TrayHost::TrayHost(QObject* parent)
    : QObject(parent),
      watcher_(kWatcher, QDBusConnection::sessionBus(), QDBusServiceWatcher::WatchForRegistration) {
  lookAgain_.setInterval(kLookEveryMs);
  patience_.setInterval(kPatienceMs);
  patience_.setSingleShot(true);
  connect(&watcher_, &QDBusServiceWatcher::serviceRegistered, this, &TrayHost::look);
  connect(&lookAgain_, &QTimer::timeout, this, &TrayHost::look);
  connect(&patience_, &QTimer::timeout, this, [this] {
    lookAgain_.stop();
    emit missing();
  });
}

void TrayHost::await() {
  look();
  if (appeared_) return;
  lookAgain_.start();
  patience_.start();
}

void TrayHost::look() {
  if (appeared_ || (!notifierExists() && !xTrayExists())) return;
  appeared_ = true;
  lookAgain_.stop();
  patience_.stop();
  emit appeared();
}

}  // namespace velotap
