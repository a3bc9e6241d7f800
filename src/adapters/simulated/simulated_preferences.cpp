#include "adapters/simulated/simulated_preferences.hpp"

namespace velotap {

ValueMap SimulatedPreferences::load(std::string_view domain) {
  const auto found = domains_.find(domain);
  return found != domains_.end() ? found->second.values : ValueMap();
}

bool SimulatedPreferences::store(std::string_view name, const ValueMap& values) {
  if (readOnly_) return false;
  domain(name).values = values;
  return true;
}

Observation SimulatedPreferences::observe(std::string_view name, std::function<void()> changed) {
  return domain(name).observers.add(std::move(changed));
}

void SimulatedPreferences::storeAsAnotherWriter(std::string_view name, ValueMap values) {
  domain(name).values = std::move(values);
  const ObserverList<> observers = domain(name).observers;  // an observer may add domains
  observers.notify();
}

SimulatedPreferences::Domain& SimulatedPreferences::domain(std::string_view name) {
  return domains_[std::string(name)];
}

std::optional<Value> SimulatedSystemPreferences::read(std::string_view domain,
                                                      std::string_view key) {
  const std::lock_guard guard(lock_);
  const auto found = values_.find({std::string(domain), std::string(key)});
  if (found == values_.end()) return std::nullopt;
  return found->second;
}

void SimulatedSystemPreferences::set(std::string_view domain, std::string_view key, Value value) {
  const std::lock_guard guard(lock_);
  values_.insert_or_assign({std::string(domain), std::string(key)}, std::move(value));
}

bool SimulatedSystemPreferences::desktopClicksFor(TrackpadGesture gesture) const noexcept {
  return clicks_[static_cast<std::size_t>(gesture)];
}

void SimulatedSystemPreferences::setDesktopClicksFor(TrackpadGesture gesture,
                                                     bool clicks) noexcept {
  clicks_[static_cast<std::size_t>(gesture)] = clicks;
}

}  // namespace velotap
