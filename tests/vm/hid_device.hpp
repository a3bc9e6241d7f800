// The emulated input devices: who they say they are, and how their reports look on the wire.
//
// Positions are in the kernel driver's output units (y grows downwards), sizes and pressure in the
// device's own bytes; the driver multiplies major and minor axes by four. Pure values: no device is
// opened here. Safe from any thread.
#pragma once

#include <cstdint>
#include <optional>
#include <span>
#include <string>
#include <string_view>
#include <vector>

namespace velotap::vm {

enum class HidKind { magicMouse1, magicMouse2, magicTrackpad1, magicTrackpad2, plainMouse };

/// The state nibble of a Magic Mouse or first trackpad contact. The driver takes anything but
/// `none` for a finger that is down, and restarts its scrolling at `start`.
enum class TouchState : std::uint8_t { none = 0x00, start = 0x30, drag = 0x40 };

struct HidContact {
  int id = 0;  ///< 0 to 15: the driver's slot
  int x = 0;
  int y = 0;
  int major = 0;
  int minor = 0;
  int size = 0;
  int pressure = 0;
  int orientation = 0;
  TouchState state = TouchState::none;

  friend bool operator==(const HidContact&, const HidContact&) = default;
};

/// Everything that one report says.
struct HidFrame {
  int buttons = 0;  ///< bit 0 left, bit 1 right, bit 2 middle (plain mouse only)
  int dx = 0;
  int dy = 0;
  int wheel = 0;                ///< plain mouse only
  std::uint32_t timestamp = 0;  ///< milliseconds of the device's own clock
  std::vector<HidContact> contacts;
};

struct HidRange {
  int minimum = 0;
  int maximum = 0;
  [[nodiscard]] constexpr bool holds(int value) const noexcept {
    return minimum <= value && value <= maximum;
  }
};

/// What does not change about a kind of device.
struct HidModel {
  HidKind kind = HidKind::plainMouse;
  std::string_view option;   ///< how the command line calls it
  std::string_view product;  ///< the name that the device gives itself
  std::uint16_t bus = 0;
  std::uint16_t vendor = 0;
  std::uint16_t productId = 0;
  bool multitouch = false;  ///< the driver switches it into multitouch mode first
  HidRange x;               ///< what a report can carry, wider than the surface
  HidRange y;
  HidRange size;
  HidRange orientation;
  HidContact finger;  ///< a fingertip at rest
};

/// The driver warns about more contacts than this in one report and drops the report.
inline constexpr std::size_t kMaxContacts = 15;
/// Contact identifiers run from 0 to one less than this.
inline constexpr int kContactIds = 16;

[[nodiscard]] std::span<const HidModel> hidModels() noexcept;
[[nodiscard]] const HidModel& hidModel(HidKind kind) noexcept;
[[nodiscard]] std::optional<HidKind> hidKindFromOption(std::string_view option) noexcept;

/// The report descriptor with which the kernel's driver accepts the device.
[[nodiscard]] std::vector<std::uint8_t> hidDescriptor(HidKind kind);

/// Why `contact` cannot be put into a report of this kind; empty when it can.
[[nodiscard]] std::string contactProblem(const HidModel& model, const HidContact& contact);

/// The bytes of one input report. Contacts must have passed `contactProblem`; a contact whose state
/// is `none` is reported as just lifted.
[[nodiscard]] std::vector<std::uint8_t> encodeReport(HidKind kind, const HidFrame& frame);

}  // namespace velotap::vm
