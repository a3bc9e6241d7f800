// The functions of Core Foundation that the adapters call, as a table: on a Mac it is filled from
// the framework itself, in tests from recorders.
//
// Members have the framework's own names and signatures; a difference does not compile where the
// table is filled. Constants are pointers to the framework's variables, which are set at load time.
// Ownership follows the framework: what Create or Copy returns is the caller's to release, what Get
// returns is borrowed. Neither CFRetain nor CFRelease takes null.
#pragma once

#include <CoreFoundation/CoreFoundation.h>

namespace velotap {

struct CoreFoundationApi {
  CFTypeRef (*CFRetain)(CFTypeRef);
  void (*CFRelease)(CFTypeRef);
  CFTypeID (*CFGetTypeID)(CFTypeRef);

  const CFArrayCallBacks* kCFTypeArrayCallBacks;
  CFArrayRef (*CFArrayCreate)(CFAllocatorRef, const void**, CFIndex, const CFArrayCallBacks*);
  CFIndex (*CFArrayGetCount)(CFArrayRef);
  const void* (*CFArrayGetValueAtIndex)(CFArrayRef, CFIndex);
  CFTypeID (*CFArrayGetTypeID)();

  const CFBooleanRef* kCFBooleanTrue;
  const CFBooleanRef* kCFBooleanFalse;
  Boolean (*CFBooleanGetValue)(CFBooleanRef);
  CFTypeID (*CFBooleanGetTypeID)();

  CFNumberRef (*CFNumberCreate)(CFAllocatorRef, CFNumberType, const void*);
  Boolean (*CFNumberGetValue)(CFNumberRef, CFNumberType, void*);
  Boolean (*CFNumberIsFloatType)(CFNumberRef);
  CFTypeID (*CFNumberGetTypeID)();

  CFStringRef (*CFStringCreateWithBytes)(CFAllocatorRef, const UInt8*, CFIndex, CFStringEncoding,
                                         Boolean);
  CFIndex (*CFStringGetLength)(CFStringRef);
  CFIndex (*CFStringGetMaximumSizeForEncoding)(CFIndex, CFStringEncoding);
  CFIndex (*CFStringGetBytes)(CFStringRef, CFRange, CFStringEncoding, UInt8, Boolean, UInt8*,
                              CFIndex, CFIndex*);
  CFTypeID (*CFStringGetTypeID)();

  const UInt8* (*CFDataGetBytePtr)(CFDataRef);
  CFIndex (*CFDataGetLength)(CFDataRef);
  CFTypeID (*CFDataGetTypeID)();

  const CFDictionaryKeyCallBacks* kCFTypeDictionaryKeyCallBacks;
  const CFDictionaryValueCallBacks* kCFTypeDictionaryValueCallBacks;
  CFDictionaryRef (*CFDictionaryCreate)(CFAllocatorRef, const void**, const void**, CFIndex,
                                        const CFDictionaryKeyCallBacks*,
                                        const CFDictionaryValueCallBacks*);
  CFIndex (*CFDictionaryGetCount)(CFDictionaryRef);
  void (*CFDictionaryGetKeysAndValues)(CFDictionaryRef, const void**, const void**);
  CFTypeID (*CFDictionaryGetTypeID)();

  const CFRunLoopMode* kCFRunLoopCommonModes;
  const CFRunLoopMode* kCFRunLoopDefaultMode;
  CFRunLoopRef (*CFRunLoopGetMain)();
  void (*CFRunLoopAddSource)(CFRunLoopRef, CFRunLoopSourceRef, CFRunLoopMode);
  void (*CFRunLoopRemoveSource)(CFRunLoopRef, CFRunLoopSourceRef, CFRunLoopMode);
  CFRunLoopRunResult (*CFRunLoopRunInMode)(CFRunLoopMode, CFTimeInterval, Boolean);

  CFRunLoopSourceRef (*CFMachPortCreateRunLoopSource)(CFAllocatorRef, CFMachPortRef, CFIndex);
  void (*CFMachPortInvalidate)(CFMachPortRef);

  const CFStringRef* kCFPreferencesCurrentUser;
  const CFStringRef* kCFPreferencesAnyHost;
  CFPropertyListRef (*CFPreferencesCopyAppValue)(CFStringRef, CFStringRef);
  CFDictionaryRef (*CFPreferencesCopyMultiple)(CFArrayRef, CFStringRef, CFStringRef, CFStringRef);
  void (*CFPreferencesSetMultiple)(CFDictionaryRef, CFArrayRef, CFStringRef, CFStringRef,
                                   CFStringRef);
  Boolean (*CFPreferencesSynchronize)(CFStringRef, CFStringRef, CFStringRef);

  CFNotificationCenterRef (*CFNotificationCenterGetDistributedCenter)();
  void (*CFNotificationCenterAddObserver)(CFNotificationCenterRef, const void*,
                                          CFNotificationCallback, CFStringRef, const void*,
                                          CFNotificationSuspensionBehavior);
  void (*CFNotificationCenterRemoveEveryObserver)(CFNotificationCenterRef, const void*);

  /// The framework of this system. Exists on a Mac only.
  [[nodiscard]] static const CoreFoundationApi& system();
};

}  // namespace velotap
