// Watches the buttons of a device that is not taken over: read-only, and woken by nothing else.
//
// Main thread. The clicks have gone to the desktop by themselves; knowing of them keeps a tap from
// being made of the same fingers. Silent while somebody holds a grab on the device.
#pragma once

#include <cstdint>
#include <functional>
#include <memory>
#include <string>

#include "adapters/linux/descriptor_loop.hpp"
#include "adapters/linux/runtime/descriptor.hpp"
#include "base/observer_list.hpp"

namespace velotap {

class ClickObserver {
 public:
  using Seen = std::function<void(std::uint16_t button, bool down)>;

  ClickObserver(DescriptorLoop& loop, const std::string& path, Seen seen);
  ClickObserver(const ClickObserver&) = delete;
  ClickObserver& operator=(const ClickObserver&) = delete;

 private:
  void read();

  Descriptor node_;
  Seen seen_;
  Observation ready_;
};

}  // namespace velotap
