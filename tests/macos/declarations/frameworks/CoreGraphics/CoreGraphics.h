// Quartz events and displays, as far as the macOS adapters use them.
#pragma once

#include <CoreFoundation/CoreFoundation.h>

#ifdef __cplusplus
extern "C" {
#endif

typedef double CGFloat;
typedef struct CGPoint {
  CGFloat x;
  CGFloat y;
} CGPoint;
typedef struct CGSize {
  CGFloat width;
  CGFloat height;
} CGSize;
typedef struct CGRect {
  CGPoint origin;
  CGSize size;
} CGRect;

typedef struct OpaqueCGEvent* CGEventRef;
typedef struct OpaqueCGEventSource* CGEventSourceRef;
typedef struct OpaqueCGEventTapProxy* CGEventTapProxy;
typedef uint64_t CGEventFlags;
typedef uint64_t CGEventMask;
typedef uint16_t CGKeyCode;
typedef uint32_t CGDirectDisplayID;
typedef uint32_t CGDisplayChangeSummaryFlags;

enum CGError : int32_t { kCGErrorSuccess = 0, kCGErrorFailure = 1000 };

enum CGEventType : uint32_t {
  kCGEventNull = 0,
  kCGEventLeftMouseDown = 1,
  kCGEventLeftMouseUp = 2,
  kCGEventRightMouseDown = 3,
  kCGEventRightMouseUp = 4,
  kCGEventMouseMoved = 5,
  kCGEventLeftMouseDragged = 6,
  kCGEventRightMouseDragged = 7,
  kCGEventKeyDown = 10,
  kCGEventKeyUp = 11,
  kCGEventOtherMouseDown = 25,
  kCGEventOtherMouseUp = 26,
  kCGEventOtherMouseDragged = 27,
  kCGEventTapDisabledByTimeout = 0xFFFFFFFE,
  kCGEventTapDisabledByUserInput = 0xFFFFFFFF
};

enum CGMouseButton : uint32_t {
  kCGMouseButtonLeft = 0,
  kCGMouseButtonRight = 1,
  kCGMouseButtonCenter = 2
};

enum CGEventField : uint32_t { kCGMouseEventNumber = 0, kCGMouseEventButtonNumber = 3 };

enum : CGEventFlags { kCGEventFlagMaskCommand = 0x100000 };

enum CGEventTapLocation : uint32_t { kCGHIDEventTap = 0, kCGSessionEventTap = 1 };
enum CGEventTapPlacement : uint32_t { kCGHeadInsertEventTap = 0, kCGTailAppendEventTap = 1 };
enum CGEventTapOptions : uint32_t { kCGEventTapOptionDefault = 0, kCGEventTapOptionListenOnly = 1 };

CGEventRef CGEventCreate(CGEventSourceRef source);
CGEventRef CGEventCreateMouseEvent(CGEventSourceRef source, CGEventType type, CGPoint position,
                                   CGMouseButton button);
CGEventRef CGEventCreateKeyboardEvent(CGEventSourceRef source, CGKeyCode key, bool down);
CGPoint CGEventGetLocation(CGEventRef event);
void CGEventSetLocation(CGEventRef event, CGPoint location);
CGEventType CGEventGetType(CGEventRef event);
void CGEventSetType(CGEventRef event, CGEventType type);
void CGEventSetFlags(CGEventRef event, CGEventFlags flags);
int64_t CGEventGetIntegerValueField(CGEventRef event, CGEventField field);
void CGEventSetIntegerValueField(CGEventRef event, CGEventField field, int64_t value);
void CGEventSetDoubleValueField(CGEventRef event, CGEventField field, double value);
void CGEventPost(CGEventTapLocation location, CGEventRef event);

typedef CGEventRef (*CGEventTapCallBack)(CGEventTapProxy proxy, CGEventType type, CGEventRef event,
                                         void* userInfo);
CFMachPortRef CGEventTapCreate(CGEventTapLocation location, CGEventTapPlacement placement,
                               CGEventTapOptions options, CGEventMask mask,
                               CGEventTapCallBack callback, void* userInfo);
void CGEventTapEnable(CFMachPortRef tap, bool enable);
bool CGEventTapIsEnabled(CFMachPortRef tap);

typedef void (*CGDisplayReconfigurationCallBack)(CGDirectDisplayID display,
                                                 CGDisplayChangeSummaryFlags flags,
                                                 void* userInfo);
CGError CGDisplayRegisterReconfigurationCallback(CGDisplayReconfigurationCallBack callback,
                                                 void* userInfo);
CGError CGDisplayRemoveReconfigurationCallback(CGDisplayReconfigurationCallBack callback,
                                               void* userInfo);

#ifdef __cplusplus
}
#endif
