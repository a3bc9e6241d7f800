#include "adapters/linux/gesture/gesture_player.hpp"

#include <algorithm>
#include <cmath>
#include <numbers>

namespace velotap {
namespace {

// Along the diagonal of the pad, where a pinch has the most room.
const double kRestingAngle = std::atan2(kPadHeight, kPadWidth) * 180 / std::numbers::pi;

// Less than half of what the device can tell apart.
constexpr double kUnnoticeable = 0.002;  // mm

// The desktop takes a contact for a jumping one, and says so in its log, when its speed grows by
// more than 7 mm / 12 ms from one frame to the next. After a pause of 30 ms it does not judge. The
// margin is for frames that reach the kernel a little late or early.
constexpr double kBelievedGain = 5.5 / 0.012;  // mm/s
constexpr double kNoJumpAfter = 0.030;         // s

// A change beyond these in one event is not a movement of fingers.
constexpr double kLargestFactor = 2;

double radians(double degrees) {
  return degrees * std::numbers::pi / 180;
}

}  // namespace

GesturePlayer::Wanted* GesturePlayer::openGesture() noexcept {
  if (next_) return next_->finish == Finish::open ? &*next_ : nullptr;
  return current_ && current_->finish == Finish::open ? &*current_ : nullptr;
}

void GesturePlayer::handle(GestureKind kind, GesturePhase phase, double value,
                           double now) noexcept {
  switch (phase) {
    case GesturePhase::began:
      return begin(kind, now);
    case GesturePhase::changed:
      return change(kind, value, now);
    case GesturePhase::ended:
      return finish(kind, Finish::lift, now);
    case GesturePhase::cancelled:
      return finish(kind, Finish::cancel, now);
  }
}

void GesturePlayer::begin(GestureKind kind, double now) noexcept {
  const Wanted wanted{.kind = kind, .lastHeard = now};
  if (stage_ == Stage::away) {
    current_ = wanted;
    next_.reset();
    return;
  }
  // The end of an open gesture got lost.
  if (current_ && current_->finish == Finish::open) current_->finish = Finish::cancel;
  next_ = wanted;
}

void GesturePlayer::change(GestureKind kind, double value, double now) noexcept {
  if (!std::isfinite(value)) return;
  if (openGesture() == nullptr) begin(kind, now);
  Wanted& wanted = *openGesture();
  if (wanted.kind != kind) return;
  wanted.lastHeard = now;
  if (kind == GestureKind::magnify) {
    wanted.scale *= std::clamp(1 + value, 1 / kLargestFactor, kLargestFactor);
    wanted.scale = std::clamp(wanted.scale, 1 / kMostPendingScale, kMostPendingScale);
  } else {
    const double played = &wanted == &*current_ && touching() ? playedAngle_ : 0;
    wanted.angle = std::clamp(wanted.angle - std::fmod(value, 360.0), played - kMostPendingAngle,
                              played + kMostPendingAngle);
  }
}

void GesturePlayer::finish(GestureKind kind, Finish how, double now) noexcept {
  Wanted* wanted = openGesture();
  if (wanted == nullptr || wanted->kind != kind) return;
  wanted->finish = how;
  wanted->lastHeard = now;
  if (how != Finish::cancel) return;
  // One that never reached the pad has nothing to give up.
  if (next_) {
    next_.reset();
  } else if (stage_ == Stage::away) {
    current_.reset();
  }
}

std::optional<double> GesturePlayer::deadline() const noexcept {
  if (stage_ == Stage::lettingGo) return letGoUntil_;
  if (!current_) return std::nullopt;
  const double nextFrame = lastFrame_ + kFrameSpacing;
  if (stage_ != Stage::playing || current_->finish != Finish::open || !reached()) {
    return nextFrame;
  }
  return std::max(nextFrame, current_->lastHeard + kForgottenAfter);
}

std::optional<PadFrame> GesturePlayer::step(double now) noexcept {
  const auto due = deadline();
  if (!due || now < *due) return std::nullopt;
  switch (stage_) {
    case Stage::away:
      return land(now);
    case Stage::landed:
      stage_ = Stage::playing;
      // The desktop does not count this movement as speed gathered: it has only just begun to
      // remember where the contacts are.
      lastSpeed_ = 0;
      lastFrame_ = now;
      return contactsAt(kPlayingDistance, 0);
    case Stage::playing:
      return play(now);
    case Stage::lettingGo:
      return lift(now);
  }
  return std::nullopt;
}

std::optional<PadFrame> GesturePlayer::land(double now) noexcept {
  const double patience = current_->finish == Finish::open ? kForgottenAfter : kTooLateToLand;
  if (now >= current_->lastHeard + patience) {
    takeNext();
    return std::nullopt;
  }
  stage_ = Stage::landed;
  playedScale_ = 1;
  playedAngle_ = 0;
  lastFrame_ = now;
  lastSpeed_ = 0;
  return contactsAt(kLandingDistance, 0);
}

std::optional<PadFrame> GesturePlayer::play(double now) noexcept {
  const bool forgotten = now >= current_->lastHeard + kForgottenAfter;
  if (current_->finish == Finish::open && forgotten) current_->finish = Finish::cancel;
  if (current_->finish == Finish::cancel) return letGo(now);
  if (reached()) {
    if (current_->finish == Finish::lift) return lift(now);
    return std::nullopt;
  }
  const bool atLimit = current_->kind == GestureKind::magnify &&
                       playedScale_ == std::clamp(current_->scale, kSmallestScale, kLargestScale);
  if (!atLimit) return moveTowardsWanted(now);
  // Out of touchpad: lift, and land anew with what remains to be done.
  current_->scale /= playedScale_;
  stage_ = Stage::away;
  lastFrame_ = now;
  return PadFrame{};
}

std::optional<PadFrame> GesturePlayer::letGo(double now) noexcept {
  stage_ = Stage::lettingGo;
  letGoUntil_ = now + kLettingGoTime;
  lastFrame_ = now;
  PadFrame one = contactsAt(kPlayingDistance * playedScale_, playedAngle_);
  one.contacts[1].reset();
  return one;
}

std::optional<PadFrame> GesturePlayer::abandon() noexcept {
  const bool wasTouching = touching();
  *this = GesturePlayer{};
  if (!wasTouching) return std::nullopt;
  return PadFrame{};
}

bool GesturePlayer::reached() const noexcept {
  return distanceToGo() < kUnnoticeable;
}

double GesturePlayer::distanceToGo() const noexcept {
  const double radius = kPlayingDistance / 2;
  return current_->kind == GestureKind::magnify
             ? std::abs(current_->scale - playedScale_) * radius
             : std::abs(radians(current_->angle - playedAngle_)) * radius;
}

double GesturePlayer::allowedStep(double now) const noexcept {
  const double elapsed = now - lastFrame_;
  if (elapsed > kNoJumpAfter) return kLongestStep;
  return std::min(kLongestStep, (lastSpeed_ + kBelievedGain) * elapsed);
}

PadFrame GesturePlayer::moveTowardsWanted(double now) noexcept {
  const double radius = kPlayingDistance / 2;
  const double allowed = allowedStep(now);
  double moved = 0;
  if (current_->kind == GestureKind::magnify) {
    const double wanted = std::clamp(current_->scale, kSmallestScale, kLargestScale);
    const double most = allowed / radius;
    const double difference = wanted - playedScale_;
    playedScale_ =
        std::abs(difference) <= most ? wanted : playedScale_ + std::copysign(most, difference);
    moved = std::min(std::abs(difference) * radius, allowed);
  } else {
    // The arc is longer than the chord, so the limit holds for the contact's way too.
    const double most = allowed / radius * 180 / std::numbers::pi;
    const double difference = current_->angle - playedAngle_;
    playedAngle_ += std::clamp(difference, -most, most);
    moved = std::min(std::abs(radians(difference)) * radius, allowed);
  }
  lastSpeed_ = moved / (now - lastFrame_);
  lastFrame_ = now;
  return contactsAt(kPlayingDistance * playedScale_, playedAngle_);
}

PadFrame GesturePlayer::lift(double now) noexcept {
  stage_ = Stage::away;
  lastFrame_ = now;
  takeNext();
  return PadFrame{};
}

void GesturePlayer::takeNext() noexcept {
  current_ = next_;
  next_.reset();
}

PadFrame GesturePlayer::contactsAt(double distance, double angle) const noexcept {
  const double direction = radians(kRestingAngle + angle);
  const Point half{distance / 2 * std::cos(direction), distance / 2 * std::sin(direction)};
  const Point centre{kPadWidth / 2, kPadHeight / 2};
  return PadFrame{
      {Point{centre.x - half.x, centre.y - half.y}, Point{centre.x + half.x, centre.y + half.y}}};
}

}  // namespace velotap
