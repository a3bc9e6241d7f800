#include "app/macos/onboarding_alert.hpp"

namespace velotap {
namespace {

void addParagraph(std::string& text, const std::string& paragraph) {
  if (paragraph.empty()) return;
  if (!text.empty()) text += "\n\n";
  text += paragraph;
}

std::string numbered(const std::vector<std::string>& steps) {
  std::string text;
  for (std::size_t i = 0; i < steps.size(); ++i) {
    if (i > 0) text += '\n';
    text += std::to_string(i + 1) + ". " + steps[i];
  }
  return text;
}

}  // namespace

AlertRequest onboardingAlert(const OnboardingContent& content) {
  AlertRequest request;
  request.message = content.title;
  addParagraph(request.informativeText, content.explanation);
  if (content.granted) {
    for (const std::string& tip : content.tips) addParagraph(request.informativeText, tip);
    request.buttons = {content.continueButton};
    return request;
  }
  addParagraph(request.informativeText, content.stepsHeading);
  addParagraph(request.informativeText, numbered(content.steps));
  addParagraph(request.informativeText, content.settingsError);
  addParagraph(request.informativeText, content.helpHeading);
  for (const std::string& help : content.help) addParagraph(request.informativeText, help);
  addParagraph(request.informativeText, content.laterNote);
  request.buttons = {content.mainButton, content.revealButton, content.laterButton};
  return request;
}

void runOnboardingAlert(Onboarding& onboarding, Alerts& alerts) {
  while (true) {
    const OnboardingContent content = onboarding.content();
    const int answer = alerts.runModal(onboardingAlert(content));
    if (content.granted) return onboarding.continueToSettings();
    if (answer == 0) {
      if (onboarding.openAccessibilitySettings()) return;
    } else if (answer == 1) {
      onboarding.revealProgram();
    } else {
      return onboarding.setUpLater();
    }
  }
}

}  // namespace velotap
