#include "adapters/linux/workspace/plasma_front_source.hpp"

#include <wayland-client.h>

#include <algorithm>
#include <cstring>
#include <set>
#include <utility>

#include "adapters/linux/wayland/wayland_connection.hpp"
#include "adapters/linux/workspace/toplevel_table.hpp"
#include "plasma-window-management-client.h"

namespace velotap {
namespace {

using Manager = org_kde_plasma_window_management;
using Window = org_kde_plasma_window;

class PlasmaFrontSource final : public FrontSource {
 public:
  PlasmaFrontSource(DescriptorLoop& loop, std::string socket)
      : socket_(std::move(socket)),
        connection_(loop, {.global = [this](auto... global) { bind(global...); },
                           .synced = [this] { synced(); },
                           .lost = [this](std::string reason) { lost(std::move(reason)); }}) {}

  ~PlasmaFrontSource() override {
    for (Window* const window : handles_) org_kde_plasma_window_destroy(window);
    if (manager_ != nullptr) org_kde_plasma_window_management_destroy(manager_);
  }

  void start(Listener listener) override {
    listener_ = std::move(listener);
    if (socket_.empty() || !connection_.open(socket_)) {
      listener_.failed(SourceFailure::unreachable, "no Wayland compositor answers");
    }
  }

 private:
  /// From the version on that says when a window is described to the end, to the newest one whose
  /// events are all handled below.
  static constexpr std::uint32_t kOldestVersion = 4;
  static constexpr std::uint32_t kVersion = 16;
  /// How many answers to wait for: the list of windows, then what is told of each.
  static constexpr int kSyncs = 3;

  void bind(wl_registry* registry, std::uint32_t name, const char* interface,
            std::uint32_t version) {
    if (manager_ != nullptr || version < kOldestVersion ||
        std::strcmp(interface, org_kde_plasma_window_management_interface.name) != 0) {
      return;
    }
    manager_ = static_cast<Manager*>(wl_registry_bind(
        registry, name, &org_kde_plasma_window_management_interface, std::min(version, kVersion)));
    org_kde_plasma_window_management_add_listener(manager_, &managerListener(), this);
  }

  void synced() {
    if (manager_ == nullptr) {
      listener_.failed(SourceFailure::absent, "KWin does not offer its list of windows");
    } else if (++syncs_ < kSyncs) {
      connection_.sync();
    } else {
      live_ = true;
      listener_.live();
      report();
    }
  }

  void lost(std::string reason) {
    live_ = false;
    listener_.failed(SourceFailure::unreachable, std::move(reason));
  }

  void report() {
    if (!live_) return;
    const auto front = windows_.front();
    if (change_.changedTo(front)) listener_.front(front);
  }

  void opened(Window* window) {
    handles_.insert(window);
    windows_.open(window);
    org_kde_plasma_window_add_listener(window, &windowListener(), this);
  }

  void closed(Window* window) {
    windows_.close(window);
    handles_.erase(window);
    org_kde_plasma_window_destroy(window);
    report();
  }

  template <typename... Ignored>
  static void nothing(void* /*data*/, Ignored... /*ignored*/) {}

  static void onWindow(void* data, Manager* manager, std::uint32_t id) {
    ownerOf<PlasmaFrontSource>(data).opened(
        org_kde_plasma_window_management_get_window(manager, id));
  }
  static void onWindowWithUuid(void* data, Manager* manager, std::uint32_t /*id*/,
                               const char* uuid) {
    ownerOf<PlasmaFrontSource>(data).opened(
        org_kde_plasma_window_management_get_window_by_uuid(manager, uuid));
  }
  static void onAppId(void* data, Window* window, const char* appId) {
    auto& self = ownerOf<PlasmaFrontSource>(data);
    self.windows_.setAppId(window, appId);
    self.report();
  }
  static void onState(void* data, Window* window, std::uint32_t flags) {
    auto& self = ownerOf<PlasmaFrontSource>(data);
    self.windows_.setActive(window, (flags & ORG_KDE_PLASMA_WINDOW_MANAGEMENT_STATE_ACTIVE) != 0);
    self.report();
  }
  static void onPid(void* data, Window* window, std::uint32_t pid) {
    ownerOf<PlasmaFrontSource>(data).windows_.setPid(window, static_cast<int>(pid));
  }
  static void onDescribed(void* data, Window* window) {
    auto& self = ownerOf<PlasmaFrontSource>(data);
    self.windows_.setDescribed(window);
    self.report();
  }
  static void onUnmapped(void* data, Window* window) {
    ownerOf<PlasmaFrontSource>(data).closed(window);
  }

  // Filled member by member: newer protocol files have more events, which stay null and are never
  // sent in the version that is bound.
  static const org_kde_plasma_window_management_listener& managerListener() {
    static const auto listener = [] {
      org_kde_plasma_window_management_listener l{};
      l.show_desktop_changed = nothing;
      l.window = onWindow;
      l.stacking_order_changed = nothing;
      l.stacking_order_uuid_changed = nothing;
      l.window_with_uuid = onWindowWithUuid;
      return l;
    }();
    return listener;
  }
  static const org_kde_plasma_window_listener& windowListener() {
    static const auto listener = [] {
      org_kde_plasma_window_listener l{};
      l.title_changed = nothing;
      l.app_id_changed = onAppId;
      l.state_changed = onState;
      l.virtual_desktop_changed = nothing;
      l.themed_icon_name_changed = nothing;
      l.unmapped = onUnmapped;
      l.initial_state = onDescribed;
      l.parent_window = nothing;
      l.geometry = nothing;
      l.icon_changed = nothing;
      l.pid_changed = onPid;
      l.virtual_desktop_entered = nothing;
      l.virtual_desktop_left = nothing;
      l.application_menu = nothing;
      l.activity_entered = nothing;
      l.activity_left = nothing;
      l.resource_name_changed = nothing;
      return l;
    }();
    return listener;
  }

  const std::string socket_;
  Listener listener_;
  WaylandConnection connection_;
  Manager* manager_ = nullptr;
  std::set<Window*> handles_;
  ToplevelTable windows_;
  FrontChange change_;
  int syncs_ = 0;
  bool live_ = false;
};

}  // namespace

std::unique_ptr<FrontSource> makePlasmaFrontSource(DescriptorLoop& loop, std::string socket) {
  return std::make_unique<PlasmaFrontSource>(loop, std::move(socket));
}

}  // namespace velotap
