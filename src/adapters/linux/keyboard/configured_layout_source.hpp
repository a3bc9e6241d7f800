// The layout that the system is configured to have: the last resort, since it does not follow what
// the user switches to.
//
// The files are those that the system's locale service reads and writes; reading them spares a
// connection to the system's bus. The first that names a layout answers.
#pragma once

#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "adapters/linux/descriptor_loop.hpp"
#include "adapters/linux/files/file_watch.hpp"
#include "adapters/linux/keyboard/keymap_compiler.hpp"
#include "adapters/linux/keyboard/layout_source.hpp"

namespace velotap {

/// Shell assignments, XKBLAYOUT="de" and its like; nothing without a layout.
[[nodiscard]] std::optional<LayoutNames> layoutOfAssignments(std::string_view text);
/// The X server's configuration, Option "XkbLayout" "de" and its like; nothing without a layout.
[[nodiscard]] std::optional<LayoutNames> layoutOfServerOptions(std::string_view text);

class ConfiguredLayoutSource final : public LayoutSource {
 public:
  /// `systemRoot` is where /etc is, for tests.
  explicit ConfiguredLayoutSource(DescriptorLoop& loop, const std::string& systemRoot = "");
  void start(std::function<void()> changed) override;

 private:
  void read();

  DescriptorLoop& loop_;
  const std::vector<std::string> files_;
  std::optional<FileWatch> watch_;
};

}  // namespace velotap
