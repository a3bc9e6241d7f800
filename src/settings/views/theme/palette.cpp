#include "settings/views/theme/palette.hpp"

#include <algorithm>
#include <cmath>

namespace velotap {
namespace {

// The four answers to each question, side by side: whoever changes one sees the others.
struct Question {
  std::string_view name;
  Argb light;
  Argb dark;
  Argb lightContrast;
  Argb darkContrast;
};

constexpr std::array<Question, Palette::kSize> kQuestions{{
    // surfaces
    {"window", 0xfff3f4f7, 0xff17181c, 0xffffffff, 0xff000000},
    {"bar", 0xfffbfbfd, 0xff1e2025, 0xffffffff, 0xff000000},
    {"card", 0xffffffff, 0xff22242a, 0xffffffff, 0xff0b0c0e},
    {"sunken", 0xfff3f4f7, 0xff1b1d22, 0xffffffff, 0xff000000},
    {"hover", 0xfff0f1f5, 0xff2a2d34, 0xffe8eaf0, 0xff24272e},
    {"press", 0xffe6e8ee, 0xff31343c, 0xffd9dce4, 0xff31343c},
    {"chosen", 0xffe9ebf1, 0xff2b2e36, 0xffe1e5ef, 0xff24272e},
    {"button", 0xffffffff, 0xff33363f, 0xffffffff, 0xff0b0c0e},
    {"scrim", 0x55101828, 0x99000000, 0x99101828, 0xcc000000},
    // outlines; `line` and `hair` only group, `edge` shows where a control is
    {"line", 0xffe2e4ea, 0xff32353d, 0xff5d6472, 0xffa7adb9},
    {"hair", 0xffeceef2, 0xff2c2f36, 0xff8a91a0, 0xff6c7382},
    {"edge", 0xff848c9c, 0xff737b8b, 0xff3d4350, 0xffd4d8e0},
    {"buttonLine", 0xffd3d7df, 0xff454955, 0xff3d4350, 0xffd4d8e0},
    // text and marks
    {"text", 0xff1a1c21, 0xfff1f2f5, 0xff000000, 0xffffffff},
    {"textSecondary", 0xff5a6170, 0xffa7adb9, 0xff2b303b, 0xffe3e6ec},
    {"textTertiary", 0xff757d8c, 0xff8b919e, 0xff4a505c, 0xffc2c7d1},
    {"accent", 0xff2059d6, 0xff7aa5ff, 0xff0b3ba8, 0xffa9c5ff},
    {"fill", 0xff2563eb, 0xff356ee8, 0xff0b3ba8, 0xffa9c5ff},
    {"fillText", 0xffffffff, 0xffffffff, 0xffffffff, 0xff000000},
    {"accentSoft", 0xffe8effe, 0xff26324d, 0xffffffff, 0xff0b0c0e},
    {"track", 0xff848c9c, 0xff737b8b, 0xff3d4350, 0xffd4d8e0},
    {"knob", 0xffffffff, 0xffffffff, 0xffffffff, 0xff000000},
    // states
    {"good", 0xff146f41, 0xff4ac989, 0xff0a4f2c, 0xff8ff0bb},
    {"goodSoft", 0xffe2f5ea, 0xff1d3a2c, 0xffffffff, 0xff0b0c0e},
    {"warning", 0xff9c4508, 0xfff2a065, 0xff6e2e00, 0xffffc79a},
    {"warningSoft", 0xfffdeedd, 0xff40301f, 0xffffffff, 0xff0b0c0e},
    {"danger", 0xffb42318, 0xffff8f85, 0xff7d140c, 0xffffb7b0},
    {"neutralSoft", 0xffeceef2, 0xff30333b, 0xffffffff, 0xff0b0c0e},
}};

constexpr Argb channel(Argb color, int shift) {
  return (color >> shift) & 0xFFU;
}

double luminance(Argb color) {
  const auto linear = [color](int shift) {
    const double c = channel(color, shift) / 255.0;
    return c <= 0.04045 ? c / 12.92 : std::pow((c + 0.055) / 1.055, 2.4);
  };
  return 0.2126 * linear(16) + 0.7152 * linear(8) + 0.0722 * linear(0);
}

}  // namespace

Argb Palette::operator[](std::string_view name) const {
  const auto* found = std::find_if(entries.begin(), entries.end(),
                                   [name](const Entry& entry) { return entry.name == name; });
  return found == entries.end() ? 0xff000000 : found->color;
}

Palette paletteFor(ColorScheme scheme, bool highContrast) {
  Palette palette;
  std::transform(kQuestions.begin(), kQuestions.end(), palette.entries.begin(),
                 [scheme, highContrast](const Question& q) -> Palette::Entry {
                   switch (scheme) {
                     case ColorScheme::light:
                       return {q.name, highContrast ? q.lightContrast : q.light};
                     case ColorScheme::dark:
                       return {q.name, highContrast ? q.darkContrast : q.dark};
                   }
                   return {};
                 });
  return palette;
}

Argb blended(Argb over, Argb under) {
  const double alpha = channel(over, 24) / 255.0;
  Argb result = 0xff000000;
  for (const int shift : {16, 8, 0}) {
    const double mixed = alpha * channel(over, shift) + (1 - alpha) * channel(under, shift);
    result |= static_cast<Argb>(std::lround(mixed)) << shift;
  }
  return result;
}

double contrast(Argb a, Argb b) {
  const double la = luminance(a);
  const double lb = luminance(b);
  return (std::max(la, lb) + 0.05) / (std::min(la, lb) + 0.05);
}

}  // namespace velotap
