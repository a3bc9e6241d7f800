// IOKit's services and their notifications, as far as the macOS adapters use them.
#pragma once

#include <CoreFoundation/CoreFoundation.h>

#ifdef __cplusplus
extern "C" {
#endif

typedef unsigned int mach_port_t;
typedef int kern_return_t;
typedef kern_return_t IOReturn;
typedef mach_port_t io_object_t;
typedef io_object_t io_iterator_t;
typedef io_object_t io_service_t;
typedef char io_name_t[128];
typedef struct IONotificationPort* IONotificationPortRef;

#define KERN_SUCCESS 0
#define kIOReturnSuccess KERN_SUCCESS
#define kIOReturnNoMemory static_cast<IOReturn>(0xe00002bd)
#define kIOFirstMatchNotification "IOServiceFirstMatch"
#define kIOTerminatedNotification "IOServiceTerminate"

extern const mach_port_t kIOMainPortDefault;

IONotificationPortRef IONotificationPortCreate(mach_port_t mainPort);
void IONotificationPortDestroy(IONotificationPortRef port);
CFRunLoopSourceRef IONotificationPortGetRunLoopSource(IONotificationPortRef port);
CFMutableDictionaryRef IOServiceMatching(const char* name);
typedef void (*IOServiceMatchingCallback)(void* context, io_iterator_t iterator);
kern_return_t IOServiceAddMatchingNotification(IONotificationPortRef port, const io_name_t type,
                                               CFDictionaryRef matching,
                                               IOServiceMatchingCallback callback, void* context,
                                               io_iterator_t* iterator);
io_object_t IOIteratorNext(io_iterator_t iterator);
kern_return_t IOObjectRelease(io_object_t object);

#ifdef __cplusplus
}
#endif
