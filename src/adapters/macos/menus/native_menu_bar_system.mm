#include "adapters/macos/menus/menu_builder.hpp"

namespace velotap {
namespace {

class SystemMenuBar final : public NativeMenuBar {
 public:
  void show(const std::vector<NativeMenuItem>& menus) override {
    NSApplication* application = NSApplication.sharedApplication;
    NSMenu* bar = builtMenu("", menus, Enabling::bySystem);
    application.mainMenu = bar;
    if (bar.numberOfItems > 0) {
      application.windowsMenu = [bar itemAtIndex:bar.numberOfItems - 1].submenu;
    }
  }

  void send(const std::string& selector) override {
    [NSApplication.sharedApplication sendAction:sel_registerName(selector.c_str()) to:nil from:nil];
  }
};

}  // namespace

std::unique_ptr<NativeMenuBar> NativeMenuBar::system() {
  return std::make_unique<SystemMenuBar>();
}

}  // namespace velotap
