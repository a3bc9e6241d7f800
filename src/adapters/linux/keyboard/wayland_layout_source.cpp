#include "adapters/linux/keyboard/wayland_layout_source.hpp"

#include <sys/mman.h>
#include <wayland-client.h>

#include <algorithm>
#include <optional>
#include <string_view>
#include <utility>

#include "adapters/linux/runtime/descriptor.hpp"
#include "adapters/linux/session/socket_recovery.hpp"

namespace velotap {
namespace {

// From this version on a keyboard can be given back, and keymaps are mapped privately.
constexpr std::uint32_t kSeatVersion = 7;
constexpr std::uint32_t kReleaseSince = 3;

std::string textOf(int descriptor, std::uint32_t size) {
  void* memory = mmap(nullptr, size, PROT_READ, MAP_PRIVATE, descriptor, 0);
  if (memory == MAP_FAILED) return {};
  const std::string_view bytes(static_cast<const char*>(memory), size);
  // The text ends with a zero, which is counted.
  std::string text(bytes.substr(0, bytes.find('\0')));
  munmap(memory, size);
  return text;
}

}  // namespace

struct WaylandLayoutSource::Handlers {
  static WaylandLayoutSource& source(void* data) { return ownerOf<WaylandLayoutSource>(data); }
  static void capabilities(void* data, wl_seat* /*seat*/, std::uint32_t capabilities) {
    source(data).seeCapabilities(capabilities);
  }
  static void name(void* /*data*/, wl_seat* /*seat*/, const char* /*name*/) {}
  static constexpr wl_seat_listener kSeat{.capabilities = capabilities, .name = name};

  static void keymap(void* data, wl_keyboard* /*keyboard*/, std::uint32_t format,
                     std::int32_t descriptor, std::uint32_t size) {
    source(data).seeKeymap(format, descriptor, size);
  }
  static void enter(void* /*data*/, wl_keyboard* /*keyboard*/, std::uint32_t /*serial*/,
                    wl_surface* /*surface*/, wl_array* /*keys*/) {}
  static void leave(void* /*data*/, wl_keyboard* /*keyboard*/, std::uint32_t /*serial*/,
                    wl_surface* /*surface*/) {}
  static void key(void* /*data*/, wl_keyboard* /*keyboard*/, std::uint32_t /*serial*/,
                  std::uint32_t /*time*/, std::uint32_t /*key*/, std::uint32_t /*state*/) {}
  // Comes with the focus, which a client without windows never has.
  static void modifiers(void* /*data*/, wl_keyboard* /*keyboard*/, std::uint32_t /*serial*/,
                        std::uint32_t /*depressed*/, std::uint32_t /*latched*/,
                        std::uint32_t /*locked*/, std::uint32_t /*group*/) {}
  static void repeatInfo(void* /*data*/, wl_keyboard* /*keyboard*/, std::int32_t /*rate*/,
                         std::int32_t /*delay*/) {}
  static constexpr wl_keyboard_listener kKeyboard{.keymap = keymap,
                                                  .enter = enter,
                                                  .leave = leave,
                                                  .key = key,
                                                  .modifiers = modifiers,
                                                  .repeat_info = repeatInfo};
};

WaylandLayoutSource::WaylandLayoutSource(DescriptorLoop& loop, MainQueue& queue, std::string socket)
    : loop_(loop),
      socket_(std::move(socket)),
      reconnection_(recoveryOf(loop, socket_.empty() ? std::nullopt : std::optional(socket_)),
                    queue, [this] { return connect(); }) {}

WaylandLayoutSource::~WaylandLayoutSource() {
  disconnect();
}

void WaylandLayoutSource::start(std::function<void()> changed) {
  listenWith(std::move(changed));
  // Without a compositor another source answers meanwhile.
  reconnection_.start();
}

bool WaylandLayoutSource::connect() {
  disconnect();
  connection_.emplace(loop_, WaylandConnection::Callbacks{
                                 .global =
                                     [this](wl_registry* registry, std::uint32_t name,
                                            const char* interface, std::uint32_t version) {
                                       seeGlobal(registry, name, interface, version);
                                     },
                                 .synced = [] {},
                                 .lost = [this](const std::string&) { reconnection_.lost(); }});
  return connection_->open(socket_);
}

// The objects of a connection go before it.
void WaylandLayoutSource::disconnect() {
  dropKeyboard();
  if (seat_ != nullptr) wl_seat_destroy(std::exchange(seat_, nullptr));
  connection_.reset();
}

void WaylandLayoutSource::useGroup(std::uint32_t group) {
  group_ = group;
  know(groupAt(groups_, group_));
}

void WaylandLayoutSource::seeGlobal(wl_registry* registry, std::uint32_t name,
                                    const char* interface, std::uint32_t version) {
  if (seat_ != nullptr || std::string_view(interface) != wl_seat_interface.name) return;
  seat_ = static_cast<wl_seat*>(
      wl_registry_bind(registry, name, &wl_seat_interface, std::min(version, kSeatVersion)));
  wl_seat_add_listener(seat_, &Handlers::kSeat, this);
}

void WaylandLayoutSource::seeCapabilities(std::uint32_t capabilities) {
  const bool hasKeyboard = (capabilities & WL_SEAT_CAPABILITY_KEYBOARD) != 0;
  if (!hasKeyboard) return dropKeyboard();
  if (keyboard_ != nullptr) return;
  keyboard_ = wl_seat_get_keyboard(seat_);
  wl_keyboard_add_listener(keyboard_, &Handlers::kKeyboard, this);
}

void WaylandLayoutSource::seeKeymap(std::uint32_t format, int descriptor, std::uint32_t size) {
  const Descriptor owned(descriptor);
  if (format != WL_KEYBOARD_KEYMAP_FORMAT_XKB_V1) return;
  groups_ = compileText(textOf(owned.get(), size));
  know(groupAt(groups_, group_));
}

void WaylandLayoutSource::dropKeyboard() {
  if (keyboard_ == nullptr) return;
  if (wl_keyboard_get_version(keyboard_) >= kReleaseSince) {
    wl_keyboard_release(keyboard_);
  } else {
    wl_keyboard_destroy(keyboard_);
  }
  keyboard_ = nullptr;
}

}  // namespace velotap
