// Which of the two programs runs: the small one without windows, or the one with a status item.
//
// Pure. The small one is what people start; where there is a display it becomes the other, which
// lies beside it.
#pragma once

#include <functional>
#include <string>
#include <string_view>
#include <vector>

namespace velotap {

enum class ProgramChoice { background, desktop };

/// `environment` gives a variable's value, or null. Pictures of the windows need no display.
[[nodiscard]] ProgramChoice programChoice(
    const std::vector<std::string_view>& arguments,
    const std::function<const char*(const char* name)>& environment);

/// The path of the program with windows, for the path of the small one.
[[nodiscard]] std::string desktopProgramBeside(std::string_view program);

}  // namespace velotap
