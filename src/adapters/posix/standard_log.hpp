// Diagnostic lines on standard output, each with the product's prefix, each one write: lines of
// several threads never mix, and a reader at the other end of a pipe sees each at once.
#pragma once

#include "platform/diagnostic_log.hpp"

namespace velotap {

class StandardLog final : public DiagnosticLog {
 public:
  explicit StandardLog(bool enabled, int descriptor = 1) noexcept
      : enabled_(enabled), descriptor_(descriptor) {}
  [[nodiscard]] bool enabled() const noexcept override { return enabled_; }
  void line(std::string_view text) override;

 private:
  bool enabled_;
  int descriptor_;
};

}  // namespace velotap
