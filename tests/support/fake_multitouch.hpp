// A multitouch library inside the test program: real C functions behind a loader, so that the
// binding's lookups, reference counts and failure paths are exercised as with a library on disk.
//
// One exists at a time (C functions carry no context). `deliver` may be called on any thread, one
// thread for each device; as with the real thing, unregistering waits for a frame in delivery.
#pragma once

#include <deque>
#include <mutex>
#include <optional>
#include <set>
#include <string>
#include <utility>
#include <vector>

#include "platform/library_loader.hpp"
#include "platform/multitouch_abi.hpp"

namespace velotap::test {

class FakeMultitouch final : public LibraryLoader {
 public:
  struct Device {
    std::string name;
    std::optional<std::int32_t> family = 128;  ///< none: the lookup writes nothing
    bool builtIn = false;
    bool registers = true;
    bool starts = true;
    bool listed = true;

    int references = 0;  ///< handed out and not yet given back
    std::mutex delivering;
    MTFrameCallback callback = nullptr;
    bool running = false;
  };

  FakeMultitouch();
  ~FakeMultitouch() override;

  bool libraryMissing = false;
  std::set<std::string> missingSymbols;
  bool listFails = false;
  bool nullEntries = false;  ///< puts a null entry before, between and behind the devices

  Device& add(const std::string& name, std::int32_t family);
  /// A frame, if the device is running and somebody listens; false otherwise.
  bool deliver(Device& device, const MTTouch* touches, std::int32_t count);
  bool deliver(Device& device, const std::vector<MTTouch>& touches) {
    return deliver(device, touches.data(), static_cast<std::int32_t>(touches.size()));
  }
  /// What was called since the last time, in order: "start pad", "release pad" …
  std::vector<std::string> takeCalls() { return std::exchange(calls, {}); }

  // LibraryLoader
  [[nodiscard]] void* open(const char* path) override;
  [[nodiscard]] void* symbol(void* handle, const char* name) override;
  [[nodiscard]] const char* multitouchLibraryPath() const override { return "fake multitouch"; }

  std::deque<Device> devices;
  std::vector<std::string> calls;
  std::vector<std::string> lookups;
  int opens = 0;
  int openLists = 0;
};

}  // namespace velotap::test
