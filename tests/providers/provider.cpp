// A multitouch library whose devices are made up. What it lacks, refuses or delivers is chosen when
// it is compiled; tests/providers/CMakeLists.txt lists the choices.
//
// DEVICES devices, the first of family 128 and built in, the second of family 112 and not.

#include <sys/socket.h>
#include <sys/un.h>
#include <unistd.h>

#include <algorithm>
#include <array>
#include <atomic>
#include <chrono>
#include <condition_variable>
#include <cstdlib>
#include <cstring>
#include <fstream>
#include <mutex>
#include <stdexcept>
#include <thread>
#include <utility>

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

#ifdef TAPS_ON_REQUEST
// A tap of three fingers on the second device for each byte that comes over a socket of the test's,
// from a thread of the library. The byte goes back when the tap was taken in.
class Tapper {
 public:
  void start(MTDevice device) {
    const char* const path = std::getenv("VELOTAP_TEST_TAPS");
    sockaddr_un address{};
    address.sun_family = AF_UNIX;
    if (path == nullptr || std::strlen(path) >= sizeof address.sun_path) return;
    std::strcpy(address.sun_path, path);
    socket_ = ::socket(AF_UNIX, SOCK_STREAM | SOCK_CLOEXEC, 0);
    if (::connect(socket_, reinterpret_cast<const sockaddr*>(&address), sizeof address) != 0) {
      return;
    }
    thread_ = std::thread([this, device] { serve(device); });
  }
  void stop() {
    ::shutdown(socket_, SHUT_RDWR);
    if (thread_.joinable()) thread_.join();
    ::close(std::exchange(socket_, -1));
  }

 private:
  void serve(MTDevice device) {
    for (char request = 0; ::read(socket_, &request, 1) == 1;) {
      tap(device);
      if (::write(socket_, &request, 1) != 1) return;
    }
  }
  void tap(MTDevice device) {
    std::array<MTTouch, 3> touches{};
    for (std::size_t i = 0; i < touches.size(); ++i) {
      touches[i].identifier = static_cast<std::int32_t>(i) + 1;
      touches[i].stage = 4;
      touches[i].position = {.x = 0.2F * static_cast<float>(i + 1), .y = 0.5F};
      touches[i].millimetres = {.x = 20.0F * static_cast<float>(i + 1), .y = 50};
      touches[i].size = 1;
      touches[i].density = 1;
    }
    for (const std::int32_t count : {0, 3, 0}) frame(device, touches.data(), count);
  }
  void frame(MTDevice device, const MTTouch* touches, std::int32_t count) {
    if (const MTFrameCallback callback = from(device).callback) {
      callback(device, touches, count, 0.0, ++frames_);
    }
  }

  int socket_ = -1;
  std::int32_t frames_ = 0;
  std::thread thread_;
};
Tapper& tapper = *new Tapper;
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
#ifdef TAPS_ON_REQUEST
  if (device == &devices[1]) tapper.start(device);
#endif
  return from(device).callback != nullptr ? 0 : -1;
#endif
}
#endif

#ifndef WITHOUT_MTDeviceStop
EXPORTED void MTDeviceStop([[maybe_unused]] MTDevice device) {
#ifdef DELIVERS_FRAMES
  hand.stop();
#endif
#ifdef TAPS_ON_REQUEST
  if (device == &devices[1]) tapper.stop();
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
