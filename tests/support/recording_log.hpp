// A diagnostic log that keeps its lines.
#pragma once

#include <atomic>
#include <mutex>
#include <string>
#include <utility>
#include <vector>

#include "platform/diagnostic_log.hpp"

namespace velotap::test {

/// Any thread.
class RecordingLog final : public DiagnosticLog {
 public:
  std::atomic<bool> on = true;
  [[nodiscard]] bool enabled() const noexcept override { return on; }
  void line(std::string_view text) override {
    const std::lock_guard guard(lock_);
    lines_.emplace_back(text);
  }
  std::vector<std::string> take() {
    const std::lock_guard guard(lock_);
    return std::exchange(lines_, {});
  }

 private:
  std::mutex lock_;
  std::vector<std::string> lines_;
};

}  // namespace velotap::test
