#include "adapters/linux/devices/udev_devices.hpp"

#include <libudev.h>

#include <cerrno>
#include <set>
#include <string_view>
#include <utility>

#include "adapters/linux/devices/surface_capability.hpp"

namespace velotap {
namespace {

struct Unref {
  void operator()(udev* u) const { udev_unref(u); }
  void operator()(udev_device* d) const { udev_device_unref(d); }
  void operator()(udev_enumerate* e) const { udev_enumerate_unref(e); }
  void operator()(udev_monitor* m) const { udev_monitor_unref(m); }
};
template <typename T>
using Handle = std::unique_ptr<T, Unref>;

std::string_view text(const char* value) {
  return value != nullptr ? value : "";
}

bool isEventNode(udev_device* device) {
  return text(udev_device_get_sysname(device)).starts_with("event") &&
         udev_device_get_devnode(device) != nullptr;
}

// Attributes belong to the input device above the event node.
bool isSurface(udev_device* node) {
  udev_device* input = udev_device_get_parent_with_subsystem_devtype(node, "input", nullptr);
  if (input == nullptr) return false;
  return isMultitouchSurface(
      {.absoluteAxes = text(udev_device_get_sysattr_value(input, "capabilities/abs")),
       .properties = text(udev_device_get_sysattr_value(input, "properties")),
       .phys = text(udev_device_get_sysattr_value(input, "phys"))});
}

}  // namespace

std::vector<std::string> surfaceNodes() {
  std::vector<std::string> nodes;
  const Handle<udev> context(udev_new());
  if (!context) return nodes;
  const Handle<udev_enumerate> list(udev_enumerate_new(context.get()));
  if (!list) return nodes;
  udev_enumerate_add_match_subsystem(list.get(), "input");
  udev_enumerate_add_match_sysname(list.get(), "event*");
  if (udev_enumerate_scan_devices(list.get()) < 0) return nodes;
  udev_list_entry* entry = nullptr;
  udev_list_entry_foreach(entry, udev_enumerate_get_list_entry(list.get())) {
    const Handle<udev_device> device(
        udev_device_new_from_syspath(context.get(), udev_list_entry_get_name(entry)));
    if (device && isEventNode(device.get()) && isSurface(device.get())) {
      nodes.emplace_back(udev_device_get_devnode(device.get()));
    }
  }
  return nodes;
}

// What one watch needs; lives as long as its observation.
struct UdevNotices::Monitor {
  Handle<udev> context;
  Handle<udev_monitor> monitor;
  std::function<void()> attached;
  std::function<void()> detached;
  std::set<std::string> surfaces;  // a vanished device cannot be asked any more what it was
  Observation ready;

  void receive() {
    while (true) {
      const Handle<udev_device> device(udev_monitor_receive_device(monitor.get()));
      if (!device) return;
      note(device.get());
    }
  }

  void note(udev_device* device) {
    if (!isEventNode(device)) return;
    const std::string_view action = text(udev_device_get_action(device));
    const std::string path(text(udev_device_get_syspath(device)));
    if (action == "add" && isSurface(device)) {
      surfaces.insert(path);
      attached();
    } else if (action == "remove" && surfaces.erase(path) > 0) {
      detached();
    }
  }

  void rememberPresent() {
    const Handle<udev_enumerate> list(udev_enumerate_new(context.get()));
    udev_enumerate_add_match_subsystem(list.get(), "input");
    udev_enumerate_add_match_sysname(list.get(), "event*");
    udev_enumerate_scan_devices(list.get());
    udev_list_entry* entry = nullptr;
    udev_list_entry_foreach(entry, udev_enumerate_get_list_entry(list.get())) {
      const char* path = udev_list_entry_get_name(entry);
      const Handle<udev_device> device(udev_device_new_from_syspath(context.get(), path));
      if (device && isEventNode(device.get()) && isSurface(device.get())) surfaces.insert(path);
    }
  }
};

UdevNotices::UdevNotices(DescriptorLoop& loop) : loop_(loop) {}

UdevNotices::~UdevNotices() = default;

SystemNotices::DeviceWatch UdevNotices::watchDevices(std::function<void()> attached,
                                                     std::function<void()> detached) {
  DeviceWatch watch;
  auto state = std::make_shared<Monitor>();
  state->context.reset(udev_new());
  if (state->context) {
    // "udev", not "kernel": by then rules have run and the node may be opened.
    state->monitor.reset(udev_monitor_new_from_netlink(state->context.get(), "udev"));
  }
  if (!state->monitor) {
    watch.portFailed = true;
    return watch;
  }
  udev_monitor_filter_add_match_subsystem_devtype(state->monitor.get(), "input", nullptr);
  if (const int error = udev_monitor_enable_receiving(state->monitor.get()); error < 0) {
    watch.attachError = -error;
    watch.detachError = -error;
    return watch;
  }
  state->attached = std::move(attached);
  state->detached = std::move(detached);
  state->rememberPresent();
  state->ready = loop_.watch(udev_monitor_get_fd(state->monitor.get()),
                             DescriptorLoop::Interest::readable, [weak = std::weak_ptr(state)] {
                               if (const auto monitor = weak.lock()) monitor->receive();
                             });
  if (!state->ready.active()) {
    watch.portFailed = true;
    return watch;
  }
  watch.observation = Observation([state] { state->ready.reset(); });
  return watch;
}

Observation UdevNotices::watchSleep(std::function<void()>, std::function<void()>) {
  return {};
}

Observation UdevNotices::watchDisplays(std::function<void()>) {
  return {};
}

}  // namespace velotap
