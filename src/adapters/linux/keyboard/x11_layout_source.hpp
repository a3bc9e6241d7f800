// The layout of an X server's keyboard.
//
// Connecting and reading the keymap wait for the server's answers; both happen at the start, when
// a server comes back and after a change of layouts, not while typing: of the keyboard's state only
// the group is asked for, or every press of a modifier would wake us.
#pragma once

#include <xkbcommon/xkbcommon.h>

#include <cstdint>
#include <string>

#include "adapters/linux/descriptor_loop.hpp"
#include "adapters/linux/keyboard/keymap_compiler.hpp"
#include "adapters/linux/keyboard/layout_source.hpp"
#include "adapters/linux/session/reconnection.hpp"

struct xcb_connection_t;

namespace velotap {

class X11LayoutSource final : public LayoutSource {
 public:
  /// `display` names the server as DISPLAY does.
  X11LayoutSource(DescriptorLoop& loop, MainQueue& queue, std::string display);
  ~X11LayoutSource() override;
  void start(std::function<void()> changed) override;

 private:
  [[nodiscard]] bool connect();
  void disconnect();
  [[nodiscard]] bool selectEvents() const;
  void serve();
  void readKeymap();

  DescriptorLoop& loop_;
  const std::string display_;
  xcb_connection_t* connection_ = nullptr;
  std::uint8_t firstEvent_ = 0;
  std::int32_t keyboard_ = -1;
  LayoutGroups groups_;
  std::uint32_t group_ = 0;
  Observation readable_;
  Reconnection reconnection_;
};

}  // namespace velotap
