#include "adapters/macos/quartz/quartz_api.hpp"

namespace velotap {

const QuartzApi& QuartzApi::system() {
  static const QuartzApi api = {
      .CGEventCreate = &::CGEventCreate,
      .CGEventCreateMouseEvent = &::CGEventCreateMouseEvent,
      .CGEventCreateKeyboardEvent = &::CGEventCreateKeyboardEvent,
      .CGEventGetLocation = &::CGEventGetLocation,
      .CGEventSetLocation = &::CGEventSetLocation,
      .CGEventSetType = &::CGEventSetType,
      .CGEventSetFlags = &::CGEventSetFlags,
      .CGEventGetIntegerValueField = &::CGEventGetIntegerValueField,
      .CGEventSetIntegerValueField = &::CGEventSetIntegerValueField,
      .CGEventSetDoubleValueField = &::CGEventSetDoubleValueField,
      .CGEventPost = &::CGEventPost,
      .CGEventTapCreate = &::CGEventTapCreate,
      .CGEventTapEnable = &::CGEventTapEnable,
      .CGEventTapIsEnabled = &::CGEventTapIsEnabled,
      .CGDisplayRegisterReconfigurationCallback = &::CGDisplayRegisterReconfigurationCallback,
      .CGDisplayRemoveReconfigurationCallback = &::CGDisplayRemoveReconfigurationCallback,
  };
  return api;
}

}  // namespace velotap
