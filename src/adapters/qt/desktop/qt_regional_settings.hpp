// The person's languages, notation and time zone, as the toolkit reads them from the session.
//
// Main thread. The time zone's change is told by the system's clock service; languages are those
// the session started with, because a session's environment does not change.
#pragma once

#include <QObject>
#include <string>
#include <vector>

#include "platform/regional_settings.hpp"

namespace velotap {

class QtRegionalSettings : public QObject, public RegionalSettings {
  Q_OBJECT

 public:
  QtRegionalSettings();

  [[nodiscard]] std::vector<std::string> preferredLanguages() const override;
  [[nodiscard]] std::string locale() const override;
  [[nodiscard]] std::string timeZone() const override;
  [[nodiscard]] std::int64_t secondsFromUniversalTime(std::int64_t moment) const override;
  [[nodiscard]] Observation observeChanges(std::function<void()> changed) override;

 protected:
  bool eventFilter(QObject* watched, QEvent* event) override;

 private slots:
  void clockChanged();

 private:
  ObserverList<> changes_;
};

}  // namespace velotap
