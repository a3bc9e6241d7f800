#include "adapters/linux/clicks/linux_event_taps.hpp"

#include <linux/input-event-codes.h>

#include <algorithm>
#include <utility>

namespace velotap {
namespace {

// From how many fingers on a touch mouse stops scrolling. Two scroll unless they might mean
// something else.
constexpr int kGestureFingers = 2;
constexpr int kClickFingers = 3;

bool held(GrabState state) {
  return state == GrabState::grabbed || state == GrabState::leaving;
}

std::string nameOf(const DeviceMirror& mirror) {
  return mirror.description().name + " (" + mirror.path() + ")";
}

std::string troubleOf(const DeviceMirror& mirror, const DeviceMirror::Status& status) {
  if (status.state != GrabState::refused) return {};
  return refusalText(status.trouble, status.error, nameOf(mirror));
}

}  // namespace

LinuxEventTaps::LinuxEventTaps(Links links) : links_(std::move(links)) {
  chain_.setChanged([this] { reconcileSoon(); });
}

LinuxEventTaps::~LinuxEventTaps() {
  chain_.setChanged(nullptr);
  // All of them begin to let go before the first is waited for.
  for (auto& [path, device] : devices_) {
    if (device.mirror) device.mirror->want(DeviceMirror::Want::noAtOnce, kGestureFingers);
  }
  devices_.clear();
}

std::unique_ptr<InstalledTap> LinuxEventTaps::install(TapLocation location, std::uint64_t mask,
                                                      Callbacks callbacks) {
  return chain_.install(location, mask, std::move(callbacks));
}

void LinuxEventTaps::setNeeds(const TapNeeds& needs) {
  needs_ = needs;
  reconcileSoon();
}

void LinuxEventTaps::setSessionActive(bool active) {
  if (std::exchange(sessionActive_, active) != active) reconcileSoon();
}

void LinuxEventTaps::reconsider() {
  reconcileSoon();
}

// A restart of the listeners removes and installs the taps in one go; only the result counts.
void LinuxEventTaps::reconcileSoon() {
  if (std::exchange(reconciling_, true)) return;
  links_.queue.async([this, weak = std::weak_ptr(alive_)] {
    if (weak.expired()) return;
    reconciling_ = false;
    reconcile();
  });
}

void LinuxEventTaps::reconcile() {
  const std::vector<std::string> present = links_.surfaces();
  forget(present);
  for (const std::string& path : present) {
    if (chain_.active() && !devices_.contains(path)) addDevice(path);
  }
  const int wheelLimit = needs_.mouseGestures ? kGestureFingers : kClickFingers;
  for (auto& [path, device] : devices_) {
    if (!chain_.active()) device.observer.reset();
    if (device.mirror) device.mirror->want(wantOf(device.mirror->description()), wheelLimit);
  }
  if (!chain_.active()) {
    std::erase_if(devices_, [](const auto& entry) { return !entry.second.mirror; });
  }
}

void LinuxEventTaps::forget(const std::vector<std::string>& present) {
  for (auto entry = devices_.begin(); entry != devices_.end();) {
    const auto& [path, device] = *entry;
    const bool here = std::find(present.begin(), present.end(), path) != present.end();
    // A node's name may have gone to another device since.
    if (here && !(device.mirror && device.mirror->status().state == GrabState::gone)) {
      ++entry;
      continue;
    }
    const std::string note = held(device.told) ? path + " given back" : std::string();
    entry = devices_.erase(entry);
    if (!note.empty()) links_.note(note);
    statusChanges_.notify();
  }
}

void LinuxEventTaps::addDevice(const std::string& path) {
  Device& device = devices_[path];
  if (auto hardware = links_.hardware(path)) {
    device.mirror = std::make_shared<DeviceMirror>(
        std::move(hardware),
        DeviceMirror::Links{.taps = chain_,
                            .queue = links_.queue,
                            .clock = links_.clock,
                            .middle = links_.middle,
                            .changed = [this](const DeviceMirror& m) { mirrorChanged(m); },
                            .lost = [this](const DeviceMirror& m,
                                           GrabTrouble trouble) { mirrorLost(m, trouble); }});
    device.mirror->start();
    statusChanges_.notify();
  }
  device.observer = links_.observer(
      path, [this, numbers = std::map<std::uint16_t, std::int64_t>()](
                std::uint16_t button, bool down) mutable { observed(numbers, button, down); });
}

void LinuxEventTaps::observed(std::map<std::uint16_t, std::int64_t>& numbers, std::uint16_t button,
                              bool down) {
  if (down) numbers[button] = chain_.nextNumber();
  // What the kernel calls the middle button of a touch mouse is a press all the same.
  const std::uint16_t meaning = button == BTN_MIDDLE ? BTN_LEFT : button;
  chain_.observe({.button = meaning, .down = down, .number = numbers[button]});
}

DeviceMirror::Want LinuxEventTaps::wantOf(const EvdevDevice& device) const {
  if (!sessionActive_) return DeviceMirror::Want::noAtOnce;
  if (!chain_.mayRewrite()) return DeviceMirror::Want::no;
  const bool wanted = isTouchMouse(device)
                          ? needs_.mouseClicks || needs_.mouseGestures
                          : needs_.trackpadClicks && !links_.desktopAnswers(device);
  return wanted ? DeviceMirror::Want::yes : DeviceMirror::Want::no;
}

void LinuxEventTaps::mirrorChanged(const DeviceMirror& mirror) {
  const auto device = devices_.find(mirror.path());
  if (device == devices_.end() || device->second.mirror.get() != &mirror) return;
  Device& known = device->second;
  const DeviceMirror::Status status = mirror.status();
  statusChanges_.notify();
  if (status.state == known.told && status.state != GrabState::refused) return;
  const bool had = held(known.told);
  known.told = status.state;
  switch (status.state) {
    case GrabState::grabbed:
      known.refusal.clear();
      links_.note(mirror.path() + " taken over");
      break;
    case GrabState::leaving:
      links_.note(mirror.path() + " will be given back");
      break;
    case GrabState::refused:
      // Asked for again and again it stays the same refusal.
      if (const std::string why = troubleOf(mirror, status); known.refusal != why) {
        known.refusal = why;
        links_.tell(why);
      }
      break;
    case GrabState::resting:
    case GrabState::gone:
      if (had) links_.note(mirror.path() + " given back");
      break;
    case GrabState::appearing:
    case GrabState::settling:
    case GrabState::waiting:
      if (had) links_.note(mirror.path() + " was lost");
      break;
  }
}

void LinuxEventTaps::mirrorLost(const DeviceMirror& mirror, GrabTrouble trouble) {
  links_.tell(lossText(trouble, nameOf(mirror)));
}

std::vector<LinuxEventTaps::DeviceStatus> LinuxEventTaps::status() const {
  std::vector<DeviceStatus> list;
  for (const auto& [path, device] : devices_) {
    if (!device.mirror) continue;
    const DeviceMirror::Status status = device.mirror->status();
    list.push_back({.path = path,
                    .name = device.mirror->description().name,
                    .status = status,
                    .trouble = troubleOf(*device.mirror, status)});
  }
  return list;
}

}  // namespace velotap
