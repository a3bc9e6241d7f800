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
  align(contacts, time);
  bool palmDown = false;
  for (std::size_t i = 0; i < contacts.size(); ++i) {
    Known& known = known_[i];
    if (known.refusal == Refusal::none) known.refusal = judge(contacts[i], known, time);
    palmDown = palmDown || known.refusal == Refusal::palm;
  }
  if (!palmDown) return;
  // After all palms of the frame are known.
  for (std::size_t i = 0; i < contacts.size(); ++i) {
    if (known_[i].refusal == Refusal::none && nearPalm(i, contacts)) {
      known_[i].refusal = Refusal::besidePalm;
    }
  }
}

Refusal ContactFilter::refusal(std::int32_t id) const noexcept {
  const auto found = std::find_if(known_.begin(), known_.end(),
                                  [id](const Known& known) { return known.id == id; });
  return found != known_.end() ? found->refusal : Refusal::none;
}

// What is known follows the contacts' order, which hardly ever changes while they are down; those
// that lifted are forgotten.
void ContactFilter::align(const RawContacts& contacts, double time) noexcept {
  const bool same =
      std::equal(contacts.begin(), contacts.end(), known_.begin(), known_.end(),
                 [](const RawContact& contact, const Known& k) { return contact.id == k.id; });
  if (same) return;
  const KnownContacts before = known_;
  known_.clear();
  for (const RawContact& contact : contacts) {
    const auto found = std::find_if(before.begin(), before.end(),
                                    [&](const Known& known) { return known.id == contact.id; });
    known_.push(found != before.end() ? *found : landed(contact, time));
  }
}

ContactFilter::Known ContactFilter::landed(const RawContact& contact, double time) const noexcept {
  return {.id = contact.id,
          .since = time,
          .start = model_.millimetres(contact.x, contact.y),
          .squaredStray = 0,
          .bornAtEdge = atEdge(contact),
          .refusal = Refusal::none};
}

Refusal ContactFilter::judge(const RawContact& contact, Known& known, double time) const noexcept {
  if (model_.palmMajor > 0 && contact.major >= model_.palmMajor) return Refusal::palm;
  if (!known.bornAtEdge) return Refusal::none;
  const MTPoint place = model_.millimetres(contact.x, contact.y);
  known.squaredStray = std::max(known.squaredStray, squaredDistance(known.start, place));
  const bool stayed = known.squaredStray < kRestingMm * kRestingMm;
  return stayed && time - known.since > kRestingSeconds ? Refusal::restingEdge : Refusal::none;
}

bool ContactFilter::nearPalm(std::size_t place, const RawContacts& contacts) const noexcept {
  const MTPoint here = model_.millimetres(contacts[place].x, contacts[place].y);
  for (std::size_t i = 0; i < contacts.size(); ++i) {
    if (known_[i].refusal != Refusal::palm) continue;
    const bool together = std::abs(known_[i].since - known_[place].since) <= kHandSeconds;
    const MTPoint there = model_.millimetres(contacts[i].x, contacts[i].y);
    if (together && squaredDistance(here, there) <= kHandMm * kHandMm) return true;
  }
  return false;
}

bool ContactFilter::atEdge(const RawContact& contact) const noexcept {
  const MTPoint p = model_.normalised(contact.x, contact.y);
  const auto x = static_cast<double>(p.x);
  const auto y = static_cast<double>(p.y);
  return x < kSideEdge || x > 1 - kSideEdge || y < kBottomEdge || y > 1 - kTopEdge;
}

}  // namespace velotap
