// What libvelotap-multitouch.so exports: the functions that the program's binding looks up by
// name, over evdev and udev.
//
// Objects are reference counted by hand, because that is what the interface is: the array and the
// devices of a list hold one reference each, and give theirs back separately.

#include <sys/stat.h>

#include <array>
#include <atomic>
#include <memory>
#include <mutex>
#include <string>
#include <utility>
#include <vector>

#include "adapters/linux/devices/udev_devices.hpp"
#include "adapters/linux/multitouch/surface.hpp"
#include "platform/multitouch_abi.hpp"

#define VELOTAP_EXPORT extern "C" __attribute__((visibility("default")))

namespace {

using velotap::MTDevice;
using velotap::MTDeviceArray;
using velotap::Surface;

// What callers hold pointers to.
class Object {
 public:
  virtual ~Object() = default;
  Object() = default;
  Object(const Object&) = delete;
  Object& operator=(const Object&) = delete;
  void retain() noexcept { references_.fetch_add(1, std::memory_order_relaxed); }
  void release() noexcept {
    if (references_.fetch_sub(1, std::memory_order_acq_rel) == 1) delete this;
  }

 private:
  std::atomic<int> references_{1};
};

// The surfaces that exist, by their nodes, for whoever feeds one.
class Directory {
 public:
  void add(std::uint64_t number, const std::shared_ptr<Surface>& surface) {
    const std::lock_guard guard(lock_);
    std::erase_if(entries_, [](const Entry& entry) { return entry.surface.expired(); });
    entries_.push_back({number, surface});
  }
  // The same device may be in several lists; the newest that is started is the one in use, and the
  // others ignore what they are fed.
  template <typename Visit>
  void forEach(std::uint64_t number, const Visit& visit) {
    std::array<std::shared_ptr<Surface>, kMostLists> surfaces;
    std::size_t count = 0;
    {
      const std::lock_guard guard(lock_);
      for (std::size_t i = entries_.size(); i > 0 && count < kMostLists; --i) {
        if (entries_[i - 1].number != number) continue;
        if (auto surface = entries_[i - 1].surface.lock()) surfaces[count++] = std::move(surface);
      }
    }
    for (std::size_t i = 0; i < count; ++i) visit(*surfaces[i]);
  }

 private:
  static constexpr std::size_t kMostLists = 4;
  struct Entry {
    std::uint64_t number;
    std::weak_ptr<Surface> surface;
  };
  std::mutex lock_;
  std::vector<Entry> entries_;
};

Directory& directory() {
  static Directory instance;
  return instance;
}

std::uint64_t deviceNumber(const std::string& path) {
  struct stat status {};
  return ::stat(path.c_str(), &status) == 0 ? status.st_rdev : 0;
}

class Device final : public Object {
 public:
  Device(std::shared_ptr<Surface> s, std::uint64_t number) : surface(std::move(s)) {
    // As the pointer that the interface hands out.
    surface->setOwner(static_cast<Object*>(this));
    directory().add(number, surface);
  }
  // Stopped rather than just let go: the surface's thread may hold it a moment longer, and its
  // callback must not be given a device that is gone.
  ~Device() override { surface->stop(); }
  const std::shared_ptr<Surface> surface;
};

class DeviceArray final : public Object {
 public:
  explicit DeviceArray(std::vector<Device*> d) : devices(std::move(d)) {}
  ~DeviceArray() override {
    for (Device* device : devices) device->release();
  }
  const std::vector<Device*> devices;
};

Device& device(MTDevice handle) {
  return *static_cast<Device*>(static_cast<Object*>(handle));
}

Object* object(const void* handle) {
  return static_cast<Object*>(const_cast<void*>(handle));
}

}  // namespace

VELOTAP_EXPORT MTDeviceArray MTDeviceCreateList() {
  std::vector<Device*> devices;
  for (const std::string& path : velotap::surfaceNodes()) {
    if (auto node = velotap::makeEvdevNode(path)) {
      devices.push_back(new Device(std::make_shared<Surface>(std::move(node)), deviceNumber(path)));
    }
  }
  return static_cast<Object*>(new DeviceArray(std::move(devices)));
}

VELOTAP_EXPORT std::int32_t MTRegisterContactFrameCallback(MTDevice handle,
                                                           velotap::MTFrameCallback callback) {
  return callback != nullptr && device(handle).surface->setCallback(callback) ? 1 : 0;
}

VELOTAP_EXPORT void MTUnregisterContactFrameCallback(MTDevice handle,
                                                     velotap::MTFrameCallback callback) {
  device(handle).surface->removeCallback(callback);
}

VELOTAP_EXPORT std::int32_t MTDeviceStart(MTDevice handle, std::int32_t /*flags*/) {
  return device(handle).surface->start();
}

VELOTAP_EXPORT void MTDeviceStop(MTDevice handle) {
  device(handle).surface->stop();
}

VELOTAP_EXPORT void MTDeviceRelease(MTDevice handle) {
  object(handle)->release();
}

VELOTAP_EXPORT bool MTDeviceIsBuiltIn(MTDevice handle) {
  return device(handle).surface->model().builtIn;
}

VELOTAP_EXPORT void MTDeviceGetFamilyID(MTDevice handle, std::int32_t* family) {
  *family = device(handle).surface->model().familyId;
}

VELOTAP_EXPORT long CFArrayGetCount(MTDeviceArray array) {
  return static_cast<long>(static_cast<DeviceArray*>(object(array))->devices.size());
}

VELOTAP_EXPORT const void* CFArrayGetValueAtIndex(MTDeviceArray array, long index) {
  const auto& devices = static_cast<DeviceArray*>(object(array))->devices;
  if (index < 0 || static_cast<std::size_t>(index) >= devices.size()) return nullptr;
  return static_cast<Object*>(devices[static_cast<std::size_t>(index)]);
}

VELOTAP_EXPORT const void* CFRetain(const void* handle) {
  object(handle)->retain();
  return handle;
}

VELOTAP_EXPORT void CFRelease(const void* handle) {
  object(handle)->release();
}

// Beyond the interface that every such library has: a part of the same process that has grabbed an
// event node hands on what it reads there, because the kernel tells nobody else any more. `number`
// is the node's device number. Any thread, one at a time for each node.
VELOTAP_EXPORT void VelotapFeedEvents(std::uint64_t number, const input_event* events,
                                      std::size_t count) {
  directory().forEach(number, [&](Surface& surface) { surface.feed({events, count}); });
}
