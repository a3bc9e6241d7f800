#include "adapters/macos/devices/mac_notices.hpp"

#include <memory>
#include <utility>

namespace velotap {
namespace {

constexpr const char* kDeviceClass = "AppleMultitouchDevice";

// One notification about services that match. It tells of the next change only after everything it
// has already found was taken from its iterator, so that is done at once and at every call.
class ServiceNotice {
 public:
  ServiceNotice(const IoKitApi& ioKit, std::function<void()> told)
      : ioKit_(ioKit), told_(std::move(told)) {}
  ~ServiceNotice() {
    if (iterator_ != 0) ioKit_.IOObjectRelease(iterator_);
  }
  ServiceNotice(const ServiceNotice&) = delete;
  ServiceNotice& operator=(const ServiceNotice&) = delete;

  /// The system's error code when it could not be set up.
  std::optional<int> begin(IONotificationPortRef port, const char* type) {
    const CFMutableDictionaryRef matching = ioKit_.IOServiceMatching(kDeviceClass);
    if (matching == nullptr) return kIOReturnNoMemory;
    const kern_return_t error =
        ioKit_.IOServiceAddMatchingNotification(port, type, matching, &found, this, &iterator_);
    if (error != KERN_SUCCESS) return error;
    drain(iterator_);
    return std::nullopt;
  }

 private:
  static void found(void* context, io_iterator_t iterator) noexcept {
    auto* notice = static_cast<ServiceNotice*>(context);
    notice->drain(iterator);
    // A copy: who is told may end the watch, and this object with it.
    const std::function<void()> told = notice->told_;
    told();
  }

  void drain(io_iterator_t iterator) const {
    while (const io_object_t service = ioKit_.IOIteratorNext(iterator)) {
      ioKit_.IOObjectRelease(service);
    }
  }

  const IoKitApi& ioKit_;
  std::function<void()> told_;
  io_iterator_t iterator_ = 0;
};

// The port and both notices. Destroyed in the order that the system asks for: iterators, source,
// port; the source belongs to the port and is not released.
struct DeviceNotices {
  DeviceNotices(const CoreFoundationApi& cfApi, const IoKitApi& ioKitApi,
                IONotificationPortRef created, std::function<void()> onAttach,
                std::function<void()> onDetach)
      : cf(cfApi),
        ioKit(ioKitApi),
        port(created),
        attached(std::in_place, ioKitApi, std::move(onAttach)),
        detached(std::in_place, ioKitApi, std::move(onDetach)) {
    cf.CFRunLoopAddSource(cf.CFRunLoopGetMain(), ioKit.IONotificationPortGetRunLoopSource(port),
                          *cf.kCFRunLoopCommonModes);
  }
  ~DeviceNotices() {
    attached.reset();
    detached.reset();
    cf.CFRunLoopRemoveSource(cf.CFRunLoopGetMain(), ioKit.IONotificationPortGetRunLoopSource(port),
                             *cf.kCFRunLoopCommonModes);
    ioKit.IONotificationPortDestroy(port);
  }
  DeviceNotices(const DeviceNotices&) = delete;
  DeviceNotices& operator=(const DeviceNotices&) = delete;

  const CoreFoundationApi& cf;
  const IoKitApi& ioKit;
  IONotificationPortRef port;
  std::optional<ServiceNotice> attached;
  std::optional<ServiceNotice> detached;
};

void displayChanged(CGDirectDisplayID, CGDisplayChangeSummaryFlags, void* context) noexcept {
  // A copy: who is told may end the watch, and the function with it.
  const std::function<void()> told = *static_cast<std::function<void()>*>(context);
  told();
}

}  // namespace

SystemNotices::DeviceWatch MacNotices::watchDevices(std::function<void()> attached,
                                                    std::function<void()> detached) {
  DeviceWatch watch;
  const IONotificationPortRef port = ioKit_.IONotificationPortCreate(*ioKit_.kIOMainPortDefault);
  if (port == nullptr) {
    watch.portFailed = true;
    return watch;
  }
  auto notices =
      std::make_shared<DeviceNotices>(cf_, ioKit_, port, std::move(attached), std::move(detached));
  watch.attachError = notices->attached->begin(port, kIOFirstMatchNotification);
  watch.detachError = notices->detached->begin(port, kIOTerminatedNotification);
  watch.observation = Observation([notices]() mutable { notices.reset(); });
  return watch;
}

Observation MacNotices::watchSleep(std::function<void()> willSleep, std::function<void()> didWake) {
  const auto watch = [this](WorkspaceNotice notice, std::function<void()> told) {
    return std::make_shared<Observation>(workspace_.observe(
        notice, [told = std::move(told)](const std::optional<CocoaApplication>&) { told(); }));
  };
  return Observation([sleep = watch(WorkspaceNotice::willSleep, std::move(willSleep)),
                      wake = watch(WorkspaceNotice::didWake, std::move(didWake))] {
    sleep->reset();
    wake->reset();
  });
}

Observation MacNotices::watchDisplays(std::function<void()> reconfigured) {
  auto told = std::make_shared<std::function<void()>>(std::move(reconfigured));
  if (quartz_.CGDisplayRegisterReconfigurationCallback(&displayChanged, told.get()) !=
      kCGErrorSuccess) {
    return {};
  }
  return Observation([&quartz = quartz_, told] {
    quartz.CGDisplayRemoveReconfigurationCallback(&displayChanged, told.get());
  });
}

}  // namespace velotap
