#include "app/onboarding.hpp"

#include <algorithm>
#include <array>
#include <utility>

namespace velotap {
namespace {

constexpr double kTallest = 500;
constexpr double kMargin = 32;
constexpr double kHeightWithoutScreen = 768;

// What reads differently where the permission is given in another way. Every other text is the same
// on all systems.
constexpr std::array<std::string_view, 11> kTextsWithVariants = {
    "onboarding.permission.purpose", "onboarding.permission.step1",
    "onboarding.permission.step2",   "onboarding.permission.step3",
    "onboarding.permission.waiting", "onboarding.permission.missing",
    "onboarding.permission.refresh", "onboarding.permission.openFailed",
    "Open System Settings",          "Show Velotap in Finder",
    "Accessibility is enabled"};

}  // namespace

double onboardingMaximumHeight(std::optional<double> visibleScreenHeight) noexcept {
  const double available =
      visibleScreenHeight ? *visibleScreenHeight - kMargin : kHeightWithoutScreen;
  return std::max(1.0, std::min(available, kTallest));
}

ScreenFrame keptInside(ScreenFrame frame, const ScreenFrame& visible) noexcept {
  const auto moved = [](double start, double length, double from, double room) {
    return std::max(from, std::min(start, from + room - length));
  };
  frame.x = moved(frame.x, frame.width, visible.x, visible.width);
  frame.y = moved(frame.y, frame.height, visible.y, visible.height);
  return frame;
}

Onboarding::Onboarding(Permissions& permissions, AccessibilityAnnouncements& announcements,
                       Effects effects, Localize localize, std::string variant)
    : permissions_(permissions),
      announcements_(announcements),
      effects_(std::move(effects)),
      localize_(std::move(localize)),
      variant_(std::move(variant)),
      grantedChanges_(
          permissions_.observeGranted([this](bool granted) { grantedChanged(granted); })) {}

Observation Onboarding::observe(std::function<void()> changed) {
  return changes_.add(std::move(changed));
}

void Onboarding::grantedChanged(bool granted) {
  if (!exists_) return;
  if (granted) {
    settingsOpenFailed_ = false;
    announcements_.post(localize_("Permission granted"), AnnouncementPriority::medium);
  }
  changes_.notify();
}

void Onboarding::show() {
  permissions_.refresh();
  if (exists_) return bringToFront();
  if (!view_.create) return;
  exists_ = true;
  settingsOpenFailed_ = false;
  const auto screen =
      view_.visibleScreenHeight ? view_.visibleScreenHeight() : std::optional<double>();
  view_.create(localize_("Set Up Velotap"), onboardingMaximumHeight(screen));
  effects_.application.activate();
}

bool Onboarding::isVisible() const {
  return exists_ && view_.isVisible && view_.isVisible();
}

void Onboarding::bringToFront() {
  effects_.application.activate();
  if (view_.bringToFront) view_.bringToFront();
}

void Onboarding::refreshTitle() {
  if (exists_ && view_.setTitle) view_.setTitle(localize_("Set Up Velotap"));
  changes_.notify();
}

void Onboarding::windowWillClose() {
  exists_ = false;
}

bool Onboarding::openAccessibilitySettings() {
  permissions_.refresh();
  permissions_.requestOnce();
  const bool opened = effects_.openTrustSettings();
  settingsOpenFailed_ = !opened;
  changes_.notify();
  return opened;
}

void Onboarding::revealProgram() {
  effects_.revealProgram();
}

void Onboarding::setUpLater() {
  if (view_.close) view_.close();
}

void Onboarding::tryMiddleClick() {
  if (view_.openPractice) view_.openPractice();
}

// The new window first: the person never sees neither.
void Onboarding::continueToSettings() {
  effects_.application.openSettings(SettingsPane::general);
  if (view_.close) view_.close();
}

std::string Onboarding::text(std::string_view key) const {
  const bool varies = std::find(kTextsWithVariants.begin(), kTextsWithVariants.end(), key) !=
                      kTextsWithVariants.end();
  if (!varies || variant_.empty()) return localize_(key);
  return localize_(std::string(key) + "." + variant_);
}

OnboardingContent Onboarding::content() const {
  return permissions_.granted() ? grantedContent() : missingContent();
}

OnboardingContent Onboarding::missingContent() const {
  OnboardingContent shown;
  shown.symbol = "hand.raised.fill";
  shown.title = text("Accessibility permission required");
  shown.explanation = text("onboarding.permission.purpose");
  shown.stepsHeading = text("onboarding.step.accessibility");
  shown.steps = {text("onboarding.permission.step1"), text("onboarding.permission.step2"),
                 text("onboarding.permission.step3")};
  shown.mainButton = text("Open System Settings");
  if (settingsOpenFailed_) shown.settingsError = text("onboarding.permission.openFailed");
  shown.waiting = text("onboarding.permission.waiting");
  shown.helpHeading = text("Missing from the list or still not working?");
  shown.help = {text("onboarding.permission.missing"), text("onboarding.permission.refresh")};
  shown.revealButton = text("Show Velotap in Finder");
  shown.laterButton = text("Set Up Later");
  shown.laterNote = text("onboarding.permission.later");
  return shown;
}

OnboardingContent Onboarding::grantedContent() const {
  OnboardingContent shown;
  shown.granted = true;
  shown.symbol = "checkmark.circle.fill";
  shown.title = text("Permission granted");
  shown.explanation = text("Accessibility is enabled");
  shown.tips = {text("onboarding.menu.open")};
  if (effects_.leftClickToggles()) shown.tips.push_back(text("onboarding.menu.toggle"));
  shown.practiceButton = text("Try a middle click");
  shown.continueButton = text("Continue to Settings");
  return shown;
}

}  // namespace velotap
