// The layouts of a Wayland compositor's keyboard.
//
// A client that never has the focus is told the keymap all the same, but not which of its groups is
// in use. Where somebody else tells that (KDE over the bus), `useGroup` takes it; elsewhere it is
// the first. A compositor that went away is connected to again when it is back.
#pragma once

#include <cstdint>
#include <optional>
#include <string>

#include "adapters/linux/descriptor_loop.hpp"
#include "adapters/linux/keyboard/keymap_compiler.hpp"
#include "adapters/linux/keyboard/layout_source.hpp"
#include "adapters/linux/session/reconnection.hpp"
#include "adapters/linux/wayland/wayland_connection.hpp"

struct wl_keyboard;
struct wl_registry;
struct wl_seat;

namespace velotap {

class WaylandLayoutSource final : public LayoutSource {
 public:
  /// `socket` names the compositor as WAYLAND_DISPLAY does.
  WaylandLayoutSource(DescriptorLoop& loop, MainQueue& queue, std::string socket);
  ~WaylandLayoutSource() override;
  void start(std::function<void()> changed) override;
  void useGroup(std::uint32_t group);

 private:
  struct Handlers;
  [[nodiscard]] bool connect();
  void disconnect();
  void seeGlobal(wl_registry* registry, std::uint32_t name, const char* interface,
                 std::uint32_t version);
  void seeCapabilities(std::uint32_t capabilities);
  void seeKeymap(std::uint32_t format, int descriptor, std::uint32_t size);
  void dropKeyboard();

  DescriptorLoop& loop_;
  const std::string socket_;
  LayoutGroups groups_;
  std::uint32_t group_ = 0;
  std::optional<WaylandConnection> connection_;
  wl_seat* seat_ = nullptr;
  wl_keyboard* keyboard_ = nullptr;
  Reconnection reconnection_;
};

}  // namespace velotap
