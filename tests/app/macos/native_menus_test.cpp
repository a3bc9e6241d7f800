#include "app/macos/native_menus.hpp"

#include <gtest/gtest.h>

namespace velotap::test {
namespace {

TEST(NativeMenusTest, anItemKeepsWhatItSays) {
  int chosen = 0;
  MenuItem item;
  item.title = "Settings…";
  item.enabled = false;
  item.hidden = true;
  item.checked = true;
  item.key = KeyEquivalent{.key = ',', .shift = true};
  item.toolTip = "why not";
  item.action = [&] { ++chosen; };
  const auto native = nativeMenu({item});
  ASSERT_EQ(native.size(), 1U);
  EXPECT_EQ(native[0].title, "Settings…");
  EXPECT_FALSE(native[0].separator);
  EXPECT_FALSE(native[0].enabled);
  EXPECT_TRUE(native[0].hidden);
  EXPECT_EQ(native[0].checked, true);
  EXPECT_EQ(native[0].key, ",");
  EXPECT_TRUE(native[0].keyShift);
  EXPECT_EQ(native[0].toolTip, "why not");
  EXPECT_EQ(native[0].selector, "");
  native[0].action();
  EXPECT_EQ(chosen, 1);
}

TEST(NativeMenusTest, linesAndSubmenusKeepTheirPlace) {
  MenuItem menu;
  menu.title = "Trackpad";
  menu.submenu = {MenuItem{.title = "one"}, MenuItem::line(), MenuItem{.title = "two"}};
  const auto native = nativeMenu({MenuItem::line(), menu});
  ASSERT_EQ(native.size(), 2U);
  EXPECT_TRUE(native[0].separator);
  ASSERT_EQ(native[1].submenu.size(), 3U);
  EXPECT_EQ(native[1].submenu[0].title, "one");
  EXPECT_TRUE(native[1].submenu[1].separator);
  EXPECT_EQ(native[1].submenu[2].title, "two");
  EXPECT_EQ(native[1].key, "");
  EXPECT_FALSE(native[1].checked);
}

TEST(NativeMenusTest, responderCommandsAreTheSystemsSelectors) {
  const std::vector<std::pair<ResponderCommand, const char*>> expected = {
      {ResponderCommand::undo, "undo:"},
      {ResponderCommand::redo, "redo:"},
      {ResponderCommand::cut, "cut:"},
      {ResponderCommand::copy, "copy:"},
      {ResponderCommand::paste, "paste:"},
      {ResponderCommand::selectAll, "selectAll:"},
      {ResponderCommand::close, "performClose:"},
      {ResponderCommand::minimize, "performMiniaturize:"}};
  for (const auto& [command, selector] : expected) {
    MenuItem item;
    item.responder = command;
    EXPECT_EQ(nativeMenu({item})[0].selector, selector);
  }
}

TEST(NativeMenusTest, aClickIsLeftRightOrOtherWithItsControlKey) {
  EXPECT_EQ(statusItemClick(std::nullopt), std::nullopt);
  const auto left = statusItemClick(NativeClick{NativeClick::Kind::leftUp, true});
  EXPECT_EQ(left->button, StatusItemClick::Button::left);
  EXPECT_TRUE(left->controlKey);
  const auto right = statusItemClick(NativeClick{NativeClick::Kind::rightUp, false});
  EXPECT_EQ(right->button, StatusItemClick::Button::right);
  EXPECT_FALSE(right->controlKey);
  EXPECT_EQ(statusItemClick(NativeClick{})->button, StatusItemClick::Button::other);
}

class FakeStatusItem final : public NativeStatusItem {
 public:
  void create(std::function<void(const std::optional<NativeClick>&)> told) override {
    clicked = std::move(told);
  }
  void setIcon(const std::string& name, const std::string& text) override {
    symbol = name;
    label = text;
  }
  void setVisible(bool on) override { visible = on; }
  void popUp(const std::vector<NativeMenuItem>& menu) override { shown.push_back(menu.size()); }

  std::function<void(const std::optional<NativeClick>&)> clicked;
  std::string symbol, label;
  bool visible = false;
  std::vector<std::size_t> shown;
};

TEST(NativeMenusTest, theTraysViewIsTheStatusItem) {
  FakeStatusItem item;
  std::vector<std::optional<StatusItemClick>> clicks;
  const TrayMenu::View view = nativeTrayView(
      item, [&](const std::optional<StatusItemClick>& click) { clicks.push_back(click); });
  view.create();
  view.setIcon({StatusIconState::active, "computermouse.fill", "Velotap (active)"});
  view.setVisible(true);
  view.popUpMenu({MenuItem{.title = "one"}, MenuItem{.title = "two"}});
  item.clicked(NativeClick{NativeClick::Kind::rightUp, false});
  item.clicked(std::nullopt);
  EXPECT_EQ(item.symbol, "computermouse.fill");
  EXPECT_EQ(item.label, "Velotap (active)");
  EXPECT_TRUE(item.visible);
  EXPECT_EQ(item.shown, (std::vector<std::size_t>{2}));
  ASSERT_EQ(clicks.size(), 2U);
  EXPECT_EQ(clicks[0]->button, StatusItemClick::Button::right);
  EXPECT_FALSE(clicks[1]);
}

}  // namespace
}  // namespace velotap::test
