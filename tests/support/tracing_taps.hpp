// Writes down what is done with event taps, in order, on its way to the simulated ones; and keeps
// the callbacks, so that a test can call one with an event that no stream would send.
//
// Main thread.
#pragma once

#include <map>
#include <memory>
#include <string>
#include <utility>
#include <vector>

#include "platform/event_taps.hpp"

namespace velotap::test {

class TracingTaps final : public EventTaps {
 public:
  explicit TracingTaps(EventTaps& taps) : taps_(taps) {}

  [[nodiscard]] std::unique_ptr<InstalledTap> install(TapLocation location, std::uint64_t mask,
                                                      Callbacks callbacks) override {
    const std::string name = location == TapLocation::hid ? "hid" : "session";
    calls_.push_back("install " + name);
    masks[location] = mask;
    latest[location] = callbacks;
    auto tap = taps_.install(location, mask, std::move(callbacks));
    if (!tap) return nullptr;
    return std::make_unique<Tap>(calls_, name, std::move(tap));
  }

  /// What was done since the last call: "install hid", "enable session" …
  std::vector<std::string> take() { return std::exchange(calls_, {}); }

  std::map<TapLocation, std::uint64_t> masks;
  std::map<TapLocation, Callbacks> latest;

 private:
  class Tap final : public InstalledTap {
   public:
    Tap(std::vector<std::string>& calls, std::string name, std::unique_ptr<InstalledTap> tap)
        : calls_(calls), name_(std::move(name)), tap_(std::move(tap)) {}
    ~Tap() override { calls_.push_back("remove " + name_); }
    void enable(bool on) override {
      calls_.push_back((on ? "enable " : "disable ") + name_);
      tap_->enable(on);
    }
    [[nodiscard]] bool enabled() const override { return tap_->enabled(); }

   private:
    std::vector<std::string>& calls_;
    std::string name_;
    std::unique_ptr<InstalledTap> tap_;
  };

  EventTaps& taps_;
  std::vector<std::string> calls_;
};

}  // namespace velotap::test
