#include "platform/notification_center.hpp"

namespace velotap {

Observation NotificationCenter::observe(std::string_view name, std::function<void()> observer) {
  const std::lock_guard guard(lock_);
  return observers_[std::string(name)].add(std::move(observer));
}

Observation NotificationCenter::observeAll(std::function<void(std::string_view)> observer) {
  return all_.add(std::move(observer));
}

void NotificationCenter::post(std::string_view name) {
  all_.notify(name);
  ObserverList<> observers;
  {
    const std::lock_guard guard(lock_);
    const auto found = observers_.find(name);
    if (found == observers_.end()) return;
    observers = found->second;  // shares the list's state; notified outside our lock
  }
  observers.notify();
}

}  // namespace velotap
