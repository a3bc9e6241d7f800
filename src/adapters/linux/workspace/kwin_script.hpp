// The script that runs inside KWin and calls us back with every window that becomes active.
//
// Pure text; the names here are what the script and its receiver agree on.
#pragma once

#include <string>
#include <string_view>

namespace velotap {

inline constexpr const char* kKwinScriptName = "velotap-front-application";
inline constexpr const char* kFrontObject = "/app/norwend/velotap/Front";
inline constexpr const char* kFrontInterface = "app.norwend.velotap.Front";
inline constexpr const char* kActivatedMember = "Activated";

/// `receiver` is the bus address that the script calls: ":1.42".
[[nodiscard]] std::string kwinScriptText(std::string_view receiver);

}  // namespace velotap
