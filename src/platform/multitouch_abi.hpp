// The binary interface of a multitouch library: what the binding looks up by name, and the record
// that a library hands to the frame callback. A provider exports these names with C linkage.
//
// A device is an opaque pointer. `MTDeviceCreateList` returns an array that the four collection
// functions read: the array and its elements are reference counted, `CFRetain` adds a reference to
// an element, `CFRelease` gives one back to the array, `MTDeviceRelease` one to a device.
#pragma once

#include <cstddef>
#include <cstdint>

namespace velotap {

/// A pair of single-precision coordinates; the unit depends on the field.
struct MTPoint {
  float x = 0;
  float y = 0;
  friend bool operator==(const MTPoint&, const MTPoint&) = default;
};

/// One contact of one frame. Records are contiguous; the stride is the record's size. The gaps
/// belong to the library and are neither read nor interpreted.
struct MTTouch {
  std::byte reserved0[16];
  std::int32_t identifier;  ///< stable for one finger while it stays down
  std::int32_t stage;       ///< 3, 4 and 5 are touching
  std::byte reserved1[8];
  MTPoint position;  ///< normalised: (0,0) bottom left, (1,1) top right of the surface
  MTPoint velocity;  ///< normalised units per second
  float size;        ///< total signal; about 1 for a resting fingertip
  float pressure;
  std::byte reserved2[12];
  MTPoint millimetres;
  std::byte reserved3[16];
  float density;  ///< about 1 for a resting fingertip
};
static_assert(sizeof(MTTouch) == 96);
static_assert(offsetof(MTTouch, identifier) == 16 && offsetof(MTTouch, stage) == 20);
static_assert(offsetof(MTTouch, position) == 32 && offsetof(MTTouch, velocity) == 40);
static_assert(offsetof(MTTouch, size) == 48 && offsetof(MTTouch, pressure) == 52);
static_assert(offsetof(MTTouch, millimetres) == 68 && offsetof(MTTouch, density) == 92);

using MTDevice = void*;
using MTDeviceArray = const void*;

/// Called by the library on a thread of its own; `device` and `touches` may be null.
using MTFrameCallback = void (*)(MTDevice device, const MTTouch* touches, std::int32_t count,
                                 double timestamp, std::int32_t frame);

// The eight device functions and the four collection functions, by the name that is looked up.
using MTDeviceCreateListFn = MTDeviceArray (*)();
using MTRegisterContactFrameCallbackFn = std::int32_t (*)(MTDevice, MTFrameCallback);
using MTUnregisterContactFrameCallbackFn = void (*)(MTDevice, MTFrameCallback);
using MTDeviceStartFn = std::int32_t (*)(MTDevice, std::int32_t flags);
using MTDeviceStopFn = void (*)(MTDevice);
using MTDeviceReleaseFn = void (*)(MTDevice);
using MTDeviceIsBuiltInFn = bool (*)(MTDevice);
using MTDeviceGetFamilyIDFn = void (*)(MTDevice, std::int32_t* family);
using CFArrayGetCountFn = long (*)(MTDeviceArray);
using CFArrayGetValueAtIndexFn = const void* (*)(MTDeviceArray, long index);
using CFRetainFn = const void* (*)(const void*);
using CFReleaseFn = void (*)(const void*);

}  // namespace velotap
