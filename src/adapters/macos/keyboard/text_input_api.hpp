// The functions of the text input and key translation services that the adapters call, as a table:
// on a Mac it is filled from the frameworks themselves, in tests from recorders. Names and
// signatures are the frameworks' own. Main thread only: the services end the process elsewhere.
#pragma once

#include <Carbon/Carbon.h>

namespace velotap {

struct TextInputApi {
  const CFStringRef* kTISPropertyUnicodeKeyLayoutData;
  const CFStringRef* kTISNotifySelectedKeyboardInputSourceChanged;
  TISInputSourceRef (*TISCopyCurrentKeyboardLayoutInputSource)();
  TISInputSourceRef (*TISCopyCurrentASCIICapableKeyboardLayoutInputSource)();
  void* (*TISGetInputSourceProperty)(TISInputSourceRef, CFStringRef);
  UInt8 (*LMGetKbdType)();
  OSStatus (*UCKeyTranslate)(const UCKeyboardLayout*, UInt16, UInt16, UInt32, UInt32, OptionBits,
                             UInt32*, UniCharCount, UniCharCount*, UniChar*);

  /// The services of this system. Exists on a Mac only.
  [[nodiscard]] static const TextInputApi& system();
};

}  // namespace velotap
