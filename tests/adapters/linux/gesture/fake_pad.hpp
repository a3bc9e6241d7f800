// A touchpad that records what is written to it and appears, or is lost, at a test's command.
#pragma once

#include <linux/input.h>

#include <cerrno>
#include <map>
#include <optional>
#include <span>
#include <string>
#include <vector>

#include "adapters/linux/gesture/pad_device.hpp"
#include "platform/diagnostic_log.hpp"

namespace velotap {

class FakePad : public PadDevice {
 public:
  int create(double now) override {
    ++creations;
    if (refusal != 0) return refusal;
    if (!exists) readyAt = now + appearing;
    exists = true;
    return 0;
  }
  bool ready(double now) override { return exists && now >= readyAt; }
  [[nodiscard]] int wakeDescriptor() const override { return -1; }
  [[nodiscard]] std::optional<double> wakeAt() const override {
    if (!exists) return std::nullopt;
    return readyAt;
  }
  bool write(std::span<const input_event> frame) override {
    if (lost) return false;
    for (const auto& event : frame) {
      if (event.type == EV_ABS && event.code == ABS_MT_SLOT) slot = event.value;
      if (event.type == EV_ABS && event.code == ABS_MT_TRACKING_ID) {
        down[slot] = event.value >= 0;
      }
    }
    ++frames;
    return true;
  }
  void destroy() override {
    exists = false;
    down.clear();
    ++destructions;
  }
  [[nodiscard]] int contactsDown() const {
    int count = 0;
    for (const auto& [index, isDown] : down) count += isDown ? 1 : 0;
    return count;
  }

  int refusal = 0;
  double appearing = 0;
  bool lost = false;
  bool exists = false;
  double readyAt = 0;
  int creations = 0;
  int destructions = 0;
  int frames = 0;

 private:
  int slot = 0;
  std::map<int, bool> down;
};

class LinesKept final : public DiagnosticLog {
 public:
  [[nodiscard]] bool enabled() const noexcept override { return true; }
  void line(std::string_view text) override { lines.emplace_back(text); }
  std::vector<std::string> lines;
};

}  // namespace velotap
