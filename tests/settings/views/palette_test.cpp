#include "settings/views/theme/palette.hpp"

#include <gtest/gtest.h>

#include <set>
#include <string>

namespace velotap {
namespace {

TEST(Palette, ContrastIsThatOfTheGuidelines) {
  EXPECT_DOUBLE_EQ(contrast(0xff000000, 0xffffffff), 21);
  EXPECT_DOUBLE_EQ(contrast(0xff777777, 0xff777777), 1);
  EXPECT_NEAR(contrast(0xff767676, 0xffffffff), 4.54, 0.005);
  EXPECT_EQ(contrast(0xff123456, 0xffabcdef), contrast(0xffabcdef, 0xff123456));
}

TEST(Palette, BlendingFollowsTheAlpha) {
  EXPECT_EQ(blended(0x00ffffff, 0xff102030), 0xff102030);
  EXPECT_EQ(blended(0xff405060, 0xff102030), 0xff405060);
  EXPECT_EQ(blended(0x80ffffff, 0xff000000), 0xff808080);
}

TEST(Palette, NamesAreDifferentAndUnknownOnesAreBlack) {
  const Palette palette = paletteFor(ColorScheme::light, false);
  std::set<std::string_view> names;
  for (const Palette::Entry& entry : palette.entries) names.insert(entry.name);
  EXPECT_EQ(names.size(), Palette::kSize);
  EXPECT_EQ(palette["no such thing"], 0xff000000);
  EXPECT_EQ(palette["knob"], 0xffffffff);
}

struct Variant {
  ColorScheme scheme;
  bool highContrast;
};

class PaletteContrast : public testing::TestWithParam<Variant> {
 protected:
  void expectAtLeast(double limit, const char* mark, const char* ground) const {
    EXPECT_GE(contrast(palette[mark], palette[ground]), limit) << mark << " on " << ground;
  }

  Palette palette = paletteFor(GetParam().scheme, GetParam().highContrast);
  double readable = GetParam().highContrast ? 7.0 : 4.5;
  double visible = GetParam().highContrast ? 4.5 : 3.0;
};

TEST_P(PaletteContrast, TextCanBeReadWhereverItStands) {
  for (const char* ground : {"window", "bar", "card", "sunken", "hover", "chosen", "button"}) {
    expectAtLeast(readable, "text", ground);
    expectAtLeast(readable, "textSecondary", ground);
    expectAtLeast(readable, "accent", ground);
  }
  expectAtLeast(readable, "text", "press");
  expectAtLeast(readable, "accent", "accentSoft");
  expectAtLeast(readable, "danger", "button");
  expectAtLeast(readable, "danger", "card");
  for (const char* tone : {"good", "warning"}) {
    expectAtLeast(readable, tone, "card");
    expectAtLeast(readable, tone, (std::string(tone) + "Soft").c_str());
    expectAtLeast(readable, "text", (std::string(tone) + "Soft").c_str());
  }
  expectAtLeast(readable, "text", "neutralSoft");
  expectAtLeast(readable, "textSecondary", "neutralSoft");
}

// The mark of the status stands on its own colour, thinned to twelve hundredths.
TEST_P(PaletteContrast, MarksCanBeToldFromTheirTint) {
  constexpr Argb kTint = 0x1f000000;
  for (const char* tone : {"good", "warning", "textSecondary"}) {
    const Argb mark = palette[tone];
    EXPECT_GE(contrast(mark, blended((mark & 0xffffffU) | kTint, palette["card"])), readable)
        << tone;
  }
}

TEST_P(PaletteContrast, ControlsCanBeToldFromWhatIsBehindThem) {
  expectAtLeast(readable, "fillText", "fill");
  for (const char* ground : {"window", "card"}) {
    for (const char* control : {"fill", "track", "edge"}) expectAtLeast(visible, control, ground);
  }
  for (const char* ground : {"card", "hover", "press"}) {
    expectAtLeast(visible, "textTertiary", ground);
  }
  expectAtLeast(visible, "knob", "track");
  expectAtLeast(visible, "knob", "fill");
}

INSTANTIATE_TEST_SUITE_P(
    Variants, PaletteContrast,
    testing::Values(Variant{ColorScheme::light, false}, Variant{ColorScheme::dark, false},
                    Variant{ColorScheme::light, true}, Variant{ColorScheme::dark, true}),
    [](const auto& variant) {
      return std::string(variant.param.scheme == ColorScheme::light ? "light" : "dark") +
             (variant.param.highContrast ? "HighContrast" : "");
    });

}  // namespace
}  // namespace velotap
