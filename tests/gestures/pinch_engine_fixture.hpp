// Two fingers on the pinch engine, and the gestures that it made of them.
#pragma once

#include <gtest/gtest.h>

#include <cmath>
#include <numbers>

#include "engine_fixture.hpp"
#include "fingers.hpp"

namespace velotap::test {

class PinchEngineTest : public ::testing::Test, protected EngineKit {
 protected:
  using Gestures = std::vector<GestureEvent>;

  PinchEngineTest() { set("mouseRotate", true); }

  /// Two firm fingers, `distance` millimetres apart at `degrees`, their midpoint at (x, y).
  static Fingers pair(double distance, double degrees = 0, double x = 50, double y = 50) {
    const double angle = degrees * std::numbers::pi / 180;
    const double dx = distance / 2 * std::cos(angle);
    const double dy = distance / 2 * std::sin(angle);
    Fingers result = fingers({finger(1, 0.4F, 0.5F), finger(2, 0.6F, 0.5F)});
    result[0].mmPos = {static_cast<float>(x - dx), static_cast<float>(y - dy)};
    result[1].mmPos = {static_cast<float>(x + dx), static_cast<float>(y + dy)};
    return result;
  }
  void process(const Fingers& frame, MTDevice device = nullptr) {
    pinch.process(device == nullptr ? first : device, frame, context);
  }
  void lift(MTDevice device = nullptr) { process(Fingers(), device); }
  void beginPinch(MTDevice device = nullptr) {
    process(pair(20), device);
    process(pair(25), device);
  }
  void beginRotation() {
    process(pair(30));
    process(pair(30, 13));
  }
  /// "magnify 1 0.000" …
  Lines gestures() {
    Lines result;
    for (const GestureEvent& event : posted.takeGestures()) {
      result.push_back((event.kind == GestureKind::magnify ? "magnify " : "rotate ") +
                       std::to_string(static_cast<int>(event.phase)) + " " +
                       fixedText(event.value, 3));
    }
    return result;
  }
  static Fingers three() {
    return fingers({finger(1, 0.3F, 0.5F), finger(2, 0.5F, 0.5F), finger(3, 0.7F, 0.5F)});
  }

  int firstDevice = 0;
  int secondDevice = 0;
  MTDevice first = &firstDevice;
  MTDevice second = &secondDevice;
  PinchEngine::Context context{AppId::intern(kEditor), false};
};

}  // namespace velotap::test
