#include "input/multitouch_binding.hpp"

#include "platform/platform.hpp"

namespace velotap {

MT& MT::shared() {
  static MT instance(Platform::current().libraries);
  return instance;
}

void* MT::handle() {
  std::call_once(handleOnce_, [&] { handle_ = loader_.open(loader_.multitouchLibraryPath()); });
  return handle_;
}

bool MT::isAvailable() {
  return handle() != nullptr && createList_.get(*this) != nullptr &&
         registerCallback_.get(*this) != nullptr && unregisterCallback_.get(*this) != nullptr &&
         deviceStart_.get(*this) != nullptr && deviceStop_.get(*this) != nullptr &&
         deviceRelease_.get(*this) != nullptr && getFamilyID_.get(*this) != nullptr;
}

std::vector<MTDevice> MT::deviceList() {
  const auto createList = createList_.get(*this);
  const auto count = arrayCount_.get(*this);
  const auto item = arrayItem_.get(*this);
  const auto retain = retain_.get(*this);
  const auto release = release_.get(*this);
  std::vector<MTDevice> devices;
  if (createList == nullptr || count == nullptr || item == nullptr || retain == nullptr ||
      release == nullptr) {
    return devices;
  }
  const MTDeviceArray list = createList();
  if (list == nullptr) return devices;
  const long n = count(list);
  for (long i = 0; i < n; ++i) {
    if (const void* device = item(list, i)) {
      devices.push_back(const_cast<MTDevice>(retain(device)));
    }
  }
  release(list);
  return devices;
}

std::string MT::describe(MTDevice device) {
  const auto isBuiltIn = isBuiltIn_.get(*this);
  const bool builtIn = isBuiltIn != nullptr && isBuiltIn(device);
  return "familyID=" + std::to_string(familyId(device)) +
         " builtIn=" + (builtIn ? "true" : "false");
}

std::int32_t MT::familyId(MTDevice device) {
  std::int32_t family = -1;
  if (const auto getFamilyID = getFamilyID_.get(*this)) getFamilyID(device, &family);
  return family;
}

bool MT::startDevice(MTDevice device, MTFrameCallback callback) {
  const auto registerCallback = registerCallback_.get(*this);
  const auto unregisterCallback = unregisterCallback_.get(*this);
  const auto start = deviceStart_.get(*this);
  const auto release = deviceRelease_.get(*this);
  if (registerCallback == nullptr || unregisterCallback == nullptr || start == nullptr ||
      release == nullptr) {
    if (release != nullptr) release(device);
    return false;
  }
  if (registerCallback(device, callback) == 0) {
    release(device);
    return false;
  }
  if (start(device, 0) != 0) {
    unregisterCallback(device, callback);
    release(device);
    return false;
  }
  return true;
}

void MT::stopDevice(MTDevice device, MTFrameCallback callback) {
  if (const auto stop = deviceStop_.get(*this)) stop(device);
  if (const auto unregister = unregisterCallback_.get(*this)) unregister(device, callback);
  if (const auto release = deviceRelease_.get(*this)) release(device);
}

}  // namespace velotap
