#include "adapters/macos/keyboard/text_input_api.hpp"

namespace velotap {

const TextInputApi& TextInputApi::system() {
  static const TextInputApi api = {
      .kTISPropertyUnicodeKeyLayoutData = &::kTISPropertyUnicodeKeyLayoutData,
      .kTISNotifySelectedKeyboardInputSourceChanged =
          &::kTISNotifySelectedKeyboardInputSourceChanged,
      .TISCopyCurrentKeyboardLayoutInputSource = &::TISCopyCurrentKeyboardLayoutInputSource,
      .TISCopyCurrentASCIICapableKeyboardLayoutInputSource =
          &::TISCopyCurrentASCIICapableKeyboardLayoutInputSource,
      .TISGetInputSourceProperty = &::TISGetInputSourceProperty,
      .LMGetKbdType = &::LMGetKbdType,
      .UCKeyTranslate = &::UCKeyTranslate,
  };
  return api;
}

}  // namespace velotap
