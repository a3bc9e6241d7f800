#include "adapters/macos/devices/io_kit_api.hpp"

namespace velotap {

const IoKitApi& IoKitApi::system() {
  static const IoKitApi api = {
      .kIOMainPortDefault = &::kIOMainPortDefault,
      .IONotificationPortCreate = &::IONotificationPortCreate,
      .IONotificationPortDestroy = &::IONotificationPortDestroy,
      .IONotificationPortGetRunLoopSource = &::IONotificationPortGetRunLoopSource,
      .IOServiceMatching = &::IOServiceMatching,
      .IOServiceAddMatchingNotification = &::IOServiceAddMatchingNotification,
      .IOIteratorNext = &::IOIteratorNext,
      .IOObjectRelease = &::IOObjectRelease,
  };
  return api;
}

}  // namespace velotap
