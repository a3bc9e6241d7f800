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
  void clear() noexcept { known_.clear(); }

 private:
  struct Known {
    std::int32_t id;
    double since;         // when it came down
    MTPoint start;        // millimetres
    double squaredStray;  // the farthest it got from there, square millimetres
    bool bornAtEdge;
    Refusal refusal;
  };
  [[nodiscard]] Known* find(std::int32_t id) noexcept;
  [[nodiscard]] bool atEdge(const RawContact& contact) const noexcept;
  [[nodiscard]] Refusal judge(const RawContact& contact, const Known& known, double time) const;
  [[nodiscard]] bool nearPalm(const RawContact& contact, const Known& known,
                              const RawContacts& contacts) noexcept;
  void forgetLifted(const RawContacts& contacts) noexcept;

  SurfaceModel model_;
  FixedVector<Known, kMaxContacts> known_;
};

}  // namespace velotap
