// The one small window that explains the permission and walks the person through giving it.
//
// A plain model: which texts and buttons the window shows, how large it may be, that there is one
// window at most, and what its buttons do. A view makes the window and draws what it is given.
// Main thread.
#pragma once

#include <functional>
#include <optional>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

#include "app/shell_surroundings.hpp"
#include "base/observer_list.hpp"
#include "shell/accessibility_announcements.hpp"
#include "shell/permissions.hpp"

namespace velotap {

/// A frame on the screen, in points from the top left.
struct ScreenFrame {
  double x = 0;
  double y = 0;
  double width = 0;
  double height = 0;
  friend bool operator==(const ScreenFrame&, const ScreenFrame&) = default;
};

/// The frame, moved as little as it takes to lie in what is visible; its top left when it does not
/// fit.
[[nodiscard]] ScreenFrame keptInside(ScreenFrame frame, const ScreenFrame& visible) noexcept;

/// The height that the content may take, in points: what the screen leaves, at most 500.
[[nodiscard]] double onboardingMaximumHeight(std::optional<double> visibleScreenHeight) noexcept;

/// All that the window says, localised.
struct OnboardingContent {
  bool granted = false;
  std::string symbol;
  std::string title;
  std::string explanation;
  // While the permission is missing.
  std::string stepsHeading;
  std::vector<std::string> steps;
  std::string mainButton;
  std::string settingsError;  ///< empty unless the system's settings could not be shown
  std::string waiting;
  std::string helpHeading;
  std::vector<std::string> help;
  std::string revealButton;
  std::string laterButton;
  std::string laterNote;
  // Once it is given.
  std::vector<std::string> tips;
  std::string practiceButton;
  std::string continueButton;
};

class Onboarding {
 public:
  struct View {
    /// Makes the window, centred, titled and closable, and brings it to the front.
    std::function<void(const std::string& title, double maximumHeight)> create{};
    std::function<void()> bringToFront{};
    std::function<void()> close{};
    std::function<bool()> isVisible{};
    std::function<void(const std::string& title)> setTitle{};
    /// Height of the main screen without panels and docks; nothing without a screen.
    std::function<std::optional<double>()> visibleScreenHeight{};
    std::function<void()> openPractice{};
  };
  struct Effects {
    std::function<bool()> openTrustSettings;  ///< false when they could not be shown
    std::function<bool()> revealProgram;
    std::function<bool()> leftClickToggles;
    ApplicationEffects application;
  };

  /// `variant` names the operating system whose wording is wanted where the tables have several,
  /// for example "linux"; empty for the plain one.
  Onboarding(Permissions& permissions, AccessibilityAnnouncements& announcements, Effects effects,
             Localize localize, std::string variant = {});

  void setView(View view) { view_ = std::move(view); }

  /// Shows the window, or brings the one that exists to the front.
  void show();
  [[nodiscard]] bool exists() const noexcept { return exists_; }
  [[nodiscard]] bool isVisible() const;
  void bringToFront();
  /// In the person's language, once more.
  void refreshTitle();
  /// The view says so when the window closes, by whoever's hand.
  void windowWillClose();

  [[nodiscard]] OnboardingContent content() const;
  /// Calls back whenever `content` may have changed.
  [[nodiscard]] Observation observe(std::function<void()> changed);

  /// Asks for the permission (the system's prompt at most once in a run) and shows where it is
  /// given; false when that could not be shown.
  bool openAccessibilitySettings();
  void revealProgram();
  void setUpLater();
  void tryMiddleClick();
  void continueToSettings();

 private:
  void grantedChanged(bool granted);
  [[nodiscard]] std::string text(std::string_view key) const;
  [[nodiscard]] OnboardingContent missingContent() const;
  [[nodiscard]] OnboardingContent grantedContent() const;

  Permissions& permissions_;
  AccessibilityAnnouncements& announcements_;
  Effects effects_;
  Localize localize_;
  std::string variant_;
  View view_;
  bool exists_ = false;
  bool settingsOpenFailed_ = false;
  ObserverList<> changes_;
  Observation grantedChanges_;
};

}  // namespace velotap
