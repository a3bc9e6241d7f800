// The functions of IOKit that the adapters call, as a table: on a Mac it is filled from the
// framework itself, in tests from recorders. Names and signatures are the framework's own.
//
// Objects of IOKit are numbers, released with IOObjectRelease and never with CFRelease. Adding a
// notification takes over one reference to the matching dictionary, also when it fails.
#pragma once

#include <IOKit/IOKitLib.h>

namespace velotap {

struct IoKitApi {
  const mach_port_t* kIOMainPortDefault;
  IONotificationPortRef (*IONotificationPortCreate)(mach_port_t);
  void (*IONotificationPortDestroy)(IONotificationPortRef);
  CFRunLoopSourceRef (*IONotificationPortGetRunLoopSource)(IONotificationPortRef);
  CFMutableDictionaryRef (*IOServiceMatching)(const char*);
  kern_return_t (*IOServiceAddMatchingNotification)(IONotificationPortRef, const io_name_t,
                                                    CFDictionaryRef, IOServiceMatchingCallback,
                                                    void*, io_iterator_t*);
  io_object_t (*IOIteratorNext)(io_iterator_t);
  kern_return_t (*IOObjectRelease)(io_object_t);

  /// The framework of this system. Exists on a Mac only.
  [[nodiscard]] static const IoKitApi& system();
};

}  // namespace velotap
