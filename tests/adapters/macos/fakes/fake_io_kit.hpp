// IOKit in a test: services that come and go, with the traps of the real one. A notification is
// told of a change only after its iterator was emptied; adding one takes over a reference to the
// matching dictionary; every service taken from an iterator must be released.
#pragma once

#include <map>
#include <string>
#include <vector>

#include "adapters/macos/devices/io_kit_api.hpp"
#include "fakes/fake_core_foundation.hpp"

namespace velotap::test {

class FakeIoKit {
 public:
  explicit FakeIoKit(FakeCoreFoundation& cf);
  ~FakeIoKit();
  FakeIoKit(const FakeIoKit&) = delete;
  FakeIoKit& operator=(const FakeIoKit&) = delete;

  [[nodiscard]] static FakeIoKit& current();
  [[nodiscard]] const IoKitApi& api() const { return api_; }

  bool portFails = false;
  bool matchingFails = false;
  std::map<std::string, kern_return_t> addFails;  // by the notification's type

  /// So many services match when a notification is added.
  int present = 1;
  /// Services appear or vanish; told to every notification of that type that is armed.
  void happen(const std::string& type, int services);

  [[nodiscard]] std::size_t notifications() const { return notifications_.size(); }
  std::vector<std::string> classes;

 private:
  struct Notification {
    std::string type;
    IOServiceMatchingCallback callback;
    void* context;
    std::vector<io_object_t> found;
    bool armed = false;
  };
  static kern_return_t add(IONotificationPortRef port, const char* type, CFDictionaryRef matching,
                           IOServiceMatchingCallback callback, void* context,
                           io_iterator_t* iterator);
  io_object_t newService();
  void fillPorts();

  FakeCoreFoundation& cf_;
  IoKitApi api_{};
  mach_port_t mainPort_ = 0;
  io_object_t next_ = 100;
  const FakeObject* source_ = nullptr;  // of the port, while there is one
  std::map<io_iterator_t, Notification> notifications_;
  std::vector<io_object_t> services_;  // taken from an iterator and not released yet
};

}  // namespace velotap::test
