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
// On a trackpad that fewer than two fingers touch, only landing and lifting wake the thread: moving
// the pointer with one finger is what trackpads do all day, and nothing here begins with one
// finger's way. Positions are fetched when they begin to matter.
#pragma once

#include <atomic>
#include <memory>
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

 private:
  void run();
  bool readFrames();                                      // false when it is over
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

  // The thread's own.
  ContactReader reader_;
  TouchFrames frames_;
  SurfaceNode::Attention attention_ = SurfaceNode::Attention::everything;
  double lastTime_ = 0;
};

}  // namespace velotap
