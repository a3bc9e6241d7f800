#include "adapters/macos/menus/menu_builder.hpp"

#include "adapters/macos/cocoa/foundation_text.hpp"

// What a menu item sends its action to. The item itself keeps it alive.
@interface VelotapMenuTarget : NSObject <NSMenuItemValidation>
- (instancetype)initWithAction:(std::function<void()>)action enabled:(BOOL)enabled;
- (void)chosen:(id)sender;
@end

@implementation VelotapMenuTarget {
  std::function<void()> _action;
  BOOL _enabled;
}

- (instancetype)initWithAction:(std::function<void()>)action enabled:(BOOL)enabled {
  self = [super init];
  if (self != nil) {
    _action = std::move(action);
    _enabled = enabled;
  }
  return self;
}

- (void)chosen:(id)sender {
  static_cast<void>(sender);
  // A copy: the action may replace the menu, and this target with it.
  std::function<void()> action = _action;
  if (action) action();
}

- (BOOL)validateMenuItem:(NSMenuItem*)item {
  static_cast<void>(item);
  return _enabled;
}

@end

namespace velotap {
namespace {

// The system gives the parent of a submenu an action of its own, if it is left without one.
SEL actionOf(const NativeMenuItem& value) {
  if (!value.submenu.empty()) return nullptr;
  return value.selector.empty() ? @selector(chosen:) : sel_registerName(value.selector.c_str());
}

NSMenuItem* builtItem(const NativeMenuItem& value, Enabling enabling) {
  if (value.separator) return [NSMenuItem separatorItem];
  NSMenuItem* item = [[NSMenuItem alloc] initWithTitle:foundationText(value.title)
                                                action:actionOf(value)
                                         keyEquivalent:foundationText(value.key)];
  if (value.keyShift) {
    item.keyEquivalentModifierMask = NSEventModifierFlagCommand | NSEventModifierFlagShift;
  }
  if (value.submenu.empty() && value.selector.empty()) {
    VelotapMenuTarget* target = [[VelotapMenuTarget alloc] initWithAction:value.action
                                                                  enabled:value.enabled];
    item.target = target;
    item.representedObject = target;  // the item's target is no owner
  }
  item.enabled = value.enabled;
  item.hidden = value.hidden;
  item.state = value.checked.value_or(false) ? NSControlStateValueOn : NSControlStateValueOff;
  if (!value.toolTip.empty()) item.toolTip = foundationText(value.toolTip);
  if (!value.submenu.empty()) item.submenu = builtMenu(value.title, value.submenu, enabling);
  return item;
}

}  // namespace

NSMenu* builtMenu(const std::string& title, const std::vector<NativeMenuItem>& items,
                  Enabling enabling) {
  NSMenu* menu = [[NSMenu alloc] initWithTitle:foundationText(title)];
  menu.autoenablesItems = enabling == Enabling::bySystem;
  for (const NativeMenuItem& item : items) [menu addItem:builtItem(item, enabling)];
  return menu;
}

}  // namespace velotap
