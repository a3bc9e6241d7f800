// Reads all started surfaces on one thread and hands their frames to the callback of each.
//
// The thread begins with the first started device and ends with the last. With nothing touched it
// sleeps without a time-out. `stop` returns only when no callback of that device is running any
// more, unless the callback itself calls it. Frames allocate nothing.
#pragma once

#include <atomic>
#include <memory>
#include <mutex>
#include <thread>
#include <vector>

#include "adapters/linux/evdev/touch_frames.hpp"
#include "adapters/linux/multitouch/surface_node.hpp"
#include "platform/multitouch_abi.hpp"

namespace velotap {

/// One surface as the library's users know it: an opaque device.
class Surface {
 public:
  explicit Surface(std::shared_ptr<SurfaceNode> node);

  [[nodiscard]] const SurfaceModel& model() const noexcept { return model_; }
  [[nodiscard]] SurfaceNode& node() noexcept { return *node_; }

  /// What callbacks are given as the device. Set before the surface is started.
  void setOwner(MTDevice owner) noexcept { owner_ = owner; }

  /// One callback at a time; false while another one is registered.
  bool setCallback(MTFrameCallback callback);
  void removeCallback(MTFrameCallback callback);

 private:
  friend class SurfaceHub;
  void begin();       // tells the callback what is down already
  bool readFrames();  // false when the device is gone
  void vanish();      // lifts whatever was down
  void deliver(const TouchFrame& frame);

  std::shared_ptr<SurfaceNode> node_;
  SurfaceModel model_;
  ContactReader reader_;
  TouchFrames frames_;
  std::atomic<MTFrameCallback> callback_{nullptr};
  MTDevice owner_ = nullptr;
  double lastTime_ = 0;
};

class SurfaceHub {
 public:
  SurfaceHub();
  ~SurfaceHub();
  SurfaceHub(const SurfaceHub&) = delete;
  SurfaceHub& operator=(const SurfaceHub&) = delete;

  /// The hub of this process; never destroyed, so that a callback may outlast `main`.
  [[nodiscard]] static SurfaceHub& shared();

  /// Zero, or an error number. The first frame, of what is down already, follows at once.
  int start(const std::shared_ptr<Surface>& surface);
  void stop(const std::shared_ptr<Surface>& surface);

 private:
  void run();
  void runThreadLocked();
  void endThread();
  void serve(std::uint64_t key);
  [[nodiscard]] bool onHubThread() const;
  void wake() const;

  // Held while callbacks run, which is what `stop` waits for. Never taken by a callback's callee:
  // a callback that stops a device is recognised by its thread.
  std::mutex dispatch_;
  struct Served {
    std::uint64_t key;
    std::shared_ptr<Surface> surface;
    bool begun = false;
  };
  std::vector<Served> served_;
  std::uint64_t lastKey_ = 0;
  int epoll_ = -1;
  int wake_ = -1;
  std::thread thread_;
  std::atomic<std::thread::id> threadId_{};
  bool ending_ = false;
};

}  // namespace velotap
