#include "app/macos/alert_windows.hpp"

#include "app/macos/onboarding_alert.hpp"
#include "platform/platform.hpp"

namespace velotap {

// The alert runs a loop of its own; the launch must not wait for it.
void AlertWindows::connect(Application& application) {
  Onboarding& onboarding = application.onboarding();
  Onboarding::View view;
  view.create = [&onboarding](const std::string&, double) {
    Platform::current().mainQueue.async([&onboarding] {
      runOnboardingAlert(onboarding, Platform::current().alerts);
      onboarding.windowWillClose();
    });
  };
  onboarding.setView(std::move(view));
}

}  // namespace velotap
