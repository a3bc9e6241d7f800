#include "app/main_menu.hpp"

#include <utility>

namespace velotap {

MainMenu::MainMenu(ApplicationEffects application, UpdateActions updates, Localize localize,
                   std::function<void(const std::vector<MenuItem>&)> show)
    : application_(std::move(application)),
      updates_(std::move(updates)),
      localize_(std::move(localize)),
      show_(std::move(show)) {}

void MainMenu::install() {
  menus_ = {applicationMenu(), editMenu(), windowMenu()};
  if (show_) show_(menus_);
}

MenuItem MainMenu::command(std::string_view titleKey, KeyEquivalent key,
                           ResponderCommand responder) const {
  MenuItem item;
  item.title = localize_(titleKey);
  item.key = key;
  item.responder = responder;
  return item;
}

MenuItem MainMenu::applicationMenu() {
  const auto item = [this](std::string_view titleKey, std::function<void()> action) {
    MenuItem made;
    made.title = localize_(titleKey);
    made.action = std::move(action);
    return made;
  };
  MenuItem settings =
      item("Settings…", [this] { application_.openSettings(SettingsPane::general); });
  settings.key = KeyEquivalent{','};
  MenuItem updates = item("Check for Updates…", [this] {
    application_.activate();
    updates_.check();
  });
  if (const auto reason = updates_.unavailableReason()) {
    updates.enabled = false;
    updates.toolTip = localize_(*reason);
  }
  MenuItem quit = item("Quit Velotap", [this] { application_.terminate(); });
  quit.key = KeyEquivalent{'q'};

  MenuItem menu;
  menu.title = localize_("Velotap");
  menu.submenu = {item("About Velotap", [this] { application_.openSettings(SettingsPane::about); }),
                  MenuItem::line(),
                  std::move(settings),
                  std::move(updates),
                  MenuItem::line(),
                  std::move(quit)};
  return menu;
}

MenuItem MainMenu::editMenu() const {
  MenuItem menu;
  menu.title = localize_("Edit");
  menu.submenu = {command("Undo", {'z'}, ResponderCommand::undo),
                  command("Redo", {'z', true}, ResponderCommand::redo),
                  MenuItem::line(),
                  command("Cut", {'x'}, ResponderCommand::cut),
                  command("Copy", {'c'}, ResponderCommand::copy),
                  command("Paste", {'v'}, ResponderCommand::paste),
                  command("Select All", {'a'}, ResponderCommand::selectAll)};
  return menu;
}

MenuItem MainMenu::windowMenu() const {
  MenuItem menu;
  menu.title = localize_("Window");
  menu.submenu = {command("Close", {'w'}, ResponderCommand::close),
                  command("Minimize", {'m'}, ResponderCommand::minimize)};
  return menu;
}

}  // namespace velotap
