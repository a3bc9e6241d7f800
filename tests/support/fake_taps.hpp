// Event taps that tests feed by hand.
//
// Main thread. A tap may be removed from within one of its own callbacks.
#pragma once

#include <memory>
#include <string>
#include <utility>
#include <vector>

#include "platform/event_taps.hpp"

namespace velotap::test {

class FakeEvent final : public TappedEvent {
 public:
  FakeEvent(MouseEventType type, std::int64_t number) : type_(type), number_(number) {}
  [[nodiscard]] MouseEventType type() const override { return type_; }
  [[nodiscard]] std::int64_t number() const override { return number_; }
  void setType(MouseEventType type) override {
    changes += "type=" + std::to_string(static_cast<int>(type)) + " ";
    type_ = type;
  }
  void setButton(int button) override { changes += "button=" + std::to_string(button) + " "; }

  std::string changes;  ///< in the order in which they were made

 private:
  MouseEventType type_;
  std::int64_t number_;
};

class FakeTaps final : public EventTaps {
 public:
  struct Tap {
    std::uint64_t mask = 0;
    Callbacks callbacks;
    bool enabled = false;
  };

  bool hidFails = false;
  bool sessionFails = false;
  bool revives = true;  ///< a tap that was disabled from outside can be enabled again
  std::vector<std::string> calls;
  std::shared_ptr<Tap> hid;
  std::shared_ptr<Tap> session;

  [[nodiscard]] std::unique_ptr<InstalledTap> install(TapLocation location, std::uint64_t mask,
                                                      Callbacks callbacks) override {
    const bool isHid = location == TapLocation::hid;
    const char* name = isHid ? "hid" : "session";
    calls.push_back("install " + std::string(name));
    if (isHid ? hidFails : sessionFails) return nullptr;
    auto& slot = isHid ? hid : session;
    slot = std::make_shared<Tap>(Tap{mask, std::move(callbacks), false});
    return std::make_unique<Installed>(*this, slot, name);
  }

  /// The answer of one tap to one event; passes when the tap is absent, off or not asked for it.
  static TapAnswer feed(const std::shared_ptr<Tap>& tap, FakeEvent& event) {
    const auto keep = tap;  // the callback may remove it
    const auto code = static_cast<unsigned>(event.type());
    if (!keep || !keep->enabled || (keep->mask >> code & 1U) == 0) return TapAnswer::pass;
    return keep->callbacks.event(event);
  }
  /// The system disables a tap.
  static void disable(const std::shared_ptr<Tap>& tap, TapDisabled why) {
    const auto keep = tap;
    keep->enabled = false;
    keep->callbacks.disabled(why);
  }

  /// What comes out of the stream for a button event that hardware or software made: "pass",
  /// "drop" or the changes.
  std::string button(MouseEventType type, std::int64_t number, bool fromHardware = true) {
    FakeEvent event(type, number);
    if (fromHardware) static_cast<void>(feed(hid, event));
    if (feed(session, event) == TapAnswer::drop) return "drop";
    if (event.changes.empty()) return "pass";
    return event.changes.substr(0, event.changes.size() - 1);
  }

 private:
  class Installed final : public InstalledTap {
   public:
    Installed(FakeTaps& owner, std::shared_ptr<Tap> tap, std::string name)
        : owner_(owner), tap_(std::move(tap)), name_(std::move(name)) {}
    ~Installed() override {
      owner_.calls.push_back("remove " + name_);
      tap_->enabled = false;
      auto& slot = name_ == "hid" ? owner_.hid : owner_.session;
      if (slot == tap_) slot.reset();
    }
    void enable(bool on) override {
      owner_.calls.push_back((on ? "enable " : "disable ") + name_);
      tap_->enabled = on && (owner_.revives || !everEnabled_);
      everEnabled_ = everEnabled_ || on;
    }
    [[nodiscard]] bool enabled() const override { return tap_->enabled; }

   private:
    FakeTaps& owner_;
    std::shared_ptr<Tap> tap_;
    std::string name_;
    bool everEnabled_ = false;
  };
};

}  // namespace velotap::test
