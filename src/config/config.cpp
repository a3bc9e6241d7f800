#include "config/config.hpp"

#include <algorithm>
#include <cmath>
#include <cstdlib>

#include "config/app_identifier_text.hpp"
#include "config/settings_keys.hpp"
#include "platform/platform.hpp"

namespace velotap {
namespace {

const SettingRow& row(std::string_view key) {
  return *findSetting(key);
}

CenterBand factoryBand() {
  return {static_cast<float>(row(keys::kCenterMinX).factoryNumber),
          static_cast<float>(row(keys::kCenterMaxX).factoryNumber)};
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

void Config::refresh() {
  std::uint32_t switches = defaults_.boolean(keys::kEnabled) ? kEnabledBit : 0;
  for (std::size_t i = 0; i < kTriggerCount; ++i) {
    if (defaults_.boolean(triggerTable()[i].key)) switches |= triggerBit(i);
  }
  switches_.store(switches, std::memory_order_relaxed);
  maxTapDuration_.store(
      inRange(row(keys::kMaxTapDurationMs), number(keys::kMaxTapDurationMs)) / 1000,
      std::memory_order_relaxed);
  maxTapDrift_.store(inRange(row(keys::kMaxTapDrift), number(keys::kMaxTapDrift)),
                     std::memory_order_relaxed);
  pinchSensitivity_.store(inRange(row(keys::kPinchSensitivity), number(keys::kPinchSensitivity)),
                          std::memory_order_relaxed);
  centerBand_.store(
      packed(validatedCenterBand(number(keys::kCenterMinX), number(keys::kCenterMaxX))),
      std::memory_order_relaxed);
  trackpadMode_.store(
      velotap::trackpadMode(defaults_.text(keys::kPadThreeFingerMode).value_or(std::string())),
      std::memory_order_relaxed);
}

double Config::number(std::string_view key) const {
  return storedNumber(defaults_.object(key), row(key).factoryNumber);
}

double Config::storedNumber(const std::optional<Value>& object, double fallback) {
  if (!object) return fallback;
  if (const std::int64_t* integer = object->integer()) return static_cast<double>(*integer);
  if (const double* real = object->real()) return *real;
  return fallback;
}

CenterBand Config::validatedCenterBand(double minimum, double maximum) {
  if (!std::isfinite(minimum) || !std::isfinite(maximum)) return factoryBand();
  const double lower = inRange(row(keys::kCenterMinX), minimum);
  const double upper = inRange(row(keys::kCenterMaxX), maximum);
  if (lower > upper) return factoryBand();
  return {static_cast<float>(lower), static_cast<float>(upper)};
}

std::vector<std::string> Config::ignoredApps() const {
  return defaults_.texts(keys::kIgnoredApps);
}

void Config::setIgnoredApps(const std::vector<std::string>& ids) {
  setList(keys::kIgnoredApps, ids);
}

std::vector<std::string> Config::keystrokeZoomApps() const {
  return defaults_.texts(keys::kKeystrokeZoomApps);
}

void Config::setKeystrokeZoomApps(const std::vector<std::string>& ids) {
  setList(keys::kKeystrokeZoomApps, ids);
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
    for (std::size_t i = 0; i < kTriggerCount; ++i)
      states[i] = triggerTable()[i].factoryNumber != 0;
    return states;
  }();
  return defaults;
}

bool Config::debug() {
  static const bool asked = debugAsked([](const char* name) { return std::getenv(name); });
  return asked;
}

bool Config::debugAsked(const std::function<const char*(const char*)>& lookUp) {
  return lookUp("VELOTAP_DEBUG") != nullptr || lookUp("QUILLON_DEBUG") != nullptr;
}

}  // namespace velotap
