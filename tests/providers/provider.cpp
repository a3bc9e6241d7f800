// A multitouch library whose devices are made up. What it lacks, refuses or delivers is chosen when
// it is compiled; tests/providers/CMakeLists.txt lists the choices.
//
// DEVICES devices, the first of family 128 and built in, the second of family 112 and not.

#include <algorithm>
#include <array>
#include <atomic>
#include <chrono>
#include <condition_variable>
#include <cstdlib>
#include <fstream>
#include <mutex>
#include <stdexcept>
#include <thread>

#include "platform/multitouch_abi.hpp"

#define EXPORTED extern "C" __attribute__((visibility("default")))

namespace {

using velotap::MTDevice;
using velotap::MTDeviceArray;
using velotap::MTFrameCallback;
using velotap::MTTouch;

struct Device {
  std::int32_t family;
  bool builtIn;
  MTFrameCallback callback;
};

[[maybe_unused]] std::array<Device, 2> devices = {
    {{.family = 128, .builtIn = true, .callback = nullptr},
     {.family = 112, .builtIn = false, .callback = nullptr}}};
std::array<void*, 5> list;
long listed = 0;

Device& from(MTDevice device) {
  return *static_cast<Device*>(device);
}

#ifdef DELIVERS_FRAMES
// Frames of two contacts, from a thread of the library, until the device is stopped.
class Hand {
 public:
  void start(MTDevice device) {
    stopping_ = false;
    thread_ = std::thread([this, device] { play(device); });
  }
  void stop() {
    {
      const std::lock_guard guard(lock_);
      stopping_ = true;
    }
    wake_.notify_all();
    thread_.join();
  }

 private:
  void play(MTDevice device) {
    std::array<MTTouch, 2> touches{};
    for (std::size_t i = 0; i < touches.size(); ++i) {
      touches[i].identifier = static_cast<std::int32_t>(i) + 1;
      touches[i].stage = 4;
      touches[i].position = {.x = 0.25F, .y = 0.5F};
      touches[i].size = 1.5F;
      touches[i].pressure = 0.25F;
    }
    std::unique_lock guard(lock_);
    for (std::int32_t frame = 0; !stopping_; ++frame) {
      guard.unlock();
      from(device).callback(device, touches.data(), static_cast<std::int32_t>(touches.size()), 0.0,
                            frame);
      guard.lock();
      wake_.wait_for(guard, std::chrono::milliseconds(8), [this] { return stopping_; });
    }
  }

  std::mutex lock_;
  std::condition_variable wake_;
  bool stopping_ = false;
  std::thread thread_;
};
// Leaked: a program that is interrupted does not stop its devices first.
Hand& hand = *new Hand;
#endif

// How many are plugged in. A test that plugs and unplugs writes the number into a file.
[[maybe_unused]] int presentDevices() {
#ifdef COUNTED_IN_A_FILE
  const char* const name = std::getenv("VELOTAP_TEST_DEVICES");
  int count = 0;
  if (name != nullptr) std::ifstream(name) >> count;
  return std::min(count, DEVICES);
#else
  return DEVICES;
#endif
}

}  // namespace

#ifndef WITHOUT_MTDeviceCreateList
EXPORTED MTDeviceArray MTDeviceCreateList() {
  listed = 0;
  for (int i = 0; i < presentDevices(); ++i) {
#ifdef NULL_ENTRIES
    list[static_cast<std::size_t>(listed++)] = nullptr;
#endif
    list[static_cast<std::size_t>(listed++)] = &devices[static_cast<std::size_t>(i)];
  }
#ifdef NULL_ENTRIES
  list[static_cast<std::size_t>(listed++)] = nullptr;
#endif
  return &list;
}
#endif

#ifndef WITHOUT_MTRegisterContactFrameCallback
EXPORTED std::int32_t MTRegisterContactFrameCallback(MTDevice device, MTFrameCallback callback) {
#ifdef REFUSES_TO_REGISTER
  static_cast<void>(device);
  static_cast<void>(callback);
  return 0;
#else
  from(device).callback = callback;
  return 1;
#endif
}
#endif

#ifndef WITHOUT_MTUnregisterContactFrameCallback
EXPORTED void MTUnregisterContactFrameCallback(MTDevice device, MTFrameCallback) {
  from(device).callback = nullptr;
}
#endif

#ifndef WITHOUT_MTDeviceStart
EXPORTED std::int32_t MTDeviceStart(MTDevice device, std::int32_t) {
#ifdef REFUSES_TO_START
  static_cast<void>(device);
  return -1;
#else
#ifdef THROWS
  throw std::runtime_error("out of order");
#endif
#ifdef DELIVERS_FRAMES
  hand.start(device);
#endif
  return from(device).callback != nullptr ? 0 : -1;
#endif
}
#endif

#ifndef WITHOUT_MTDeviceStop
EXPORTED void MTDeviceStop(MTDevice) {
#ifdef DELIVERS_FRAMES
  hand.stop();
#endif
}
#endif

#ifndef WITHOUT_MTDeviceRelease
EXPORTED void MTDeviceRelease(MTDevice) {}
#endif

#ifndef WITHOUT_MTDeviceIsBuiltIn
EXPORTED bool MTDeviceIsBuiltIn(MTDevice device) {
  return from(device).builtIn;
}
#endif

#ifndef WITHOUT_MTDeviceGetFamilyID
EXPORTED void MTDeviceGetFamilyID(MTDevice device, std::int32_t* family) {
  *family = from(device).family;
}
#endif

EXPORTED long CFArrayGetCount(MTDeviceArray) {
  return listed;
}
EXPORTED const void* CFArrayGetValueAtIndex(MTDeviceArray, long index) {
  return list[static_cast<std::size_t>(index)];
}
EXPORTED const void* CFRetain(const void* object) {
  return object;
}
EXPORTED void CFRelease(const void*) {}
