// Posts magnify and rotate gestures as the program does, through its own virtual touchpad:
//
//   gesture_poster STATEMENT...
//
//   appear                              until the touchpad exists and takes contacts
//   magnify SCALE STEPS MS ENDING       grows by SCALE in STEPS equal changes, one every MS ms
//   rotate DEGREES STEPS MS ENDING      turns counter-clockwise likewise
//   wait MS
//
// ENDING is ended, cancelled or forgotten (no event at all). Prints each statement when it is done,
// and "done" at the end.
#include <atomic>
#include <cmath>
#include <cstdio>
#include <ctime>
#include <exception>
#include <optional>
#include <span>
#include <sstream>
#include <stdexcept>
#include <string>

#include "adapters/linux/gesture/gesture_touchpad.hpp"
#include "adapters/linux/gesture/uinput_touchpad.hpp"
#include "adapters/linux/runtime/posix_clock.hpp"
#include "adapters/posix/standard_log.hpp"

namespace velotap::vm {
namespace {

/// The program's touchpad, and whether a contact ever reached it.
class WatchedTouchpad final : public PadDevice {
 public:
  int create(double now) override { return pad_.create(now); }
  bool ready(double now) override { return pad_.ready(now); }
  [[nodiscard]] int wakeDescriptor() const override { return pad_.wakeDescriptor(); }
  [[nodiscard]] std::optional<double> wakeAt() const override { return pad_.wakeAt(); }
  bool write(std::span<const input_event> frame) override {
    landed_ = true;
    return pad_.write(frame);
  }
  void destroy() override { pad_.destroy(); }
  [[nodiscard]] bool landed() const { return landed_; }

 private:
  UinputTouchpad pad_;
  std::atomic<bool> landed_ = false;
};

class Poster {
 public:
  void carryOut(const std::string& statement) {
    std::istringstream words(statement);
    std::string verb;
    words >> verb;
    if (verb == "appear") {
      appear();
    } else if (verb == "wait") {
      double milliseconds = 0;
      words >> milliseconds;
      wait(milliseconds);
    } else if (verb == "magnify" || verb == "rotate") {
      gesture(verb == "magnify" ? GestureKind::magnify : GestureKind::rotate, words);
    } else {
      words.setstate(std::ios::failbit);
    }
    if (!words) throw std::invalid_argument(statement);
    std::printf("%.6f %s\n", clock_.uptime(), statement.c_str());
  }

 private:
  static void wait(double milliseconds) {
    const auto whole = static_cast<time_t>(milliseconds / 1000);
    const timespec pause{
        whole, static_cast<long>((milliseconds - 1000.0 * static_cast<double>(whole)) * 1e6)};
    clock_nanosleep(CLOCK_MONOTONIC, 0, &pause, nullptr);
  }
  void post(GestureKind kind, GesturePhase phase, double value = 0) {
    touchpad_.post({.kind = kind, .phase = phase, .value = value, .location = {}});
  }
  /// A gesture that changes nothing, and that no desktop therefore reports, kept alive meanwhile.
  void appear() {
    post(GestureKind::magnify, GesturePhase::began);
    while (!pad_.landed()) {
      post(GestureKind::magnify, GesturePhase::changed);
      wait(50);
    }
    post(GestureKind::magnify, GesturePhase::ended);
    wait(100);
  }
  void gesture(GestureKind kind, std::istringstream& words) {
    double amount = 0;
    int steps = 0;
    double milliseconds = 0;
    std::string ending;
    words >> amount >> steps >> milliseconds >> ending;
    if (!words || steps <= 0) return;
    const double step =
        kind == GestureKind::magnify ? std::pow(amount, 1.0 / steps) - 1 : amount / steps;
    post(kind, GesturePhase::began);
    for (int i = 0; i < steps; ++i) {
      wait(milliseconds);
      post(kind, GesturePhase::changed, step);
    }
    if (ending == "ended") {
      post(kind, GesturePhase::ended);
    } else if (ending == "cancelled") {
      post(kind, GesturePhase::cancelled);
    } else if (ending != "forgotten") {
      words.setstate(std::ios::failbit);
    }
  }

  PosixClock clock_;
  StandardLog log_{true};
  WatchedTouchpad pad_;
  GestureTouchpad touchpad_{pad_, {}, clock_, log_};
};

}  // namespace
}  // namespace velotap::vm

int main(int argc, char** argv) {
  std::setvbuf(stdout, nullptr, _IOLBF, BUFSIZ);
  try {
    velotap::vm::Poster poster;
    for (const char* statement : std::span(argv, static_cast<std::size_t>(argc)).subspan(1)) {
      poster.carryOut(statement);
    }
    std::puts("done");
  } catch (const std::exception& error) {
    std::fprintf(stderr, "gesture_poster: %s\n", error.what());
    return 2;
  }
  return 0;
}
