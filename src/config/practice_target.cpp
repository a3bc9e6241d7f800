#include "config/practice_target.hpp"

namespace velotap {

PracticeTarget& PracticeTarget::shared() {
  static PracticeTarget instance;
  return instance;
}

void PracticeTarget::set(std::optional<Rect> rectangle) {
  const std::lock_guard guard(lock_);
  rectangle_ = rectangle;
  surface_.reset();
}

void PracticeTarget::update(PracticeSurfaceId surface, std::optional<Rect> rectangle) {
  const std::lock_guard guard(lock_);
  if (rectangle) {
    surface_ = surface;
    rectangle_ = rectangle;
  } else if (surface_ == surface) {
    surface_.reset();
    rectangle_.reset();
  }
}

bool PracticeTarget::contains(Point point) const {
  const std::lock_guard guard(lock_);
  return rectangle_ && rectangle_->contains(point);
}

}  // namespace velotap
