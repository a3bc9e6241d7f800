#include "adapters/macos/cocoa/foundation_text.hpp"
#include "adapters/macos/menus/menu_builder.hpp"

@interface VelotapStatusItemTarget : NSObject
- (instancetype)initWithAction:(std::function<void()>)action;
- (void)clicked:(id)sender;
@end

@implementation VelotapStatusItemTarget {
  std::function<void()> _action;
}

- (instancetype)initWithAction:(std::function<void()>)action {
  self = [super init];
  if (self != nil) _action = std::move(action);
  return self;
}

- (void)clicked:(id)sender {
  static_cast<void>(sender);
  _action();
}

@end

namespace velotap {
namespace {

std::optional<NativeClick> currentClick() {
  NSEvent* event = NSApplication.sharedApplication.currentEvent;
  if (event == nil) return std::nullopt;
  NativeClick click;
  click.control = (event.modifierFlags & NSEventModifierFlagControl) != 0;
  if (event.type == NSEventTypeLeftMouseUp) click.kind = NativeClick::Kind::leftUp;
  if (event.type == NSEventTypeRightMouseUp) click.kind = NativeClick::Kind::rightUp;
  return click;
}

class SystemStatusItem final : public NativeStatusItem {
 public:
  ~SystemStatusItem() override {
    if (item_ != nil) [NSStatusBar.systemStatusBar removeStatusItem:item_];
  }

  void create(std::function<void(const std::optional<NativeClick>&)> clicked) override {
    item_ = [NSStatusBar.systemStatusBar statusItemWithLength:NSSquareStatusItemLength];
    target_ = [[VelotapStatusItemTarget alloc]
        initWithAction:[clicked = std::move(clicked)] { clicked(currentClick()); }];
    item_.button.target = target_;
    item_.button.action = @selector(clicked:);
    [item_.button sendActionOn:NSEventMaskLeftMouseUp | NSEventMaskRightMouseUp];
  }

  void setIcon(const std::string& symbol, const std::string& label) override {
    NSImage* image = [NSImage imageWithSystemSymbolName:foundationText(symbol)
                               accessibilityDescription:foundationText(label)];
    [image setTemplate:YES];
    item_.button.image = image;
    item_.button.toolTip = foundationText(label);
    item_.button.accessibilityLabel = foundationText(label);
    item_.button.appearsDisabled = NO;
  }

  void setVisible(bool visible) override { item_.visible = visible; }

  void popUp(const std::vector<NativeMenuItem>& values) override {
    NSMenu* menu = builtMenu("", values, Enabling::byItem);
    NSStatusBarButton* button = item_.button;
    [button highlight:YES];
    [menu popUpMenuPositioningItem:nil atLocation:CGPoint{0, button.bounds.origin.y} inView:button];
    [button highlight:NO];
  }

 private:
  NSStatusItem* item_ = nil;
  VelotapStatusItemTarget* target_ = nil;  // the button's target is no owner
};

}  // namespace

std::unique_ptr<NativeStatusItem> NativeStatusItem::system() {
  return std::make_unique<SystemStatusItem>();
}

}  // namespace velotap
