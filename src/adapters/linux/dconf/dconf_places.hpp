// Where a session's dconf settings and their defaults are kept.
//
// Read from the environment and the dconf profile once; a plain value afterwards.
#pragma once

#include <functional>
#include <string>
#include <vector>

namespace velotap {

struct DconfPlaces {
  /// Databases, the one that wins first; those of the system may lock keys of those before.
  std::vector<std::string> databases;
  /// Compiled schemas, the ones that win first.
  std::vector<std::string> schemas;
  /// Names of the desktop, which may have defaults of its own, the one that wins first.
  std::vector<std::string> desktops;

  using Lookup = std::function<const char*(const char* name)>;
  /// `lookup` reads an environment variable; null when it is not set. `systemRoot` is where /etc
  /// is, for tests.
  [[nodiscard]] static DconfPlaces read(const Lookup& lookup, const std::string& systemRoot = "");
};

}  // namespace velotap
