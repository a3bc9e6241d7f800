// The recogniser: takes every frame of every multitouch device, keeps a touch session for each, and
// answers finished sessions with a click or a shortcut.
//
// Frames come on the library's threads; `start` and `stop` on the main thread; the click policy's
// questions from the event tap on the main thread. One lock guards all device states, the held
// conversion and the three times; a frame's whole change, its click included, happens within one
// stretch of it. It is the first lock of the order: the pinch engine's, the tracker's and the
// activity log's may be taken inside, and nobody who holds one of those calls in here. A frame in
// steady state allocates nothing.
#pragma once

#include <atomic>
#include <cstddef>
#include <limits>
#include <mutex>
#include <optional>
#include <vector>

#include "base/lock_order.hpp"
#include "config/app_tracker.hpp"
#include "config/config.hpp"
#include "gestures/device_state.hpp"
#include "gestures/finger.hpp"
#include "gestures/pinch_engine.hpp"
#include "gestures/tap_activity_log.hpp"
#include "input/multitouch_binding.hpp"
#include "output/click_policy.hpp"
#include "output/shortcut_key_codes.hpp"
#include "platform/clock.hpp"
#include "platform/diagnostic_log.hpp"
#include "platform/event_stream.hpp"
#include "platform/preferences_storage.hpp"

namespace velotap {

class TouchEngine final : public ClickPolicy {
 public:
  struct Services {
    MT& multitouch;
    const Config& config;
    const AppTracker& apps;
    PinchEngine& pinch;
    TapActivityLog& activity;
    const ShortcutKeyCodes& keyCodes;
    SystemPreferences& systemPreferences;
    EventStream& events;
    const Clock& clock;
    DiagnosticLog& log;
  };

  explicit TouchEngine(const Services& services);
  ~TouchEngine() override;
  TouchEngine(const TouchEngine&) = delete;
  TouchEngine& operator=(const TouchEngine&) = delete;

  /// The engine of this process.
  [[nodiscard]] static TouchEngine& shared();

  /// Starts listening to every device anew; true when at least one could be started. Fingers that
  /// are down already begin nothing until they all lift.
  bool start();
  /// Stops and releases every device and forgets all sessions. A button that a conversion held is
  /// released.
  void stop();

  /// One frame of one device. Frames of devices that were not started are ignored.
  void handleFrame(MTDevice device, const MTTouch* touches, std::ptrdiff_t count);

  /// A converted button is held, or a finger lies on some device.
  [[nodiscard]] bool hasActiveContact() const;
  /// The classes of the started devices, each once, in the order of the enumeration.
  [[nodiscard]] std::vector<DeviceClass> connectedDeviceClasses() const;

  // ClickPolicy
  void notePhysicalButtonDown() override;
  [[nodiscard]] bool shouldSwallowSyntheticLeftClick(bool canIdentifyPhysicalEvents,
                                                     bool wasObservedAtHID) override;
  [[nodiscard]] bool shouldConvertClick(Button button) override;
  [[nodiscard]] bool isConverting(Button button) override;
  bool endConversion(Button button) override;
  [[nodiscard]] bool abandonConversion() override;

 private:
  struct Entry {
    MTDevice device = nullptr;
    DeviceState state;
  };
  static constexpr double kNever = -std::numeric_limits<double>::infinity();

  static void frameCallback(MTDevice device, const MTTouch* touches, std::int32_t count,
                            double timestamp, std::int32_t frame);

  [[nodiscard]] DeviceState* stateLocked(MTDevice device) noexcept;
  [[nodiscard]] bool isIdleLocked(MTDevice device) noexcept;
  void advanceSessionLocked(DeviceState& state, const Fingers& fingers, AppId currentTarget);
  void updateTapSession(DeviceState& state, const Fingers& fingers, AppId target);
  void endSession(DeviceState& state, AppId currentTarget);
  void keepPinch(const DeviceState& state);
  bool postSwipe(const DeviceState& state, AppId currentTarget, double duration);
  void finishTap(const DeviceState& state, AppId currentTarget, double duration, double now);
  void logSessionEnd(const DeviceState& state, double duration) const;
  [[nodiscard]] bool wantsPinches() const noexcept;
  [[nodiscard]] bool hasMouse() const;
  void prepareGestures();
  void pinchStep(MTDevice device, const Fingers& fingers, bool ready,
                 const std::optional<AppTracker::GestureContext>& context);
  void keepCenterClick(AppId target, bool wanted);
  [[nodiscard]] bool systemDragsWithThreeFingers() const;
  bool abandonConversionLocked() noexcept;

  Services services_;
  std::vector<MTDevice> devices_;  // main thread only
  std::atomic<bool> gesturesPrepared_ = false;

  mutable OrderedMutex<LockRank::engine> lock_;
  std::vector<Entry> states_;
  ClickConversionState clickConversion_;
  double lastEmulatedClick_ = kNever;
  double lastNaturalClick_ = kNever;
  double suppressLeftClickUntil_ = kNever;
};

}  // namespace velotap
