// How a scenario writes contacts, places and sizes.
//
// Pure; any thread.
#pragma once

#include <optional>
#include <string>
#include <string_view>

#include "base/point.hpp"
#include "platform/multitouch_abi.hpp"

namespace velotap::lab {

/// Of a device's surface, in millimetres.
struct SurfaceSize {
  float width = 100;
  float height = 100;
};

/// "WxH", both positive.
[[nodiscard]] std::optional<SurfaceSize> parseSize(std::string_view text);
/// "X,Y".
[[nodiscard]] std::optional<Point> parsePoint(std::string_view text);
/// "X,Y,WxH", neither side negative.
[[nodiscard]] std::optional<Rect> parseRectangle(std::string_view text);

/// "ID:X,Y" with parts ";KEY=NUMBER" behind it; nothing, with the reason in `message`, when it is
/// malformed. Millimetres that are not given follow from the surface.
[[nodiscard]] std::optional<MTTouch> parseTouch(std::string_view text, const SurfaceSize& surface,
                                                std::string& message);

}  // namespace velotap::lab
