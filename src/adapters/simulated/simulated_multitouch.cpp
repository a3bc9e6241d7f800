#include "adapters/simulated/simulated_multitouch.hpp"

#include <algorithm>
#include <array>
#include <cassert>
#include <utility>

namespace velotap {
namespace {

SimulatedMultitouch* currentLibrary = nullptr;

// The library's functions, with the signatures that callers look up.

MTDeviceArray mtDeviceCreateList() {
  return currentLibrary->createList();
}
std::int32_t mtRegisterContactFrameCallback(MTDevice device, MTFrameCallback callback) {
  return currentLibrary->registerCallback(device, callback) ? 1 : 0;
}
void mtUnregisterContactFrameCallback(MTDevice device, MTFrameCallback callback) {
  currentLibrary->unregisterCallback(device, callback);
}
std::int32_t mtDeviceStart(MTDevice device, std::int32_t flags) {
  return currentLibrary->start(device, flags) ? 0 : -1;
}
void mtDeviceStop(MTDevice device) {
  currentLibrary->stop(device);
}
void mtDeviceRelease(MTDevice device) {
  currentLibrary->release(device, "MTDeviceRelease");
}
bool mtDeviceIsBuiltIn(MTDevice device) {
  return currentLibrary->isBuiltIn(device);
}
void mtDeviceGetFamilyID(MTDevice device, std::int32_t* family) {
  currentLibrary->writeFamily(device, family);
}
long cfArrayGetCount(MTDeviceArray list) {
  return currentLibrary->count(list);
}
const void* cfArrayGetValueAtIndex(MTDeviceArray list, long index) {
  return currentLibrary->item(list, index);
}
const void* cfRetain(const void* object) {
  return currentLibrary->retain(object);
}
void cfRelease(const void* object) {
  currentLibrary->release(object, "CFRelease");
}

// Function pointers keep their type until they are handed out.
template <typename Fn>
void* address(Fn function) {
  return reinterpret_cast<void*>(function);
}

constexpr std::array<std::string_view, 12> kSymbolNames = {"MTDeviceCreateList",
                                                           "MTRegisterContactFrameCallback",
                                                           "MTUnregisterContactFrameCallback",
                                                           "MTDeviceStart",
                                                           "MTDeviceStop",
                                                           "MTDeviceRelease",
                                                           "MTDeviceIsBuiltIn",
                                                           "MTDeviceGetFamilyID",
                                                           "CFArrayGetCount",
                                                           "CFArrayGetValueAtIndex",
                                                           "CFRetain",
                                                           "CFRelease"};

void* functionNamed(std::string_view name) {
  static const std::array<void*, kSymbolNames.size()> functions = {
      address<MTDeviceCreateListFn>(mtDeviceCreateList),
      address<MTRegisterContactFrameCallbackFn>(mtRegisterContactFrameCallback),
      address<MTUnregisterContactFrameCallbackFn>(mtUnregisterContactFrameCallback),
      address<MTDeviceStartFn>(mtDeviceStart),
      address<MTDeviceStopFn>(mtDeviceStop),
      address<MTDeviceReleaseFn>(mtDeviceRelease),
      address<MTDeviceIsBuiltInFn>(mtDeviceIsBuiltIn),
      address<MTDeviceGetFamilyIDFn>(mtDeviceGetFamilyID),
      address<CFArrayGetCountFn>(cfArrayGetCount),
      address<CFArrayGetValueAtIndexFn>(cfArrayGetValueAtIndex),
      address<CFRetainFn>(cfRetain),
      address<CFReleaseFn>(cfRelease)};
  const auto found = std::find(kSymbolNames.begin(), kSymbolNames.end(), name);
  if (found == kSymbolNames.end()) return nullptr;
  return functions[static_cast<std::size_t>(found - kSymbolNames.begin())];
}

}  // namespace

SimulatedMultitouch::SimulatedMultitouch() {
  assert(currentLibrary == nullptr);
  currentLibrary = this;
}

SimulatedMultitouch::~SimulatedMultitouch() {
  currentLibrary = nullptr;
}

void* SimulatedMultitouch::open(const char* path) {
  return !missing_ && std::string_view(path) == multitouchLibraryPath() ? this : nullptr;
}

void* SimulatedMultitouch::symbol(void* /*handle*/, const char* name) {
  return removedSymbols_.contains(std::string_view(name)) ? nullptr : functionNamed(name);
}

std::span<const std::string_view> SimulatedMultitouch::symbolNames() noexcept {
  return kSymbolNames;
}

void SimulatedMultitouch::add(DeviceDescription description) {
  devices_.emplace_back().description = std::move(description);
}

void SimulatedMultitouch::setPresent(std::string_view name, bool present) {
  if (Device* device = named(name)) device->present = present;
}

bool SimulatedMultitouch::deliver(std::string_view name, const MTTouch* touches,
                                  std::int32_t count) {
  Device* device = named(name);
  if (device == nullptr || !device->present) return false;
  const std::lock_guard guard(device->delivering);
  if (!device->running || device->callback == nullptr) return false;
  device->callback(device, touches, count, 0, 0);
  return true;
}

bool SimulatedMultitouch::isRunning(std::string_view name) const {
  return std::any_of(devices_.begin(), devices_.end(), [name](const Device& device) {
    return device.description.name == name && device.running;
  });
}

MTDevice SimulatedMultitouch::handle(std::string_view name) {
  return named(name);
}

std::size_t SimulatedMultitouch::heldReferences() const noexcept {
  long held = 0;
  for (const Device& device : devices_) held += device.references;
  for (const List& list : lists_) held += list.references;
  return static_cast<std::size_t>(held);
}

MTDeviceArray SimulatedMultitouch::createList() {
  if (listForm_ == ListForm::none) return nullptr;
  const bool withNulls = listForm_ == ListForm::withNullEntries;
  List& list = lists_.emplace_back();
  if (withNulls) list.items.push_back(nullptr);
  for (Device& device : devices_) {
    if (!device.present) continue;
    ++device.references;  // the list's own
    list.items.push_back(&device);
    if (withNulls) list.items.push_back(nullptr);
  }
  return &list;
}

bool SimulatedMultitouch::registerCallback(MTDevice handle, MTFrameCallback callback) {
  Device* device = usable(handle, "MTRegisterContactFrameCallback");
  if (device == nullptr) return false;
  note("register", *device);
  if (!device->description.registers) return false;
  const std::lock_guard guard(device->delivering);
  if (device->callback != nullptr) fault(device->description.name + ": registered twice");
  device->callback = callback;
  return true;
}

void SimulatedMultitouch::unregisterCallback(MTDevice handle, MTFrameCallback callback) {
  Device* device = usable(handle, "MTUnregisterContactFrameCallback");
  if (device == nullptr) return;
  note("unregister", *device);
  const std::lock_guard guard(device->delivering);
  if (device->callback != callback) fault(device->description.name + ": was not registered");
  device->callback = nullptr;
}

bool SimulatedMultitouch::start(MTDevice handle, std::int32_t flags) {
  Device* device = usable(handle, "MTDeviceStart");
  if (device == nullptr) return false;
  note("start", *device);
  if (flags != 0) fault(device->description.name + ": started with unknown flags");
  if (!device->description.starts) return false;
  const std::lock_guard guard(device->delivering);
  if (device->running) fault(device->description.name + ": started twice");
  device->running = true;
  return true;
}

void SimulatedMultitouch::stop(MTDevice handle) {
  Device* device = usable(handle, "MTDeviceStop");
  if (device == nullptr) return;
  note("stop", *device);
  const std::lock_guard guard(device->delivering);
  if (!device->running) fault(device->description.name + ": was not started");
  device->running = false;
}

bool SimulatedMultitouch::isBuiltIn(MTDevice handle) {
  const Device* device = usable(handle, "MTDeviceIsBuiltIn");
  return device != nullptr && device->description.builtIn;
}

void SimulatedMultitouch::writeFamily(MTDevice handle, std::int32_t* family) {
  const Device* device = usable(handle, "MTDeviceGetFamilyID");
  if (device != nullptr && device->description.family) *family = *device->description.family;
}

long SimulatedMultitouch::count(MTDeviceArray handle) {
  const List* list = usableList(handle, "CFArrayGetCount");
  return list != nullptr ? static_cast<long>(list->items.size()) : 0;
}

const void* SimulatedMultitouch::item(MTDeviceArray handle, long index) {
  const List* list = usableList(handle, "CFArrayGetValueAtIndex");
  if (list == nullptr) return nullptr;
  if (index < 0 || index >= static_cast<long>(list->items.size())) {
    fault("CFArrayGetValueAtIndex: index out of range");
    return nullptr;
  }
  return list->items[static_cast<std::size_t>(index)];
}

const void* SimulatedMultitouch::retain(const void* object) {
  if (Device* device = usable(const_cast<MTDevice>(object), "CFRetain")) ++device->references;
  return object;
}

void SimulatedMultitouch::release(const void* object, const char* function) {
  if (Device* device = known(object)) {
    note("release", *device);
    dropReference(*device, function);
    return;
  }
  List* list = usableList(object, function);
  if (list == nullptr || --list->references > 0) return;
  for (Device* device : list->items) {
    if (device != nullptr) dropReference(*device, "the list's end");
  }
  list->items.clear();
}

void SimulatedMultitouch::dropReference(Device& device, const char* function) {
  if (device.references == 0) {
    fault(device.description.name + ": " + function + " gave back a reference too many");
    return;
  }
  --device.references;
  if (device.references == 0 && (device.running || device.callback != nullptr)) {
    fault(device.description.name + ": " + function + " let go of a device in use");
  }
}

SimulatedMultitouch::Device* SimulatedMultitouch::named(std::string_view name) {
  const auto found = std::find_if(devices_.begin(), devices_.end(), [name](const Device& device) {
    return device.description.name == name;
  });
  return found != devices_.end() ? &*found : nullptr;
}

SimulatedMultitouch::Device* SimulatedMultitouch::known(const void* device) {
  const auto found = std::find_if(devices_.begin(), devices_.end(),
                                  [device](const Device& d) { return &d == device; });
  return found != devices_.end() ? &*found : nullptr;
}

SimulatedMultitouch::Device* SimulatedMultitouch::usable(MTDevice handle, const char* function) {
  Device* device = known(handle);
  if (device == nullptr) {
    fault(std::string(function) + ": unknown device");
  } else if (device->references == 0) {
    fault(device->description.name + ": " + function + " without a reference");
  }
  return device;
}

SimulatedMultitouch::List* SimulatedMultitouch::usableList(MTDeviceArray handle,
                                                           const char* function) {
  for (List& list : lists_) {
    if (&list != handle) continue;
    if (list.references > 0) return &list;
    fault(std::string(function) + ": the list was already given back");
    return nullptr;
  }
  fault(std::string(function) + ": unknown list");
  return nullptr;
}

}  // namespace velotap
