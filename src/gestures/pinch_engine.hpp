// Two fingers on a Magic Mouse that pinch or rotate: follows each mouse's pair of fingers and posts
// magnify and rotate events, or zoom keystrokes where the application wants those.
//
// Called on the frame thread of each device; `isPinching` from any thread. All state is under one
// lock, which comes after the engine's; events are posted while it is held. Per device a gesture
// goes from idle to pinching or rotating and ends exactly once; after a cancel the device is
// ignored until every finger has lifted.
#pragma once

#include <cstdint>
#include <mutex>
#include <optional>
#include <vector>

#include "base/app_id.hpp"
#include "base/lock_order.hpp"
#include "config/app_tracker.hpp"
#include "config/config.hpp"
#include "gestures/finger.hpp"
#include "gestures/pinch_tracking.hpp"
#include "output/shortcut_key_codes.hpp"
#include "platform/diagnostic_log.hpp"
#include "platform/event_stream.hpp"

namespace velotap {

class PinchEngine {
 public:
  enum class Mode { idle, pinching, rotating, rejected };

  struct Context {
    AppId bundleID;
    bool usesKeystrokeZoom = false;
  };

  PinchEngine(const Config& config, const AppTracker& apps, const ShortcutKeyCodes& keyCodes,
              EventStream& events, DiagnosticLog& log);

  /// The engine of this process.
  [[nodiscard]] static PinchEngine& shared();

  /// One frame of one device: all its fingers, and the application that is to receive the gesture.
  void process(MTDevice device, const Fingers& fingers, const Context& context);

  /// Ends whatever the device was doing as cancelled. With fingers down the device is then ignored
  /// until they lift; without, such a mark is cleared.
  void suspend(MTDevice device, bool fingersDown);

  /// Some device is pinching or rotating right now.
  [[nodiscard]] bool isPinching() const;

  /// Ends every gesture as cancelled, with its terminal event.
  void cancelAll();

 private:
  struct Tracking {
    std::int32_t id1 = 0;
    std::int32_t id2 = 0;
    double baseDistance = 0;
    Point baseCentroid;
    PinchMagnificationTracker magnification;
    double lastAngle = 0;
    double totalRotation = 0;
    Mode mode = Mode::idle;
    AppId targetBundleID;
    std::optional<Point> eventLocation;
    bool useKeystrokes = false;
    double keystrokeAccumulator = 0;
  };
  struct DeviceEntry {
    MTDevice device = nullptr;
    std::optional<Tracking> tracking;
    bool blockedUntilLift = false;
  };

  [[nodiscard]] DeviceEntry& entryLocked(MTDevice device);
  [[nodiscard]] static Tracking beginTracking(const PinchPair& pair, AppId target);
  void advanceLocked(DeviceEntry& entry, const PinchPair& pair, const Context& context);
  /// Follows the pair's angle; the change since the last frame in degrees.
  static double turn(Tracking& tracking, const PinchPair& pair) noexcept;
  void judgeIdleLocked(Tracking& tracking, const PinchPair& pair, const Context& context);
  void pinchStepLocked(Tracking& tracking, double distance);
  [[nodiscard]] bool settingStillOn(Mode mode) const;
  void endLocked(DeviceEntry& entry, bool cancelled, bool postTerminalEvent);
  void cancelLocked(DeviceEntry& entry);
  void post(const Tracking& tracking, GestureKind kind, GesturePhase phase, double value);
  void postZoomKeystrokes(int count);
  [[nodiscard]] Point pointerLocation();
  void note(const char* text) const;

  const Config& config_;
  const AppTracker& apps_;
  const ShortcutKeyCodes& keyCodes_;
  EventStream& events_;
  DiagnosticLog& log_;
  mutable OrderedMutex<LockRank::pinch> lock_;
  std::vector<DeviceEntry> entries_;
};

}  // namespace velotap
