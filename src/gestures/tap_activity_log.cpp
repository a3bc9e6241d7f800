#include "gestures/tap_activity_log.hpp"

#include <algorithm>
#include <utility>

#include "platform/platform.hpp"

namespace velotap {

TapActivityLog::TapActivityLog(MainQueue& queue, NotificationCenter& notifications)
    : queue_(queue), state_(std::make_shared<State>(notifications)) {}

TapActivityLog& TapActivityLog::shared() {
  static TapActivityLog instance(Platform::current().mainQueue, Platform::current().notifications);
  return instance;
}

void TapActivityLog::record(TapActivity activity) {
  bool wasPending = false;
  {
    const std::lock_guard guard(state_->lock);
    activity.id = ++state_->nextID;
    if (state_->newestLast.full()) state_->newestLast.erase(0);
    state_->newestLast.push(activity);
    wasPending = std::exchange(state_->notificationPending, true);
  }
  records_.notify(activity);
  if (wasPending) return;
  queue_.async([weak = std::weak_ptr(state_)] {
    const auto state = weak.lock();
    if (!state) return;
    {
      const std::lock_guard guard(state->lock);
      state->notificationPending = false;
    }
    state->notifications.post(kTapActivityDidChange);
  });
}

void TapActivityLog::clear() {
  {
    const std::lock_guard guard(state_->lock);
    state_->newestLast.clear();
  }
  state_->notifications.post(kTapActivityDidChange);
}

std::vector<TapActivity> TapActivityLog::items() const {
  const std::lock_guard guard(state_->lock);
  std::vector<TapActivity> items(state_->newestLast.begin(), state_->newestLast.end());
  std::reverse(items.begin(), items.end());
  return items;
}

Observation TapActivityLog::observeRecords(std::function<void(const TapActivity&)> observer) {
  return records_.add(std::move(observer));
}

}  // namespace velotap
