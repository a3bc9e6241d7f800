#include "app/macos/native_menus.hpp"

#include <string_view>
#include <utility>

namespace velotap {
namespace {

// What the first responder that knows the command is sent.
std::string_view selectorOf(ResponderCommand command) {
  switch (command) {
    case ResponderCommand::undo:
      return "undo:";
    case ResponderCommand::redo:
      return "redo:";
    case ResponderCommand::cut:
      return "cut:";
    case ResponderCommand::copy:
      return "copy:";
    case ResponderCommand::paste:
      return "paste:";
    case ResponderCommand::selectAll:
      return "selectAll:";
    case ResponderCommand::close:
      return "performClose:";
    case ResponderCommand::minimize:
      break;
  }
  return "performMiniaturize:";
}

NativeMenuItem nativeItem(const MenuItem& item) {
  NativeMenuItem native;
  native.title = item.title;
  native.separator = item.separator;
  native.enabled = item.enabled;
  native.hidden = item.hidden;
  native.checked = item.checked;
  if (item.key) {
    native.key = std::string(1, item.key->key);
    native.keyShift = item.key->shift;
  }
  native.toolTip = item.toolTip;
  if (item.responder) native.selector = selectorOf(*item.responder);
  native.action = item.action;
  native.submenu = nativeMenu(item.submenu);
  return native;
}

// What a window does on its frame, which every window of the system knows.
bool isOfTheFrame(ResponderCommand command) {
  return command == ResponderCommand::close || command == ResponderCommand::minimize;
}

void askFirst(const MenuItem& item, NativeMenuItem& native, NativeMenuBar& bar,
              const std::function<bool(ResponderCommand)>& edit) {
  for (std::size_t i = 0; i < item.submenu.size(); ++i) {
    askFirst(item.submenu[i], native.submenu[i], bar, edit);
  }
  if (!item.responder || isOfTheFrame(*item.responder)) return;
  native.action = [&bar, edit, command = *item.responder, selector = native.selector] {
    if (!edit(command)) bar.send(selector);
  };
  native.selector.clear();
}

}  // namespace

std::vector<NativeMenuItem> nativeMenuBar(const std::vector<MenuItem>& menus, NativeMenuBar& bar,
                                          const std::function<bool(ResponderCommand)>& edit) {
  std::vector<NativeMenuItem> native = nativeMenu(menus);
  if (!edit) return native;
  for (std::size_t i = 0; i < menus.size(); ++i) askFirst(menus[i], native[i], bar, edit);
  return native;
}

std::vector<NativeMenuItem> nativeMenu(const std::vector<MenuItem>& items) {
  std::vector<NativeMenuItem> native;
  native.reserve(items.size());
  for (const MenuItem& item : items) native.push_back(nativeItem(item));
  return native;
}

std::optional<StatusItemClick> statusItemClick(const std::optional<NativeClick>& click) {
  if (!click) return std::nullopt;
  StatusItemClick told;
  told.controlKey = click->control;
  switch (click->kind) {
    case NativeClick::Kind::leftUp:
      told.button = StatusItemClick::Button::left;
      break;
    case NativeClick::Kind::rightUp:
      told.button = StatusItemClick::Button::right;
      break;
    case NativeClick::Kind::other:
      told.button = StatusItemClick::Button::other;
      break;
  }
  return told;
}

TrayMenu::View nativeTrayView(NativeStatusItem& item,
                              std::function<void(const std::optional<StatusItemClick>&)> clicked) {
  return {
      .create =
          [&item, clicked = std::move(clicked)] {
            item.create([clicked](const std::optional<NativeClick>& click) {
              clicked(statusItemClick(click));
            });
          },
      .setIcon = [&item](const StatusIcon& icon) { item.setIcon(icon.symbol, icon.label); },
      .setVisible = [&item](bool visible) { item.setVisible(visible); },
      .popUpMenu = [&item](const std::vector<MenuItem>& menu) { item.popUp(nativeMenu(menu)); }};
}

}  // namespace velotap
