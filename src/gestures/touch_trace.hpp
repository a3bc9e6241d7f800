// The contacts of one touch session, frame by frame, so that its decision can be made again.
//
// A plain value of fixed size; the engine keeps one for each device under its lock. Memory for
// contacts that never came is not touched. A session with more contacts than there is room for is
// cut at a whole frame and says so: no tap is that long, and what decides a pinch comes early.
#pragma once

#include <cstddef>
#include <cstdint>

#include "base/fixed_vector.hpp"
#include "gestures/finger.hpp"

namespace velotap {

struct TouchContact {
  Finger finger;
  std::uint32_t frame;  ///< counted from 0 within the session
};

class TouchTrace {
 public:
  /// Five fingers for as long as the most patient limits still call a miss near, at 128 frames a
  /// second.
  static constexpr std::size_t kMaxContacts = 640;

  void add(const Fingers& fingers) noexcept;
  void clear() noexcept {
    contacts_.clear();
    frames_ = 0;
    cut_ = false;
  }
  /// Frames are missing at the end.
  [[nodiscard]] bool isCut() const noexcept { return cut_; }
  [[nodiscard]] const FixedVector<TouchContact, kMaxContacts>& contacts() const noexcept {
    return contacts_;
  }

 private:
  FixedVector<TouchContact, kMaxContacts> contacts_;
  std::uint32_t frames_ = 0;
  bool cut_ = false;
};

}  // namespace velotap
