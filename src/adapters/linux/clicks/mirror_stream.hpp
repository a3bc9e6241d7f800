// What becomes of the events of a grabbed device: what goes straight on to its mirror image, what
// is a click and has to be asked about, and what nobody is to see.
//
// Whole frames go in and come out. Everything but the three buttons passes in the frame in which it
// came; a button follows in a frame of its own. Of a touch mouse the contacts stay here, because
// its mirror is a plain mouse, and so does the wheel while fingers gesture. Many frames at once,
// which means that nobody read for a while, are merged.
//
// Pure but for its own state; one thread. In steady state nothing allocates.
#pragma once

#include <linux/input.h>

#include <array>
#include <cstdint>
#include <span>
#include <vector>

#include "adapters/linux/clicks/frame_merger.hpp"
#include "adapters/linux/clicks/wheel_gate.hpp"
#include "adapters/linux/evdev/contact.hpp"
#include "adapters/linux/evdev/evdev_device.hpp"
#include "adapters/linux/evdev/surface_model.hpp"

namespace velotap {

/// A mouse with a touch surface, as opposed to a touchpad.
[[nodiscard]] bool isTouchMouse(const EvdevDevice& device) noexcept;

/// What the stream hands on, in order.
class MirrorSink {
 public:
  virtual ~MirrorSink() = default;
  /// A frame for the mirror, SYN_REPORT included.
  virtual void forward(std::span<const input_event> frame) = 0;
  virtual void button(std::uint16_t code, bool down) = 0;
  /// Events were lost: the device's present state must be asked for.
  virtual void lost() = 0;
};

class MirrorStream {
 public:
  /// So many frames at once are still passed on one by one.
  static constexpr int kMostAtOnce = 8;

  explicit MirrorStream(const EvdevDevice& device);

  /// From how many fingers on a touch mouse does not scroll.
  void setWheelLimit(int fingers) noexcept { gate_.setLimit(fingers); }
  /// All that was read at once.
  void handle(std::span<const input_event> events, MirrorSink& sink);
  /// Whether what was handled last says anything about contacts: whoever follows those need not
  /// hear of the rest.
  [[nodiscard]] bool toldOfContacts() const noexcept { return toldOfContacts_; }
  /// What is down now; element i is slot i.
  void setContacts(std::span<const RawContact> slots, int currentSlot);

 private:
  static constexpr std::size_t kMostSlots = 64;
  struct Slot {
    bool down = false;
    std::int32_t major = 0;
  };

  void take(const input_event& event);
  void follow(const input_event& event);
  void finishFrame(const input_event& report, bool merging, MirrorSink& sink);
  void flushMerged(MirrorSink& sink);
  void forward(std::vector<input_event>& frame, MirrorSink& sink);
  void dropWheel();
  [[nodiscard]] int fingers() const noexcept;

  bool mouse_;
  std::int32_t palmMajor_;
  WheelGate gate_;
  FrameMerger merger_;
  std::array<Slot, kMostSlots> slots_{};
  int currentSlot_ = 0;
  int frameSlot_ = 0;  // the current one when the frame began
  bool dropping_ = false;
  bool toldOfContacts_ = false;
  bool frameOpen_ = false;  // what was handled last ended within a frame
  bool turnsWheel_ = false;
  std::vector<input_event> frame_;
  std::vector<input_event> buttons_;
};

}  // namespace velotap
