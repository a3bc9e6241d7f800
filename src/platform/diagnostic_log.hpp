// The port for diagnostic lines: plain text, for people who asked for it.
#pragma once

#include <string_view>

namespace velotap {

/// Any thread. Callers ask `enabled` before building a line, so that silence costs nothing.
class DiagnosticLog {
 public:
  virtual ~DiagnosticLog() = default;
  [[nodiscard]] virtual bool enabled() const noexcept = 0;
  /// Prints one line; `text` has neither the product prefix nor a line end.
  virtual void line(std::string_view text) = 0;
};

}  // namespace velotap
