// An emulated device in the kernel: created through /dev/uhid, answers the driver's requests, sends
// reports, and knows when the driver has finished with it.
//
// The driver drops reports that arrive while it is still setting the device up, so "ready" waits
// for three things: the driver has asked for multitouch mode (where it has one), it is bound, and
// the event node exists. The last two are read from the kernel's own notices, not from udev's, so
// nothing depends on how far udev is. One thread; `serve` must be called whenever a descriptor is
// readable.
#pragma once

#include <linux/uhid.h>

#include <array>
#include <cstdint>
#include <span>
#include <string>
#include <string_view>

#include "guest_io.hpp"
#include "hid_device.hpp"

namespace velotap::vm {

class UhidDevice {
 public:
  struct Identity {
    std::string name;
    std::string phys;
    std::string uniq;  ///< also how the kernel's notices about this device are recognised
  };

  /// Throws std::system_error when the machine has no uhid or refuses the device.
  UhidDevice(const HidModel& model, Identity identity);

  [[nodiscard]] bool ready() const noexcept;
  /// The event node, such as /dev/input/event3; empty until it is known.
  [[nodiscard]] const std::string& node() const noexcept { return node_; }

  /// What to poll for input before `serve`.
  [[nodiscard]] std::array<int, 2> descriptors() const noexcept;
  /// Answers one request of the driver and reads one notice, where there is one.
  void serve();

  void send(std::span<const std::uint8_t> report);
  /// Unplugs it. The destructor does so too, by closing the descriptor.
  void destroy();

 private:
  void serveRequests();
  void serveNotices();
  void write(const uhid_event& event) const;
  void noteNotice(std::string_view notice);

  const HidModel& model_;
  Identity identity_;
  Descriptor uhid_;
  Descriptor notices_;
  std::string sysfsPath_;
  std::string node_;
  bool multitouchOn_ = false;
  bool bound_ = false;
};

}  // namespace velotap::vm
