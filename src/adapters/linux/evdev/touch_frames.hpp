// Turns contacts into the records of a frame: normalised, y upwards, with velocities and sizes.
//
// One frame in, at most one out: nothing while nothing is down, and one empty frame when the last
// finger lifted. Contacts that the filter refuses are not in the frame. One that it refuses only
// after the contact was told of is taken back at once as long as that cannot look like the end of
// a tap; else it is told of until it lifts, or until no tap could have lasted so long.
//
// Pure but for what it remembers of the frame before; no allocation; one thread.
#pragma once

#include <cstdint>
#include <optional>
#include <span>

#include "adapters/linux/evdev/contact.hpp"
#include "adapters/linux/evdev/contact_filter.hpp"
#include "adapters/linux/evdev/surface_model.hpp"
#include "base/fixed_vector.hpp"
#include "platform/multitouch_abi.hpp"

namespace velotap {

struct TouchFrame {
  std::span<const MTTouch> touches;  ///< valid until the next frame
  double timestamp = 0;              ///< seconds, of the device's own clock
  std::int32_t number = 0;
};

class TouchFrames {
 public:
  explicit TouchFrames(const SurfaceModel& model) noexcept : model_(model), filter_(model) {}

  /// `time` in seconds, of the device's events.
  [[nodiscard]] std::optional<TouchFrame> next(const RawContacts& contacts, double time) noexcept;

  /// A frame of what is down whether or not anything is: for a listener that has just begun.
  [[nodiscard]] TouchFrame first(const RawContacts& contacts, double time) noexcept;

  [[nodiscard]] const ContactFilter& filter() const noexcept { return filter_; }
  void clear() noexcept;

 private:
  struct Previous {
    std::int32_t id;
    MTPoint position;
    MTPoint velocity;
  };
  void build(const RawContacts& contacts, double time) noexcept;
  void noteSession(double time) noexcept;
  [[nodiscard]] bool isTold(std::int32_t id, double time) const noexcept;
  [[nodiscard]] MTTouch record(const RawContact& contact, double time) const noexcept;
  [[nodiscard]] const Previous* previous(std::int32_t id) const noexcept;
  [[nodiscard]] TouchFrame frame(double time) noexcept;

  SurfaceModel model_;
  ContactFilter filter_;
  FixedVector<MTTouch, kMaxContacts> touches_;
  FixedVector<Previous, kMaxContacts> previous_;
  double previousTime_ = 0;
  double sessionStart_ = 0;         // when the first of the touches that are told came down
  std::size_t sessionTouches_ = 0;  // the most that were told of at once since then
  std::int32_t number_ = 0;
};

}  // namespace velotap
