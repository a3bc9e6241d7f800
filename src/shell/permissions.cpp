#include "shell/permissions.hpp"

#include <utility>

#include "config/settings_keys.hpp"

namespace velotap {
Permissions::Permissions(DefaultsStore& defaults, MainQueue& queue, Closures initial)
    : closures(std::move(initial)),
      defaults_(defaults),
      queue_(queue),
      granted_(closures.readTrust()) {}

Permissions::~Permissions() {
  stopMonitoring();
}

Observation Permissions::observeGranted(std::function<void(bool)> changed) {
  return grantedChanges_.add(std::move(changed));
}

void Permissions::startMonitoring(std::function<void(bool)> onChange) {
  onChange_ = std::move(onChange);
  lastDelivered_.reset();
  monitoring_ = true;
  if (!trustChanges_.active() && closures.observeTrust) {
    trustChanges_ = closures.observeTrust([this] { refresh(); });
  }
  refresh();
}

void Permissions::stopMonitoring() {
  monitoring_ = false;
  trustChanges_.reset();
  onChange_ = nullptr;
  lastDelivered_.reset();
  arrangePoll();
}

void Permissions::refresh() {
  const bool trusted = closures.readTrust();
  if (granted_ != trusted) {
    granted_ = trusted;
    grantedChanges_.notify(trusted);
  }
  arrangePoll();
  if (lastDelivered_ == trusted) return;
  lastDelivered_ = trusted;
  // A copy: being told may end the monitoring.
  if (const auto onChange = onChange_) onChange(trusted);
}

void Permissions::arrangePoll() {
  const bool told = trustChanges_.active() && granted_;
  if (!monitoring_ || told) {
    if (timer_ != nullptr) std::exchange(timer_, nullptr)->cancel();
    return;
  }
  if (timer_ != nullptr) return;
  timer_ = queue_.asyncAfter(kPollSeconds, [this] {
    timer_ = nullptr;
    refresh();
  });
}

void Permissions::requestOnce() {
  if (granted_ || requestedThisSession_) return;
  requestedThisSession_ = true;
  closures.requestTrust();
  refresh();
}

bool Permissions::takeInitialPresentation(bool enabled) {
  const bool presented = defaults_.boolean(keys::kAccessibilitySetupPresented);
  defaults_.set(keys::kAccessibilitySetupPresented, true);
  return !presented && enabled && !granted_;
}

}  // namespace velotap
