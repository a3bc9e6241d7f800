// Types of files, as far as the macOS adapters use them.
#pragma once

#include <Foundation/Foundation.h>

__attribute__((availability(macos, introduced = 11.0)))
@interface UTType : NSObject
@end

extern "C" __attribute__((availability(macos, introduced = 11.0))) UTType* const
    UTTypeApplicationBundle;
