// The typed front of the settings: what the gesture pipeline reads on every frame, decoded and
// clamped.
//
// Getters are safe from any thread and cost one atomic load each: whenever the store changes, by
// our own hand or another writer's, the values are decoded anew into cells that the getters read.
// So a change is in force at the next read, and no lock stands in the frame path. Setters belong
// to the main thread. Junk in the store reads as the factory value.
#pragma once

#include <array>
#include <atomic>
#include <bit>
#include <cstdint>
#include <functional>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "base/observer_list.hpp"
#include "config/defaults_store.hpp"
#include "config/settings_table.hpp"
#include "config/trackpad_mode.hpp"
#include "platform/notification_center.hpp"

namespace velotap {

/// Posted after every write of one of the application lists.
inline constexpr std::string_view kAppListsDidChange = "VelotapAppListsDidChange";

/// A closed range of the normalised horizontal finger position.
struct CenterBand {
  float lower = 0.35F;
  float upper = 0.65F;
  [[nodiscard]] constexpr bool contains(float x) const noexcept { return lower <= x && x <= upper; }
  friend constexpr bool operator==(CenterBand, CenterBand) = default;
};

class Config {
 public:
  /// Registers the factory values with the store.
  Config(DefaultsStore& defaults, NotificationCenter& notifications);

  /// The settings of this process.
  [[nodiscard]] static Config& shared();

  /// The master switch.
  [[nodiscard]] bool enabled() const noexcept { return (switches() & kEnabledBit) != 0; }
  [[nodiscard]] bool isOn(Trigger trigger) const noexcept {
    return (switches() & triggerBit(static_cast<std::size_t>(trigger))) != 0;
  }
  /// Seconds, 0.05 to 2.0.
  [[nodiscard]] double maxTapDuration() const noexcept {
    return maxTapDuration_.load(std::memory_order_relaxed);
  }
  /// Normalised units, 0 to 1.
  [[nodiscard]] double maxTapDrift() const noexcept {
    return maxTapDrift_.load(std::memory_order_relaxed);
  }
  /// Factor, 0.1 to 5.
  [[nodiscard]] double pinchSensitivity() const noexcept {
    return pinchSensitivity_.load(std::memory_order_relaxed);
  }
  [[nodiscard]] CenterBand centerBand() const noexcept {
    return unpacked(centerBand_.load(std::memory_order_relaxed));
  }

  [[nodiscard]] TrackpadMode trackpadMode() const noexcept {
    return trackpadMode_.load(std::memory_order_relaxed);
  }

  [[nodiscard]] std::vector<std::string> ignoredApps() const;
  void setIgnoredApps(const std::vector<std::string>& ids);
  [[nodiscard]] std::vector<std::string> keystrokeZoomApps() const;
  void setKeystrokeZoomApps(const std::vector<std::string>& ids);

  [[nodiscard]] DefaultsStore& defaults() noexcept { return defaults_; }

  /// The number that a raw stored value holds; the fallback for anything else. A stored boolean is
  /// not a number.
  [[nodiscard]] static double storedNumber(const std::optional<Value>& object, double fallback);

  /// Edges clamped to the surface; the factory band when they are not finite or the wrong way
  /// round. A band without width is accepted.
  [[nodiscard]] static CenterBand validatedCenterBand(double minimum, double maximum);

  /// Trimmed identifiers in their first order, without empty ones, overlong ones (256 bytes and
  /// more), ones with control characters, ones that are not UTF-8, and repetitions. Case is kept.
  [[nodiscard]] static std::vector<std::string> normalizedAppIDs(
      const std::vector<std::string>& ids);

  /// The factory state of each trigger.
  [[nodiscard]] static const std::array<bool, kTriggerCount>& triggerDefaults();

  /// Whether somebody asked for diagnostic lines: "VELOTAP_DEBUG" or "QUILLON_DEBUG" is present in
  /// the environment, with whatever value. Settled at first use.
  [[nodiscard]] static bool debug();
  /// The same asked of any environment; `lookUp` answers like std::getenv.
  [[nodiscard]] static bool debugAsked(const std::function<const char*(const char*)>& lookUp);

 private:
  static constexpr std::uint32_t kEnabledBit = 1;
  static constexpr std::uint32_t triggerBit(std::size_t trigger) noexcept { return 2U << trigger; }
  static constexpr std::uint64_t packed(CenterBand band) noexcept {
    return std::uint64_t{std::bit_cast<std::uint32_t>(band.lower)} << 32U |
           std::bit_cast<std::uint32_t>(band.upper);
  }
  static constexpr CenterBand unpacked(std::uint64_t bits) noexcept {
    return {std::bit_cast<float>(static_cast<std::uint32_t>(bits >> 32U)),
            std::bit_cast<float>(static_cast<std::uint32_t>(bits))};
  }
  [[nodiscard]] std::uint32_t switches() const noexcept {
    return switches_.load(std::memory_order_relaxed);
  }

  void refresh();
  void setList(std::string_view key, const std::vector<std::string>& ids);
  [[nodiscard]] double number(std::string_view key) const;

  DefaultsStore& defaults_;
  NotificationCenter& notifications_;
  std::atomic<std::uint32_t> switches_{0};  // bit 0: enabled; then one bit for each trigger
  std::atomic<double> maxTapDuration_{0};
  std::atomic<double> maxTapDrift_{0};
  std::atomic<double> pinchSensitivity_{0};
  std::atomic<std::uint64_t> centerBand_{0};  // both edges, so that a reader never sees one of each
  std::atomic<TrackpadMode> trackpadMode_{TrackpadMode::automatic};
  Observation changes_;
};

}  // namespace velotap
