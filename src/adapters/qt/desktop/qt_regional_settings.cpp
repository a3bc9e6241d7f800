#include "adapters/qt/desktop/qt_regional_settings.hpp"

#include <QCoreApplication>
#include <QDBusConnection>
#include <QDateTime>
#include <QEvent>
#include <QLocale>
#include <QTimeZone>
#include <ctime>
#include <utility>

namespace velotap {

QtRegionalSettings::QtRegionalSettings() {
  QCoreApplication::instance()->installEventFilter(this);
  // Without a system bus the zone stays what it was at the start, as for every other program.
  QDBusConnection::systemBus().connect(
      QStringLiteral("org.freedesktop.timedate1"), QStringLiteral("/org/freedesktop/timedate1"),
      QStringLiteral("org.freedesktop.DBus.Properties"), QStringLiteral("PropertiesChanged"), this,
      SLOT(clockChanged()));
}

std::vector<std::string> QtRegionalSettings::preferredLanguages() const {
  std::vector<std::string> languages;
  for (const QString& language : QLocale::system().uiLanguages()) {
    languages.push_back(language.toStdString());
  }
  return languages;
}

std::string QtRegionalSettings::locale() const {
  return QLocale::system().name().toStdString();
}

std::string QtRegionalSettings::timeZone() const {
  return QTimeZone::systemTimeZoneId().toStdString();
}

std::int64_t QtRegionalSettings::secondsFromUniversalTime(std::int64_t moment) const {
  return QDateTime::fromSecsSinceEpoch(moment).offsetFromUtc();
}

Observation QtRegionalSettings::observeChanges(std::function<void()> changed) {
  return changes_.add(std::move(changed));
}

bool QtRegionalSettings::eventFilter(QObject* watched, QEvent* event) {
  if (watched == QCoreApplication::instance() && event->type() == QEvent::LocaleChange) {
    changes_.notify();
  }
  return QObject::eventFilter(watched, event);
}

void QtRegionalSettings::clockChanged() {
  ::tzset();
  changes_.notify();
}

}  // namespace velotap
