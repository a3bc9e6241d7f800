#include "adapters/qt/desktop/desktop_appearance.hpp"

#include <QDBusConnection>
#include <QDBusMessage>
#include <QDBusPendingCallWatcher>
#include <QDBusPendingReply>
#include <array>
#include <utility>

namespace velotap {
namespace {

const QString kService = QStringLiteral("org.freedesktop.portal.Desktop");
const QString kPath = QStringLiteral("/org/freedesktop/portal/desktop");
const QString kInterface = QStringLiteral("org.freedesktop.portal.Settings");
const QString kAppearance = QStringLiteral("org.freedesktop.appearance");
const QString kGnome = QStringLiteral("org.gnome.desktop.interface");
const QString kGnomeA11y = QStringLiteral("org.gnome.desktop.a11y.interface");
const QString kColorScheme = QStringLiteral("color-scheme");
const QString kContrast = QStringLiteral("contrast");
const QString kHighContrast = QStringLiteral("high-contrast");
const QString kTextScale = QStringLiteral("text-scaling-factor");
constexpr uint kPrefersDark = 1;
constexpr uint kPrefersMoreContrast = 1;
constexpr int kPatienceMs = 1000;

// The portal wraps what it reads twice.
QVariant unwrapped(QVariant value) {
  while (value.metaType() == QMetaType::fromType<QDBusVariant>()) {
    value = value.value<QDBusVariant>().variant();
  }
  return value;
}

}  // namespace

DesktopAppearance::DesktopAppearance(QObject* parent) : QObject(parent) {
  QDBusConnection bus = QDBusConnection::sessionBus();
  if (!bus.isConnected()) return;
  qRegisterMetaType<QDBusVariant>();  // before this, Qt 6.4 refuses the slot below
  const bool listens = bus.connect(kService, kPath, kInterface, QStringLiteral("SettingChanged"),
                                   this, SLOT(settingChanged(QString, QString, QDBusVariant)));
  if (!listens) qWarning("changes of the desktop's appearance cannot be followed");
  ask(kAppearance, kColorScheme);
  ask(kAppearance, kContrast);
  ask(kGnomeA11y, kHighContrast);
  ask(kGnome, kTextScale);
}

void DesktopAppearance::ask(const QString& space, const QString& key) {
  QDBusMessage message =
      QDBusMessage::createMethodCall(kService, kPath, kInterface, QStringLiteral("Read"));
  message << space << key;
  auto* reply = new QDBusPendingCallWatcher(
      QDBusConnection::sessionBus().asyncCall(message, kPatienceMs), this);
  connect(reply, &QDBusPendingCallWatcher::finished, this, [this, reply, space, key] {
    const QDBusPendingReply<QVariant> answer = *reply;
    reply->deleteLater();
    if (!answer.isError()) take(space, key, answer.value());
  });
}

void DesktopAppearance::settingChanged(const QString& space, const QString& key,
                                       const QDBusVariant& value) {
  take(space, key, value.variant());
}

void DesktopAppearance::take(const QString& space, const QString& key, const QVariant& value) {
  const QVariant plain = unwrapped(value);
  const auto set = [this](auto& member, auto now) {
    if (std::exchange(member, now) != now) emit changed();
  };
  if (space == kAppearance && key == kColorScheme) set(dark_, plain.toUInt() == kPrefersDark);
  if (space == kAppearance && key == kContrast) {
    set(moreContrast_, plain.toUInt() == kPrefersMoreContrast);
  }
  if (space == kGnomeA11y && key == kHighContrast) set(gnomeContrast_, plain.toBool());
  if (space == kGnome && key == kTextScale && plain.toDouble() > 0) {
    set(textScale_, plain.toDouble());
  }
}

}  // namespace velotap
