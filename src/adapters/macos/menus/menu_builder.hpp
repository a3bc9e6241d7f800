// Makes AppKit menus of their values. Objective-C++ only; main thread.
#pragma once

#import <AppKit/AppKit.h>

#include "adapters/macos/menus/native_menu.hpp"

namespace velotap {

/// Items that send a selector are enabled by whether somebody knows it; all others as they say.
[[nodiscard]] NSMenu* builtMenu(const std::string& title, const std::vector<NativeMenuItem>& items);

}  // namespace velotap
