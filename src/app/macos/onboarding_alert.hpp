// The onboarding as an alert of the system, for a build without the window toolkit: the same texts,
// the three buttons that matter while the permission is missing.
//
// Pure but for `show`. Main thread.
#pragma once

#include "app/onboarding.hpp"
#include "platform/alerts.hpp"

namespace velotap {

/// Main button, reveal button, later button while the permission is missing; one button after that.
[[nodiscard]] AlertRequest onboardingAlert(const OnboardingContent& content);

/// Shows it until it is answered, and does what the answer asks for. Revealing the program asks
/// again, because it settles nothing.
void runOnboardingAlert(Onboarding& onboarding, Alerts& alerts);

}  // namespace velotap
