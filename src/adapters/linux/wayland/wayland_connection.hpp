// A connection to a Wayland compositor that is served by the main thread's loop and never waits.
//
// Main thread. Says once when the connection is lost; it must not be destroyed from inside any of
// its callbacks, listeners of protocol objects included. Protocol objects must be destroyed before
// it is.
#pragma once

#include <cstdint>
#include <functional>
#include <string>

#include "adapters/linux/descriptor_loop.hpp"

struct wl_callback;
struct wl_display;
struct wl_registry;

namespace velotap {

class WaylandConnection {
 public:
  struct Callbacks {
    /// A global of the compositor; the registry binds it.
    std::function<void(wl_registry*, std::uint32_t name, const char* interface,
                       std::uint32_t version)>
        global;
    /// Everything asked before the last `sync` was answered.
    std::function<void()> synced;
    std::function<void(std::string reason)> lost;
    /// A global is gone. May be empty.
    std::function<void(std::uint32_t name)> removed{};
  };

  WaylandConnection(DescriptorLoop& loop, Callbacks callbacks);
  ~WaylandConnection();
  WaylandConnection(const WaylandConnection&) = delete;
  WaylandConnection& operator=(const WaylandConnection&) = delete;

  /// Connects and asks for the globals, followed by one `synced`. False when nobody listens there.
  [[nodiscard]] bool open(const std::string& socket);
  /// Asks for another `synced`.
  void sync();

 private:
  struct Handlers;
  void serve();
  void flush();
  void lose();
  void interest(DescriptorLoop::Interest interest);

  DescriptorLoop& loop_;
  const Callbacks callbacks_;
  wl_display* display_ = nullptr;
  wl_registry* registry_ = nullptr;
  wl_callback* sync_ = nullptr;
  DescriptorLoop::Interest interest_ = DescriptorLoop::Interest::readable;
  Observation ready_;
};

/// Takes what a listener's `data` is.
template <typename Owner>
[[nodiscard]] Owner& ownerOf(void* data) noexcept {
  return *static_cast<Owner*>(data);
}

}  // namespace velotap
