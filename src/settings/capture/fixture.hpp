// The fictional desktop that pictures and tests of the windows show.
//
// Its settings live in memory under a name of their own, so that the person's settings are neither
// read nor written; its devices, taps and applications are invented. Main thread.
#pragma once

#include <memory>
#include <string>
#include <utility>
#include <vector>

#include "config/config.hpp"
#include "config/defaults_store.hpp"
#include "gestures/tap_activity_log.hpp"
#include "input/gesture_device.hpp"
#include "platform/applications.hpp"
#include "platform/diagnostic_log.hpp"
#include "platform/main_queue.hpp"
#include "platform/notification_center.hpp"
#include "platform/preferences_storage.hpp"
#include "settings/settings_capture.hpp"
#include "settings/window/about_object.hpp"
#include "settings/window/apps_object.hpp"
#include "settings/window/general_object.hpp"
#include "settings/window/gestures_object.hpp"
#include "settings/window/practice_object.hpp"
#include "settings/window/tuning_object.hpp"
#include "settings/window/window_object.hpp"

namespace velotap {

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

/// A computer on which a few applications are installed, some of them running.
class FictionalApplications final : public Applications {
 public:
  [[nodiscard]] std::optional<ApplicationBundle> find(const std::string& bundleId) override;
  [[nodiscard]] std::vector<ApplicationBundle> installed() override;
  [[nodiscard]] std::vector<RunningInstance> running() override;
  /// So many more without a name of note.
  void install(int more) { more_ = more; }

 private:
  int more_ = 0;
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
  explicit Fixture(std::string locale, const ValueMap& settings = captureSettings());

  [[nodiscard]] Texts texts() const;
  [[nodiscard]] std::string language() const;
  [[nodiscard]] const std::string& locale() const { return locale_; }
  /// Panes that are shown have to be refreshed.
  void setLocale(std::string locale) { locale_ = std::move(locale); }
  [[nodiscard]] DefaultsStore& defaults() { return defaults_; }
  [[nodiscard]] TapActivityLog& taps() { return taps_; }
  void install(int more) { applications_.install(more); }
  /// What the General pane sees; tests change it.
  GeneralFacts generalFacts;
  GestureFacts gestureFacts;

  /// Panes over this desktop.
  void makePanes(PanesObject& panes);

 private:
  [[nodiscard]] GeneralEffects generalEffects(PanesObject& panes);
  [[nodiscard]] GesturesEffects gesturesEffects(PanesObject& panes);
  [[nodiscard]] PracticeEffects practiceEffects(PanesObject& panes);
  [[nodiscard]] AppsEffects appsEffects();
  [[nodiscard]] AboutEffects aboutEffects();
  [[nodiscard]] TuningEffects tuningEffects(PanesObject& panes);

  std::string locale_;
  MemoryPreferences storage_;
  SilentLog log_;
  NotificationCenter notifications_;
  DefaultsStore defaults_;
  Config config_;
  GestureDeviceSelection selection_;
  ImmediateQueue queue_;
  TapActivityLog taps_;
  FictionalApplications applications_;
  PracticeTarget target_;
};

}  // namespace velotap
