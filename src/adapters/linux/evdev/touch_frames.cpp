#include "adapters/linux/evdev/touch_frames.hpp"

#include <algorithm>
#include <cstring>

namespace velotap {
namespace {

constexpr std::int32_t kStageLanding = 3;
constexpr std::int32_t kStageTouching = 4;

// Radio links bunch reports: two frames may carry times a millisecond apart although the finger
// moved for eleven. No surface measures faster than this.
constexpr double kShortestInterval = 0.004;
// After a longer pause the finger's way is not known, so neither is its speed.
constexpr double kLongestInterval = 0.1;

// No tap of fewer fingers means anything, and none that lasts longer than the settings allow.
constexpr std::size_t kFewestThatTap = 3;
constexpr double kLongestTap = 2;

float relativeSize(std::int32_t raw, double fingertip) {
  // A device that does not report sizes reports nothing but fingertips.
  return fingertip > 0 ? static_cast<float>(raw / fingertip) : 1.0F;
}

}  // namespace

std::optional<TouchFrame> TouchFrames::next(const RawContacts& contacts, double time) noexcept {
  const bool wasEmpty = touches_.empty();
  build(contacts, time);
  if (wasEmpty && touches_.empty()) return std::nullopt;
  return frame(time);
}

TouchFrame TouchFrames::first(const RawContacts& contacts, double time) noexcept {
  clear();
  build(contacts, time);
  return frame(time);
}

TouchFrame TouchFrames::frame(double time) noexcept {
  // Wraps rather than overflows: nobody may rely on it, but it must not be undefined.
  number_ = number_ == INT32_MAX ? 0 : number_ + 1;
  return {.touches = {touches_.begin(), touches_.size()}, .timestamp = time, .number = number_};
}

void TouchFrames::clear() noexcept {
  filter_.clear();
  touches_.clear();
  previous_.clear();
  sessionTouches_ = 0;
}

void TouchFrames::build(const RawContacts& contacts, double time) noexcept {
  filter_.update(contacts, time);
  touches_.clear();
  for (const RawContact& contact : contacts) {
    if (isTold(contact.id, time)) touches_.push(record(contact, time));
  }
  noteSession(time);
  previous_.clear();
  for (const MTTouch& touch : touches_) {
    previous_.push({touch.identifier, touch.position, touch.velocity});
  }
  previousTime_ = time;
}

void TouchFrames::noteSession(double time) noexcept {
  if (sessionTouches_ == 0) sessionStart_ = time;
  sessionTouches_ = touches_.empty() ? 0 : std::max(sessionTouches_, touches_.size());
}

bool TouchFrames::isTold(std::int32_t id, double time) const noexcept {
  if (filter_.refusal(id) == Refusal::none) return true;
  return previous(id) != nullptr && sessionTouches_ >= kFewestThatTap &&
         time - sessionStart_ <= kLongestTap;
}

MTTouch TouchFrames::record(const RawContact& contact, double time) const noexcept {
  MTTouch touch;
  std::memset(static_cast<void*>(&touch), 0, sizeof touch);
  touch.identifier = contact.id;
  touch.position = model_.normalised(contact.x, contact.y);
  touch.millimetres = model_.millimetres(contact.x, contact.y);
  touch.size = relativeSize(contact.major, model_.fingertipMajor);
  touch.density = relativeSize(contact.minor, model_.fingertipMinor);
  touch.pressure = static_cast<float>(contact.pressure);
  const Previous* before = previous(contact.id);
  touch.stage = before == nullptr ? kStageLanding : kStageTouching;
  if (before == nullptr) return touch;
  const double interval = time - previousTime_;
  if (interval > kLongestInterval) return touch;
  const auto seconds = static_cast<float>(std::max(interval, kShortestInterval));
  touch.velocity = {(touch.position.x - before->position.x) / seconds,
                    (touch.position.y - before->position.y) / seconds};
  return touch;
}

const TouchFrames::Previous* TouchFrames::previous(std::int32_t id) const noexcept {
  const auto found = std::find_if(previous_.begin(), previous_.end(),
                                  [id](const Previous& p) { return p.id == id; });
  return found != previous_.end() ? found : nullptr;
}

}  // namespace velotap
