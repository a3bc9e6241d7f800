// One multitouch surface: reads its events on a thread of its own and hands its frames to a
// callback.
//
// The thread lives from `start` to `stop` and spends its life inside one blocking read: a frame
// costs one system call, and with nothing touched nothing runs. `stop` and `removeCallback` return
// only when no callback is running any more; called from inside the callback they return at once,
// and that callback is the last. So neither may be called with a lock held that the callback takes.
// A callback may even give back the last reference to the surface it is called for, if the surface
// is owned by a shared pointer. Frames allocate nothing.
//
// While another part of the process has taken the node for itself, the kernel gives this reader
// nothing, and whoever has the events feeds them in. Frames are then delivered on the feeding
// thread, and everything said here of the surface's thread holds of that one too.
//
// On a trackpad that fewer than two fingers touch, only landing and lifting wake the thread: moving
// the pointer with one finger is what trackpads do all day, and nothing here begins with one
// finger's way. Positions are fetched when they begin to matter.
#pragma once

#include <atomic>
#include <memory>
#include <mutex>
#include <span>
#include <thread>

#include "adapters/linux/evdev/touch_frames.hpp"
#include "adapters/linux/multitouch/surface_node.hpp"
#include "platform/multitouch_abi.hpp"

namespace velotap {

class Surface : public std::enable_shared_from_this<Surface> {
 public:
  explicit Surface(std::shared_ptr<SurfaceNode> node);
  ~Surface();
  Surface(const Surface&) = delete;
  Surface& operator=(const Surface&) = delete;

  [[nodiscard]] const SurfaceModel& model() const noexcept { return model_; }

  /// What callbacks are given as the device. Set before the surface is started.
  void setOwner(MTDevice owner) noexcept { owner_ = owner; }

  /// One callback at a time; false while another one is registered.
  bool setCallback(MTFrameCallback callback);
  void removeCallback(MTFrameCallback callback);

  /// Zero, or an error number. The first frame, of what is down already, follows at once.
  /// One thread at a time starts and stops a surface.
  int start();
  void stop();

  /// Events of the node in the order in which the kernel gave them, from whoever holds the grab.
  /// The next event that the node itself gives ends the feeding. Ignored while the surface is not
  /// started. One feeding thread at a time, whose caller keeps the surface alive.
  void feed(std::span<const input_event> events);

 private:
  enum class Source { node, feeder };

  void run();
  bool readFrames();  // false when it is over
  void takeEvents(std::span<const input_event> events);
  void catchUp(Source source);  // somebody else brings the events now
  void fetchTruth();
  bool takeFrame(ContactReader::Step step, double time);  // true when the truth was fetched
  void begin();                                           // tells the callback what is down already
  void vanish();                                          // lifts whatever was down
  void payAttention(SurfaceNode::Attention attention);
  void deliver(const TouchFrame& frame);
  [[nodiscard]] bool onOwnThread() const noexcept;
  void finish();  // waits for the thread and closes the node

  std::shared_ptr<SurfaceNode> node_;
  SurfaceModel model_;
  bool sleepsThroughOneFinger_;
  MTDevice owner_ = nullptr;
  std::atomic<MTFrameCallback> callback_{nullptr};
  std::thread thread_;
  std::atomic<bool> stopping_{false};
  std::atomic<bool> delivering_{false};

  std::mutex stream_;  // held by whoever handles events; never while waiting for them

  // Guarded by `stream_`.
  bool running_ = false;
  Source source_ = Source::node;
  ContactReader reader_;
  TouchFrames frames_;
  SurfaceNode::Attention attention_ = SurfaceNode::Attention::everything;
  double lastTime_ = 0;
};

}  // namespace velotap
