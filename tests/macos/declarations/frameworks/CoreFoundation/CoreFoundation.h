// Core Foundation, as far as the macOS adapters use it.
#pragma once

#include <stdint.h>

#ifdef __cplusplus
extern "C" {
#endif

typedef unsigned char Boolean;
typedef unsigned char UInt8;
typedef int8_t SInt8;
typedef uint16_t UInt16;
typedef uint16_t UniChar;
typedef unsigned int UInt32;
typedef int SInt32;
typedef unsigned long UniCharCount;
typedef SInt32 OSStatus;
typedef UInt32 OptionBits;

typedef signed long CFIndex;
typedef unsigned long CFTypeID;
typedef unsigned long CFOptionFlags;
typedef unsigned long CFHashCode;
typedef double CFTimeInterval;
typedef UInt32 CFStringEncoding;

typedef const void* CFTypeRef;
typedef CFTypeRef CFPropertyListRef;
typedef const struct OpaqueCFAllocator* CFAllocatorRef;
typedef const struct OpaqueCFString* CFStringRef;
typedef const struct OpaqueCFArray* CFArrayRef;
typedef const struct OpaqueCFDictionary* CFDictionaryRef;
typedef struct OpaqueCFDictionary* CFMutableDictionaryRef;
typedef const struct OpaqueCFNumber* CFNumberRef;
typedef const struct OpaqueCFBoolean* CFBooleanRef;
typedef const struct OpaqueCFData* CFDataRef;
typedef struct OpaqueCFRunLoop* CFRunLoopRef;
typedef struct OpaqueCFRunLoopSource* CFRunLoopSourceRef;
typedef struct OpaqueCFMachPort* CFMachPortRef;
typedef struct OpaqueCFNotificationCenter* CFNotificationCenterRef;
typedef CFStringRef CFRunLoopMode;
typedef CFStringRef CFNotificationName;

typedef struct {
  CFIndex location;
  CFIndex length;
} CFRange;

typedef struct OpaqueCFArrayCallBacks CFArrayCallBacks;
typedef struct OpaqueCFDictionaryKeyCallBacks CFDictionaryKeyCallBacks;
typedef struct OpaqueCFDictionaryValueCallBacks CFDictionaryValueCallBacks;

enum : CFStringEncoding { kCFStringEncodingUTF8 = 0x08000100 };

enum CFNumberType : CFIndex { kCFNumberSInt64Type = 4, kCFNumberFloat64Type = 6 };

enum CFRunLoopRunResult : SInt32 {
  kCFRunLoopRunFinished = 1,
  kCFRunLoopRunStopped = 2,
  kCFRunLoopRunTimedOut = 3,
  kCFRunLoopRunHandledSource = 4
};

enum CFNotificationSuspensionBehavior : CFIndex {
  CFNotificationSuspensionBehaviorDrop = 1,
  CFNotificationSuspensionBehaviorCoalesce = 2,
  CFNotificationSuspensionBehaviorHold = 3,
  CFNotificationSuspensionBehaviorDeliverImmediately = 4
};

CFTypeRef CFRetain(CFTypeRef object);
void CFRelease(CFTypeRef object);
CFTypeID CFGetTypeID(CFTypeRef object);

extern const CFArrayCallBacks kCFTypeArrayCallBacks;
CFArrayRef CFArrayCreate(CFAllocatorRef allocator, const void** values, CFIndex count,
                         const CFArrayCallBacks* callBacks);
CFIndex CFArrayGetCount(CFArrayRef array);
const void* CFArrayGetValueAtIndex(CFArrayRef array, CFIndex index);
CFTypeID CFArrayGetTypeID(void);

extern const CFBooleanRef kCFBooleanTrue;
extern const CFBooleanRef kCFBooleanFalse;
Boolean CFBooleanGetValue(CFBooleanRef boolean);
CFTypeID CFBooleanGetTypeID(void);

CFNumberRef CFNumberCreate(CFAllocatorRef allocator, CFNumberType type, const void* value);
Boolean CFNumberGetValue(CFNumberRef number, CFNumberType type, void* value);
Boolean CFNumberIsFloatType(CFNumberRef number);
CFTypeID CFNumberGetTypeID(void);

CFStringRef CFStringCreateWithBytes(CFAllocatorRef allocator, const UInt8* bytes, CFIndex count,
                                    CFStringEncoding encoding, Boolean isExternalRepresentation);
CFIndex CFStringGetLength(CFStringRef string);
CFIndex CFStringGetMaximumSizeForEncoding(CFIndex length, CFStringEncoding encoding);
CFIndex CFStringGetBytes(CFStringRef string, CFRange range, CFStringEncoding encoding,
                         UInt8 lossByte, Boolean isExternalRepresentation, UInt8* buffer,
                         CFIndex size, CFIndex* used);
CFTypeID CFStringGetTypeID(void);

const UInt8* CFDataGetBytePtr(CFDataRef data);
CFIndex CFDataGetLength(CFDataRef data);
CFTypeID CFDataGetTypeID(void);

extern const CFDictionaryKeyCallBacks kCFTypeDictionaryKeyCallBacks;
extern const CFDictionaryValueCallBacks kCFTypeDictionaryValueCallBacks;
CFDictionaryRef CFDictionaryCreate(CFAllocatorRef allocator, const void** keys,
                                   const void** values, CFIndex count,
                                   const CFDictionaryKeyCallBacks* keyCallBacks,
                                   const CFDictionaryValueCallBacks* valueCallBacks);
CFIndex CFDictionaryGetCount(CFDictionaryRef dictionary);
void CFDictionaryGetKeysAndValues(CFDictionaryRef dictionary, const void** keys,
                                  const void** values);
CFTypeID CFDictionaryGetTypeID(void);

extern const CFRunLoopMode kCFRunLoopCommonModes;
extern const CFRunLoopMode kCFRunLoopDefaultMode;
CFRunLoopRef CFRunLoopGetMain(void);
void CFRunLoopAddSource(CFRunLoopRef loop, CFRunLoopSourceRef source, CFRunLoopMode mode);
void CFRunLoopRemoveSource(CFRunLoopRef loop, CFRunLoopSourceRef source, CFRunLoopMode mode);
CFRunLoopRunResult CFRunLoopRunInMode(CFRunLoopMode mode, CFTimeInterval seconds,
                                      Boolean returnAfterSourceHandled);

CFRunLoopSourceRef CFMachPortCreateRunLoopSource(CFAllocatorRef allocator, CFMachPortRef port,
                                                 CFIndex order);
void CFMachPortInvalidate(CFMachPortRef port);

extern const CFStringRef kCFPreferencesCurrentUser;
extern const CFStringRef kCFPreferencesAnyHost;
CFPropertyListRef CFPreferencesCopyAppValue(CFStringRef key, CFStringRef application);
CFDictionaryRef CFPreferencesCopyMultiple(CFArrayRef keys, CFStringRef application,
                                          CFStringRef user, CFStringRef host);
void CFPreferencesSetMultiple(CFDictionaryRef set, CFArrayRef removed, CFStringRef application,
                              CFStringRef user, CFStringRef host);
Boolean CFPreferencesSynchronize(CFStringRef application, CFStringRef user, CFStringRef host);

typedef void (*CFNotificationCallback)(CFNotificationCenterRef center, void* observer,
                                       CFNotificationName name, const void* object,
                                       CFDictionaryRef userInfo);
CFNotificationCenterRef CFNotificationCenterGetDistributedCenter(void);
void CFNotificationCenterAddObserver(CFNotificationCenterRef center, const void* observer,
                                     CFNotificationCallback callback, CFStringRef name,
                                     const void* object,
                                     CFNotificationSuspensionBehavior suspension);
void CFNotificationCenterRemoveEveryObserver(CFNotificationCenterRef center, const void* observer);

#ifdef __cplusplus
}
#endif
