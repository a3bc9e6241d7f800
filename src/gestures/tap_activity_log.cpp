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

// Changes the state under the lock, and tells of it soon unless that is about to happen anyway.
template <typename Change>
void TapActivityLog::change(Change apply) {
  bool wasPending = false;
  {
    const std::lock_guard guard(state_->lock);
    apply(*state_);
    wasPending = std::exchange(state_->notificationPending, true);
  }
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

void TapActivityLog::State::add(TapActivity& activity) {
  activity.id = ++nextID;
  if (newestLast.full()) newestLast.erase(0);
  newestLast.push(activity);
}

void TapActivityLog::record(TapActivity activity) {
  change([&activity](State& state) { state.add(activity); });
  records_.notify(activity);
}

void TapActivityLog::record(TapActivity activity, const TouchTrace& touch, double end,
                            double sinceNatural) {
  change([&](State& state) {
    state.add(activity);
    state.touches.keepTap(touch, end, activity.duration, sinceNatural);
  });
  records_.notify(activity);
}

template <typename Keep>
void TapActivityLog::keepOther(Keep keep) {
  {
    const std::lock_guard guard(state_->lock);
    keep(state_->touches);
    if (state_->otherTouchesPending || state_->otherTouches.empty()) return;
    state_->otherTouchesPending = true;
  }
  queue_.async([weak = std::weak_ptr(state_)] {
    const auto state = weak.lock();
    if (!state) return;
    {
      const std::lock_guard guard(state->lock);
      state->otherTouchesPending = false;
    }
    state->otherTouches.notify();
  });
}

void TapActivityLog::keepPinch(const TouchTrace& touch) {
  keepOther([&touch](TouchHistory& touches) { touches.keepPinch(touch); });
}

void TapActivityLog::keepClick(MTPoint position) {
  keepOther([position](TouchHistory& touches) { touches.keepClick(position); });
}

Observation TapActivityLog::observeOtherTouches(std::function<void()> kept) {
  return state_->otherTouches.add(std::move(kept));
}

KeptTouches TapActivityLog::touches() const {
  const std::lock_guard guard(state_->lock);
  return state_->touches.touches();
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
