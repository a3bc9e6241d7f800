#include "output/shortcut_key_codes.hpp"

#include <gtest/gtest.h>

#include <map>
#include <optional>
#include <string>
#include <thread>
#include <vector>

#include "support/desktop.hpp"

namespace velotap {
namespace {

using Keys = std::map<std::uint16_t, std::string>;
using Table = ShortcutKeyCodeTable;

constexpr Table kFallbacks = {33, 30, 24, 27};

Table resolveFrom(const Keys& keys) {
  return resolveKeyCodes([&keys](std::uint16_t code) -> std::optional<std::string> {
    const auto found = keys.find(code);
    return found == keys.end() ? std::nullopt : std::optional(found->second);
  });
}

TEST(ResolveKeyCodes, TheCasesAreBackForwardZoomInZoomOut) {
  EXPECT_EQ(kAllShortcuts, (std::array{SynthesizedShortcut::back, SynthesizedShortcut::forward,
                                       SynthesizedShortcut::zoomIn, SynthesizedShortcut::zoomOut}));
  EXPECT_EQ(fallbackKeyCodes(), kFallbacks);
}

struct LayoutCase {
  const char* name;
  Keys keys;
  Table expected;
};

class ResolveKeyCodesOn : public ::testing::TestWithParam<LayoutCase> {};

TEST_P(ResolveKeyCodesOn, Layout) {
  EXPECT_EQ(resolveFrom(GetParam().keys), GetParam().expected);
}

INSTANTIATE_TEST_SUITE_P(
    Layouts, ResolveKeyCodesOn,
    ::testing::Values(
        LayoutCase{"us", {{33, "["}, {30, "]"}, {24, "="}, {27, "-"}}, kFallbacks},
        LayoutCase{"typesNothing", {}, kFallbacks},
        LayoutCase{"elsewhere", {{5, "["}, {6, "]"}, {7, "="}, {8, "-"}}, {5, 6, 7, 8}},
        LayoutCase{"theFallbackKeyWinsOverLowerCodes", {{0, "["}, {33, "["}}, kFallbacks},
        LayoutCase{"theLowestOtherCodeWins", {{9, "["}, {7, "["}, {64, "["}}, {7, 30, 24, 27}},
        LayoutCase{"code0Counts", {{0, "]"}}, {33, 0, 24, 27}},
        LayoutCase{"code64Counts", {{64, "]"}}, {33, 64, 24, 27}},
        LayoutCase{"code65DoesNot", {{65, "]"}}, kFallbacks},
        LayoutCase{
            "equalWinsOverPlusWhateverTheCode", {{24, "+"}, {1, "+"}, {60, "="}}, {33, 30, 60, 27}},
        LayoutCase{"plusWhereThereIsNoEqual", {{30, "+"}, {27, "-"}}, {33, 30, 30, 27}},
        LayoutCase{"plusOnTheFallbackKeyFirst", {{24, "+"}, {1, "+"}}, kFallbacks},
        LayoutCase{"onlyTheWholeTextCounts", {{1, "[["}, {2, "[ "}, {3, ""}}, kFallbacks},
        LayoutCase{"oneKeyMayServeOnlyWhatItTypes", {{33, "]"}, {30, "["}}, {30, 33, 24, 27}}),
    [](const auto& tested) { return tested.param.name; });

TEST(ResolveKeyCodes, AsksForEachKeyAtMostOnce) {
  std::map<std::uint16_t, int> asked;
  static_cast<void>(resolveKeyCodes([&asked](std::uint16_t code) -> std::optional<std::string> {
    ++asked[code];
    return std::nullopt;
  }));
  EXPECT_EQ(asked.size(), 65U);
  for (const auto& [code, times] : asked) EXPECT_EQ(times, 1) << code;
}

TEST(ResolveKeyCodes, AsksForNoMoreThanItNeeds) {
  std::map<std::uint16_t, int> asked;
  const Keys us = {{33, "["}, {30, "]"}, {24, "="}, {27, "-"}};
  static_cast<void>(resolveKeyCodes([&](std::uint16_t code) -> std::optional<std::string> {
    ++asked[code];
    return us.at(code);
  }));
  EXPECT_EQ(asked.size(), 4U);
}

class ShortcutKeyCodesTest : public ::testing::Test, protected test::Desktop {
 protected:
  Table codes() const {
    Table table{};
    for (std::size_t i = 0; i < table.size(); ++i) table[i] = codes_.keyCode(kAllShortcuts[i]);
    return table;
  }
  ShortcutKeyCodes codes_{keyboardLayout, log};
};

TEST_F(ShortcutKeyCodesTest, AnswersTheFallbacksBeforeItIsStarted) {
  keyboardLayout.select(Keys{{5, "["}});
  EXPECT_EQ(codes(), kFallbacks);
}

TEST_F(ShortcutKeyCodesTest, ResolvesWhenStartedAndSaysSo) {
  keyboardLayout.select(Keys{{5, "["}, {6, "]"}, {7, "="}, {8, "-"}});
  codes_.start();
  EXPECT_EQ(codes(), (Table{5, 6, 7, 8}));
  EXPECT_EQ(said.take(),
            test::Lines{R"(shortcut key codes: ["back=5", "forward=6", "zoomIn=7", "zoomOut=8"])"});
}

TEST_F(ShortcutKeyCodesTest, FollowsTheLayoutIncludingOneThatTellsNothing) {
  keyboardLayout.select(Keys{{5, "["}});
  codes_.start();
  keyboardLayout.select(Keys{{9, "["}});
  EXPECT_EQ(codes()[0], 9);
  keyboardLayout.select(std::nullopt);
  EXPECT_EQ(codes(), kFallbacks) << "codes of another layout must not survive";
}

TEST_F(ShortcutKeyCodesTest, StartingAgainResolvesAgainButRegistersOnce) {
  codes_.start();
  codes_.start();
  EXPECT_EQ(said.take().size(), 2U);
  keyboardLayout.select(Keys{{9, "["}});
  EXPECT_EQ(codes()[0], 9);
  EXPECT_EQ(said.take().size(), 1U) << "two registrations would resolve twice";
}

TEST_F(ShortcutKeyCodesTest, RefreshingAloneFollowsNothing) {
  codes_.refresh();
  keyboardLayout.select(Keys{{9, "["}});
  EXPECT_EQ(codes()[0], 33);
}

TEST_F(ShortcutKeyCodesTest, StopsFollowingWhenGone) {
  {
    ShortcutKeyCodes other(keyboardLayout, log);
    other.start();
  }
  said.take();
  keyboardLayout.select(Keys{{9, "["}});
  EXPECT_EQ(said.take(), test::Lines{});
}

TEST_F(ShortcutKeyCodesTest, ReadersOnOtherThreadsSeeOneLayoutOrTheOther) {
  const Keys first = {{1, "["}};
  const Keys second = {{2, "["}};
  log.setEnabled(false);
  keyboardLayout.select(first);
  codes_.start();
  std::vector<std::thread> readers;
  for (int i = 0; i < 3; ++i) {
    readers.emplace_back([this] {
      for (int k = 0; k < 20000; ++k) {
        const auto code = codes_.keyCode(SynthesizedShortcut::back);
        ASSERT_TRUE(code == 1 || code == 2) << code;
      }
    });
  }
  for (int k = 0; k < 500; ++k) keyboardLayout.select(k % 2 == 0 ? second : first);
  for (auto& reader : readers) reader.join();
}

}  // namespace
}  // namespace velotap
