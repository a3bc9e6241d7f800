// Diagnostic lines on standard output, each with the product's prefix and written at once, so that
// lines of several threads never mix. Any thread.
#pragma once

#include "platform/diagnostic_log.hpp"

namespace velotap {

class StandardOutputLog final : public DiagnosticLog {
 public:
  explicit StandardOutputLog(bool enabled, int descriptor = 1) noexcept
      : enabled_(enabled), descriptor_(descriptor) {}
  [[nodiscard]] bool enabled() const noexcept override { return enabled_; }
  void line(std::string_view text) override;

 private:
  bool enabled_;
  int descriptor_;
};

}  // namespace velotap
