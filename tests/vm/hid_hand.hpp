// The hand on an emulated device: which fingers are down, which buttons are held, and what the next
// report says about it.
//
// Fed with the statements that concern the hand; the others (times, waiting, unplugging) are the
// player's. Deterministic: the tremor comes from a fixed sequence, so the same script gives the
// same reports. One thread.
#pragma once

#include <array>
#include <cstdint>
#include <string>

#include "hid_device.hpp"
#include "touch_script.hpp"

namespace velotap::vm {

class HidHand {
 public:
  explicit HidHand(const HidModel& model) noexcept : model_(model) {}

  /// Carries out `touch`, `move`, `lift`, `button`, `motion`, `wheel` or `tremor`. The text says
  /// why it cannot be done, and nothing has changed then; empty when it was done.
  [[nodiscard]] std::string apply(const Statement& statement);

  /// Moves every finger that is down; refused as a whole when one would leave the surface.
  [[nodiscard]] std::string moveAll(int dx, int dy);

  /// The next report. What happens once (motion, wheel, the notice of a lifted finger) is used up.
  [[nodiscard]] HidFrame takeFrame(std::uint32_t timestamp);

 private:
  enum class Presence { absent, landing, down, lifting };
  struct Finger {
    Presence presence = Presence::absent;
    HidContact contact;
  };

  [[nodiscard]] std::string touch(const Statement& statement);
  [[nodiscard]] std::string move(int id, int dx, int dy);
  [[nodiscard]] std::string lift(int id);
  [[nodiscard]] static bool touching(const Finger& finger) noexcept;
  [[nodiscard]] bool isDown(int id) const noexcept;
  [[nodiscard]] int stray() noexcept;
  [[nodiscard]] HidContact reported(const Finger& finger) noexcept;

  const HidModel& model_;
  std::array<Finger, kContactIds> fingers_{};
  int buttons_ = 0;
  int dx_ = 0;
  int dy_ = 0;
  int wheel_ = 0;
  int tremor_ = 0;
  std::uint32_t random_ = 1;
};

}  // namespace velotap::vm
