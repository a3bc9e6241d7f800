// The sub-commands that `velotap-lab` has on this platform.
#pragma once

#include <iosfwd>
#include <span>
#include <string_view>
#include <vector>

namespace velotap::lab {

struct Command {
  std::string_view name;
  std::string_view summary;
  int (*run)(const std::vector<std::string_view>& arguments, std::ostream& out,
             std::ostream& errors);
};

/// One source for each platform defines it.
[[nodiscard]] std::span<const Command> commands();

}  // namespace velotap::lab
