// The system's language and region as they are now, and word of every change.
//
// The settings window redraws its texts, numbers and dates when `revision` grows. Main thread.
#pragma once

#include <cstdint>
#include <functional>
#include <string>

#include "base/observer_list.hpp"
#include "localization/localization.hpp"
#include "localization/texts.hpp"
#include "platform/regional_settings.hpp"

namespace velotap {

class SystemRegionalSettings {
 public:
  SystemRegionalSettings(RegionalSettings& system, const Localization& localization);

  /// The instance of this process, over the port that `setSystem` named. Ends the process with a
  /// message when none was.
  [[nodiscard]] static SystemRegionalSettings& shared();
  /// Once, before anything asks for the shared instance.
  static void setSystem(RegionalSettings& system);

  /// Grows by one whenever the locale or the time zone changed.
  [[nodiscard]] int revision() const noexcept { return revision_; }
  [[nodiscard]] Observation observeRevision(std::function<void()> changed);

  /// Of the tables: "en", "bg", "de", "es" or "fr".
  [[nodiscard]] std::string language() const;
  [[nodiscard]] std::string locale() const { return system_.locale(); }
  [[nodiscard]] std::string timeZone() const { return system_.timeZone(); }
  /// Texts and notation as they are now; read anew for every redraw.
  [[nodiscard]] Texts texts() const;

 private:
  RegionalSettings& system_;
  const Localization& localization_;
  int revision_ = 0;
  ObserverList<> observers_;
  Observation changes_;
};

}  // namespace velotap
