#include "adapters/linux/session/reconnection.hpp"

#include <iterator>
#include <utility>

namespace velotap {
namespace {

void cancel(std::shared_ptr<DelayedWork>& work) {
  if (const auto pending = std::exchange(work, nullptr)) pending->cancel();
}

}  // namespace

Reconnection::Reconnection(std::unique_ptr<RecoverySignal> recovery, MainQueue& queue,
                           std::function<bool()> connect)
    : recovery_(std::move(recovery)), queue_(queue), connect_(std::move(connect)) {}

Reconnection::~Reconnection() {
  cancel(retry_);
  cancel(settled_);
  recovery_->disarm();
}

void Reconnection::start() {
  attempt();
}

void Reconnection::lost() {
  cancel(settled_);
  wait();
}

void Reconnection::attempt() {
  cancel(retry_);
  if (!connect_()) return wait();
  recovery_->disarm();
  settled_ = queue_.asyncAfter(kSettledAfter, [this] {
    settled_ = nullptr;
    pauses_ = 0;
  });
}

void Reconnection::wait() {
  watched_ = recovery_->arm([this] {
    pauses_ = 0;
    attempt();
  });
  scheduleRetry();
}

void Reconnection::scheduleRetry() {
  if (retry_ != nullptr) return;
  if (pauses_ == std::size(kRetryPauses) && watched_) return;
  const double pause =
      pauses_ < std::size(kRetryPauses) ? kRetryPauses[pauses_++] : kUnwatchedPause;
  retry_ = queue_.asyncAfter(pause, [this] {
    retry_ = nullptr;
    attempt();
  });
}

}  // namespace velotap
