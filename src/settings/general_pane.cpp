#include "settings/general_pane.hpp"

namespace velotap {
namespace {

struct Appearance {
  std::string_view detailKey;
  std::string_view symbol;
  GeneralColour colour;
  GeneralAction action;
};

Appearance appearance(GeneralReadiness readiness) {
  switch (readiness) {
    case GeneralReadiness::paused:
      return {"status.paused.detail", "pause.fill", GeneralColour::secondary, GeneralAction::none};
    case GeneralReadiness::permission:
      return {"status.permission.detail", "hand.raised.fill", GeneralColour::orange,
              GeneralAction::setUpAccessibility};
    case GeneralReadiness::listeners:
      return {"status.listeners.detail", "exclamationmark.triangle.fill", GeneralColour::orange,
              GeneralAction::startListeners};
    case GeneralReadiness::active:
      break;
  }
  return {"status.active.detail", "computermouse.fill", GeneralColour::green, GeneralAction::none};
}

std::string actionTitle(GeneralAction action, const Texts& texts) {
  switch (action) {
    case GeneralAction::none:
      break;
    case GeneralAction::enable:
      return texts("Enable Velotap");
    case GeneralAction::setUpAccessibility:
      return texts("Accessibility Setup…");
    case GeneralAction::startListeners:
      return texts("Try Again");
  }
  return {};
}

GeneralStatusCard statusCard(const GeneralFacts& facts, const Texts& texts) {
  const GeneralReadiness readiness =
      generalReadiness(facts.enabled, facts.accessibilityGranted, facts.listenersRunning);
  const Appearance look = appearance(readiness);
  return {.readiness = readiness,
          .title = texts(readinessTitleKey(readiness)),
          .detail = texts(look.detailKey),
          .symbol = look.symbol,
          .colour = look.colour,
          .action = look.action,
          .actionTitle = actionTitle(look.action, texts)};
}

ReadinessRow row(std::string_view titleKey, bool met, GeneralAction action, const Texts& texts) {
  const GeneralAction offered = met ? GeneralAction::none : action;
  return {.title = texts(titleKey),
          .met = met,
          .status = texts(met ? "design.ready" : "design.resolve"),
          .symbol = met ? "checkmark.circle.fill" : "exclamationmark.circle",
          .action = offered,
          .actionTitle = actionTitle(offered, texts)};
}

std::vector<std::string> desktopNotes(const DesktopFacts& desktop, const Texts& texts) {
  std::vector<std::string> notes;
  if (!desktop.hasTray) notes.push_back(texts("desktop.no.tray"));
  if (desktop.mouseWithoutDriver) notes.push_back(texts("desktop.mouse.without.driver"));
  for (const RefusedDevice& device : desktop.refused) {
    notes.push_back(texts(device.heldByAnother ? "desktop.device.held" : "desktop.device.refused",
                          {device.name}));
  }
  return notes;
}

std::string_view frontCaptionKey(FrontTeller teller) {
  switch (teller) {
    case FrontTeller::system:
      break;
    case FrontTeller::nobody:
      return "desktop.front.hidden";
    case FrontTeller::xServer:
      return "desktop.front.server";
    case FrontTeller::compositor:
      return "desktop.front.compositor";
    case FrontTeller::extension:
      return "desktop.front.extension";
  }
  return {};
}

std::vector<DesktopRow> desktopRows(const GeneralFacts& facts, const Texts& texts) {
  std::vector<DesktopRow> rows;
  if (facts.desktop.accessByRule) {
    const bool granted = facts.accessibilityGranted;
    rows.push_back({.symbol = "lock",
                    .title = texts("desktop.access.title"),
                    .caption = texts(granted ? "desktop.access.rule" : "desktop.access.missing"),
                    .inOrder = granted});
  }
  if (const auto caption = frontCaptionKey(facts.desktop.frontTeller); !caption.empty()) {
    rows.push_back({.symbol = "menubar",
                    .title = texts("desktop.front.title"),
                    .caption = texts(caption),
                    .inOrder = facts.desktop.frontTeller != FrontTeller::nobody});
  }
  return rows;
}

void addStartup(const GeneralFacts& facts, const Texts& texts, GeneralView& view) {
  view.startupTitle = texts("Startup and menu bar");
  view.launchTitle = texts("Launch at Login");
  view.launchesAtLogin = facts.loginItemStatus == LoginItemStatus::enabled;
  if (facts.loginItemStatus == LoginItemStatus::requiresApproval) {
    view.approvalCaption = texts("login.approval.caption");
    view.openLoginItems = texts("Open Login Items");
  }
  view.leftClickTitle = texts("Left-click toggles Velotap");
  view.leftClickToggles = facts.leftClickTogglesEnabled;
  view.leftClickCaption = texts("statusbar.click.caption");
  view.hideIconTitle = texts("Hide menu bar icon");
  view.hidesIcon = facts.hideStatusBarIcon;
  if (facts.hideStatusBarIcon) view.hiddenCaption = texts("statusbar.hidden.caption");
}

std::string lastChecked(const GeneralFacts& facts, const Texts& texts) {
  if (facts.updatesUnavailable) return texts(*facts.updatesUnavailable);
  if (!facts.lastUpdateCheck) return texts("Not checked yet");
  return texts("Last checked %@", {texts.relative(*facts.lastUpdateCheck, facts.now)});
}

}  // namespace

GeneralView generalView(const GeneralFacts& facts, const Texts& texts) {
  GeneralView view;
  view.card = statusCard(facts, texts);
  view.readinessTitle = texts("design.readiness");
  view.readinessRows = {
      row("Enable Velotap", facts.enabled, GeneralAction::enable, texts),
      row("design.accessibility", facts.accessibilityGranted, GeneralAction::setUpAccessibility,
          texts),
      row("design.listeners", facts.listenersRunning, GeneralAction::startListeners, texts)};
  view.notes = desktopNotes(facts.desktop, texts);
  view.devicesTitle = texts("design.devices");
  view.devices = connectedDeviceCards(facts.connectedDevices, texts);
  view.enableTitle = texts("Enable Velotap");
  view.enabled = facts.enabled;
  addStartup(facts, texts, view);
  view.desktopTitle = texts("desktop.title");
  view.desktopRows = desktopRows(facts, texts);
  view.updatesTitle = texts("Updates");
  view.automaticChecksTitle = texts("Check for updates automatically");
  view.automaticChecks = facts.automaticUpdateChecks;
  view.checkNow = texts("Check Now");
  view.canCheck = !facts.updatesUnavailable;
  view.lastChecked = lastChecked(facts, texts);
  view.openGestures = texts("Open Gestures");
  view.openTuning = texts("design.open.tuning");
  return view;
}

Confirmation hideIconQuestion(const Texts& texts) {
  return {.title = texts("design.hide.icon.question"),
          .message = texts("design.hide.icon.note"),
          .confirm = texts("design.hide.icon"),
          .cancel = texts("Cancel")};
}

LoginItemFailure loginItemFailure(std::string_view error, const Texts& texts) {
  return {.alertTitle = texts("Could not update Launch at Login"),
          .alertText = std::string(error),
          .logLine = "login item toggle failed: " + std::string(error),
          .dismiss = texts("OK")};
}

void synchronizeEnabledState(const EnabledSynchronization& effects) {
  effects.refreshPermission();
  if (effects.enabled() && !effects.listenersRunning()) effects.startController();
}

}  // namespace velotap
