// The simulated desktop with everything that it shows written down, as lines that a test can quote.
#pragma once

#include <mutex>
#include <string>
#include <utility>
#include <vector>

#include "adapters/simulated/simulated_desktop.hpp"
#include "base/log_text.hpp"

namespace velotap::test {

using Lines = std::vector<std::string>;

/// Posted events. Any thread posts; the owner's thread takes.
class PostRecorder {
 public:
  explicit PostRecorder(SimulatedEventStream& events)
      : observation_(events.observePosts([this](const PostedEvent& event) { add(event); })) {}

  /// Mouse and key events since the last call: "mouse down 2 at (512.0, 384.5)".
  Lines take() {
    const std::lock_guard guard(lock_);
    return std::exchange(lines_, {});
  }
  /// Gesture events since the last call.
  std::vector<GestureEvent> takeGestures() {
    const std::lock_guard guard(lock_);
    return std::exchange(gestures_, {});
  }
  /// For runs that would write down too much.
  void stop() { observation_.reset(); }

 private:
  void add(const PostedEvent& event) {
    const std::lock_guard guard(lock_);
    if (const auto* mouse = std::get_if<MouseEvent>(&event)) {
      const char* type = mouse->type == MouseEventType::otherDown ? "down " : "up ";
      lines_.push_back("mouse " + (type + std::to_string(mouse->button)) + " at " +
                       pointText(mouse->location));
    } else if (const auto* key = std::get_if<KeyEvent>(&event)) {
      lines_.push_back("key " + std::to_string(key->keyCode) + (key->down ? " down" : " up") +
                       " flags=" + std::to_string(key->flags));
    } else {
      gestures_.push_back(std::get<GestureEvent>(event));
    }
  }
  std::mutex lock_;
  Lines lines_;
  std::vector<GestureEvent> gestures_;
  Observation observation_;
};

/// Diagnostic lines, without the prefix that all of them have. Any thread writes.
class LogRecorder {
 public:
  explicit LogRecorder(SimulatedLog& log)
      : observation_(log.observeLines([this](const std::string& line) {
          const std::lock_guard guard(lock_);
          lines_.push_back(line.substr(line.find(']') + 2));
        })) {
    log.setEnabled(true);
  }
  Lines take() {
    const std::lock_guard guard(lock_);
    return std::exchange(lines_, {});
  }

 private:
  std::mutex lock_;
  Lines lines_;
  Observation observation_;
};

struct Desktop : SimulatedDesktop {
  PostRecorder posted{events};
  LogRecorder said{log};

  /// Lets time pass; whatever falls due runs at its own time.
  void advance(double seconds) { mainQueue.runUntil(clock.now() + virtualTime(seconds)); }

  void activate(const std::string& id, const std::string& name = "") {
    workspace.activate(RunningApplication{AppId::intern(id), name});
  }

  /// What comes out of the stream for a button event that hardware or software made: "pass",
  /// "drop", or what it became.
  std::string button(MouseEventType type, std::int64_t number, bool fromHardware = true) {
    const auto out = taps.send({.type = type, .button = 0, .number = number},
                               fromHardware ? EventOrigin::hid : EventOrigin::session);
    if (!out) return "drop";
    if (out->type == type) return "pass";
    return "type=" + std::to_string(static_cast<int>(out->type)) +
           " button=" + std::to_string(out->button);
  }
};

}  // namespace velotap::test
