// Follows a device's event stream and knows which contacts are down.
//
// Understands both multitouch protocols, devices that report two corners instead of fingers, and
// devices that have more fingers than slots. Pure but for its own state: no system call, no
// allocation; the owner fetches the kernel's state when asked to. One thread.
#pragma once

#include <linux/input.h>

#include <array>
#include <cstdint>
#include <span>

#include "adapters/linux/evdev/contact.hpp"
#include "adapters/linux/evdev/surface_model.hpp"

namespace velotap {

class ContactReader {
 public:
  /// What an event meant for the reader's owner.
  enum class Step {
    nothing,        ///< the frame goes on
    frame,          ///< a frame is complete: `contacts` is new
    resynchronise,  ///< events were lost: `setSlots` must be called with what is true now
  };

  explicit ContactReader(const SurfaceModel& model) noexcept : model_(model) {}

  [[nodiscard]] Step handle(const input_event& event) noexcept;

  /// The contacts that are down, in slot order.
  [[nodiscard]] RawContacts contacts() const noexcept;

  /// Replaces everything that is known of the slots; element i is slot i. `currentSlot` is the one
  /// that following events are about.
  void setSlots(std::span<const RawContact> slots, int currentSlot, int fingersByTools) noexcept;
  /// All contacts are gone.
  void clear() noexcept;

 private:
  static constexpr std::size_t kMaxSlots = 64;

  void handleAbsolute(const input_event& event) noexcept;
  void handleTool(const input_event& event) noexcept;
  void assign(RawContact& contact, const input_event& event) noexcept;
  void finishAnonymousContact() noexcept;
  void finishAnonymousFrame() noexcept;
  [[nodiscard]] std::int32_t anonymousId(const RawContact& contact, std::uint32_t& taken) noexcept;
  void addUnseenFingers(RawContacts& contacts) const noexcept;

  SurfaceModel model_;
  std::array<RawContact, kMaxSlots> slots_{};
  std::size_t currentSlot_ = 0;
  std::size_t usedSlots_ = 0;  // slots at and beyond this were never touched
  bool dropping_ = false;
  unsigned tools_ = 0;  // bit n: the tool for n fingers is down

  // Protocol A: the contact that is being described, and those of the frame so far.
  RawContact described_;
  bool describedHasPosition_ = false;
  RawContacts frame_;
  std::int32_t lastAnonymousId_ = 0;
};

}  // namespace velotap
