// The General pane: what it says about the program's state, and what its switches lead to.
//
// Pure values in, pure values out; any thread. The view gathers the facts anew each second and
// whenever the settings change, and shows what it is answered.
#pragma once

#include <cstdint>
#include <functional>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "input/device_class.hpp"
#include "localization/texts.hpp"
#include "platform/login_item.hpp"
#include "settings/confirmation.hpp"
#include "settings/device_cards.hpp"
#include "shell/general_readiness.hpp"

namespace velotap {

/// Who tells which application is in front. `system`: as a matter of course, not worth a word;
/// `nobody`: rules for applications cannot apply.
enum class FrontTeller { system, nobody, xServer, compositor, extension };

/// A device whose clicks cannot pass through the program.
struct RefusedDevice {
  std::string name;
  bool heldByAnother = false;  ///< another program has it for itself
};

/// What only some desktops make worth a sentence; the neutral values say nothing.
struct DesktopFacts {
  FrontTeller frontTeller = FrontTeller::system;
  bool accessByRule = false;        ///< the permission is a rule of the system about devices
  bool hasTray = true;              ///< there is a place for the status item
  bool mouseWithoutDriver = false;  ///< a Magic Mouse that gives no touches
  std::vector<RefusedDevice> refused{};
};

struct GeneralFacts {
  bool enabled = true;
  bool leftClickTogglesEnabled = true;
  bool hideStatusBarIcon = false;
  bool accessibilityGranted = false;
  bool listenersRunning = false;
  std::vector<DeviceClass> connectedDevices{};
  LoginItemStatus loginItemStatus = LoginItemStatus::notRegistered;
  bool automaticUpdateChecks = false;
  std::optional<std::string> updatesUnavailable{};  ///< key of the reason
  std::optional<std::int64_t> lastUpdateCheck{};    ///< seconds since 1970
  std::int64_t now = 0;                             ///< seconds since 1970
  DesktopFacts desktop{};
};

enum class GeneralAction { none, enable, setUpAccessibility, startListeners };
enum class GeneralColour { green, secondary, orange };

struct GeneralStatusCard {
  GeneralReadiness readiness = GeneralReadiness::active;
  std::string title;
  std::string detail;
  std::string_view symbol{};
  GeneralColour colour = GeneralColour::green;
  GeneralAction action = GeneralAction::none;
  std::string actionTitle;  ///< empty without an action
};

/// One thing that gestures need.
struct ReadinessRow {
  std::string title;
  bool met = false;
  std::string status;
  std::string_view symbol{};
  GeneralAction action = GeneralAction::none;  ///< none when met
  std::string actionTitle;
};

/// Something about the desktop that is good to know.
struct DesktopRow {
  std::string_view symbol{};
  std::string title;
  std::string caption;
  bool inOrder = true;
};

struct GeneralView {
  GeneralStatusCard card;
  std::string readinessTitle;
  std::vector<ReadinessRow> readinessRows;
  std::vector<std::string> notes;  ///< what this desktop cannot do, in sentences

  std::string devicesTitle;
  std::vector<ConnectedDeviceCard> devices;

  std::string enableTitle;
  bool enabled = true;

  std::string startupTitle;
  std::string launchTitle;
  bool launchesAtLogin = false;
  std::string approvalCaption;  ///< empty unless the person must approve the item
  std::string openLoginItems;   ///< empty with the caption
  std::string leftClickTitle;
  bool leftClickToggles = true;
  std::string leftClickCaption;
  std::string hideIconTitle;
  bool hidesIcon = false;
  std::string hiddenCaption;  ///< empty while the icon is shown

  std::string desktopTitle;
  std::vector<DesktopRow> desktopRows;  ///< empty where desktops are all alike

  std::string updatesTitle;
  std::string automaticChecksTitle;
  bool automaticChecks = false;
  std::string checkNow;
  bool canCheck = true;
  std::string lastChecked;  ///< or why there are no updates

  std::string openGestures;
  std::string openTuning;
};

[[nodiscard]] GeneralView generalView(const GeneralFacts& facts, const Texts& texts);

/// Asked before the icon is hidden.
[[nodiscard]] Confirmation hideIconQuestion(const Texts& texts);

/// What a failed change of the login item is answered with.
struct LoginItemFailure {
  std::string alertTitle;
  std::string alertText;
  std::string logLine;  ///< without the product prefix, which every diagnostic line gets
  std::string dismiss;
};
[[nodiscard]] LoginItemFailure loginItemFailure(std::string_view error, const Texts& texts);

/// To be called after the master switch changed: asks for the permission's state anew and, when the
/// switch is on, starts listeners that do not run. Switching off is the controller's own matter.
struct EnabledSynchronization {
  std::function<void()> refreshPermission;
  std::function<bool()> enabled;
  std::function<bool()> listenersRunning;
  std::function<void()> startController;
};
void synchronizeEnabledState(const EnabledSynchronization& effects);

}  // namespace velotap
