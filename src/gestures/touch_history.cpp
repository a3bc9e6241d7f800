#include "gestures/touch_history.hpp"

namespace velotap {
namespace {

std::vector<TouchContact> contactsOf(const TouchTrace& trace) {
  return {trace.contacts().begin(), trace.contacts().end()};
}

}  // namespace

void TouchHistory::keepTap(const TouchTrace& trace, double end, double duration,
                           double sinceNatural) {
  if (trace.isCut()) return;
  taps_.keep({.end = end, .duration = duration, .sinceNatural = sinceNatural, .trace = trace});
}

KeptTouches TouchHistory::touches() const {
  KeptTouches kept;
  taps_.forEach([&kept](const Tap& tap) {
    kept.taps.push_back({.end = tap.end,
                         .duration = tap.duration,
                         .sinceNatural = tap.sinceNatural,
                         .contacts = contactsOf(tap.trace)});
  });
  pinches_.forEach(
      [&kept](const TouchTrace& trace) { kept.pinches.push_back({contactsOf(trace)}); });
  clicks_.forEach([&kept](const KeptClick& click) { kept.clicks.push_back(click); });
  return kept;
}

void TouchHistory::clear() {
  taps_.clear();
  pinches_.clear();
  clicks_.clear();
}

}  // namespace velotap
