// The clock, the main dispatch queue, the dynamic linker and the accessibility permission in a
// test.
#pragma once

#include <map>
#include <string>
#include <vector>

#include "adapters/macos/runtime/dispatch_main_queue.hpp"
#include "adapters/macos/runtime/mac_library_loader.hpp"
#include "adapters/macos/runtime/mach_clock.hpp"
#include "adapters/macos/trust/accessibility_api.hpp"
#include "fakes/fake_core_foundation.hpp"

namespace velotap::test {

class FakeMachTime {
 public:
  FakeMachTime();
  ~FakeMachTime();
  FakeMachTime(const FakeMachTime&) = delete;
  FakeMachTime& operator=(const FakeMachTime&) = delete;

  [[nodiscard]] static FakeMachTime& current();
  [[nodiscard]] const MachTimeApi& api() const { return api_; }

  std::uint64_t ticks = 0;
  mach_timebase_info_data_t base{1, 1};
  bool baseFails = false;

 private:
  MachTimeApi api_{};
};

/// Runs what was submitted when the test says so, in virtual time. What was submitted must have
/// been run when it is destroyed: the real queue would own it for ever.
class FakeDispatch {
 public:
  FakeDispatch();
  ~FakeDispatch();
  FakeDispatch(const FakeDispatch&) = delete;
  FakeDispatch& operator=(const FakeDispatch&) = delete;

  [[nodiscard]] static FakeDispatch& current();
  [[nodiscard]] const DispatchApi& api() const { return api_; }

  /// Runs everything that was submitted for now, what is submitted meanwhile included.
  void runReady();
  /// Lets time pass and runs what falls due, in the order of its times.
  void advance(double seconds);
  [[nodiscard]] std::size_t pending() const { return entries_.size(); }
  std::vector<std::int64_t> delays;

 private:
  struct Entry {
    dispatch_time_t due;
    void* context;
    dispatch_function_t work;
  };
  void runDue(dispatch_time_t until);

  DispatchApi api_{};
  dispatch_time_t now_ = 1'000'000;
  std::vector<Entry> entries_;
};

class FakeLinker {
 public:
  FakeLinker();
  ~FakeLinker();
  FakeLinker(const FakeLinker&) = delete;
  FakeLinker& operator=(const FakeLinker&) = delete;

  [[nodiscard]] static FakeLinker& current();
  [[nodiscard]] const DynamicLinkerApi& api() const { return api_; }

  std::map<std::string, std::map<std::string, void*>> libraries;  // symbols by path
  std::vector<int> modes;

 private:
  DynamicLinkerApi api_{};
};

class FakeAccessibility {
 public:
  explicit FakeAccessibility(FakeCoreFoundation& cf);
  ~FakeAccessibility();
  FakeAccessibility(const FakeAccessibility&) = delete;
  FakeAccessibility& operator=(const FakeAccessibility&) = delete;

  [[nodiscard]] static FakeAccessibility& current();
  [[nodiscard]] const AccessibilityApi& api() const { return api_; }

  bool trusted = false;
  int prompts = 0;

 private:
  FakeCoreFoundation& cf_;
  AccessibilityApi api_{};
  CFStringRef prompt_;
};

}  // namespace velotap::test
