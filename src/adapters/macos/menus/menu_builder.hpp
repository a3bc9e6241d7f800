// Makes AppKit menus of their values. Objective-C++ only; main thread.
#pragma once

#import <AppKit/AppKit.h>

#include "adapters/macos/menus/native_menu.hpp"

namespace velotap {

/// Who says whether an item can be chosen: the item alone, or the system for those that send a
/// selector, by whether somebody knows it.
enum class Enabling { byItem, bySystem };

[[nodiscard]] NSMenu* builtMenu(const std::string& title, const std::vector<NativeMenuItem>& items,
                                Enabling enabling);

}  // namespace velotap
