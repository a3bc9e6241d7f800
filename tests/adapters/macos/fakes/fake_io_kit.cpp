#include "fakes/fake_io_kit.hpp"

#include <gtest/gtest.h>

#include <algorithm>

namespace velotap::test {
namespace {

FakeIoKit* running = nullptr;

FakeIoKit& fake() {
  return FakeIoKit::current();
}

// The port is no object of Core Foundation and has no references: it is made and destroyed.
char portStorage;

IONotificationPortRef thePort() {
  return reinterpret_cast<IONotificationPortRef>(&portStorage);
}

}  // namespace

FakeIoKit& FakeIoKit::current() {
  return *running;
}

FakeIoKit::FakeIoKit(FakeCoreFoundation& cf) : cf_(cf) {
  running = this;
  fillPorts();
  api_.IOServiceMatching = [](const char* name) -> CFMutableDictionaryRef {
    fake().classes.emplace_back(name);
    if (fake().matchingFails) return nullptr;
    return static_cast<CFMutableDictionaryRef>(
        static_cast<void*>(&fake().cf_.make(FakeKind::matching, name)));
  };
  api_.IOServiceAddMatchingNotification = &FakeIoKit::add;
  api_.IOIteratorNext = [](io_iterator_t iterator) -> io_object_t {
    const auto found = fake().notifications_.find(iterator);
    if (found == fake().notifications_.end()) {
      ADD_FAILURE() << "no such iterator";
      return 0;
    }
    Notification& notification = found->second;
    if (notification.found.empty()) {
      notification.armed = true;
      return 0;
    }
    const io_object_t service = notification.found.back();
    notification.found.pop_back();
    fake().services_.push_back(service);
    return service;
  };
  api_.IOObjectRelease = [](io_object_t object) -> kern_return_t {
    const bool released =
        std::erase(fake().services_, object) == 1 || fake().notifications_.erase(object) == 1;
    EXPECT_TRUE(released) << "a release of what is not held: " << object;
    return released ? KERN_SUCCESS : -1;
  };
}

FakeIoKit::~FakeIoKit() {
  EXPECT_EQ(source_, nullptr) << "the port was not destroyed";
  EXPECT_TRUE(notifications_.empty()) << "iterators were not released";
  EXPECT_TRUE(services_.empty()) << "services were not released";
  running = nullptr;
}

void FakeIoKit::happen(const std::string& type, int services) {
  for (auto& [iterator, notification] : notifications_) {
    if (notification.type != type) continue;
    for (int i = 0; i < services; ++i) notification.found.push_back(newService());
  }
  // A callback may end its own notification, so each is looked for anew.
  std::vector<io_iterator_t> armed;
  for (auto& [iterator, notification] : notifications_) {
    if (notification.type == type && std::exchange(notification.armed, false)) {
      armed.push_back(iterator);
    }
  }
  for (const io_iterator_t iterator : armed) {
    const auto found = notifications_.find(iterator);
    if (found == notifications_.end()) continue;
    EXPECT_EQ(std::count(cf_.loopSources.begin(), cf_.loopSources.end(), source_), 1)
        << "nobody serves the port";
    const Notification told = found->second;
    told.callback(told.context, iterator);
  }
}

kern_return_t FakeIoKit::add(IONotificationPortRef port, const char* type, CFDictionaryRef matching,
                             IOServiceMatchingCallback callback, void* context,
                             io_iterator_t* iterator) {
  EXPECT_EQ(port, thePort());
  const FakeObject& dictionary = fake().cf_.live(matching, FakeKind::matching);
  fake().cf_.release(dictionary);  // taken over, whatever comes of it
  const auto failure = fake().addFails.find(type);
  if (failure != fake().addFails.end()) return failure->second;
  Notification notification{type, callback, context, {}, false};
  for (int i = 0; i < fake().present; ++i) notification.found.push_back(fake().newService());
  *iterator = fake().next_++;
  fake().notifications_.emplace(*iterator, std::move(notification));
  return KERN_SUCCESS;
}

io_object_t FakeIoKit::newService() {
  return next_++;
}

void FakeIoKit::fillPorts() {
  api_.kIOMainPortDefault = &mainPort_;
  api_.IONotificationPortCreate = [](mach_port_t port) -> IONotificationPortRef {
    EXPECT_EQ(port, fake().mainPort_);
    if (fake().portFails) return nullptr;
    EXPECT_EQ(fake().source_, nullptr);
    fake().source_ = &fake().cf_.make(FakeKind::source, "of the port");
    return thePort();
  };
  api_.IONotificationPortGetRunLoopSource = [](IONotificationPortRef port) {
    EXPECT_EQ(port, thePort());
    const void* source = &fake().cf_.live(fake().source_, FakeKind::source);
    return static_cast<CFRunLoopSourceRef>(const_cast<void*>(source));
  };
  api_.IONotificationPortDestroy = [](IONotificationPortRef port) {
    EXPECT_EQ(port, thePort());
    EXPECT_TRUE(fake().notifications_.empty()) << "iterators go before their port";
    fake().cf_.release(*std::exchange(fake().source_, nullptr));
  };
}

}  // namespace velotap::test
