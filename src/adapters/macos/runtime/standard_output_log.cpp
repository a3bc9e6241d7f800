#include "adapters/macos/runtime/standard_output_log.hpp"

#include <unistd.h>

#include <cerrno>
#include <string>

namespace velotap {

void StandardOutputLog::line(std::string_view text) {
  if (!enabled_) return;
  const std::string line = "[Velotap] " + std::string(text) + "\n";
  std::string_view rest = line;
  while (!rest.empty()) {
    const ssize_t written = ::write(descriptor_, rest.data(), rest.size());
    if (written < 0 && errno == EINTR) continue;
    if (written <= 0) return;  // nobody is left to read diagnostics
    rest.remove_prefix(static_cast<std::size_t>(written));
  }
}

}  // namespace velotap
