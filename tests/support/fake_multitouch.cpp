#include "support/fake_multitouch.hpp"

#include <cassert>
#include <string_view>

namespace velotap::test {
namespace {

FakeMultitouch* current = nullptr;

// What the opaque list pointer points to.
std::vector<FakeMultitouch::Device*> list;

FakeMultitouch::Device& from(MTDevice device) {
  return *static_cast<FakeMultitouch::Device*>(device);
}

void note(const char* what, MTDevice device) {
  current->calls.push_back(what + (" " + from(device).name));
}

MTDeviceArray createList() {
  if (current->listFails) return nullptr;
  list.clear();
  if (current->nullEntries) list.push_back(nullptr);
  for (auto& device : current->devices) {
    if (!device.listed) continue;
    list.push_back(&device);
    if (current->nullEntries) list.push_back(nullptr);
  }
  ++current->openLists;
  return &list;
}

std::int32_t registerCallback(MTDevice device, MTFrameCallback callback) {
  note("register", device);
  if (!from(device).registers) return 0;
  const std::lock_guard guard(from(device).delivering);
  from(device).callback = callback;
  return 1;
}

void unregisterCallback(MTDevice device, MTFrameCallback callback) {
  note("unregister", device);
  const std::lock_guard guard(from(device).delivering);
  if (from(device).callback == callback) from(device).callback = nullptr;
}

std::int32_t start(MTDevice device, std::int32_t flags) {
  note("start", device);
  assert(flags == 0);
  static_cast<void>(flags);
  if (!from(device).starts) return -536870212;
  const std::lock_guard guard(from(device).delivering);
  from(device).running = true;
  return 0;
}

void stop(MTDevice device) {
  note("stop", device);
  const std::lock_guard guard(from(device).delivering);
  from(device).running = false;
}

void releaseDevice(MTDevice device) {
  note("release", device);
  --from(device).references;
}

bool isBuiltIn(MTDevice device) {
  return from(device).builtIn;
}

void getFamilyId(MTDevice device, std::int32_t* family) {
  if (from(device).family) *family = *from(device).family;
}

long arrayCount(MTDeviceArray) {
  return static_cast<long>(list.size());
}

const void* arrayItem(MTDeviceArray, long index) {
  return list[static_cast<std::size_t>(index)];
}

const void* retain(const void* item) {
  auto* device = static_cast<FakeMultitouch::Device*>(const_cast<void*>(item));
  ++device->references;
  return item;
}

void release(const void* item) {
  assert(item == &list);
  static_cast<void>(item);
  --current->openLists;
}

template <typename Fn>
void* erased(Fn* function) {
  return reinterpret_cast<void*>(function);
}

void* find(std::string_view name) {
  if (name == "MTDeviceCreateList") return erased(&createList);
  if (name == "MTRegisterContactFrameCallback") return erased(&registerCallback);
  if (name == "MTUnregisterContactFrameCallback") return erased(&unregisterCallback);
  if (name == "MTDeviceStart") return erased(&start);
  if (name == "MTDeviceStop") return erased(&stop);
  if (name == "MTDeviceRelease") return erased(&releaseDevice);
  if (name == "MTDeviceIsBuiltIn") return erased(&isBuiltIn);
  if (name == "MTDeviceGetFamilyID") return erased(&getFamilyId);
  if (name == "CFArrayGetCount") return erased(&arrayCount);
  if (name == "CFArrayGetValueAtIndex") return erased(&arrayItem);
  if (name == "CFRetain") return erased(&retain);
  if (name == "CFRelease") return erased(&release);
  return nullptr;
}

}  // namespace

FakeMultitouch::FakeMultitouch() {
  assert(current == nullptr);
  current = this;
}

FakeMultitouch::~FakeMultitouch() {
  current = nullptr;
}

FakeMultitouch::Device& FakeMultitouch::add(const std::string& name, std::int32_t family) {
  Device& device = devices.emplace_back();
  device.name = name;
  device.family = family;
  return device;
}

bool FakeMultitouch::deliver(Device& device, const MTTouch* touches, std::int32_t count) {
  const std::lock_guard guard(device.delivering);
  if (!device.running || device.callback == nullptr) return false;
  device.callback(&device, touches, count, 0, 0);
  return true;
}

void* FakeMultitouch::open(const char* /*path*/) {
  ++opens;
  return libraryMissing ? nullptr : this;
}

void* FakeMultitouch::symbol(void* /*handle*/, const char* name) {
  lookups.emplace_back(name);
  return missingSymbols.contains(name) ? nullptr : find(name);
}

}  // namespace velotap::test
