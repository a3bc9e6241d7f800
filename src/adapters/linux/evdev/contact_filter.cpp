#include "adapters/linux/evdev/contact_filter.hpp"

#include <algorithm>
#include <cmath>

namespace velotap {
namespace {

// A hand's heel and the ball of its thumb come down together, within this distance and time.
constexpr double kHandMm = 40;
constexpr double kHandSeconds = 0.1;

// The rim of a surface. A finger may tap there; what stays there without moving only rests.
constexpr double kSideEdge = 0.06;
constexpr double kBottomEdge = 0.12;
constexpr double kTopEdge = 0.03;
constexpr double kRestingSeconds = 0.3;
constexpr double kRestingMm = 3;

// Squared, because only comparisons need it and a root is taken for every contact of every frame.
double squaredDistance(MTPoint a, MTPoint b) {
  const auto dx = static_cast<double>(a.x - b.x);
  const auto dy = static_cast<double>(a.y - b.y);
  return dx * dx + dy * dy;
}

}  // namespace

const char* refusalText(Refusal refusal) noexcept {
  switch (refusal) {
    case Refusal::none:
      return "a finger";
    case Refusal::palm:
      return "palm";
    case Refusal::besidePalm:
      return "beside a palm";
    case Refusal::restingEdge:
      return "resting at the edge";
  }
  return "";
}

void ContactFilter::update(const RawContacts& contacts, double time) noexcept {
  forgetLifted(contacts);
  bool palmDown = false;
  for (const RawContact& contact : contacts) {
    const MTPoint place = model_.millimetres(contact.x, contact.y);
    Known* known = find(contact.id);
    if (known == nullptr) {
      known_.push({.id = contact.id,
                   .since = time,
                   .start = place,
                   .squaredStray = 0,
                   .bornAtEdge = atEdge(contact),
                   .refusal = Refusal::none});
      known = find(contact.id);
    }
    known->squaredStray = std::max(known->squaredStray, squaredDistance(known->start, place));
    if (known->refusal == Refusal::none) known->refusal = judge(contact, *known, time);
    palmDown = palmDown || known->refusal == Refusal::palm;
  }
  if (!palmDown) return;
  // After all palms of the frame are known.
  for (const RawContact& contact : contacts) {
    Known* known = find(contact.id);
    if (known->refusal == Refusal::none && nearPalm(contact, *known, contacts)) {
      known->refusal = Refusal::besidePalm;
    }
  }
}

Refusal ContactFilter::refusal(std::int32_t id) const noexcept {
  const auto found = std::find_if(known_.begin(), known_.end(),
                                  [id](const Known& known) { return known.id == id; });
  return found != known_.end() ? found->refusal : Refusal::none;
}

Refusal ContactFilter::judge(const RawContact& contact, const Known& known, double time) const {
  if (model_.palmMajor > 0 && contact.major >= model_.palmMajor) return Refusal::palm;
  if (known.bornAtEdge && time - known.since > kRestingSeconds &&
      known.squaredStray < kRestingMm * kRestingMm) {
    return Refusal::restingEdge;
  }
  return Refusal::none;
}

bool ContactFilter::nearPalm(const RawContact& contact, const Known& known,
                             const RawContacts& contacts) noexcept {
  return std::any_of(contacts.begin(), contacts.end(), [&](const RawContact& other) {
    const Known* palm = find(other.id);
    return palm->refusal == Refusal::palm && std::abs(palm->since - known.since) <= kHandSeconds &&
           squaredDistance(model_.millimetres(contact.x, contact.y),
                           model_.millimetres(other.x, other.y)) <= kHandMm * kHandMm;
  });
}

bool ContactFilter::atEdge(const RawContact& contact) const noexcept {
  const MTPoint p = model_.normalised(contact.x, contact.y);
  const auto x = static_cast<double>(p.x);
  const auto y = static_cast<double>(p.y);
  return x < kSideEdge || x > 1 - kSideEdge || y < kBottomEdge || y > 1 - kTopEdge;
}

ContactFilter::Known* ContactFilter::find(std::int32_t id) noexcept {
  const auto found = std::find_if(known_.begin(), known_.end(),
                                  [id](const Known& known) { return known.id == id; });
  return found != known_.end() ? found : nullptr;
}

void ContactFilter::forgetLifted(const RawContacts& contacts) noexcept {
  for (std::size_t i = known_.size(); i > 0; --i) {
    const std::int32_t id = known_[i - 1].id;
    const bool down = std::any_of(contacts.begin(), contacts.end(),
                                  [id](const RawContact& contact) { return contact.id == id; });
    if (!down) known_.erase(i - 1);
  }
}

}  // namespace velotap
