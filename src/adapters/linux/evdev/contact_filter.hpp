// Which contacts are fingers: palms, and thumbs that rest at the rim, are not counted.
//
// A tap of three fingers must be three fingers, and a hand that merely rests makes contacts too:
// large ones, several close together, or one at the edge that stays. Once refused, a contact stays
// refused until it lifts. Every refusal has a name. Pure but for its own memory of the contacts
// that are down; no allocation; one thread.
#pragma once

#include <cstdint>

#include "adapters/linux/evdev/contact.hpp"
#include "adapters/linux/evdev/surface_model.hpp"
#include "base/fixed_vector.hpp"

namespace velotap {

enum class Refusal {
  none,
  palm,         ///< larger than any fingertip
  besidePalm,   ///< another part of a hand that came down with a palm
  restingEdge,  ///< came down at the rim and stayed there: the thumb that holds, the hand's heel
};

/// For diagnostics: "palm", "beside a palm", "resting at the edge".
[[nodiscard]] const char* refusalText(Refusal refusal) noexcept;

class ContactFilter {
 public:
  explicit ContactFilter(const SurfaceModel& model) noexcept : model_(model) {}

  /// Takes the contacts of one frame, `time` in seconds, and judges each. Call for every frame.
  void update(const RawContacts& contacts, double time) noexcept;

  [[nodiscard]] Refusal refusal(std::int32_t id) const noexcept;
  /// Of the contact at this place in the frame that was judged last.
  [[nodiscard]] Refusal refusalAt(std::size_t place) const noexcept {
    return known_[place].refusal;
  }
  void clear() noexcept { known_.clear(); }

 private:
  struct Known {
    std::int32_t id;
    double since;         // when it came down
    MTPoint start;        // millimetres
    double squaredStray;  // of one that was born at the edge: the farthest it got from there
    bool bornAtEdge;
    Refusal refusal;
  };
  using KnownContacts = FixedVector<Known, kMaxContacts>;
  void align(const RawContacts& contacts, double time) noexcept;
  [[nodiscard]] Known landed(const RawContact& contact, double time) const noexcept;
  [[nodiscard]] bool atEdge(const RawContact& contact) const noexcept;
  [[nodiscard]] Refusal judge(const RawContact& contact, Known& known, double time) const noexcept;
  [[nodiscard]] bool nearPalm(std::size_t place, const RawContacts& contacts) const noexcept;

  SurfaceModel model_;
  KnownContacts known_;  // in the order of the frame's contacts
};

}  // namespace velotap
