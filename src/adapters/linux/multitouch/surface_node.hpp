// One event node of a multitouch surface: opened, described, set up so that nothing but touches
// wakes the process, and asked for its present state.
//
// A set of system calls behind one small class, so that the surface above it can be tested on
// anything that yields input events. One thread at a time.
#pragma once

#include <linux/input.h>

#include <cstddef>
#include <memory>
#include <span>
#include <string>

#include "adapters/linux/evdev/contact_reader.hpp"
#include "adapters/linux/evdev/evdev_device.hpp"

namespace velotap {

class SurfaceNode {
 public:
  /// Which events are worth waking up for.
  enum class Attention { everything, landingAndLifting };

  virtual ~SurfaceNode() = default;
  [[nodiscard]] virtual const EvdevDevice& description() const = 0;
  /// Starts the flow of events; false when the device is gone.
  [[nodiscard]] virtual bool open() = 0;
  virtual void close() = 0;
  /// Waits for events and writes them; their number, 0 when the device is gone or was interrupted.
  [[nodiscard]] virtual std::size_t read(std::span<input_event> events) = 0;
  /// Ends a `read` that waits, and all later ones until the node is opened again. Any thread.
  virtual void interrupt() = 0;
  virtual void listen(Attention attention) = 0;
  /// Tells the reader what is down right now; nothing is when the device is gone. Events that
  /// already wait to be read are dropped, and so must be those that were read and not yet handled.
  virtual void synchronise(ContactReader& reader, int slots) = 0;
  /// The same for somebody else than the reading thread: what waits to be read is left alone.
  virtual void fetch(ContactReader& reader, int slots) = 0;
};

/// The node at a path, described; null when it may not be read or is no input device. It is closed
/// until it is opened: a device nobody listens to is left alone.
[[nodiscard]] std::shared_ptr<SurfaceNode> makeEvdevNode(const std::string& path);

/// Reads a description from an open event node; false when it is none.
[[nodiscard]] bool describeNode(int descriptor, EvdevDevice& device);

}  // namespace velotap
