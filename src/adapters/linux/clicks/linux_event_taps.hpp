// Event taps on Linux, where no such thing exists: devices whose clicks somebody may want to
// rewrite are taken over, and their clicks pass the taps here on their way to the desktop.
//
// Main thread. A device is held only while taps are installed, the settings want something of it,
// and the session is the active one; with nothing wanted nothing is grabbed. The clicks of all
// other surfaces are watched read-only, so that the HID taps see them.
//
// Destroying it gives everything back. A device that cannot be had is reported once and left alone
// until devices, settings or the session change or the taps are installed anew, as they are after a
// sleep. Where another program holds it, it is also tried again a few times, after growing pauses.
#pragma once

#include <cstdint>
#include <functional>
#include <map>
#include <memory>
#include <string>
#include <utility>
#include <vector>

#include "adapters/linux/clicks/click_observer.hpp"
#include "adapters/linux/clicks/device_mirror.hpp"
#include "adapters/linux/clicks/tap_chain.hpp"
#include "base/observer_list.hpp"
#include "platform/event_taps.hpp"

namespace velotap {

class LinuxEventTaps final : public EventTaps {
 public:
  /// What the taps need of the rest of the desktop; tests put their own in its place.
  struct Links {
    MainQueue& queue;
    const Clock& clock;
    /// The event nodes of the surfaces that are connected now.
    std::function<std::vector<std::string>()> surfaces;
    /// Null when the device may not be mirrored.
    std::function<std::unique_ptr<MirrorHardware>(const std::string& path)> hardware;
    /// Null when its clicks cannot be watched.
    std::function<std::unique_ptr<ClickObserver>(const std::string& path, ClickObserver::Seen)>
        observer;
    /// Whether the desktop makes a click of its own of three fingers that press this trackpad.
    std::function<bool(const EvdevDevice&)> desktopAnswers;
    /// Any thread: the middle button of the virtual pointer.
    std::function<void(bool down)> middle;
    /// Something a person should know.
    std::function<void(const std::string&)> tell;
    /// Something for whoever looks for an error.
    std::function<void(const std::string&)> note;
  };

  explicit LinuxEventTaps(Links links);
  ~LinuxEventTaps() override;
  LinuxEventTaps(const LinuxEventTaps&) = delete;
  LinuxEventTaps& operator=(const LinuxEventTaps&) = delete;

  [[nodiscard]] std::unique_ptr<InstalledTap> install(TapLocation location, std::uint64_t mask,
                                                      Callbacks callbacks) override;
  void setNeeds(const TapNeeds& needs) override;
  /// Another session's user has the devices while this one is inactive: they are given up at once.
  void setSessionActive(bool active);
  /// What the desktop does by itself has changed.
  void reconsider();

  struct DeviceStatus {
    std::string path;
    std::string name;
    DeviceMirror::Status status;
    std::string trouble;  ///< a sentence for people while it is refused
  };
  /// Every device that may be taken over.
  [[nodiscard]] std::vector<DeviceStatus> status() const;
  [[nodiscard]] Observation observeStatus(std::function<void()> changed) {
    return statusChanges_.add(std::move(changed));
  }

 private:
  struct Device {
    std::shared_ptr<DeviceMirror> mirror;  // null when it may not be mirrored
    std::unique_ptr<ClickObserver> observer;
    GrabState told = GrabState::resting;
    std::string refusal;  // the last one that was told
  };

  void reconcileSoon();
  void reconcile();
  void forget(const std::vector<std::string>& present);
  void addDevice(const std::string& path);
  [[nodiscard]] DeviceMirror::Want wantOf(const EvdevDevice& device) const;
  void mirrorChanged(const DeviceMirror& mirror);
  void mirrorLost(const DeviceMirror& mirror, GrabTrouble trouble);
  void observed(std::map<std::uint16_t, std::int64_t>& numbers, std::uint16_t button, bool down);

  Links links_;
  TapChain chain_;
  TapNeeds needs_;
  bool sessionActive_ = true;
  bool reconciling_ = false;
  std::map<std::string, Device> devices_;
  ObserverList<> statusChanges_;
  std::shared_ptr<bool> alive_ = std::make_shared<bool>(true);
};

}  // namespace velotap
