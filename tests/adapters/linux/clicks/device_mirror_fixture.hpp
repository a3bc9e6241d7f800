// A mirror over a device that only remembers what was done to it.
#pragma once

#include <gtest/gtest.h>

#include <functional>
#include <memory>
#include <string>
#include <vector>

#include "../evdev/event_maker.hpp"
#include "adapters/linux/clicks/device_mirror.hpp"
#include "fake_hardware.hpp"
#include "support/virtual_time.hpp"

namespace velotap::test {

using Want = DeviceMirror::Want;

class DeviceMirrorTest : public testing::Test {
 protected:
  explicit DeviceMirrorTest(EvdevDevice device = magicMouse()) {
    session = taps.install(TapLocation::session, 0xDE,
                           {.event =
                                [this](TappedEvent& event) {
                                  heard += std::to_string(static_cast<int>(event.type())) + " ";
                                  if (inTap) inTap();
                                  if (!converts || event.type() != MouseEventType::leftDown) {
                                    return answer;
                                  }
                                  event.setType(MouseEventType::otherDown);
                                  event.setButton(kMiddleButton);
                                  return answer;
                                },
                            .disabled =
                                [this](TapDisabled) {
                                  heard += "off ";
                                  session->enable(true);
                                }});
    session->enable(true);
    mirror = std::make_shared<DeviceMirror>(
        std::make_unique<FakeHardware>(kernel, "/dev/input/event3", std::move(device)),
        DeviceMirror::Links{
            .taps = taps,
            .queue = queue,
            .clock = clock,
            .middle = [this](bool down) { pointer += down ? "+" : "-"; },
            .changed = [](const DeviceMirror&) {},
            .lost = [this](const DeviceMirror&, GrabTrouble trouble) { lost.push_back(trouble); }});
  }

  [[nodiscard]] GrabState state() const { return mirror->status().state; }
  void turns(int count) {
    for (int i = 0; i < count; ++i) mirror->turn();
  }
  void grab() {
    mirror->want(Want::yes, 2);
    for (int i = 0; i < 10 && state() != GrabState::grabbed; ++i) mirror->turn();
    ASSERT_EQ(state(), GrabState::grabbed);
    kernel->take();
  }
  void send(const std::vector<input_event>& events) {
    kernel->send(events);
    mirror->turn();
  }
  void press(std::uint16_t code) { send({event(EV_KEY, code, 1), report()}); }
  void release(std::uint16_t code) { send({event(EV_KEY, code, 0), report()}); }

  ExactClock clock;
  VirtualQueue queue{clock};
  TapChain taps;
  std::shared_ptr<FakeKernel> kernel = std::make_shared<FakeKernel>(clock);
  std::shared_ptr<DeviceMirror> mirror;
  std::unique_ptr<InstalledTap> session;
  std::function<void()> inTap;
  std::string heard;
  std::string pointer;
  std::vector<GrabTrouble> lost;
  bool converts = false;
  TapAnswer answer = TapAnswer::pass;
};

}  // namespace velotap::test
