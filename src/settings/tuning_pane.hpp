// The Tuning pane: limits, sensitivity and the centre band, with one undo, and the recent taps.
//
// Main thread. Lives as long as the window. Moving a slider writes its setting and leaves no undo;
// presets, restoring the defaults and suggestions each leave one, which replaces the one before.
// The list of taps, and the touches by which each slider tells what it would accept, follow the log
// unless that is paused.
#pragma once

#include <functional>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "config/defaults_store.hpp"
#include "gestures/tap_activity_log.hpp"
#include "localization/texts.hpp"
#include "platform/notification_center.hpp"
#include "settings/recent_taps.hpp"
#include "settings/tuning_values.hpp"

namespace velotap {

struct TuningSliderView {
  TuningValue value = TuningValue::maxTapDuration;
  std::string title;
  double number = 0;
  double lowest = 0;
  double highest = 1;
  double step = 0.01;
  std::string text;
  std::string lowLabel;
  std::string highLabel;
  std::string evidence;  ///< how many of the touches that were kept it accepts; empty without any
  std::string fineTitle;
  std::string decreaseLabel;
  bool canDecrease = false;
  std::string increaseLabel;
  bool canIncrease = false;
  std::string resetTitle;
  std::string resetLabel;
  bool canReset = false;
};

struct TuningPresetView {
  std::string title;
  bool chosen = false;  ///< its values are in force
};

/// A section that has no effect at present.
struct TuningNote {
  std::string text;         ///< empty when there is nothing to say
  std::string actionTitle;  ///< empty without an action
};

struct TuningView {
  std::string introTitle;
  std::string introText;
  std::string_view introSymbol = "slider.horizontal.3";
  std::string state;  ///< default or custom tuning
  std::string_view stateSymbol{};
  bool isDefault = true;

  std::string tapTitle;
  std::string presetsTitle;
  std::string presetsNote;
  std::vector<TuningPresetView> presets;
  TuningSliderView duration;
  std::string durationCaption;
  TuningSliderView drift;
  std::string driftCaption;
  TuningNote tapNote;  ///< its action shows the Gestures pane

  std::string pinchTitle;
  TuningSliderView sensitivity;
  std::string sensitivityCaption;
  TuningNote pinchNote;  ///< its action switches the gesture on

  std::string centerTitle;
  std::string centerWidthTitle;
  std::string centerCaption;
  std::string centerLabel;  ///< what the picture of the band shows, in words
  std::string centerPresetsNote;
  std::vector<TuningPresetView> centerPresets;
  TuningSliderView leftEdge;
  TuningSliderView rightEdge;
  TuningNote centerNote;

  std::string restoreTitle;
  bool canRestore = false;
  std::string undoTitle;  ///< empty without an undo
  std::string compareNote;
  std::vector<std::string> comparison;  ///< what the last change changed

  RecentTapsView taps;
};

class TuningPane {
 public:
  /// Spoken with high priority: the key of a sentence.
  using Announce = std::function<void(std::string_view key)>;
  using DidChange = std::function<void()>;

  /// `changed` is called when the list of taps or the touches behind the evidence changed.
  TuningPane(DefaultsStore& defaults, TapActivityLog& log, NotificationCenter& notifications,
             Announce announce, DidChange changed = nullptr);

  [[nodiscard]] TuningView view(const Texts& texts) const;

  [[nodiscard]] TuningSnapshot snapshot() const;
  [[nodiscard]] bool isDefaultTuning() const { return velotap::isDefaultTuning(snapshot()); }

  void moveSlider(TuningValue value, double number);
  void decrement(TuningValue value);
  void increment(TuningValue value);
  void reset(TuningValue value);

  void applyPreset(int duration, double drift);
  void applyCenter(double minimum, double maximum);
  void restoreDefaults();
  void apply(const TapLimitSuggestion& suggestion);
  [[nodiscard]] const std::optional<TuningUndo>& lastChange() const noexcept { return undo_; }
  void undo();
  void turnOnPinchZoom();

  [[nodiscard]] const TapActivityFilter& filter() const noexcept { return filter_; }
  void setFilter(TapActivityFilter filter) { filter_ = std::move(filter); }
  void resetFilters() { filter_ = {}; }
  [[nodiscard]] bool paused() const noexcept { return paused_; }
  void setPaused(bool paused);
  void clearTaps() { log_.clear(); }

 private:
  void restore(const TuningSnapshot& values);
  void change(const TuningSnapshot& wanted);
  void write(TuningValue value, const TuningSnapshot& values);
  void set(TuningValue value, double number);
  void follow();
  [[nodiscard]] TuningSliderView slider(TuningValue value, const TuningSnapshot& current,
                                        const Texts& texts) const;
  struct Evidence {
    std::string_view key;
    ReplayedTouches touches;
  };
  [[nodiscard]] Evidence evidence(TuningValue value, const TuningSnapshot& current) const;
  [[nodiscard]] std::string evidenceText(TuningValue value, const TuningSnapshot& current,
                                         const Texts& texts) const;
  void addTapSection(const TuningSnapshot& current, const Texts& texts, TuningView& view) const;
  void addZoomAndCenter(const TuningSnapshot& current, const Texts& texts, TuningView& view) const;
  void addUndo(const Texts& texts, TuningView& view) const;

  DefaultsStore& defaults_;
  TapActivityLog& log_;
  Announce announce_;
  DidChange changed_;
  std::vector<TapActivity> activity_;
  KeptTouches touches_;
  TapActivityFilter filter_;
  bool paused_ = false;
  std::optional<TuningUndo> undo_;
  Observation taps_;
  Observation otherTouches_;
};

}  // namespace velotap
