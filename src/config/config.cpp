#include "config/config.hpp"

#include <algorithm>
#include <bit>
#include <cmath>
#include <cstdlib>

#include "config/app_identifier_text.hpp"
#include "platform/platform.hpp"

namespace velotap {
namespace {

constexpr std::uint32_t kEnabledBit = 1;
constexpr std::uint32_t triggerBit(std::size_t trigger) {
  return 2U << trigger;
}

constexpr double kFactoryTapDurationMs = 300;
constexpr double kFactoryTapDrift = 0.05;
constexpr double kFactoryPinchSensitivity = 1.0;
constexpr CenterBand kFactoryBand;
constexpr double kFactoryMinX = 0.35;
constexpr double kFactoryMaxX = 0.65;

double clampedOr(double value, double lowest, double highest, double fallback) {
  return std::isfinite(value) ? std::clamp(value, lowest, highest) : fallback;
}

std::uint64_t packed(CenterBand band) {
  return std::uint64_t{std::bit_cast<std::uint32_t>(band.lower)} << 32 |
         std::bit_cast<std::uint32_t>(band.upper);
}

}  // namespace

Config::Config(DefaultsStore& defaults, NotificationCenter& notifications)
    : defaults_(defaults), notifications_(notifications) {
  defaults_.registerDefaults(factorySettings());
  refresh();
  changes_ = defaults_.observeChanges([this] { refresh(); });
}

Config& Config::shared() {
  static Config instance(DefaultsStore::shared(), Platform::current().notifications);
  return instance;
}

bool Config::enabled() const noexcept {
  return (switches_.load(std::memory_order_relaxed) & kEnabledBit) != 0;
}

bool Config::isOn(Trigger trigger) const noexcept {
  return (switches_.load(std::memory_order_relaxed) &
          triggerBit(static_cast<std::size_t>(trigger))) != 0;
}

double Config::maxTapDuration() const noexcept {
  return maxTapDuration_.load(std::memory_order_relaxed);
}

double Config::maxTapDrift() const noexcept {
  return maxTapDrift_.load(std::memory_order_relaxed);
}

double Config::pinchSensitivity() const noexcept {
  return pinchSensitivity_.load(std::memory_order_relaxed);
}

CenterBand Config::centerBand() const noexcept {
  const std::uint64_t bits = centerBand_.load(std::memory_order_relaxed);
  return {std::bit_cast<float>(static_cast<std::uint32_t>(bits >> 32)),
          std::bit_cast<float>(static_cast<std::uint32_t>(bits))};
}

void Config::refresh() {
  std::uint32_t switches = defaults_.boolean("enabled") ? kEnabledBit : 0;
  for (std::size_t i = 0; i < kTriggerCount; ++i) {
    if (defaults_.boolean(triggerTable()[i].key)) switches |= triggerBit(i);
  }
  switches_.store(switches, std::memory_order_relaxed);
  maxTapDuration_.store(clampedOr(number("maxTapDurationMs", kFactoryTapDurationMs) / 1000, 0.05,
                                  2.0, kFactoryTapDurationMs / 1000),
                        std::memory_order_relaxed);
  maxTapDrift_.store(clampedOr(number("maxTapDrift", kFactoryTapDrift), 0.0, 1.0, kFactoryTapDrift),
                     std::memory_order_relaxed);
  pinchSensitivity_.store(clampedOr(number("pinchSensitivity", kFactoryPinchSensitivity), 0.1, 5.0,
                                    kFactoryPinchSensitivity),
                          std::memory_order_relaxed);
  centerBand_.store(packed(validatedCenterBand(number("centerMinX", kFactoryMinX),
                                               number("centerMaxX", kFactoryMaxX))),
                    std::memory_order_relaxed);
}

double Config::number(std::string_view key, double fallback) const {
  return storedNumber(defaults_.object(key), fallback);
}

double Config::storedNumber(const std::optional<Value>& object, double fallback) {
  if (!object) return fallback;
  if (const std::int64_t* integer = object->integer()) return static_cast<double>(*integer);
  if (const double* real = object->real()) return *real;
  return fallback;
}

CenterBand Config::validatedCenterBand(double minimum, double maximum) {
  if (!std::isfinite(minimum) || !std::isfinite(maximum)) return kFactoryBand;
  const double lower = std::clamp(minimum, 0.0, 1.0);
  const double upper = std::clamp(maximum, 0.0, 1.0);
  if (lower > upper) return kFactoryBand;
  return {static_cast<float>(lower), static_cast<float>(upper)};
}

std::vector<std::string> Config::ignoredApps() const {
  return defaults_.texts("ignoredApps");
}

void Config::setIgnoredApps(const std::vector<std::string>& ids) {
  setList("ignoredApps", ids);
}

std::vector<std::string> Config::keystrokeZoomApps() const {
  return defaults_.texts("keystrokeZoomApps");
}

void Config::setKeystrokeZoomApps(const std::vector<std::string>& ids) {
  setList("keystrokeZoomApps", ids);
}

void Config::setList(std::string_view key, const std::vector<std::string>& ids) {
  defaults_.set(key, Value::strings(normalizedAppIDs(ids)));
  notifications_.post(kAppListsDidChange);
}

std::vector<std::string> Config::normalizedAppIDs(const std::vector<std::string>& ids) {
  std::vector<std::string> kept;
  for (const std::string& id : ids) {
    auto clean = cleanAppIdentifier(id);
    if (clean && std::find(kept.begin(), kept.end(), *clean) == kept.end()) {
      kept.push_back(*std::move(clean));
    }
  }
  return kept;
}

const std::array<bool, kTriggerCount>& Config::triggerDefaults() {
  static const std::array<bool, kTriggerCount> defaults = [] {
    std::array<bool, kTriggerCount> states{};
    for (std::size_t i = 0; i < kTriggerCount; ++i) states[i] = triggerTable()[i].factory != 0;
    return states;
  }();
  return defaults;
}

bool Config::debug() {
  static const bool asked =
      std::getenv("VELOTAP_DEBUG") != nullptr || std::getenv("QUILLON_DEBUG") != nullptr;
  return asked;
}

}  // namespace velotap
