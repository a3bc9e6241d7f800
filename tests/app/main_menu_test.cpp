#include "app/main_menu.hpp"

#include <gtest/gtest.h>

#include <string>
#include <utility>
#include <vector>

namespace velotap {
namespace {

using Lines = std::vector<std::string>;

class MainMenuTest : public ::testing::Test {
 protected:
  static std::string describe(const MenuItem& item) {
    if (item.separator) return "--";
    std::string line = item.title;
    if (item.key) {
      line += item.key->shift ? " Shift-" : " ";
      line += item.key->key;
    }
    return line;
  }
  Lines lines(std::size_t menu) const {
    Lines all;
    for (const MenuItem& item : menu_.menus().at(menu).submenu) all.push_back(describe(item));
    return all;
  }
  Lines take() { return std::exchange(calls_, {}); }

  std::string suffix_;
  std::optional<std::string> noUpdates_;
  Lines calls_;
  MainMenu menu_{
      {.activate = [this] { calls_.emplace_back("activate"); },
       .terminate = [this] { calls_.emplace_back("terminate"); },
       .openSettings =
           [this](SettingsPane pane) {
             calls_.emplace_back(pane == SettingsPane::about ? "about" : "general");
           }},
      {.unavailableReason = [this] { return noUpdates_; },
       .check = [this] { calls_.emplace_back("check"); }},
      [this](std::string_view key) { return std::string(key) + suffix_; },
      [this](const auto& menus) { calls_.push_back("show " + std::to_string(menus.size())); }};
};

TEST_F(MainMenuTest, HasThreeMenus) {
  menu_.install();
  EXPECT_EQ(take(), Lines{"show 3"});
  EXPECT_EQ(menu_.menus()[0].title, "Velotap");
  EXPECT_EQ(menu_.menus()[1].title, "Edit");
  EXPECT_EQ(menu_.menus()[2].title, "Window");
  EXPECT_EQ(lines(0), (Lines{"About Velotap", "--", "Settings… ,", "Check for Updates…", "--",
                             "Quit Velotap q"}));
  EXPECT_EQ(lines(1),
            (Lines{"Undo z", "Redo Shift-z", "--", "Cut x", "Copy c", "Paste v", "Select All a"}));
  EXPECT_EQ(lines(2), (Lines{"Close w", "Minimize m"}));
}

TEST_F(MainMenuTest, ItemsDoWhatTheySay) {
  menu_.install();
  take();
  const auto& items = menu_.menus()[0].submenu;
  items[0].action();
  items[2].action();
  items[3].action();
  items[5].action();
  EXPECT_EQ(take(), (Lines{"about", "general", "activate", "check", "terminate"}));
}

TEST_F(MainMenuTest, EditingAndWindowsBelongToWhoeverHasTheKeyboard) {
  menu_.install();
  const std::vector<std::optional<ResponderCommand>> edit = {
      ResponderCommand::undo,     ResponderCommand::redo, std::nullopt,
      ResponderCommand::cut,      ResponderCommand::copy, ResponderCommand::paste,
      ResponderCommand::selectAll};
  for (std::size_t i = 0; i < edit.size(); ++i) {
    EXPECT_EQ(menu_.menus()[1].submenu[i].responder, edit[i]);
    EXPECT_FALSE(menu_.menus()[1].submenu[i].action);
  }
  EXPECT_EQ(menu_.menus()[2].submenu[0].responder, ResponderCommand::close);
  EXPECT_EQ(menu_.menus()[2].submenu[1].responder, ResponderCommand::minimize);
}

TEST_F(MainMenuTest, InstallingAgainSpeaksTheNewLanguage) {
  menu_.install();
  suffix_ = " (de)";
  menu_.install();
  EXPECT_EQ(menu_.menus()[1].title, "Edit (de)");
  EXPECT_EQ(menu_.menus()[1].submenu[0].title, "Undo (de)");
}

TEST_F(MainMenuTest, SaysWhyThereAreNoUpdates) {
  noUpdates_ = "because";
  menu_.install();
  EXPECT_FALSE(menu_.menus()[0].submenu[3].enabled);
  EXPECT_EQ(menu_.menus()[0].submenu[3].toolTip, "because");
}

}  // namespace
}  // namespace velotap
