#import <Foundation/Foundation.h>

#include "adapters/macos/cocoa/cocoa_folders.hpp"
#include "adapters/macos/cocoa/foundation_text.hpp"

namespace velotap {

std::string applicationSupportFolder() {
  NSArray<NSURL*>* folders =
      [NSFileManager.defaultManager URLsForDirectory:NSApplicationSupportDirectory
                                           inDomains:NSUserDomainMask];
  if (folders.count == 0) return {};
  return textOf(folders[0].path).value_or("");
}

}  // namespace velotap
