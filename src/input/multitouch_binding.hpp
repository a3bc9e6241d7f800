// The binding to the multitouch library: opened at run time by path, every function by name.
//
// Handle and functions are resolved at most once, on first use, from any thread. A missing library
// or symbol is a null member, never an error. The binding keeps nothing else; devices that it hands
// out belong to the caller, one reference each, until released.
#pragma once

#include <cstdint>
#include <mutex>
#include <string>
#include <vector>

#include "platform/library_loader.hpp"
#include "platform/multitouch_abi.hpp"

namespace velotap {

class MT {
 public:
  explicit MT(LibraryLoader& loader) : loader_(loader) {}
  MT(const MT&) = delete;
  MT& operator=(const MT&) = delete;

  /// The binding of this process.
  [[nodiscard]] static MT& shared();

  /// Whether the library is there with every function that is needed. `MTDeviceIsBuiltIn` is not:
  /// without it every device counts as not built in.
  [[nodiscard]] bool isAvailable();

  /// The devices in the library's order, one reference each to be given back; null entries are
  /// skipped. Empty when there is no library or no list.
  [[nodiscard]] std::vector<MTDevice> deviceList();

  /// "familyID=<id> builtIn=<true|false>".
  [[nodiscard]] std::string describe(MTDevice device);

  /// -1 when the library does not tell.
  [[nodiscard]] std::int32_t familyId(MTDevice device);

  /// Registers the callback and starts the device. On any failure the device's reference is given
  /// back, nothing stays registered, and the answer is false.
  [[nodiscard]] bool startDevice(MTDevice device, MTFrameCallback callback);

  /// Stops, unregisters and releases a device that `startDevice` accepted.
  void stopDevice(MTDevice device, MTFrameCallback callback);

 private:
  void* handle();

  /// A function of the library, looked up when first asked for.
  template <typename Fn>
  class Symbol {
   public:
    explicit Symbol(const char* name) : name_(name) {}
    Fn get(MT& owner) {
      std::call_once(once_, [&] {
        if (void* handle = owner.handle()) {
          fn_ = reinterpret_cast<Fn>(owner.loader_.symbol(handle, name_));
        }
      });
      return fn_;
    }

   private:
    const char* name_;
    std::once_flag once_;
    Fn fn_ = nullptr;
  };

  LibraryLoader& loader_;
  std::once_flag handleOnce_;
  void* handle_ = nullptr;
  Symbol<MTDeviceCreateListFn> createList_{"MTDeviceCreateList"};
  Symbol<MTRegisterContactFrameCallbackFn> registerCallback_{"MTRegisterContactFrameCallback"};
  Symbol<MTUnregisterContactFrameCallbackFn> unregisterCallback_{
      "MTUnregisterContactFrameCallback"};
  Symbol<MTDeviceStartFn> deviceStart_{"MTDeviceStart"};
  Symbol<MTDeviceStopFn> deviceStop_{"MTDeviceStop"};
  Symbol<MTDeviceReleaseFn> deviceRelease_{"MTDeviceRelease"};
  Symbol<MTDeviceIsBuiltInFn> isBuiltIn_{"MTDeviceIsBuiltIn"};
  Symbol<MTDeviceGetFamilyIDFn> getFamilyID_{"MTDeviceGetFamilyID"};
  Symbol<CFArrayGetCountFn> arrayCount_{"CFArrayGetCount"};
  Symbol<CFArrayGetValueAtIndexFn> arrayItem_{"CFArrayGetValueAtIndex"};
  Symbol<CFRetainFn> retain_{"CFRetain"};
  Symbol<CFReleaseFn> release_{"CFRelease"};
};

}  // namespace velotap
