// The fictional desktop that pictures and tests of the windows show.
//
// Its settings live in memory under a name of their own, so that the person's settings are neither
// read nor written; its devices, taps and applications are invented. Main thread.
#pragma once

#include <memory>
#include <string>
#include <vector>

#include "config/config.hpp"
#include "config/defaults_store.hpp"
#include "gestures/tap_activity_log.hpp"
#include "input/gesture_device.hpp"
#include "platform/diagnostic_log.hpp"
#include "platform/main_queue.hpp"
#include "platform/notification_center.hpp"
#include "platform/preferences_storage.hpp"
#include "settings/window/general_object.hpp"
#include "settings/window/gestures_object.hpp"
#include "settings/window/practice_object.hpp"
#include "settings/window/tuning_object.hpp"
#include "settings/window/window_object.hpp"

namespace velotap {

inline constexpr std::string_view kFixtureDomain = "production-settings-fixture";

/// Keeps what it is given for as long as it lives.
class MemoryPreferences final : public PreferencesStorage {
 public:
  [[nodiscard]] ValueMap load(std::string_view domain) override;
  bool store(std::string_view domain, const ValueMap& values) override;
  [[nodiscard]] Observation observe(std::string_view domain,
                                    std::function<void()> changed) override;

 private:
  std::map<std::string, ValueMap, std::less<>> domains_;
};

class SilentLog final : public DiagnosticLog {
 public:
  [[nodiscard]] bool enabled() const noexcept override { return false; }
  void line(std::string_view) override {}
};

/// Runs every task at once; for a program of one thread.
class ImmediateQueue final : public MainQueue {
 public:
  void async(Task task) override { task(); }
  std::shared_ptr<DelayedWork> asyncAfter(double, Task task) override;
  [[nodiscard]] bool isCurrent() const override { return true; }
};

class Fixture {
 public:
  /// In the notation of `locale`, such as "de_AT", and its language where there is a table for it.
  explicit Fixture(std::string locale);

  [[nodiscard]] Texts texts() const;
  [[nodiscard]] std::string language() const;
  [[nodiscard]] const std::string& locale() const { return locale_; }
  [[nodiscard]] DefaultsStore& defaults() { return defaults_; }
  /// What the General pane sees; tests change it.
  GeneralFacts generalFacts;
  GestureFacts gestureFacts;

  /// Panes over this desktop.
  void makePanes(PanesObject& panes);

 private:
  [[nodiscard]] GeneralEffects generalEffects(PanesObject& panes);
  [[nodiscard]] GesturesEffects gesturesEffects(PanesObject& panes);
  [[nodiscard]] PracticeEffects practiceEffects(PanesObject& panes) const;
  [[nodiscard]] TuningEffects tuningEffects(PanesObject& panes);
  void recordTaps();

  std::string locale_;
  MemoryPreferences storage_;
  SilentLog log_;
  NotificationCenter notifications_;
  DefaultsStore defaults_;
  Config config_;
  GestureDeviceSelection selection_;
  ImmediateQueue queue_;
  TapActivityLog taps_;
  RetainedTouches touches_;
};

}  // namespace velotap
