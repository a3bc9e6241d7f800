// Core Graphics in a test: events whose references are counted, a recorder of what is posted, a
// stream of mouse events that passes the taps as the system's does, and display callbacks.
#pragma once

#include <map>
#include <memory>
#include <optional>
#include <vector>

#include "adapters/macos/quartz/quartz_api.hpp"
#include "adapters/macos/runtime/autorelease_pool.hpp"
#include "fakes/fake_core_foundation.hpp"

namespace velotap::test {

struct FakeEvent {
  CGEventType type = kCGEventNull;
  CGPoint location{};
  CGMouseButton button{};
  std::optional<CGKeyCode> key = {};
  bool down = false;
  std::optional<CGEventFlags> flags = {};
  std::map<std::uint32_t, std::int64_t> integers = {};
  std::map<std::uint32_t, double> reals = {};
};

struct FakePost {
  CGEventTapLocation location;
  FakeEvent event;
};

struct FakeTap {
  CGEventTapLocation location;
  CGEventTapPlacement placement;
  CGEventTapOptions options;
  CGEventMask mask;
  CGEventTapCallBack callback;
  void* context;
  CFMachPortRef port;
  bool enabled;
  bool revives;
};

class FakeQuartz {
 public:
  explicit FakeQuartz(FakeCoreFoundation& cf);
  ~FakeQuartz();
  FakeQuartz(const FakeQuartz&) = delete;
  FakeQuartz& operator=(const FakeQuartz&) = delete;

  [[nodiscard]] static FakeQuartz& current();
  [[nodiscard]] const QuartzApi& api() const { return api_; }
  [[nodiscard]] FakeCoreFoundation& coreFoundation() { return cf_; }

  CGPoint pointer{512, 384.5};
  std::vector<FakePost> posts;
  /// Functions in which this many more calls succeed, then all fail.
  std::map<std::string, int> succeedOnly;
  [[nodiscard]] bool fails(const std::string& function);

  /// Taps, the newest first, as the system serves those inserted at the head.
  std::vector<FakeTap> taps;
  bool refuseHid = false;
  bool refuseSession = false;
  [[nodiscard]] std::size_t installed(CGEventTapLocation location) const;

  /// Sends an event through the taps of a level that are enabled and whose source is in the main
  /// loop; nothing when one dropped it.
  std::optional<FakeEvent> send(CGEventTapLocation location, FakeEvent event);
  /// Disables the taps of a level and tells them, with an event that means nothing.
  void disable(CGEventTapLocation location, CGEventType reason, bool revives);

  struct Display {
    CGDisplayReconfigurationCallBack callback;
    void* context;
  };
  std::vector<Display> displays;
  bool refuseDisplays = false;
  void reconfigure(CGDisplayChangeSummaryFlags flags);

  /// The pools that must be open whenever an event is made or posted.
  int pools = 0;
  [[nodiscard]] const ObjectiveCApi& runtime() const { return runtime_; }

 private:
  void fillEvents();
  void fillFields();
  void fillTaps();
  void fillDisplays();

  FakeCoreFoundation& cf_;
  QuartzApi api_{};
  ObjectiveCApi runtime_{};
  std::vector<std::unique_ptr<int>> openPools_;
};

}  // namespace velotap::test
