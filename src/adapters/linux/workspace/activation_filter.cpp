#include "adapters/linux/workspace/activation_filter.hpp"

namespace velotap {

ActivationFilter::Verdict ActivationFilter::windowInFront() noexcept {
  state_ = State::window;
  return Verdict::report;
}

ActivationFilter::Verdict ActivationFilter::nothingInFront(double now) noexcept {
  switch (state_) {
    case State::window:
      state_ = State::emptyPending;
      emptySince_ = now;
      return Verdict::wait;
    case State::emptyPending:
    case State::empty:
      break;
  }
  return Verdict::ignore;
}

ActivationFilter::Verdict ActivationFilter::settle(double now) noexcept {
  if (state_ != State::emptyPending) return Verdict::ignore;
  if (now < emptySince_ + kEmptyGrace) return Verdict::wait;
  state_ = State::empty;
  return Verdict::report;
}

std::optional<double> ActivationFilter::deadline() const noexcept {
  if (state_ != State::emptyPending) return std::nullopt;
  return emptySince_ + kEmptyGrace;
}

}  // namespace velotap
