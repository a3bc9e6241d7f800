// A window on a Wayland compositor, for the desktop tests: wayland_window APP-ID
//
// Prints a line for each of
//   mapped
//   activated TIME
//   deactivated TIME
// Ends when standard input or the compositor does. Times as in front_watch.cpp.
#include <poll.h>
#include <sys/mman.h>
#include <unistd.h>
#include <wayland-client.h>

#include <algorithm>
#include <cstdint>
#include <cstdio>
#include <cstring>
#include <ctime>

#include "xdg-shell-client.h"

namespace {

constexpr int kWidth = 200;
constexpr int kHeight = 100;
constexpr int kStride = kWidth * 4;
constexpr int kSize = kStride * kHeight;

wl_compositor* compositor = nullptr;
wl_shm* sharedMemory = nullptr;
xdg_wm_base* shell = nullptr;
wl_surface* surface = nullptr;
wl_buffer* buffer = nullptr;
bool mapped = false;
bool activated = false;

long long microseconds() {
  timespec now{};
  clock_gettime(CLOCK_MONOTONIC, &now);
  return now.tv_sec * 1'000'000LL + now.tv_nsec / 1000;
}

template <typename... Ignored>
void nothing(void* /*data*/, Ignored... /*ignored*/) {}

void onGlobal(void* /*data*/, wl_registry* registry, std::uint32_t name, const char* interface,
              std::uint32_t /*version*/) {
  const auto bind = [&](const wl_interface& wanted) {
    return wl_registry_bind(registry, name, &wanted, 1);
  };
  if (std::strcmp(interface, wl_compositor_interface.name) == 0) {
    compositor = static_cast<wl_compositor*>(bind(wl_compositor_interface));
  } else if (std::strcmp(interface, wl_shm_interface.name) == 0) {
    sharedMemory = static_cast<wl_shm*>(bind(wl_shm_interface));
  } else if (std::strcmp(interface, xdg_wm_base_interface.name) == 0) {
    shell = static_cast<xdg_wm_base*>(bind(xdg_wm_base_interface));
  }
}

wl_buffer* makeBuffer() {
  const int file = memfd_create("window", MFD_CLOEXEC);
  if (file < 0 || ftruncate(file, kSize) != 0) return nullptr;
  wl_shm_pool* const pool = wl_shm_create_pool(sharedMemory, file, kSize);
  wl_buffer* const made =
      wl_shm_pool_create_buffer(pool, 0, kWidth, kHeight, kStride, WL_SHM_FORMAT_XRGB8888);
  wl_shm_pool_destroy(pool);
  close(file);
  return made;
}

void onPing(void* /*data*/, xdg_wm_base* base, std::uint32_t serial) {
  xdg_wm_base_pong(base, serial);
}

void onSurfaceConfigure(void* /*data*/, xdg_surface* xdgSurface, std::uint32_t serial) {
  xdg_surface_ack_configure(xdgSurface, serial);
  wl_surface_attach(surface, buffer, 0, 0);
  wl_surface_damage(surface, 0, 0, kWidth, kHeight);
  wl_surface_commit(surface);
  if (!mapped) std::puts("mapped");
  mapped = true;
}

void onToplevelConfigure(void* /*data*/, xdg_toplevel* /*toplevel*/, std::int32_t /*width*/,
                         std::int32_t /*height*/, wl_array* states) {
  const long long now = microseconds();
  const auto* const first = static_cast<const std::uint32_t*>(states->data);
  const auto* const last = first + states->size / sizeof(std::uint32_t);
  const bool active = std::find(first, last, XDG_TOPLEVEL_STATE_ACTIVATED) != last;
  if (active != activated) std::printf("%s\t%lld\n", active ? "activated" : "deactivated", now);
  activated = active;
}

constexpr wl_registry_listener kRegistry{.global = onGlobal, .global_remove = nothing};
constexpr xdg_wm_base_listener kShell{.ping = onPing};
constexpr xdg_surface_listener kSurface{.configure = onSurfaceConfigure};

}  // namespace

int main(int count, char** arguments) {
  if (count < 2) return 64;
  std::setvbuf(stdout, nullptr, _IOLBF, 0);
  wl_display* const display = wl_display_connect(nullptr);
  if (display == nullptr) return 2;
  wl_registry_add_listener(wl_display_get_registry(display), &kRegistry, nullptr);
  wl_display_roundtrip(display);
  if (compositor == nullptr || sharedMemory == nullptr || shell == nullptr) return 3;
  buffer = makeBuffer();
  if (buffer == nullptr) return 4;
  xdg_wm_base_add_listener(shell, &kShell, nullptr);
  surface = wl_compositor_create_surface(compositor);
  xdg_surface* const xdgSurface = xdg_wm_base_get_xdg_surface(shell, surface);
  xdg_surface_add_listener(xdgSurface, &kSurface, nullptr);
  xdg_toplevel* const toplevel = xdg_surface_get_toplevel(xdgSurface);
  xdg_toplevel_listener events{};  // newer protocol files have more, never sent in version 1
  events.configure = onToplevelConfigure;
  events.close = nothing;
  xdg_toplevel_add_listener(toplevel, &events, nullptr);
  xdg_toplevel_set_app_id(toplevel, arguments[1]);
  wl_surface_commit(surface);

  pollfd waits[] = {{.fd = STDIN_FILENO, .events = POLLIN, .revents = 0},
                    {.fd = wl_display_get_fd(display), .events = POLLIN, .revents = 0}};
  while (wl_display_flush(display) >= 0 && poll(waits, 2, -1) > 0) {
    if (waits[0].revents != 0) return 0;
    if (wl_display_dispatch(display) < 0) return 1;
  }
  return 1;
}
