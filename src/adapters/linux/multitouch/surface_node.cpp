#include "adapters/linux/multitouch/surface_node.hpp"

#include <fcntl.h>
#include <libevdev/libevdev.h>
#include <poll.h>
#include <sys/ioctl.h>
#include <unistd.h>

#include <algorithm>
#include <array>
#include <atomic>
#include <bitset>
#include <cerrno>
#include <ctime>
#include <utility>

namespace velotap {
namespace {

constexpr std::array kContactAxes = {ABS_MT_SLOT,       ABS_MT_TRACKING_ID, ABS_MT_POSITION_X,
                                     ABS_MT_POSITION_Y, ABS_MT_TOUCH_MAJOR, ABS_MT_TOUCH_MINOR,
                                     ABS_MT_PRESSURE};
constexpr std::array kFingerTools = {BTN_TOOL_FINGER, BTN_TOOL_DOUBLETAP, BTN_TOOL_TRIPLETAP,
                                     BTN_TOOL_QUADTAP, BTN_TOOL_QUINTTAP};

std::string text(const char* value) {
  return value != nullptr ? value : "";
}

// Everything that is not in the set is left out of our copy of the stream: a mouse that only moves
// its pointer or turns its wheel then wakes nobody here.
template <std::size_t Bits>
void listenOnlyTo(int fd, unsigned type, const std::bitset<Bits>& codes) {
  // The kernel takes whole words only.
  std::array<std::uint64_t, (Bits + 63) / 64> words{};
  for (std::size_t i = 0; i < Bits; ++i) {
    if (codes[i]) words[i / 64] |= std::uint64_t{1} << (i % 64);
  }
  input_mask mask{};
  mask.type = type;
  mask.codes_size = sizeof words;
  mask.codes_ptr = reinterpret_cast<std::uintptr_t>(words.data());
  ::ioctl(fd, EVIOCSMASK, &mask);  // an old kernel wakes us more often; nothing else is lost
}

void setAttention(int fd, SurfaceNode::Attention attention) {
  std::bitset<ABS_CNT> axes;
  axes.set(ABS_MT_SLOT);
  axes.set(ABS_MT_TRACKING_ID);
  if (attention == SurfaceNode::Attention::everything) {
    for (const int axis : kContactAxes) axes.set(static_cast<std::size_t>(axis));
  }
  listenOnlyTo(fd, EV_ABS, axes);
}

void setUpMasks(int fd) {
  std::bitset<KEY_CNT> keys;
  for (const int tool : kFingerTools) keys.set(static_cast<std::size_t>(tool));
  listenOnlyTo(fd, EV_KEY, keys);
  listenOnlyTo(fd, EV_REL, std::bitset<REL_CNT>());
  listenOnlyTo(fd, EV_MSC, std::bitset<MSC_CNT>());
  setAttention(fd, SurfaceNode::Attention::everything);
}

// The driver's fuzz swallows small movements and makes steady ones uneven.
void removeFuzz(int fd) {
  for (const unsigned axis : {ABS_MT_POSITION_X, ABS_MT_POSITION_Y}) {
    input_absinfo info{};
    if (::ioctl(fd, EVIOCGABS(axis), &info) != 0 || info.fuzz == 0) continue;
    info.fuzz = 0;
    ::ioctl(fd, EVIOCSABS(axis), &info);
  }
}

class EvdevNode final : public SurfaceNode {
 public:
  EvdevNode(std::string path, EvdevDevice description)
      : path_(std::move(path)), description_(std::move(description)) {}
  ~EvdevNode() override { EvdevNode::close(); }
  EvdevNode(const EvdevNode&) = delete;
  EvdevNode& operator=(const EvdevNode&) = delete;

  [[nodiscard]] const EvdevDevice& description() const override { return description_; }

  [[nodiscard]] bool open() override {
    if (fd_ >= 0) return true;
    fd_ = ::open(path_.c_str(), O_RDONLY | O_CLOEXEC);
    if (fd_ < 0) return false;
    int clock = CLOCK_MONOTONIC;
    ::ioctl(fd_, EVIOCSCLOCKID, &clock);
    removeFuzz(fd_);
    setUpMasks(fd_);
    return true;
  }

  void close() override {
    if (const int fd = fd_.exchange(-1); fd >= 0) ::close(fd);
  }

  [[nodiscard]] std::size_t read(std::span<input_event> events) override {
    while (true) {
      const ssize_t n = ::read(fd_, events.data(), events.size_bytes());
      if (n > 0) return static_cast<std::size_t>(n) / sizeof(input_event);
      if (n == 0 || errno != EINTR) return 0;
    }
  }

  // Taking our own access away is the one thing that ends a read of an event node from outside.
  void interrupt() override {
    if (fd_ >= 0) ::ioctl(fd_, EVIOCREVOKE, nullptr);
  }

  void listen(Attention attention) override { setAttention(fd_, attention); }

  void synchronise(ContactReader& reader, int slots) override {
    // Events that wait are older than what is fetched, and name slots by the order in which they
    // were sent: they are dropped, and the truth is fetched again if more came meanwhile.
    constexpr int kTries = 4;
    for (int i = 0; i < kTries && (i == 0 || eventsWait()); ++i) {
      dropWaitingEvents();
      EvdevNode::fetch(reader, slots);
    }
  }

  void fetch(ContactReader& reader, int slots) override {
    const auto count = static_cast<std::size_t>(std::clamp(slots, 0, kMostSlots));
    std::array<RawContact, kMostSlots> contacts;
    contacts.fill(RawContact());
    input_absinfo slot{};
    ::ioctl(fd_, EVIOCGABS(ABS_MT_SLOT), &slot);
    fetchSlots({contacts.data(), count});
    reader.setSlots({contacts.data(), count}, slot.value, fingersByTools());
  }

 private:
  static constexpr int kMostSlots = 64;

  [[nodiscard]] bool eventsWait() const {
    pollfd waiting = {.fd = fd_, .events = POLLIN, .revents = 0};
    return ::poll(&waiting, 1, 0) > 0 && (waiting.revents & POLLIN) != 0;
  }

  void dropWaitingEvents() {
    std::array<input_event, 64> events;
    // As many as a device can queue; one that sends faster than it is read does not keep us here.
    for (int i = 0; i < 256 && eventsWait(); ++i) {
      if (read(events) == 0) return;
    }
  }

  void fetchSlots(std::span<RawContact> contacts) const {
    fetchAxis(ABS_MT_TRACKING_ID, contacts, &RawContact::id);
    fetchAxis(ABS_MT_POSITION_X, contacts, &RawContact::x);
    fetchAxis(ABS_MT_POSITION_Y, contacts, &RawContact::y);
    fetchAxis(ABS_MT_TOUCH_MAJOR, contacts, &RawContact::major);
    fetchAxis(ABS_MT_TOUCH_MINOR, contacts, &RawContact::minor);
    fetchAxis(ABS_MT_PRESSURE, contacts, &RawContact::pressure);
  }

  void fetchAxis(std::uint32_t code, std::span<RawContact> contacts,
                 std::int32_t RawContact::*field) const {
    if (contacts.empty() || !description_.absoluteAxes[code]) return;
    // The request's first word is the axis, the answer one word for each slot behind it.
    std::array<std::int32_t, kMostSlots + 1> words{};
    words[0] = static_cast<std::int32_t>(code);
    const std::size_t size = (contacts.size() + 1) * sizeof(std::int32_t);
    if (::ioctl(fd_, EVIOCGMTSLOTS(size), words.data()) < 0) return;
    for (std::size_t i = 0; i < contacts.size(); ++i) contacts[i].*field = words[i + 1];
  }

  [[nodiscard]] int fingersByTools() const {
    std::array<std::uint8_t, (KEY_CNT + 7) / 8> keys{};
    if (::ioctl(fd_, EVIOCGKEY(keys.size()), keys.data()) < 0) return 0;
    for (std::size_t n = kFingerTools.size(); n > 0; --n) {
      const auto key = static_cast<std::size_t>(kFingerTools[n - 1]);
      if ((keys[key / 8] >> (key % 8) & 1U) != 0) return static_cast<int>(n);
    }
    return 0;
  }

  std::string path_;
  EvdevDevice description_;
  std::atomic<int> fd_{-1};  // another thread interrupts
};

}  // namespace

bool describeNode(int descriptor, EvdevDevice& device) {
  libevdev* evdev = nullptr;
  if (libevdev_new_from_fd(descriptor, &evdev) < 0) return false;
  device.name = text(libevdev_get_name(evdev));
  device.phys = text(libevdev_get_phys(evdev));
  device.bus = static_cast<std::uint16_t>(libevdev_get_id_bustype(evdev));
  device.vendor = static_cast<std::uint16_t>(libevdev_get_id_vendor(evdev));
  device.product = static_cast<std::uint16_t>(libevdev_get_id_product(evdev));
  device.version = static_cast<std::uint16_t>(libevdev_get_id_version(evdev));
  for (unsigned i = 0; i < INPUT_PROP_CNT; ++i) {
    device.properties[i] = libevdev_has_property(evdev, i) != 0;
  }
  for (unsigned i = 0; i < KEY_CNT; ++i) {
    device.keys[i] = libevdev_has_event_code(evdev, EV_KEY, i) != 0;
  }
  for (unsigned i = 0; i < REL_CNT; ++i) {
    device.relativeAxes[i] = libevdev_has_event_code(evdev, EV_REL, i) != 0;
  }
  for (unsigned i = 0; i < ABS_CNT; ++i) {
    if (const input_absinfo* info = libevdev_get_abs_info(evdev, i)) {
      device.absoluteAxes[i] = AxisInfo{.minimum = info->minimum,
                                        .maximum = info->maximum,
                                        .fuzz = info->fuzz,
                                        .flat = info->flat,
                                        .resolution = info->resolution};
    }
  }
  libevdev_free(evdev);
  return true;
}

std::shared_ptr<SurfaceNode> makeEvdevNode(const std::string& path) {
  const int fd = ::open(path.c_str(), O_RDONLY | O_NONBLOCK | O_CLOEXEC);
  if (fd < 0) return nullptr;
  EvdevDevice description;
  const bool described = describeNode(fd, description);
  ::close(fd);
  if (!described) return nullptr;
  return std::make_shared<EvdevNode>(path, std::move(description));
}

}  // namespace velotap
