// The last few tap outcomes, newest first, and the touches behind the last fifty, for whoever tunes
// the limits by evidence. Never saved.
//
// Records come from the frame thread, with the engine's lock held; clearing and reading from the
// main thread. The lock covers list changes only. After a burst of records one notification is
// posted on the main thread; recording allocates nothing but that one task.
#pragma once

#include <chrono>
#include <memory>
#include <mutex>
#include <string_view>
#include <vector>

#include "base/fixed_vector.hpp"
#include "base/lock_order.hpp"
#include "base/observer_list.hpp"
#include "gestures/touch_history.hpp"
#include "input/device_class.hpp"
#include "platform/main_queue.hpp"
#include "platform/notification_center.hpp"

namespace velotap {

inline constexpr std::string_view kTapActivityDidChange = "VelotapTapActivityDidChange";

struct TapActivity {
  enum class Outcome { click, tooLong, moved, tooSoon };

  int id;                                      ///< serial number, starting at 1
  std::chrono::system_clock::time_point date;  ///< end of the session
  DeviceClass deviceClass;
  int fingers;         ///< largest count of the session
  double duration;     ///< seconds
  double drift;        ///< normalised units
  double maxDuration;  ///< the limit in force, seconds
  double maxDrift;     ///< the limit in force, normalised units
  Outcome outcome;

  friend bool operator==(const TapActivity&, const TapActivity&) = default;
};

class TapActivityLog {
 public:
  static constexpr std::size_t kCapacity = 8;

  TapActivityLog(MainQueue& queue, NotificationCenter& notifications);

  /// The log of this process.
  [[nodiscard]] static TapActivityLog& shared();

  /// Adds one entry; its `id` is given by the log. Any thread.
  void record(TapActivity activity);
  /// As well, and keeps the touch behind it. `end` is the uptime, `sinceNatural` the seconds since
  /// the last physical click.
  void record(TapActivity activity, const TouchTrace& touch, double end, double sinceNatural);
  /// Keeps a pinch that ended. Any thread. No tap, so it is not announced as one.
  void keepPinch(const TouchTrace& touch);
  /// Keeps where the only finger lay at a physical click, in the same way.
  void keepClick(MTPoint position);
  /// Told on the main thread after a burst of pinches and clicks. While nobody asks to be told,
  /// nothing wakes that thread. To be asked for, and given up, on the main thread.
  [[nodiscard]] Observation observeOtherTouches(std::function<void()> kept);
  /// A copy of the touches that are kept. They outlive `clear`, which tidies a list on screen.
  [[nodiscard]] KeptTouches touches() const;
  /// Empties the list and notifies on the caller's thread; serial numbers go on.
  void clear();
  /// Newest first.
  [[nodiscard]] std::vector<TapActivity> items() const;
  /// Sees each entry as it is added, on the recording thread, without the lock.
  [[nodiscard]] Observation observeRecords(std::function<void(const TapActivity&)> observer);

 private:
  // The notification's task may outlive the log; it holds this weakly.
  struct State {
    explicit State(NotificationCenter& center) : notifications(center) {}
    void add(TapActivity& activity);
    NotificationCenter& notifications;
    mutable OrderedMutex<LockRank::tapActivityLog> lock;
    FixedVector<TapActivity, kCapacity> newestLast;
    TouchHistory touches;
    ObserverList<> otherTouches;
    int nextID = 0;
    bool notificationPending = false;
    bool otherTouchesPending = false;
  };
  template <typename Change>
  void change(Change apply);
  template <typename Keep>
  void keepOther(Keep keep);

  MainQueue& queue_;
  ObserverList<const TapActivity&> records_;
  std::shared_ptr<State> state_;
};

}  // namespace velotap
