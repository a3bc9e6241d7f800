// What a mirrored device needs of the kernel: the event node, the grab, and the mirror image.
//
// A set of system calls behind one small class, so that everything that is decided above it can be
// tested without a kernel. One thread, but for what is marked.
#pragma once

#include <linux/input.h>

#include <cstdint>
#include <optional>
#include <span>
#include <string>
#include <vector>

#include "adapters/linux/evdev/contact.hpp"
#include "adapters/linux/evdev/evdev_device.hpp"

namespace velotap {

/// What is down on a device at one moment.
struct NodeState {
  std::vector<std::uint16_t> buttons;
  std::vector<RawContact> slots;
  int currentSlot = 0;
  [[nodiscard]] bool touched() const noexcept {
    for (const RawContact& contact : slots) {
      if (contact.down()) return true;
    }
    return false;
  }
};

class MirrorHardware {
 public:
  enum class Wake {
    events,     ///< there is something to read, or a mirror is known to the desktop
    asked,      ///< `ask` was called
    timeUp,     ///< the time is over
    unguarded,  ///< the guard is no longer there
    gone,       ///< the device was unplugged
  };

  virtual ~MirrorHardware() = default;
  /// Where the device is, for people.
  [[nodiscard]] virtual const std::string& path() const = 0;
  [[nodiscard]] virtual const EvdevDevice& description() const = 0;

  /// Any thread: ends a wait, the present one or the next.
  virtual void ask() = 0;
  /// Waits to be asked, and for nothing else; without end when there is no time.
  virtual void waitToBeAsked(std::optional<double> seconds) = 0;

  /// The node is open from here on; the system's error number or 0.
  [[nodiscard]] virtual int open() = 0;
  virtual void close() = 0;
  /// Waits for events of the node, without end when there is no time.
  [[nodiscard]] virtual Wake wait(std::optional<double> seconds) = 0;
  /// What can be read without waiting; zero when nothing can.
  [[nodiscard]] virtual std::size_t read(std::span<input_event> events) = 0;
  [[nodiscard]] virtual NodeState state() = 0;
  /// Why the device could not be had this moment, as `grab` would say it, or 0. The device stays
  /// the desktop's; only while nothing is down on it.
  [[nodiscard]] virtual int obstacle() = 0;
  /// The system's error number or 0.
  [[nodiscard]] virtual int grab() = 0;
  virtual void ungrab() = 0;

  /// A device that looks like this one, and whose state is this one's.
  [[nodiscard]] virtual int makeMirror() = 0;
  /// Waits until udev has taken the mirror up.
  [[nodiscard]] virtual Wake waitForMirror(double seconds) = 0;
  /// Any thread: one frame, or several whole ones, with one system call. False when the mirror is
  /// lost.
  virtual bool write(std::span<const input_event> frames) = 0;
  /// The mirror vanishes; the kernel releases whatever it holds down.
  virtual void removeMirror() = 0;
  /// Brings a touchpad's mirror to the device's present state, but for the clicks. False when the
  /// mirror is lost.
  virtual bool copyState() = 0;

  /// Has somebody watch, from now until `unguard`, that the events are served. The system's error
  /// number or 0; a guard that is lost ends the next wait for events.
  [[nodiscard]] virtual int guard() = 0;
  virtual void unguard() = 0;
  /// The events that were there have been served.
  virtual void served() noexcept = 0;

  /// Hands events on to the multitouch library, which the grab has cut off.
  virtual void feed(std::span<const input_event> events) = 0;
};

}  // namespace velotap
