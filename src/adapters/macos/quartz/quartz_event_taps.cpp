#include "adapters/macos/quartz/quartz_event_taps.hpp"

#include <utility>

#include "adapters/macos/core_foundation/cf_ref.hpp"

namespace velotap {
namespace {

class EventInTap final : public TappedEvent {
 public:
  EventInTap(const QuartzApi& quartz, CGEventType type, CGEventRef event)
      : quartz_(quartz), type_(type), event_(event) {}
  [[nodiscard]] MouseEventType type() const override { return static_cast<MouseEventType>(type_); }
  [[nodiscard]] std::int64_t number() const override {
    return quartz_.CGEventGetIntegerValueField(event_, kCGMouseEventNumber);
  }
  void setType(MouseEventType type) override {
    type_ = static_cast<CGEventType>(type);
    quartz_.CGEventSetType(event_, type_);
  }
  void setButton(int button) override {
    quartz_.CGEventSetIntegerValueField(event_, kCGMouseEventButtonNumber, button);
  }

 private:
  const QuartzApi& quartz_;
  CGEventType type_;
  CGEventRef event_;
};

// What the system's callback is given. Shared, so that a callback which removes its own tap does
// not run in freed memory.
struct Listener : std::enable_shared_from_this<Listener> {
  Listener(const QuartzApi& api, std::uint64_t types, EventTaps::Callbacks calls)
      : quartz(api), mask(types), callbacks(std::move(calls)) {}

  [[nodiscard]] bool watches(CGEventType type) const {
    return type < 64 && (mask >> type & 1U) != 0;
  }

  const QuartzApi& quartz;
  std::uint64_t mask;
  EventTaps::Callbacks callbacks;
};

// The event belongs to the caller: it is passed on by returning it and dropped by returning null,
// and never released here. It means nothing when the system only tells of a disabled tap.
CGEventRef tapCallback(CGEventTapProxy, CGEventType type, CGEventRef event,
                       void* context) noexcept {
  const auto listener = static_cast<Listener*>(context)->weak_from_this().lock();
  if (listener == nullptr) return event;
  if (type == kCGEventTapDisabledByTimeout || type == kCGEventTapDisabledByUserInput) {
    listener->callbacks.disabled(type == kCGEventTapDisabledByTimeout ? TapDisabled::byTimeout
                                                                      : TapDisabled::byUserInput);
    return event;
  }
  if (event == nullptr || !listener->watches(type)) return event;
  EventInTap tapped(listener->quartz, type, event);
  return listener->callbacks.event(tapped) == TapAnswer::drop ? nullptr : event;
}

class QuartzTap final : public InstalledTap {
 public:
  QuartzTap(const CoreFoundationApi& cf, const QuartzApi& quartz,
            std::shared_ptr<Listener> listener, CfRef<CFMachPortRef> port,
            CfRef<CFRunLoopSourceRef> source)
      : cf_(cf),
        quartz_(quartz),
        listener_(std::move(listener)),
        port_(std::move(port)),
        source_(std::move(source)) {
    cf_.CFRunLoopAddSource(cf_.CFRunLoopGetMain(), source_.get(), *cf_.kCFRunLoopCommonModes);
  }

  ~QuartzTap() override {
    if (attached_) {
      quartz_.CGEventTapEnable(port_.get(), false);
      QuartzTap::detach();
    }
    // Without this the port lives on as long as anybody else holds it, with our pointer in it.
    cf_.CFMachPortInvalidate(port_.get());
    source_.reset();
    port_.reset();
  }

  void enable(bool on) override { quartz_.CGEventTapEnable(port_.get(), on); }
  [[nodiscard]] bool enabled() const override { return quartz_.CGEventTapIsEnabled(port_.get()); }
  void detach() override {
    if (!std::exchange(attached_, false)) return;
    cf_.CFRunLoopRemoveSource(cf_.CFRunLoopGetMain(), source_.get(), *cf_.kCFRunLoopCommonModes);
  }

 private:
  const CoreFoundationApi& cf_;
  const QuartzApi& quartz_;
  std::shared_ptr<Listener> listener_;
  CfRef<CFMachPortRef> port_;
  CfRef<CFRunLoopSourceRef> source_;
  bool attached_ = true;
};

CGEventTapLocation systemLocation(TapLocation location) {
  return location == TapLocation::hid ? kCGHIDEventTap : kCGSessionEventTap;
}

}  // namespace

std::unique_ptr<InstalledTap> QuartzEventTaps::install(TapLocation location, std::uint64_t mask,
                                                       Callbacks callbacks) {
  auto listener = std::make_shared<Listener>(quartz_, mask, std::move(callbacks));
  CfRef<CFMachPortRef> port(
      cf_, quartz_.CGEventTapCreate(systemLocation(location), kCGHeadInsertEventTap,
                                    kCGEventTapOptionDefault, mask, &tapCallback, listener.get()));
  if (!port) return nullptr;
  // The system enables new taps. This one is to wait, and must not queue events meanwhile.
  quartz_.CGEventTapEnable(port.get(), false);
  CfRef<CFRunLoopSourceRef> source(cf_, cf_.CFMachPortCreateRunLoopSource(nullptr, port.get(), 0));
  if (!source) {
    cf_.CFMachPortInvalidate(port.get());
    return nullptr;
  }
  return std::make_unique<QuartzTap>(cf_, quartz_, std::move(listener), std::move(port),
                                     std::move(source));
}

}  // namespace velotap
