// The Gestures pane: the triggers of one kind of device, filtered, explained, changed and undone.
//
// Main thread. Lives as long as the window; filters, the open explanation and the undo go with it.
// The device that is shown outlives it, and so is somebody else's. The view asks for a new
// `GesturesView` whenever the settings, the device or anything here changed.
#pragma once

#include <functional>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "config/defaults_store.hpp"
#include "config/trackpad_mode.hpp"
#include "input/gesture_device.hpp"
#include "localization/texts.hpp"
#include "settings/confirmation.hpp"
#include "settings/device_cards.hpp"
#include "settings/filter_disclosure.hpp"
#include "settings/gesture_explanation.hpp"
#include "settings/gesture_settings_undo.hpp"

namespace velotap {

enum class GestureSectionFilter { all, middle, more };

struct GestureFilter {
  std::string query{};
  GestureSectionFilter section = GestureSectionFilter::all;
  bool enabledOnly = false;
  bool modifiedOnly = false;

  [[nodiscard]] int activeCount() const;
};

/// What a desktop makes of three fingers on a trackpad by itself.
struct DesktopClicks {
  bool threeFingerTap = false;
  bool threeFingerClick = false;

  [[nodiscard]] bool any() const noexcept { return threeFingerTap || threeFingerClick; }
};

/// What decides whether a trigger that is on can act.
struct GestureFacts {
  bool enabled = true;  ///< the master switch
  bool accessibilityGranted = true;
  bool permissionIsSetUpHere = false;  ///< by the program's own set-up, not on a system's page
  bool listenersRunning = true;
  bool mouseAvailable = true;  ///< this system can handle the kind at all
  bool trackpadAvailable = true;
  std::vector<DeviceClass> connectedDevices{};
  std::optional<DesktopClicks>
      desktopClicks{};  ///< nothing where desktops never click by themselves
};

enum class NoteAction { none, openAccessibilitySettings, startListeners, showGeneral };

/// Where the system keeps the permission.
inline constexpr std::string_view kAccessibilitySettingsUrl =
    "x-apple.systempreferences:com.apple.preference.security?Privacy_Accessibility";

/// Why a trigger that is on does nothing, and what mends it.
struct InactiveTriggerNote {
  std::string_view symbol = "info.circle";
  std::string text;
  NoteAction action = NoteAction::none;
  std::string actionTitle;  ///< empty without an action
};

struct ExplainedTriggerToggle {
  std::string key;
  std::string title;
  bool on = false;
  bool modified = false;  ///< differs from its factory value
  bool explained = false;
  std::string explainLabel;
  std::string_view explainSymbol{};
  std::string detail;      ///< empty unless explained
  std::string resetLabel;  ///< empty unless explained and modified
  std::optional<InactiveTriggerNote> note;
};

struct GestureSectionView {
  GestureCategory category = GestureCategory::middleClick;
  std::string title;
  std::vector<ExplainedTriggerToggle> rows;
};

/// Who answers three fingers on a trackpad, and what that means here.
struct TrackpadModeView {
  std::string title;
  TrackpadMode mode = TrackpadMode::automatic;
  std::vector<std::pair<TrackpadMode, std::string>> choices;
  std::string note;
};

struct GesturesView {
  std::string introTitle;
  std::string introText;
  std::string_view introSymbol = "hand.tap";
  std::string deviceTitle;
  GestureDevice device = GestureDevice::mouse;
  std::vector<std::pair<GestureDevice, std::string>> deviceChoices;
  DeviceConnectionStatus connection;
  std::string summary;                           ///< how many of the device's triggers are on
  std::optional<TrackpadModeView> trackpadMode;  ///< for trackpads, where there is a choice

  std::string searchPlaceholder;
  SettingsFilterDisclosure filters;
  std::string sectionPickerLabel;
  std::vector<std::pair<GestureSectionFilter, std::string>> sectionChoices;
  std::string enabledOnlyTitle;
  std::string modifiedOnlyTitle;

  std::vector<GestureSectionView> sections;  ///< those with rows
  std::string noMatches;                     ///< empty while there are rows
  std::string showAll;

  std::string actionsTitle;
  std::string disableTitle;
  bool canDisable = false;  ///< something is on
  std::string restoreTitle;
  std::string restoreNote;
  bool canRestore = false;  ///< something differs from its factory value
  std::string undoTitle;    ///< empty without an undo
  std::string practiceTitle;
};

class GesturesPane {
 public:
  /// Told when a person switched one trigger from off to on.
  using DidEnable = std::function<void(std::string_view key)>;

  GesturesPane(DefaultsStore& defaults, GestureDeviceSelection& selection,
               DidEnable didEnable = nullptr);

  [[nodiscard]] GesturesView view(const GestureFacts& facts, const Texts& texts) const;

  [[nodiscard]] const GestureFilter& filter() const noexcept { return filter_; }
  void setFilter(GestureFilter filter) { filter_ = std::move(filter); }
  void resetFilters() { filter_ = {}; }

  void setDevice(GestureDevice device) { selection_.setDevice(device); }
  void setTrigger(std::string_view key, bool on);
  void setTrackpadMode(TrackpadMode mode);

  /// Opens this explanation and closes any other; closes it when it is the open one.
  void toggleExplanation(std::string_view key);
  [[nodiscard]] const std::optional<std::string>& explained() const noexcept { return explained_; }
  /// Puts the trigger whose explanation is open back to its factory value.
  void resetSelectedGesture();

  [[nodiscard]] static Confirmation disableQuestion(const Texts& texts);
  void disableAll();
  void restoreDeviceDefaults();
  [[nodiscard]] bool canUndo() const noexcept { return undo_.has_value(); }
  void undo();

 private:
  [[nodiscard]] TrackpadMode mode() const;
  [[nodiscard]] TriggerValues values(GestureDevice device) const;
  void change(const TriggerValues& wanted);
  [[nodiscard]] bool shows(std::string_view key, const std::string& title, bool on) const;
  [[nodiscard]] ExplainedTriggerToggle row(std::string_view key, const GestureFacts& facts,
                                           const Texts& texts) const;
  void addSections(const GestureFacts& facts, const Texts& texts, GesturesView& view) const;
  void addChoices(const Texts& texts, GesturesView& view) const;

  DefaultsStore& defaults_;
  GestureDeviceSelection& selection_;
  DidEnable didEnable_;
  GestureFilter filter_;
  std::optional<std::string> explained_;
  std::optional<GestureSettingsUndo> undo_;
};

}  // namespace velotap
