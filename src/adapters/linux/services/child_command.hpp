// Starts programs of the system: by an argument list, never through a shell.
//
// Main thread. A child inherits nothing but the three standard streams, has no signals blocked or
// ignored, and outlives this program.
#pragma once

#include <sys/types.h>

#include <optional>
#include <string>
#include <utility>
#include <vector>

#include "adapters/linux/runtime/descriptor.hpp"

namespace velotap {

/// Where `program` is found: itself when it is a path, else in the folders of `searchPath`, which
/// are separated by colons. Nothing when no executable file of this name is there.
[[nodiscard]] std::optional<std::string> findProgram(const std::string& program,
                                                     const std::string& searchPath);
/// With the search path of this process.
[[nodiscard]] std::optional<std::string> findProgram(const std::string& program);

class ChildCommand {
 public:
  /// Nothing when it cannot be started.
  [[nodiscard]] static std::optional<ChildCommand> start(const std::vector<std::string>& command);

  /// Becomes readable when the child ends; for event loops. Valid as long as this object.
  [[nodiscard]] int descriptor() const noexcept { return process_.get(); }
  /// The exit status once it has ended (128 and the signal's number when one ended it), waiting at
  /// most this long; nothing while it still runs.
  [[nodiscard]] std::optional<int> finish(int waitMilliseconds);

 private:
  ChildCommand(pid_t pid, Descriptor process) : pid_(pid), process_(std::move(process)) {}

  pid_t pid_;
  Descriptor process_;
  std::optional<int> status_;
};

}  // namespace velotap
