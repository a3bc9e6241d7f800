#include "adapters/linux/wayland/wayland_connection.hpp"

#include <wayland-client.h>

#include <cerrno>
#include <cstring>
#include <utility>

namespace velotap {
namespace {

/// The library would print on its own what we report in our words.
void printNothing(const char* /*format*/, va_list /*arguments*/) {}

}  // namespace

struct WaylandConnection::Handlers {
  static void global(void* data, wl_registry* registry, std::uint32_t name, const char* interface,
                     std::uint32_t version) {
    ownerOf<WaylandConnection>(data).callbacks_.global(registry, name, interface, version);
  }
  static void globalGone(void* data, wl_registry* /*registry*/, std::uint32_t name) {
    const auto& removed = ownerOf<WaylandConnection>(data).callbacks_.removed;
    if (removed) removed(name);
  }
  static void done(void* data, wl_callback* callback, std::uint32_t /*serial*/) {
    auto& connection = ownerOf<WaylandConnection>(data);
    wl_callback_destroy(callback);
    if (callback != connection.sync_) return;
    connection.sync_ = nullptr;
    connection.callbacks_.synced();
  }
  static constexpr wl_registry_listener kRegistry{.global = global, .global_remove = globalGone};
  static constexpr wl_callback_listener kSync{.done = done};
};

WaylandConnection::WaylandConnection(DescriptorLoop& loop, Callbacks callbacks)
    : loop_(loop), callbacks_(std::move(callbacks)) {}

WaylandConnection::~WaylandConnection() {
  ready_.reset();
  if (display_ == nullptr) return;
  if (sync_ != nullptr) wl_callback_destroy(sync_);
  if (registry_ != nullptr) wl_registry_destroy(registry_);
  // What was destroyed before us is told to the compositor as far as it takes it.
  wl_display_flush(display_);
  wl_display_disconnect(display_);
}

bool WaylandConnection::open(const std::string& socket) {
  wl_log_set_handler_client(printNothing);
  display_ = wl_display_connect(socket.c_str());
  if (display_ == nullptr) return false;
  interest(DescriptorLoop::Interest::readable);
  registry_ = wl_display_get_registry(display_);
  wl_registry_add_listener(registry_, &Handlers::kRegistry, this);
  sync();
  return true;
}

void WaylandConnection::sync() {
  if (sync_ != nullptr) wl_callback_destroy(sync_);
  sync_ = wl_display_sync(display_);
  wl_callback_add_listener(sync_, &Handlers::kSync, this);
  flush();
}

void WaylandConnection::serve() {
  while (wl_display_prepare_read(display_) != 0) {
    if (wl_display_dispatch_pending(display_) < 0) return lose();
  }
  // The socket is non-blocking inside: with nothing to read this returns at once.
  if (wl_display_read_events(display_) < 0 && errno != EAGAIN) return lose();
  if (wl_display_dispatch_pending(display_) < 0) return lose();
  flush();
}

void WaylandConnection::flush() {
  // A broken pipe is found out by reading, after what the compositor said last has been read.
  const bool full = wl_display_flush(display_) < 0 && errno == EAGAIN;
  interest(full ? DescriptorLoop::Interest::readableOrWritable
                : DescriptorLoop::Interest::readable);
}

void WaylandConnection::interest(DescriptorLoop::Interest interest) {
  if (ready_.active() && interest == interest_) return;
  interest_ = interest;
  ready_.reset();
  ready_ = loop_.watch(wl_display_get_fd(display_), interest, [this] { serve(); });
}

void WaylandConnection::lose() {
  ready_.reset();
  const int error = wl_display_get_error(display_);
  callbacks_.lost(error == EPROTO ? "the compositor broke off over a protocol error"
                                  : "the compositor closed the connection");
}

}  // namespace velotap
