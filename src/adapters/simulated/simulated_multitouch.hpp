// A multitouch library inside the process: real C functions behind a library loader, over devices
// that the simulation owns.
//
// C functions carry no context, so one such library exists at a time in a process. Frames may be
// delivered on any thread, one thread for each device; everything else belongs to the main thread.
// As with a real library, taking a callback back waits for a frame that is being delivered.
//
// Misuse is noted, never punished: a reference given back twice, a device used after its last
// reference was, a callback registered twice. `faults` tells what went wrong; `heldReferences` what
// was never given back.
#pragma once

#include <cstdint>
#include <deque>
#include <functional>
#include <mutex>
#include <optional>
#include <set>
#include <span>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

#include "platform/library_loader.hpp"
#include "platform/multitouch_abi.hpp"

namespace velotap {

class SimulatedMultitouch final : public LibraryLoader {
 public:
  struct DeviceDescription {
    std::string name;
    std::optional<std::int32_t> family = 128;  ///< nothing: the look-up writes nothing
    bool builtIn = false;
    bool registers = true;
    bool starts = true;
  };

  SimulatedMultitouch();
  ~SimulatedMultitouch() override;
  SimulatedMultitouch(const SimulatedMultitouch&) = delete;
  SimulatedMultitouch& operator=(const SimulatedMultitouch&) = delete;

  // LibraryLoader
  [[nodiscard]] void* open(const char* path) override;
  [[nodiscard]] void* symbol(void* handle, const char* name) override;
  [[nodiscard]] const char* multitouchLibraryPath() const override { return "simulated"; }

  /// The names that a complete library has.
  [[nodiscard]] static std::span<const std::string_view> symbolNames() noexcept;

  void setMissing(bool missing) { missing_ = missing; }
  void removeSymbol(std::string_view name) { removedSymbols_.emplace(name); }
  /// What `MTDeviceCreateList` answers: a list, a list with a null entry around every device, or
  /// nothing at all.
  enum class ListForm { plain, withNullEntries, none };
  void setListForm(ListForm form) { listForm_ = form; }

  /// Connects a new device, listed behind those before it.
  void add(DeviceDescription description);
  /// Takes a device out of the list, or puts it back in its place. What was started goes on running
  /// until it is stopped, but an absent device sends no frames.
  void setPresent(std::string_view name, bool present);

  /// One frame, if the device is connected, started and listened to; false otherwise. `touches` may
  /// be null.
  bool deliver(std::string_view name, const MTTouch* touches, std::int32_t count);
  [[nodiscard]] bool isRunning(std::string_view name) const;
  /// The pointer by which the program knows the device; nothing for an unknown name.
  [[nodiscard]] MTDevice handle(std::string_view name);

  [[nodiscard]] const std::vector<std::string>& faults() const noexcept { return faults_; }
  /// What was done with devices since the last call, in order: "register pad", "start pad" …
  std::vector<std::string> takeCalls() { return std::exchange(calls_, {}); }
  /// References to devices and lists that were handed out and not given back.
  [[nodiscard]] std::size_t heldReferences() const noexcept;

  // What the library's functions do; called by them.
  [[nodiscard]] MTDeviceArray createList();
  bool registerCallback(MTDevice device, MTFrameCallback callback);
  void unregisterCallback(MTDevice device, MTFrameCallback callback);
  bool start(MTDevice device, std::int32_t flags);
  void stop(MTDevice device);
  [[nodiscard]] bool isBuiltIn(MTDevice device);
  void writeFamily(MTDevice device, std::int32_t* family);
  [[nodiscard]] long count(MTDeviceArray list);
  [[nodiscard]] const void* item(MTDeviceArray list, long index);
  const void* retain(const void* object);
  /// Gives back one reference to a device or a list.
  void release(const void* object, const char* function);

 private:
  struct Device {
    DeviceDescription description;
    bool present = true;
    long references = 0;
    bool running = false;
    MTFrameCallback callback = nullptr;
    std::mutex delivering;
  };
  struct List {
    std::vector<Device*> items;
    long references = 1;
  };

  [[nodiscard]] Device* named(std::string_view name);
  [[nodiscard]] Device* known(const void* device);
  [[nodiscard]] Device* usable(MTDevice device, const char* function);
  [[nodiscard]] List* usableList(MTDeviceArray list, const char* function);
  void dropReference(Device& device, const char* function);
  void fault(const std::string& text) { faults_.push_back(text); }
  void note(const char* call, const Device& device) {
    calls_.push_back(call + (" " + device.description.name));
  }

  bool missing_ = false;
  std::set<std::string, std::less<>> removedSymbols_;
  ListForm listForm_ = ListForm::plain;
  // Never shrink: pointers into them were handed out and must stay tellable from each other.
  std::deque<Device> devices_;
  std::deque<List> lists_;
  std::vector<std::string> faults_;
  std::vector<std::string> calls_;
};

}  // namespace velotap
