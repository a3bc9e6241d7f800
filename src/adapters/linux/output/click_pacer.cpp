#include "adapters/linux/output/click_pacer.hpp"

namespace velotap {

bool ClickPacer::submit(Change change) noexcept {
  if (change == Change::release && refusedPresses_ > 0) {
    --refusedPresses_;
    return false;
  }
  const std::size_t room = kMostWaiting - waiting_.size();
  if (change == Change::press && room < 2) {
    ++refusedPresses_;
    return false;
  }
  return waiting_.push(change);
}

std::optional<ClickPacer::Change> ClickPacer::takeDue(double now) noexcept {
  if (waiting_.empty() || dueTime(waiting_[0]) > now) return std::nullopt;
  const Change change = waiting_[0];
  waiting_.erase(0);
  return change;
}

void ClickPacer::wrote(Change change, double now) noexcept {
  const bool down = change == Change::press;
  // Repeating a state changes nothing for the desktop, so it starts no new spacing either.
  if (down == down_) return;
  down_ = down;
  lastChange_ = now;
}

std::optional<double> ClickPacer::nextDue() const noexcept {
  if (waiting_.empty()) return std::nullopt;
  return dueTime(waiting_[0]);
}

void ClickPacer::clear() noexcept {
  waiting_.clear();
  refusedPresses_ = 0;
}

double ClickPacer::dueTime(Change change) const noexcept {
  const bool down = change == Change::press;
  if (down == down_ || lastChange_ < 0) return 0;
  return lastChange_ + (down ? kSmallestGap : kSmallestHold);
}

}  // namespace velotap
