#include "adapters/linux/workspace/wlroots_front_source.hpp"

#include <wayland-client.h>

#include <algorithm>
#include <cstring>
#include <set>
#include <utility>

#include "adapters/linux/wayland/wayland_connection.hpp"
#include "adapters/linux/workspace/toplevel_table.hpp"
#include "wlr-foreign-toplevel-management-unstable-v1-client.h"

namespace velotap {
namespace {

using Manager = zwlr_foreign_toplevel_manager_v1;
using Handle = zwlr_foreign_toplevel_handle_v1;

class WlrootsFrontSource final : public FrontSource {
 public:
  WlrootsFrontSource(DescriptorLoop& loop, std::string socket)
      : socket_(std::move(socket)),
        connection_(loop, {.global = [this](auto... global) { bind(global...); },
                           .synced = [this] { synced(); },
                           .lost = [this](std::string reason) { lost(std::move(reason)); }}) {}

  ~WlrootsFrontSource() override {
    for (Handle* const handle : handles_) zwlr_foreign_toplevel_handle_v1_destroy(handle);
    if (manager_ != nullptr) zwlr_foreign_toplevel_manager_v1_destroy(manager_);
  }

  void start(Listener listener) override {
    listener_ = std::move(listener);
    if (socket_.empty() || !connection_.open(socket_)) {
      listener_.failed(SourceFailure::unreachable, "no Wayland compositor answers");
    }
  }

 private:
  /// The parent event, the last of version 3, is of no interest but must be understood.
  static constexpr std::uint32_t kVersion = 3;

  void bind(wl_registry* registry, std::uint32_t name, const char* interface,
            std::uint32_t version) {
    if (manager_ != nullptr ||
        std::strcmp(interface, zwlr_foreign_toplevel_manager_v1_interface.name) != 0) {
      return;
    }
    manager_ = static_cast<Manager*>(wl_registry_bind(
        registry, name, &zwlr_foreign_toplevel_manager_v1_interface, std::min(version, kVersion)));
    zwlr_foreign_toplevel_manager_v1_add_listener(manager_, &kManager, this);
  }

  void synced() {
    if (manager_ == nullptr) {
      listener_.failed(SourceFailure::absent, "the compositor does not list its windows");
    } else if (!std::exchange(bound_, true)) {
      // The windows that are open already come between binding and the next answer.
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

  void closed(Handle* handle) {
    windows_.close(handle);
    handles_.erase(handle);
    zwlr_foreign_toplevel_handle_v1_destroy(handle);
    report();
  }

  static void onToplevel(void* data, Manager* /*manager*/, Handle* handle) {
    auto& self = ownerOf<WlrootsFrontSource>(data);
    self.handles_.insert(handle);
    self.windows_.open(handle);
    zwlr_foreign_toplevel_handle_v1_add_listener(handle, &kHandle, data);
  }
  static void onFinished(void* data, Manager* manager) {
    auto& self = ownerOf<WlrootsFrontSource>(data);
    zwlr_foreign_toplevel_manager_v1_destroy(manager);
    self.manager_ = nullptr;
    self.lost("the compositor stopped listing its windows");
  }
  static void onTitle(void* /*data*/, Handle* /*handle*/, const char* /*title*/) {}
  static void onAppId(void* data, Handle* handle, const char* appId) {
    ownerOf<WlrootsFrontSource>(data).windows_.setAppId(handle, appId);
  }
  static void onOutput(void* /*data*/, Handle* /*handle*/, wl_output* /*output*/) {}
  static void onState(void* data, Handle* handle, wl_array* state) {
    const auto* const first = static_cast<const std::uint32_t*>(state->data);
    const auto* const last = first + state->size / sizeof(std::uint32_t);
    const bool active =
        std::find(first, last, ZWLR_FOREIGN_TOPLEVEL_HANDLE_V1_STATE_ACTIVATED) != last;
    ownerOf<WlrootsFrontSource>(data).windows_.setActive(handle, active);
  }
  static void onDone(void* data, Handle* handle) {
    auto& self = ownerOf<WlrootsFrontSource>(data);
    self.windows_.setDescribed(handle);
    self.report();
  }
  static void onClosed(void* data, Handle* handle) {
    ownerOf<WlrootsFrontSource>(data).closed(handle);
  }
  static void onParent(void* /*data*/, Handle* /*handle*/, Handle* /*parent*/) {}

  static constexpr zwlr_foreign_toplevel_manager_v1_listener kManager{.toplevel = onToplevel,
                                                                      .finished = onFinished};
  static constexpr zwlr_foreign_toplevel_handle_v1_listener kHandle{.title = onTitle,
                                                                    .app_id = onAppId,
                                                                    .output_enter = onOutput,
                                                                    .output_leave = onOutput,
                                                                    .state = onState,
                                                                    .done = onDone,
                                                                    .closed = onClosed,
                                                                    .parent = onParent};

  const std::string socket_;
  Listener listener_;
  WaylandConnection connection_;
  Manager* manager_ = nullptr;
  std::set<Handle*> handles_;
  ToplevelTable windows_;
  FrontChange change_;
  bool bound_ = false;
  bool live_ = false;
};

}  // namespace

std::unique_ptr<FrontSource> makeWlrootsFrontSource(DescriptorLoop& loop, std::string socket) {
  return std::make_unique<WlrootsFrontSource>(loop, std::move(socket));
}

}  // namespace velotap
