#include "lab/touch_words.hpp"

#include <algorithm>
#include <array>
#include <cmath>
#include <cstdint>

#include "lab/scenario_words.hpp"

namespace velotap::lab {
namespace {

// The optional parts of a contact but for the stage, which is no real number.
struct TouchNumber {
  std::string_view key;
  float& (*field)(MTTouch& touch);
};

constexpr std::array kNumbers = {
    TouchNumber{"vx", [](MTTouch& t) -> float& { return t.velocity.x; }},
    TouchNumber{"vy", [](MTTouch& t) -> float& { return t.velocity.y; }},
    TouchNumber{"size", [](MTTouch& t) -> float& { return t.size; }},
    TouchNumber{"density", [](MTTouch& t) -> float& { return t.density; }},
    TouchNumber{"pressure", [](MTTouch& t) -> float& { return t.pressure; }},
    TouchNumber{"mx", [](MTTouch& t) -> float& { return t.millimetres.x; }},
    TouchNumber{"my", [](MTTouch& t) -> float& { return t.millimetres.y; }},
};

constexpr std::string_view kStageKey = "stage";
constexpr std::int32_t kStageDown = 4;

bool setPart(MTTouch& touch, std::string_view key, std::string_view value) {
  if (key == kStageKey) {
    const auto stage = parseInt32(value);
    if (stage) touch.stage = *stage;
    return stage.has_value();
  }
  const auto number = parseFloat(value);
  if (!number) return false;
  std::find_if(kNumbers.begin(), kNumbers.end(), [key](const TouchNumber& n) {
    return n.key == key;
  })->field(touch) = *number;
  return true;
}

// Which part a key names, as one bit; none for an unknown one.
unsigned partBit(std::string_view key) {
  if (key == kStageKey) return 1;
  for (std::size_t i = 0; i < kNumbers.size(); ++i) {
    if (kNumbers[i].key == key) return 2U << i;
  }
  return 0;
}

std::string quoted(std::string_view text) {
  return '"' + std::string(text) + '"';
}

// The parts of a contact one after another; false, with the reason, when one is malformed.
bool readParts(std::string_view parts, MTTouch& touch, std::string& message) {
  unsigned given = 0;
  for (bool more = true; more;) {
    const auto halves = splitAt(parts, ';');
    const std::string_view part = halves ? halves->left : parts;
    const auto assignment = splitAt(part, '=');
    const unsigned bit = assignment ? partBit(assignment->left) : 0;
    if (bit == 0) {
      message = quoted(part) + " is no part of a contact";
      return false;
    }
    if ((given & bit) != 0) {
      message = quoted(assignment->left) + " is given twice";
      return false;
    }
    if (!setPart(touch, assignment->left, assignment->right)) {
      message = quoted(assignment->right) + " is no number for " + std::string(assignment->left);
      return false;
    }
    given |= bit;
    more = halves.has_value();
    if (more) parts = halves->right;
  }
  return true;
}

}  // namespace

std::optional<SurfaceSize> parseSize(std::string_view text) {
  const auto halves = splitAt(text, 'x');
  if (!halves) return std::nullopt;
  const auto width = parseFloat(halves->left);
  const auto height = parseFloat(halves->right);
  if (!width || !height) return std::nullopt;
  const bool sensible =
      std::isfinite(*width) && std::isfinite(*height) && *width > 0 && *height > 0;
  return sensible ? std::optional(SurfaceSize{*width, *height}) : std::nullopt;
}

std::optional<Point> parsePoint(std::string_view text) {
  const auto halves = splitAt(text, ',');
  if (!halves) return std::nullopt;
  const auto x = parseFinite(halves->left);
  const auto y = parseFinite(halves->right);
  if (!x || !y) return std::nullopt;
  return Point{*x, *y};
}

std::optional<Rect> parseRectangle(std::string_view text) {
  const std::size_t comma = text.rfind(',');
  if (comma == std::string_view::npos) return std::nullopt;
  const auto corner = parsePoint(text.substr(0, comma));
  const auto sides = splitAt(text.substr(comma + 1), 'x');
  if (!corner || !sides) return std::nullopt;
  const auto width = parseFinite(sides->left);
  const auto height = parseFinite(sides->right);
  if (!width || !height || *width < 0 || *height < 0) return std::nullopt;
  return Rect{corner->x, corner->y, *width, *height};
}

std::optional<MTTouch> parseTouch(std::string_view text, const SurfaceSize& surface,
                                  std::string& message) {
  const auto parts = splitAt(text, ';');
  const std::string_view head = parts ? parts->left : text;
  const auto identified = splitAt(head, ':');
  const auto place = identified ? splitAt(identified->right, ',') : std::nullopt;
  const auto id = identified ? parseInt32(identified->left) : std::nullopt;
  const auto x = place ? parseFloat(place->left) : std::nullopt;
  const auto y = place ? parseFloat(place->right) : std::nullopt;
  if (!id || !x || !y) {
    message = quoted(head) + " is no contact: ID:X,Y";
    return std::nullopt;
  }
  MTTouch touch{};
  touch.identifier = *id;
  touch.stage = kStageDown;
  touch.position = {*x, *y};
  touch.millimetres = {*x * surface.width, *y * surface.height};
  touch.size = 1;
  touch.density = 1;
  if (parts && !readParts(parts->right, touch, message)) return std::nullopt;
  return touch;
}

}  // namespace velotap::lab
