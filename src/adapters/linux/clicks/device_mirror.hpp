// Takes one device over while its clicks are wanted: grabs it, and lets a mirror image of it act in
// its place.
//
// A thread of its own reads the device, passes motion on at once and holds clicks back until the
// taps have answered on the main thread. A click that is not answered in time passes unchanged. The
// desktop never sees the device and its mirror both, nor a button that one presses and the other
// would have to release: a device is taken, and given back, only while nothing is down on it. Where
// that cannot be awaited everything that is down is released first.
//
// `want`, `stop` and what `Links` says come on the main thread. `turn` is the thread's work in
// steps, for tests, which then do without the thread.
#pragma once

#include <atomic>
#include <cstdint>
#include <deque>
#include <functional>
#include <memory>
#include <mutex>
#include <optional>
#include <thread>

#include "adapters/linux/clicks/button_router.hpp"
#include "adapters/linux/clicks/grab_trouble.hpp"
#include "adapters/linux/clicks/mirror_hardware.hpp"
#include "adapters/linux/clicks/mirror_stream.hpp"
#include "adapters/linux/clicks/tap_chain.hpp"
#include "platform/clock.hpp"
#include "platform/main_queue.hpp"

namespace velotap {

/// How far a device has been taken over.
enum class GrabState : std::uint8_t {
  resting,    ///< the device is the desktop's
  appearing,  ///< its mirror is there, and udev has yet to take it up
  settling,   ///< the desktop has yet to take the mirror up
  waiting,    ///< something is down on the device
  grabbed,
  leaving,  ///< to be given back as soon as nothing is down
  refused,  ///< it could not be had; left alone until it is wanted anew, or a pause is over
  gone,     ///< unplugged; this is the end
};

class DeviceMirror : public std::enable_shared_from_this<DeviceMirror> {
 public:
  /// How much a device is wanted.
  enum class Want : std::uint8_t {
    no,        ///< given back when nothing is down
    noAtOnce,  ///< given back now
    yes,
  };
  struct Status {
    GrabState state = GrabState::resting;
    GrabTrouble trouble = GrabTrouble::none;  ///< why it was refused
    int error = 0;                            ///< the same, as the system's error number
    friend bool operator==(const Status&, const Status&) = default;
  };
  struct Links {
    TapChain& taps;
    MainQueue& queue;
    const Clock& clock;
    /// Any thread: the middle button of the virtual pointer.
    std::function<void(bool down)> middle;
    /// Main thread: the status is another one.
    std::function<void(const DeviceMirror&)> changed;
    /// Main thread: a device that was held has been given back, to be taken over anew.
    std::function<void(const DeviceMirror&, GrabTrouble)> lost;
  };

  static constexpr double kAnswerWithin = 0.25;
  static constexpr double kMirrorKnownWithin = 3.0;
  static constexpr double kSettle = 0.2;
  static constexpr int kMostLosses = 3;    ///< one upon the other, before it is left alone
  static constexpr double kHeldWell = 60;  ///< after so long a loss has nothing to do with the last
  /// A device that another program holds is tried again after this pause, then after twice as long,
  /// and so on. Nothing tells when that program lets go; but one that goes on must not be disturbed
  /// for ever, nor a resting computer be woken.
  static constexpr double kFirstPause = 1.0;
  static constexpr int kMostRetries = 7;

  DeviceMirror(std::unique_ptr<MirrorHardware> hardware, Links links);
  ~DeviceMirror();
  DeviceMirror(const DeviceMirror&) = delete;
  DeviceMirror& operator=(const DeviceMirror&) = delete;

  /// Starts the thread. The object must be owned by a shared pointer.
  void start();
  /// Gives the device back at once and ends the thread.
  void stop();

  void want(Want want, int wheelLimit);

  [[nodiscard]] Status status() const;
  [[nodiscard]] const std::string& path() const { return hardware_->path(); }
  [[nodiscard]] const EvdevDevice& description() const { return hardware_->description(); }

  /// One wait of the thread and what follows from it; false at the end.
  bool turn();

 private:
  class Sink;
  struct Pressed {
    std::uint16_t code;  // the device's own
    Click click;
  };
  struct Pending {
    Pressed event;
    double deadline;
  };

  void run();
  void stepResting(GrabState state);
  void stepAppearing(GrabState state);
  void stepWaiting();
  void stepGrabbed(GrabState state);
  void begin();
  void tryToGrab();
  void giveBack(const Status& after);
  void abandonMirror(const Status& after);
  void vanish();
  void lose(GrabTrouble trouble);
  [[nodiscard]] std::optional<double> untilRetry() const;
  void discardWaiting();
  [[nodiscard]] bool isIdle(const NodeState& state) const;
  void serveEvents();
  void catchUp();
  void takeButton(std::uint16_t code, bool down);
  void takePressLocked(std::uint16_t code);
  void takeReleaseLocked(std::uint16_t code);
  void passOverdue();
  void answerPending();
  void tell(const Click& click);
  void applyLocked(const Pressed& event, PressAnswer answer);
  void emitLocked(const Emission& emission);
  void releaseEverything();
  [[nodiscard]] bool isDownLocked(std::uint16_t code) const;
  [[nodiscard]] bool nothingDown();
  [[nodiscard]] std::optional<double> untilOverdue();
  [[nodiscard]] bool wanted() const { return want_ == Want::yes; }
  void enter(const Status& status);

  std::unique_ptr<MirrorHardware> hardware_;
  Links links_;
  const bool mouse_;
  std::thread thread_;
  std::atomic<bool> stopping_{false};
  std::atomic<Want> want_{Want::no};
  std::atomic<int> wheelLimit_{2};
  std::atomic<bool> retry_{false};  // wanted anew since it was last tried

  std::atomic<bool> mirrorLost_{false};

  // The thread's own.
  MirrorStream stream_;
  double stateSince_ = 0;
  int losses_ = 0;
  int retries_ = 0;

  mutable std::mutex lock_;
  Status status_;
  ButtonRouter router_;
  std::deque<Pending> pending_;   // presses that the taps are asked about, and what follows them
  std::vector<Pressed> presses_;  // whose release is yet to come
};

}  // namespace velotap
