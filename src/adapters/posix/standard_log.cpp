#include "adapters/posix/standard_log.hpp"

#include <unistd.h>

#include <cerrno>
#include <string>

namespace velotap {

void StandardLog::line(std::string_view text) {
  if (!enabled_) return;
  std::string line = "[Velotap] ";
  line += text;
  line += '\n';
  std::string_view rest = line;
  while (!rest.empty()) {
    const ssize_t n = ::write(descriptor_, rest.data(), rest.size());
    if (n < 0 && errno == EINTR) continue;
    if (n <= 0) return;  // nobody is left to read diagnostics
    rest.remove_prefix(static_cast<std::size_t>(n));
  }
}

}  // namespace velotap
