#include "adapters/linux/clicks/evdev_mirror.hpp"

#include <fcntl.h>
#include <libudev.h>
#include <poll.h>
#include <sys/epoll.h>
#include <sys/eventfd.h>
#include <sys/ioctl.h>
#include <sys/stat.h>
#include <unistd.h>

#include <algorithm>
#include <array>
#include <cerrno>
#include <cmath>
#include <string_view>
#include <utility>

#include "adapters/linux/clicks/button_router.hpp"
#include "adapters/linux/clicks/guardian.hpp"
#include "adapters/linux/clicks/mirror_stream.hpp"
#include "adapters/linux/clicks/node_description.hpp"
#include "adapters/linux/clicks/uinput_mirror.hpp"
#include "adapters/linux/runtime/descriptor.hpp"

namespace velotap {
namespace {

struct Unref {
  void operator()(udev* u) const { udev_unref(u); }
  void operator()(udev_monitor* m) const { udev_monitor_unref(m); }
  void operator()(udev_device* d) const { udev_device_unref(d); }
};

constexpr std::size_t kMostSlots = 64;
using SlotValues = std::array<std::int32_t, kMostSlots>;

int milliseconds(std::optional<double> seconds) {
  return seconds ? static_cast<int>(std::ceil(*seconds * 1e3)) : -1;
}

input_event made(std::uint16_t type, std::size_t code, std::int32_t value) {
  input_event event{};
  event.type = type;
  event.code = static_cast<std::uint16_t>(code);
  event.value = value;
  return event;
}

class EvdevMirror final : public MirrorHardware {
 public:
  EvdevMirror(std::string path, EvdevDevice description, FeedEvents feeder,
              std::function<int()> pointerDescriptor)
      : path_(std::move(path)),
        description_(std::move(description)),
        feed_(feeder),
        pointerDescriptor_(std::move(pointerDescriptor)),
        ask_(::eventfd(0, EFD_CLOEXEC | EFD_NONBLOCK)),
        awaited_(::epoll_create1(EPOLL_CLOEXEC)) {
    await(ask_.get(), EPOLLIN);
    struct stat status {};
    if (::stat(path_.c_str(), &status) == 0) number_ = status.st_rdev;
    if (const auto& slot = description_.absoluteAxes[ABS_MT_SLOT]) {
      slots_ = std::min(kMostSlots, static_cast<std::size_t>(std::max(0, slot->maximum + 1)));
    }
  }

  [[nodiscard]] const std::string& path() const override { return path_; }
  [[nodiscard]] const EvdevDevice& description() const override { return description_; }

  void ask() override { ::eventfd_write(ask_.get(), 1); }
  void waitToBeAsked(std::optional<double> seconds) override {
    pollfd asked = {.fd = ask_.get(), .events = POLLIN, .revents = 0};
    ::poll(&asked, 1, milliseconds(seconds));
    takeAsked();
  }

  [[nodiscard]] int open() override {
    node_ = Descriptor(::open(path_.c_str(), O_RDONLY | O_NONBLOCK | O_CLOEXEC));
    if (!node_.ok()) return errno;
    int clock = CLOCK_MONOTONIC;
    ::ioctl(node_.get(), EVIOCSCLOCKID, &clock);
    await(node_.get(), EPOLLIN);
    return 0;
  }
  void close() override {
    awaitNoLonger(node_.get());
    node_.reset();
  }

  [[nodiscard]] Wake wait(std::optional<double> seconds) override;
  [[nodiscard]] std::size_t read(std::span<input_event> events) override {
    while (true) {
      const ssize_t n = ::read(node_.get(), events.data(), events.size_bytes());
      if (n >= 0) return static_cast<std::size_t>(n) / sizeof(input_event);
      if (errno != EINTR) return 0;
    }
  }
  [[nodiscard]] NodeState state() override;
  [[nodiscard]] int obstacle() override {
    const int error = grab();
    if (error == 0) ungrab();
    return error;
  }
  [[nodiscard]] int grab() override { return ::ioctl(node_.get(), EVIOCGRAB, 1) == 0 ? 0 : errno; }
  void ungrab() override { ::ioctl(node_.get(), EVIOCGRAB, nullptr); }

  [[nodiscard]] int makeMirror() override;
  [[nodiscard]] Wake waitForMirror(double seconds) override;
  bool write(std::span<const input_event> frames) override { return mirror_.write(frames); }
  void removeMirror() override {
    monitor_.reset();
    mirror_.remove();
  }
  bool copyState() override;

  [[nodiscard]] int guard() override {
    const int error = guardian_.start(
        {.node = node_.get(), .mirror = mirror_.descriptor(), .pointer = pointerDescriptor_()});
    // Of the guard nothing is awaited but its end, which is told unasked.
    if (error == 0) await(guardian_.lifeline(), 0);
    return error;
  }
  void unguard() override {
    awaitNoLonger(guardian_.lifeline());
    guardian_.stop();
  }
  void served() noexcept override { guardian_.served(); }
  void feed(std::span<const input_event> events) override {
    feed_(number_, events.data(), events.size());
  }

 private:
  void takeAsked() {
    eventfd_t count = 0;
    ::eventfd_read(ask_.get(), &count);
  }
  void await(int fd, std::uint32_t events) {
    epoll_event wanted{};
    wanted.events = events;
    wanted.data.fd = fd;
    ::epoll_ctl(awaited_.get(), EPOLL_CTL_ADD, fd, &wanted);
  }
  // Said in as many words: closing does not do it while the guard has the same file open.
  void awaitNoLonger(int fd) {
    if (fd >= 0) ::epoll_ctl(awaited_.get(), EPOLL_CTL_DEL, fd, nullptr);
  }
  [[nodiscard]] bool announced();
  [[nodiscard]] std::vector<std::uint16_t> keysDown() const;
  [[nodiscard]] bool fetch(std::size_t axis, SlotValues& values) const;
  void appendContacts(std::vector<input_event>& frame) const;

  const std::string path_;
  const EvdevDevice description_;
  FeedEvents feed_;
  std::function<int()> pointerDescriptor_;
  std::uint64_t number_ = 0;
  std::size_t slots_ = 0;
  Descriptor ask_;
  Descriptor awaited_;  // an epoll: cheaper than naming the same few files for each frame anew
  Descriptor node_;
  UinputMirror mirror_;
  std::unique_ptr<udev, Unref> udev_;
  std::unique_ptr<udev_monitor, Unref> monitor_;
  std::string mirrorName_;
  Guardian guardian_;
};

MirrorHardware::Wake EvdevMirror::wait(std::optional<double> seconds) {
  constexpr std::uint32_t kOver = EPOLLERR | EPOLLHUP;
  std::array<epoll_event, 3> ready{};
  const int count = ::epoll_wait(awaited_.get(), ready.data(), ready.size(), milliseconds(seconds));
  if (count == 0) return Wake::timeUp;
  std::uint32_t node = 0;
  bool unguarded = false;
  for (int i = 0; i < count; ++i) {
    const epoll_event& event = ready[static_cast<std::size_t>(i)];
    if (event.data.fd == node_.get()) node = event.events;
    if (event.data.fd == guardian_.lifeline()) unguarded = true;
  }
  if ((node & kOver) != 0) return Wake::gone;
  if (unguarded) return Wake::unguarded;
  // Events first: they come of themselves, and a request stays until it is taken.
  if ((node & EPOLLIN) != 0) return Wake::events;
  takeAsked();
  return Wake::asked;
}

std::vector<std::uint16_t> EvdevMirror::keysDown() const {
  std::array<std::uint8_t, (KEY_CNT + 7) / 8> bits{};
  std::vector<std::uint16_t> keys;
  if (::ioctl(node_.get(), EVIOCGKEY(bits.size()), bits.data()) < 0) return keys;
  for (std::size_t i = 0; i < KEY_CNT; ++i) {
    if ((bits[i / 8] >> (i % 8) & 1U) != 0) keys.push_back(static_cast<std::uint16_t>(i));
  }
  return keys;
}

bool EvdevMirror::fetch(std::size_t axis, SlotValues& values) const {
  if (slots_ == 0 || !description_.absoluteAxes[axis]) return false;
  // The request's first word is the axis, the answer one word for each slot behind it.
  std::array<std::int32_t, kMostSlots + 1> words{};
  words[0] = static_cast<std::int32_t>(axis);
  const std::size_t size = (slots_ + 1) * sizeof(std::int32_t);
  if (::ioctl(node_.get(), EVIOCGMTSLOTS(size), words.data()) < 0) return false;
  std::copy(words.begin() + 1, words.end(), values.begin());
  return true;
}

NodeState EvdevMirror::state() {
  NodeState state;
  state.buttons = keysDown();
  input_absinfo slot{};
  if (::ioctl(node_.get(), EVIOCGABS(ABS_MT_SLOT), &slot) == 0) state.currentSlot = slot.value;
  SlotValues ids{};
  SlotValues majors{};
  if (!fetch(ABS_MT_TRACKING_ID, ids)) return state;
  static_cast<void>(fetch(ABS_MT_TOUCH_MAJOR, majors));
  for (std::size_t i = 0; i < slots_; ++i) {
    state.slots.push_back({.id = ids[i], .major = majors[i]});
  }
  return state;
}

int EvdevMirror::makeMirror() {
  // It listens before there is something to hear.
  if (!udev_) udev_.reset(udev_new());
  if (udev_) monitor_.reset(udev_monitor_new_from_netlink(udev_.get(), "udev"));
  if (monitor_) {
    udev_monitor_filter_add_match_subsystem_devtype(monitor_.get(), "input", nullptr);
    if (udev_monitor_enable_receiving(monitor_.get()) < 0) monitor_.reset();
  }
  if (const int error = mirror_.create(description_, kMirrorPhys); error != 0) {
    monitor_.reset();
    return error;
  }
  mirrorName_ = mirror_.systemName();
  if (!isTouchMouse(description_) && !copyState()) {
    const int error = errno;
    removeMirror();
    return error;
  }
  return 0;
}

// Of what udev has to say only the mirror's own event node counts.
bool EvdevMirror::announced() {
  while (true) {
    const std::unique_ptr<udev_device, Unref> device(udev_monitor_receive_device(monitor_.get()));
    if (!device) return false;
    const char* name = udev_device_get_sysname(device.get());
    udev_device* input = udev_device_get_parent(device.get());
    const char* parent = input != nullptr ? udev_device_get_sysname(input) : nullptr;
    if (name != nullptr && parent != nullptr && std::string_view(name).starts_with("event") &&
        mirrorName_ == parent) {
      return true;
    }
  }
}

MirrorHardware::Wake EvdevMirror::waitForMirror(double seconds) {
  const int monitor = monitor_ ? udev_monitor_get_fd(monitor_.get()) : -1;
  std::array<pollfd, 2> both = {{{.fd = ask_.get(), .events = POLLIN, .revents = 0},
                                 {.fd = monitor, .events = POLLIN, .revents = 0}}};
  if (::poll(both.data(), both.size(), milliseconds(seconds)) == 0) return Wake::timeUp;
  if (both[1].revents != 0 && announced()) return Wake::events;
  if (both[0].revents != 0) takeAsked();
  return Wake::asked;
}

// The kernel passes on only what changes, in the mirror as in the device, so both must begin with
// the same values.
bool EvdevMirror::copyState() {
  std::vector<input_event> frame;
  appendContacts(frame);
  for (std::size_t axis = 0; axis < ABS_MT_SLOT; ++axis) {
    input_absinfo info{};
    if (!description_.absoluteAxes[axis] || ::ioctl(node_.get(), EVIOCGABS(axis), &info) != 0) {
      continue;
    }
    frame.push_back(made(EV_ABS, axis, info.value));
  }
  const std::vector<std::uint16_t> down = keysDown();
  for (std::size_t key = 0; key < KEY_CNT; ++key) {
    if (!description_.keys[key] || isClickButton(static_cast<std::uint16_t>(key))) continue;
    const bool isDown = std::find(down.begin(), down.end(), key) != down.end();
    frame.push_back(made(EV_KEY, key, isDown ? 1 : 0));
  }
  frame.push_back(made(EV_SYN, SYN_REPORT, 0));
  return mirror_.write(frame);
}

void EvdevMirror::appendContacts(std::vector<input_event>& frame) const {
  std::vector<std::pair<std::size_t, SlotValues>> axes;
  for (std::size_t axis = ABS_MT_SLOT + 1; axis < ABS_CNT; ++axis) {
    SlotValues values{};
    if (fetch(axis, values)) axes.emplace_back(axis, values);
  }
  for (std::size_t slot = 0; slot < slots_; ++slot) {
    frame.push_back(made(EV_ABS, ABS_MT_SLOT, static_cast<std::int32_t>(slot)));
    for (const auto& [axis, values] : axes) frame.push_back(made(EV_ABS, axis, values[slot]));
  }
  input_absinfo current{};
  if (slots_ > 0 && ::ioctl(node_.get(), EVIOCGABS(ABS_MT_SLOT), &current) == 0) {
    frame.push_back(made(EV_ABS, ABS_MT_SLOT, current.value));
  }
}

}  // namespace

std::unique_ptr<MirrorHardware> makeEvdevMirror(const std::string& path, FeedEvents feed,
                                                std::function<int()> pointerDescriptor) {
  const Descriptor node(::open(path.c_str(), O_RDONLY | O_NONBLOCK | O_CLOEXEC));
  EvdevDevice description;
  if (!node.ok() || !readDescription(node.get(), description)) return nullptr;
  return std::make_unique<EvdevMirror>(path, std::move(description), feed,
                                       std::move(pointerDescriptor));
}

}  // namespace velotap
