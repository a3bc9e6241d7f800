// Practising a middle click: when the practice surface counts as the target, and what arrived on
// it.
//
// Main thread, but for the pure functions.
#pragma once

#include <optional>
#include <string>
#include <string_view>

#include "base/point.hpp"
#include "config/practice_target.hpp"
#include "input/gesture_device.hpp"
#include "localization/texts.hpp"

namespace velotap {

/// Everything that decides whether a click could reach the surface.
struct PracticeSurfaceFacts {
  bool windowIsKey = false;
  bool windowIsVisible = false;
  bool windowIsMiniaturised = false;
  bool windowIgnoresMouse = false;
  bool windowIsOccluded = false;
  bool surfaceIsHidden = false;  ///< itself or what it lies in
  bool hasScreen = false;
  Rect visibleRectangle;  ///< of the surface, in global display coordinates
};

/// Nothing while the surface is no target.
[[nodiscard]] std::optional<Rect> practiceRectangle(const PracticeSurfaceFacts& facts) noexcept;

/// One surface's part in the process-wide target. Gives it up when destroyed.
class PracticeTracking {
 public:
  explicit PracticeTracking(PracticeTarget& target);
  ~PracticeTracking();
  PracticeTracking(const PracticeTracking&) = delete;
  PracticeTracking& operator=(const PracticeTracking&) = delete;

  /// To be called whenever any of the facts may have changed.
  void refreshTarget(const PracticeSurfaceFacts& facts);
  void stop();

 private:
  PracticeTarget& target_;
  PracticeSurfaceId id_;
};

struct PracticeView {
  std::string title;
  std::string instructions;
  std::string steps;
  std::string safety;
  std::string_view symbol{};  ///< in the surface: a pointer, or one that clicks
  std::string_view outcomeSymbol{};
  std::string outcome;  ///< what arrived last, or what to try
  std::string help;     ///< after a click of another button
  std::string middleCount;
  std::string otherCount;
  std::string tryAgain;
  bool canTryAgain = false;
  std::string openReadiness;
  std::string openGestures;
  std::string openTuning;
  std::string done;
};

class GesturePractice {
 public:
  enum class Outcome { none, middle, other };

  void mouseDown(int button);
  void mouseUp(int button);
  /// Forgets the counts.
  void reset() { *this = GesturePractice(); }

  [[nodiscard]] int middleClicks() const noexcept { return middle_; }
  [[nodiscard]] int otherClicks() const noexcept { return other_; }
  [[nodiscard]] Outcome last() const noexcept { return last_; }
  [[nodiscard]] PracticeView view(const Texts& texts) const;

 private:
  int middle_ = 0;
  int other_ = 0;
  unsigned pressed_ = 0;  // one bit for each button that is down
  Outcome last_ = Outcome::none;
};

/// What the small picture of a gesture shows.
struct GesturePreview {
  enum class Kind { tap, click, pinch, rotate, swipe };
  Kind kind = Kind::tap;
  int fingers = 3;
  bool inCenter = false;  ///< only within the centre band
  GestureDevice device = GestureDevice::mouse;
  friend bool operator==(const GesturePreview&, const GesturePreview&) = default;
};
[[nodiscard]] GesturePreview gesturePreview(std::string_view triggerKey) noexcept;

}  // namespace velotap
