// Changes of an object's properties, by name. Objective-C++ only; begun and ended on the main
// thread.
#pragma once

#import <Foundation/Foundation.h>

#include <functional>

#include "base/observer_list.hpp"

namespace velotap {

/// Calls back after each change, on the thread that made it, until the observation ends. The object
/// is kept alive as long.
[[nodiscard]] Observation observeKeyPaths(NSObject* object, NSArray<NSString*>* paths,
                                          std::function<void()> changed);

}  // namespace velotap
