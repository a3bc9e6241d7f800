#include "app/macos/onboarding_alert.hpp"

#include <gtest/gtest.h>

#include <deque>

#include "app/shell_fakes.hpp"
#include "support/desktop.hpp"

namespace velotap::test {
namespace {

OnboardingContent missing() {
  OnboardingContent content;
  content.title = "title";
  content.explanation = "explanation";
  content.stepsHeading = "steps";
  content.steps = {"first", "second"};
  content.helpHeading = "help";
  content.help = {"missing", "refresh"};
  content.laterNote = "note";
  content.mainButton = "main";
  content.revealButton = "reveal";
  content.laterButton = "later";
  return content;
}

TEST(OnboardingAlertTest, whileThePermissionIsMissingAllIsExplained) {
  const AlertRequest request = onboardingAlert(missing());
  EXPECT_EQ(request.message, "title");
  EXPECT_EQ(request.informativeText,
            "explanation\n\nsteps\n\n1. first\n2. second\n\nhelp\n\nmissing\n\nrefresh\n\nnote");
  EXPECT_EQ(request.buttons, (std::vector<std::string>{"main", "reveal", "later"}));
}

TEST(OnboardingAlertTest, aFailureToShowTheSettingsIsSaid) {
  OnboardingContent content = missing();
  content.settingsError = "could not be opened";
  EXPECT_NE(onboardingAlert(content).informativeText.find("\n\ncould not be opened\n\n"),
            std::string::npos);
}

TEST(OnboardingAlertTest, onceItIsGivenThereAreTipsAndOneButton) {
  OnboardingContent content;
  content.granted = true;
  content.title = "title";
  content.explanation = "explanation";
  content.tips = {"open", "toggle"};
  content.continueButton = "continue";
  const AlertRequest request = onboardingAlert(content);
  EXPECT_EQ(request.informativeText, "explanation\n\nopen\n\ntoggle");
  EXPECT_EQ(request.buttons, std::vector<std::string>{"continue"});
}

class AnsweringAlerts final : public Alerts {
 public:
  int runModal(const AlertRequest& request) override {
    shown.push_back(request);
    const int answer = answers.front();
    answers.pop_front();
    return answer;
  }
  void openUrl(const std::string&) override {}

  std::deque<int> answers;
  std::vector<AlertRequest> shown;
};

class RunOnboardingAlertTest : public ::testing::Test, protected Desktop {
 protected:
  RunOnboardingAlertTest() {
    trust.setTrusted(false);
    permissions_.refresh();
    Onboarding::View view;
    view.close = [this] { calls_.emplace_back("close"); };
    onboarding_.setView(std::move(view));
  }
  void answer(std::deque<int> answers) {
    alerts_.answers = std::move(answers);
    runOnboardingAlert(onboarding_, alerts_);
    EXPECT_TRUE(alerts_.answers.empty());
  }

  DefaultsStore defaults_{preferences, log};
  std::vector<std::string> calls_;
  bool opens_ = true;
  Permissions permissions_{defaults_,
                           mainQueue,
                           {.readTrust = [this] { return trust.trusted(); },
                            .requestTrust = [this] { calls_.emplace_back("prompt"); }}};
  FakeAnnouncements announced_;
  AccessibilityAnnouncements announcements_{announced_};
  Onboarding onboarding_{
      permissions_,
      announcements_,
      {.openTrustSettings =
           [this] {
             calls_.emplace_back("settings");
             return opens_;
           },
       .revealProgram =
           [this] {
             calls_.emplace_back("reveal");
             return true;
           },
       .leftClickToggles = [] { return false; },
       .application = {.activate = [] {},
                       .terminate = [] {},
                       .openSettings = [this](SettingsPane) { calls_.emplace_back("window"); }}},
      [](std::string_view key) { return std::string(key); }};
  AnsweringAlerts alerts_;
};

TEST_F(RunOnboardingAlertTest, theMainButtonPromptsAndShowsTheSettings) {
  answer({0});
  EXPECT_EQ(calls_, (std::vector<std::string>{"prompt", "settings"}));
}

TEST_F(RunOnboardingAlertTest, settingsThatDoNotOpenBringTheAlertBackWithTheReason) {
  opens_ = false;
  answer({0, 2});
  ASSERT_EQ(alerts_.shown.size(), 2U);
  EXPECT_NE(alerts_.shown[1].informativeText.find("onboarding.permission.openFailed"),
            std::string::npos);
  EXPECT_EQ(calls_, (std::vector<std::string>{"prompt", "settings", "close"}));
}

TEST_F(RunOnboardingAlertTest, revealingSettlesNothing) {
  answer({1, 1, 2});
  EXPECT_EQ(calls_, (std::vector<std::string>{"reveal", "reveal", "close"}));
}

TEST_F(RunOnboardingAlertTest, onceGivenItGoesOnToTheSettings) {
  trust.setTrusted(true);
  permissions_.refresh();
  answer({0});
  EXPECT_EQ(calls_, (std::vector<std::string>{"window", "close"}));
}

}  // namespace
}  // namespace velotap::test
