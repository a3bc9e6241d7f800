#include "adapters/macos/core_foundation/core_foundation_api.hpp"

namespace velotap {

const CoreFoundationApi& CoreFoundationApi::system() {
  static const CoreFoundationApi api = {
      .CFRetain = &::CFRetain,
      .CFRelease = &::CFRelease,
      .CFGetTypeID = &::CFGetTypeID,
      .kCFTypeArrayCallBacks = &::kCFTypeArrayCallBacks,
      .CFArrayCreate = &::CFArrayCreate,
      .CFArrayGetCount = &::CFArrayGetCount,
      .CFArrayGetValueAtIndex = &::CFArrayGetValueAtIndex,
      .CFArrayGetTypeID = &::CFArrayGetTypeID,
      .kCFBooleanTrue = &::kCFBooleanTrue,
      .kCFBooleanFalse = &::kCFBooleanFalse,
      .CFBooleanGetValue = &::CFBooleanGetValue,
      .CFBooleanGetTypeID = &::CFBooleanGetTypeID,
      .CFNumberCreate = &::CFNumberCreate,
      .CFNumberGetValue = &::CFNumberGetValue,
      .CFNumberIsFloatType = &::CFNumberIsFloatType,
      .CFNumberGetTypeID = &::CFNumberGetTypeID,
      .CFStringCreateWithBytes = &::CFStringCreateWithBytes,
      .CFStringGetLength = &::CFStringGetLength,
      .CFStringGetMaximumSizeForEncoding = &::CFStringGetMaximumSizeForEncoding,
      .CFStringGetBytes = &::CFStringGetBytes,
      .CFStringGetTypeID = &::CFStringGetTypeID,
      .CFDataGetBytePtr = &::CFDataGetBytePtr,
      .CFDataGetLength = &::CFDataGetLength,
      .CFDataGetTypeID = &::CFDataGetTypeID,
      .kCFTypeDictionaryKeyCallBacks = &::kCFTypeDictionaryKeyCallBacks,
      .kCFTypeDictionaryValueCallBacks = &::kCFTypeDictionaryValueCallBacks,
      .CFDictionaryCreate = &::CFDictionaryCreate,
      .CFDictionaryGetCount = &::CFDictionaryGetCount,
      .CFDictionaryGetKeysAndValues = &::CFDictionaryGetKeysAndValues,
      .CFDictionaryGetTypeID = &::CFDictionaryGetTypeID,
      .kCFRunLoopCommonModes = &::kCFRunLoopCommonModes,
      .kCFRunLoopDefaultMode = &::kCFRunLoopDefaultMode,
      .CFRunLoopGetMain = &::CFRunLoopGetMain,
      .CFRunLoopAddSource = &::CFRunLoopAddSource,
      .CFRunLoopRemoveSource = &::CFRunLoopRemoveSource,
      .CFRunLoopRunInMode = &::CFRunLoopRunInMode,
      .CFMachPortCreateRunLoopSource = &::CFMachPortCreateRunLoopSource,
      .CFMachPortInvalidate = &::CFMachPortInvalidate,
      .kCFPreferencesCurrentUser = &::kCFPreferencesCurrentUser,
      .kCFPreferencesAnyHost = &::kCFPreferencesAnyHost,
      .CFPreferencesCopyAppValue = &::CFPreferencesCopyAppValue,
      .CFPreferencesCopyMultiple = &::CFPreferencesCopyMultiple,
      .CFPreferencesSetMultiple = &::CFPreferencesSetMultiple,
      .CFPreferencesSynchronize = &::CFPreferencesSynchronize,
      .CFNotificationCenterGetDistributedCenter = &::CFNotificationCenterGetDistributedCenter,
      .CFNotificationCenterAddObserver = &::CFNotificationCenterAddObserver,
      .CFNotificationCenterRemoveEveryObserver = &::CFNotificationCenterRemoveEveryObserver,
  };
  return api;
}

}  // namespace velotap
