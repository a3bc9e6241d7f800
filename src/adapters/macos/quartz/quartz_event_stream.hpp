// The event stream over Quartz: events without a source, posted at the HID level.
//
// Made on the main thread, used from any. Making the first keyboard event loads the keyboard
// layout, which the system allows on the main thread only and ends the process for elsewhere; so
// the constructor makes one and throws it away.
#pragma once

#include "adapters/macos/core_foundation/core_foundation_api.hpp"
#include "adapters/macos/quartz/quartz_api.hpp"
#include "adapters/macos/runtime/autorelease_pool.hpp"
#include "platform/event_stream.hpp"

namespace velotap {

class QuartzEventStream final : public EventStream {
 public:
  QuartzEventStream(const CoreFoundationApi& cf, const QuartzApi& quartz,
                    const ObjectiveCApi& runtime);

  [[nodiscard]] std::optional<Point> pointerLocation() override;
  [[nodiscard]] std::optional<MouseEvent> makeMouse(MouseEventType type, int button,
                                                    Point location) override;
  void post(const MouseEvent& event) override;
  [[nodiscard]] std::optional<KeyEvent> makeKey(std::uint16_t keyCode, bool down) override;
  void post(const KeyEvent& event) override;
  void post(const GestureEvent& event) override;

 private:
  [[nodiscard]] std::shared_ptr<void> owned(CGEventRef event) const;

  const CoreFoundationApi& cf_;
  const QuartzApi& quartz_;
  const ObjectiveCApi& runtime_;
};

}  // namespace velotap
