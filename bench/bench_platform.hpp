// The cheapest platform there can be: ports that answer at once and keep nothing, so that what is
// measured is the core. One multitouch device that the benchmark itself feeds.
#pragma once

#include <cstdint>
#include <cstring>

#include "platform/multitouch_abi.hpp"
#include "platform/platform.hpp"

namespace velotap::bench {

class CountingClock final : public Clock {
 public:
  [[nodiscard]] double uptime() const noexcept override { return now; }
  [[nodiscard]] std::chrono::system_clock::time_point date() const noexcept override { return {}; }
  double now = 1000;
};

class DroppingQueue final : public MainQueue {
 public:
  void async(Task) override {}
  std::shared_ptr<DelayedWork> asyncAfter(double, Task) override { return nullptr; }
  [[nodiscard]] bool isCurrent() const override { return true; }
};

/// Counts what is posted; an event is never looked at again.
class CountingEvents final : public EventStream {
 public:
  [[nodiscard]] std::optional<Point> pointerLocation() override { return Point{512, 384.5}; }
  [[nodiscard]] std::optional<MouseEvent> makeMouse(MouseEventType type, int button,
                                                    Point location) override {
    return MouseEvent{.type = type, .button = button, .location = location, .native = {}};
  }
  void post(const MouseEvent&) override { ++mouse; }
  [[nodiscard]] std::optional<KeyEvent> makeKey(std::uint16_t keyCode, bool down) override {
    return KeyEvent{.keyCode = keyCode, .down = down, .flags = 0, .native = {}};
  }
  void post(const KeyEvent&) override { ++keys; }
  void post(const GestureEvent&) override { ++gestures; }
  std::uint64_t mouse = 0;
  std::uint64_t keys = 0;
  std::uint64_t gestures = 0;
};

class NoTaps final : public EventTaps {
 public:
  [[nodiscard]] std::unique_ptr<InstalledTap> install(TapLocation, std::uint64_t,
                                                      Callbacks) override {
    return nullptr;
  }
};

class NothingStored final : public PreferencesStorage, public SystemPreferences {
 public:
  [[nodiscard]] ValueMap load(std::string_view) override { return {}; }
  bool store(std::string_view, const ValueMap&) override { return true; }
  [[nodiscard]] Observation observe(std::string_view, std::function<void()>) override { return {}; }
  [[nodiscard]] std::optional<Value> read(std::string_view, std::string_view) override {
    return std::nullopt;
  }
};

class OneApplication final : public Workspace {
 public:
  [[nodiscard]] AppId ownBundleId() const override { return own_; }
  [[nodiscard]] AppId frontmostBundleId() override { return front_; }
  [[nodiscard]] std::optional<RunningApplication> frontmostApplication() override {
    return RunningApplication{front_, "Editor"};
  }
  [[nodiscard]] Observation observeActivations(
      std::function<void(const std::optional<RunningApplication>&)>) override {
    return {};
  }

 private:
  AppId own_ = AppId::intern("app.norwend.velotap");
  AppId front_ = AppId::intern("com.example.editor");
};

class NothingElse final : public KeyboardLayout,
                          public SystemNotices,
                          public AccessibilityTrust,
                          public Alerts,
                          public DiagnosticLog {
 public:
  [[nodiscard]] std::unique_ptr<KeyTranslator> current() override { return nullptr; }
  [[nodiscard]] Observation observeChanges(std::function<void()>) override { return {}; }
  [[nodiscard]] DeviceWatch watchDevices(std::function<void()>, std::function<void()>) override {
    return {};
  }
  [[nodiscard]] Observation watchSleep(std::function<void()>, std::function<void()>) override {
    return {};
  }
  [[nodiscard]] Observation watchDisplays(std::function<void()>) override { return {}; }
  [[nodiscard]] bool trusted() override { return true; }
  int runModal(const AlertRequest&) override { return 0; }
  void openUrl(const std::string&) override {}
  [[nodiscard]] bool enabled() const noexcept override { return false; }
  void line(std::string_view) override {}
};

/// A library with one device, of the family that the benchmark asks for.
class OneDeviceLibrary final : public LibraryLoader {
 public:
  explicit OneDeviceLibrary(std::int32_t family) { familyId = family; }
  static MTDevice device() { return &deviceObject; }

  [[nodiscard]] void* open(const char*) override { return this; }
  [[nodiscard]] const char* multitouchLibraryPath() const override { return ""; }
  [[nodiscard]] void* symbol(void*, const char* name) override {
    for (const Export& e : kExports) {
      if (std::strcmp(e.name, name) == 0) return e.function;
    }
    return nullptr;
  }

 private:
  struct Export {
    const char* name;
    void* function;
  };
  static inline int deviceObject = 0;
  static inline std::int32_t familyId = 0;
  static MTDeviceArray createList() { return &deviceObject; }
  static std::int32_t registerCallback(MTDevice, MTFrameCallback) { return 1; }
  static void unregisterCallback(MTDevice, MTFrameCallback) {}
  static std::int32_t start(MTDevice, std::int32_t) { return 0; }
  static void stop(MTDevice) {}
  static void release(MTDevice) {}
  static void getFamily(MTDevice, std::int32_t* family) { *family = familyId; }
  static long count(MTDeviceArray) { return 1; }
  static const void* item(MTDeviceArray, long) { return &deviceObject; }
  static const void* retain(const void* object) { return object; }
  static void releaseObject(const void*) {}
  template <typename Fn>
  static void* address(Fn* function) {
    return reinterpret_cast<void*>(function);
  }
  static inline const Export kExports[] = {
      {"MTDeviceCreateList", address(&createList)},
      {"MTRegisterContactFrameCallback", address(&registerCallback)},
      {"MTUnregisterContactFrameCallback", address(&unregisterCallback)},
      {"MTDeviceStart", address(&start)},
      {"MTDeviceStop", address(&stop)},
      {"MTDeviceRelease", address(&release)},
      {"MTDeviceGetFamilyID", address(&getFamily)},
      {"CFArrayGetCount", address(&count)},
      {"CFArrayGetValueAtIndex", address(&item)},
      {"CFRetain", address(&retain)},
      {"CFRelease", address(&releaseObject)},
  };
};

struct BenchPlatform {
  explicit BenchPlatform(std::int32_t family) : library(family) {}
  CountingClock clock;
  DroppingQueue queue;
  OneDeviceLibrary library;
  CountingEvents events;
  NoTaps taps;
  NothingStored stored;
  OneApplication workspace;
  NothingElse rest;
  NotificationCenter notifications;
  Platform platform{clock,     queue, library, events, taps, stored,        stored,
                    workspace, rest,  rest,    rest,   rest, notifications, rest};
};

}  // namespace velotap::bench
