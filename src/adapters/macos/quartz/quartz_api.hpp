// The functions of Core Graphics that the adapters call, as a table: on a Mac it is filled from the
// framework itself, in tests from recorders. Names and signatures are the framework's own.
#pragma once

#include <CoreGraphics/CoreGraphics.h>

#include <cstdint>

namespace velotap {

struct QuartzApi {
  CGEventRef (*CGEventCreate)(CGEventSourceRef);
  CGEventRef (*CGEventCreateMouseEvent)(CGEventSourceRef, CGEventType, CGPoint, CGMouseButton);
  CGEventRef (*CGEventCreateKeyboardEvent)(CGEventSourceRef, CGKeyCode, bool);
  CGPoint (*CGEventGetLocation)(CGEventRef);
  void (*CGEventSetLocation)(CGEventRef, CGPoint);
  void (*CGEventSetType)(CGEventRef, CGEventType);
  void (*CGEventSetFlags)(CGEventRef, CGEventFlags);
  std::int64_t (*CGEventGetIntegerValueField)(CGEventRef, CGEventField);
  void (*CGEventSetIntegerValueField)(CGEventRef, CGEventField, std::int64_t);
  void (*CGEventSetDoubleValueField)(CGEventRef, CGEventField, double);
  void (*CGEventPost)(CGEventTapLocation, CGEventRef);

  CFMachPortRef (*CGEventTapCreate)(CGEventTapLocation, CGEventTapPlacement, CGEventTapOptions,
                                    CGEventMask, CGEventTapCallBack, void*);
  void (*CGEventTapEnable)(CFMachPortRef, bool);
  bool (*CGEventTapIsEnabled)(CFMachPortRef);

  CGError (*CGDisplayRegisterReconfigurationCallback)(CGDisplayReconfigurationCallBack, void*);
  CGError (*CGDisplayRemoveReconfigurationCallback)(CGDisplayReconfigurationCallBack, void*);

  /// The framework of this system. Exists on a Mac only.
  [[nodiscard]] static const QuartzApi& system();
};

}  // namespace velotap
