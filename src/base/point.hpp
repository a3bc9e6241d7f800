// Points in the plane, in whatever unit the owner states.
#pragma once

namespace velotap {

/// Double precision, for positions on screen (points, origin top left) and means of fingers.
struct Point {
  double x = 0;
  double y = 0;
  friend bool operator==(const Point&, const Point&) = default;
};

/// Screen rectangle, origin top left. Contains its left and top edge, not its right and bottom one.
struct Rect {
  double x = 0;
  double y = 0;
  double width = 0;
  double height = 0;
  [[nodiscard]] bool contains(Point p) const noexcept {
    return p.x >= x && p.x < x + width && p.y >= y && p.y < y + height;
  }
  friend bool operator==(const Rect&, const Rect&) = default;
};

}  // namespace velotap
