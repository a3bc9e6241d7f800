// Diagnostic lines for whoever observes, complete with the prefix that people see.
//
// Off until switched on. Any thread; observers run on the writing thread.
#pragma once

#include <atomic>
#include <functional>
#include <string>
#include <string_view>

#include "base/observer_list.hpp"
#include "platform/diagnostic_log.hpp"

namespace velotap {

class SimulatedLog final : public DiagnosticLog {
 public:
  [[nodiscard]] bool enabled() const noexcept override { return enabled_; }
  void line(std::string_view text) override { lines_.notify("[Velotap] " + std::string(text)); }

  void setEnabled(bool enabled) { enabled_ = enabled; }
  [[nodiscard]] Observation observeLines(std::function<void(const std::string&)> observer) {
    return lines_.add(std::move(observer));
  }

 private:
  std::atomic<bool> enabled_{false};
  ObserverList<const std::string&> lines_;
};

}  // namespace velotap
