// Text input sources and key translation, as far as the macOS adapters use them.
#pragma once

#include <CoreFoundation/CoreFoundation.h>

#ifdef __cplusplus
extern "C" {
#endif

typedef struct OpaqueTISInputSource* TISInputSourceRef;
typedef struct UCKeyboardLayout UCKeyboardLayout;

enum { kUCKeyActionDown = 0 };

extern const CFStringRef kTISPropertyUnicodeKeyLayoutData;
extern const CFStringRef kTISNotifySelectedKeyboardInputSourceChanged;
TISInputSourceRef TISCopyCurrentKeyboardLayoutInputSource(void);
TISInputSourceRef TISCopyCurrentASCIICapableKeyboardLayoutInputSource(void);
void* TISGetInputSourceProperty(TISInputSourceRef source, CFStringRef key);
UInt8 LMGetKbdType(void);
OSStatus UCKeyTranslate(const UCKeyboardLayout* layout, UInt16 key, UInt16 action,
                        UInt32 modifiers, UInt32 keyboardType, OptionBits options,
                        UInt32* deadKeyState, UniCharCount size, UniCharCount* length,
                        UniChar* text);

#ifdef __cplusplus
}
#endif
