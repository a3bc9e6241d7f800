// What a command line asks of the picture mode: where to, which scenes, light or dark.
//
// Pure. The mode is asked for by "--listlane-capture FOLDER"; without it everything here is about a
// normal start.
#pragma once

#include <optional>
#include <string>
#include <string_view>
#include <variant>
#include <vector>

namespace velotap {

enum class CaptureScene { gestures, tuning, apps, practice, devices };

[[nodiscard]] std::string_view sceneName(CaptureScene scene) noexcept;
[[nodiscard]] const std::vector<CaptureScene>& allScenes();

struct CaptureOptions {
  std::string folder;                ///< absolute
  std::vector<CaptureScene> scenes;  ///< without repetitions, in their own order
  bool dark = false;
};

/// Why the mode cannot start, a line for standard error with its end.
struct CaptureUsageError {
  std::string message;
};

/// Nothing when the mode is not asked for.
[[nodiscard]] std::optional<std::variant<CaptureOptions, CaptureUsageError>> captureOptions(
    const std::vector<std::string>& arguments);

}  // namespace velotap
