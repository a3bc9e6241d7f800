#include "adapters/linux/evdev/contact_reader.hpp"

#include <algorithm>
#include <array>
#include <cmath>
#include <limits>
#include <utility>

namespace velotap {
namespace {

constexpr std::array kTools = {std::pair{BTN_TOOL_FINGER, 1}, std::pair{BTN_TOOL_DOUBLETAP, 2},
                               std::pair{BTN_TOOL_TRIPLETAP, 3}, std::pair{BTN_TOOL_QUADTAP, 4},
                               std::pair{BTN_TOOL_QUINTTAP, 5}};

// Fingers that a device counts but does not place get identifiers that no kernel gives out.
constexpr std::int32_t kUnseenIds = 0x4000'0000;

// Devices without identifiers move a contact less than this between two frames.
constexpr double kSameFingerMm = 15;

int fingersOf(unsigned tools) noexcept {
  for (int n = 5; n > 0; --n) {
    if ((tools >> n & 1U) != 0) return n;
  }
  return 0;
}

}  // namespace

ContactReader::Step ContactReader::handle(const input_event& event) noexcept {
  if (event.type == EV_SYN && event.code == SYN_DROPPED) {
    dropping_ = true;
    return Step::nothing;
  }
  if (event.type == EV_SYN && event.code == SYN_REPORT) {
    if (std::exchange(dropping_, false)) return Step::resynchronise;
    if (model_.protocol == ContactProtocol::anonymous) finishAnonymousFrame();
    return Step::frame;
  }
  if (dropping_) return Step::nothing;
  if (event.type == EV_SYN && event.code == SYN_MT_REPORT) {
    finishAnonymousContact();
  } else if (event.type == EV_ABS) {
    handleAbsolute(event);
  } else if (event.type == EV_KEY) {
    handleTool(event);
  }
  return Step::nothing;
}

void ContactReader::handleAbsolute(const input_event& event) noexcept {
  if (model_.protocol == ContactProtocol::anonymous) {
    assign(described_, event);
    if (event.code == ABS_MT_POSITION_X) describedHasPosition_ = true;
    return;
  }
  if (event.code == ABS_MT_SLOT) {
    // A slot that the device did not announce is not kept, but still swallows its values.
    const bool known = event.value >= 0 && event.value < model_.slots;
    currentSlot_ = known ? static_cast<std::size_t>(event.value) : kMaxSlots;
    return;
  }
  if (currentSlot_ >= kMaxSlots) return;
  usedSlots_ = std::max(usedSlots_, currentSlot_ + 1);
  assign(slots_[currentSlot_], event);
}

void ContactReader::assign(RawContact& contact, const input_event& event) noexcept {
  switch (event.code) {
    case ABS_MT_TRACKING_ID:
      contact.id = event.value;
      break;
    case ABS_MT_POSITION_X:
      contact.x = event.value;
      break;
    case ABS_MT_POSITION_Y:
      contact.y = event.value;
      break;
    case ABS_MT_TOUCH_MAJOR:
      contact.major = event.value;
      break;
    case ABS_MT_TOUCH_MINOR:
      contact.minor = event.value;
      break;
    case ABS_MT_PRESSURE:
      contact.pressure = event.value;
      break;
    default:
      break;
  }
}

void ContactReader::handleTool(const input_event& event) noexcept {
  for (const auto& [code, fingers] : kTools) {
    if (event.code != code) continue;
    const unsigned bit = 1U << fingers;
    tools_ = event.value != 0 ? tools_ | bit : tools_ & ~bit;
  }
}

void ContactReader::finishAnonymousContact() noexcept {
  // A report without a position says that nothing is down.
  if (describedHasPosition_) frame_.push(described_);
  described_ = RawContact();
  describedHasPosition_ = false;
}

// Contacts without identifiers are told by where they were: each takes the identifier of the
// nearest contact of the frame before that nobody else took.
void ContactReader::finishAnonymousFrame() noexcept {
  std::uint32_t taken = 0;
  RawContacts placed;
  for (RawContact contact : frame_) {
    if (!contact.down()) contact.id = anonymousId(contact, taken);
    placed.push(contact);
  }
  frame_.clear();
  usedSlots_ = placed.size();
  std::copy(placed.begin(), placed.end(), slots_.begin());
}

std::int32_t ContactReader::anonymousId(const RawContact& contact, std::uint32_t& taken) noexcept {
  double nearest = kSameFingerMm;
  std::size_t best = kMaxContacts;
  for (std::size_t i = 0; i < std::min(usedSlots_, kMaxContacts); ++i) {
    if ((taken >> i & 1U) != 0) continue;
    // In double precision: a device may report any two integers, however far apart.
    const double dx = static_cast<double>(contact.x) - slots_[i].x;
    const double dy = static_cast<double>(contact.y) - slots_[i].y;
    const double distance = std::hypot(dx / model_.unitsPerMmX, dy / model_.unitsPerMmY);
    if (distance < nearest) {
      nearest = distance;
      best = i;
    }
  }
  if (best < kMaxContacts) {
    taken |= 1U << best;
    return slots_[best].id;
  }
  lastAnonymousId_ = lastAnonymousId_ < kUnseenIds - 1 ? lastAnonymousId_ + 1 : 1;
  return lastAnonymousId_;
}

RawContacts ContactReader::contacts() const noexcept {
  RawContacts contacts;
  for (std::size_t i = 0; i < usedSlots_; ++i) {
    if (slots_[i].down()) contacts.push(slots_[i]);
  }
  if (model_.countsWithTools) addUnseenFingers(contacts);
  return contacts;
}

// They stay in the middle: beside a finger that lifts or a corner that jumps they would seem to
// move, and a tap would be taken for a stroke.
void ContactReader::addUnseenFingers(RawContacts& contacts) const noexcept {
  if (contacts.empty()) return;
  const RawContact seen = contacts[0];
  const auto counted = static_cast<std::size_t>(fingersOf(tools_));
  for (std::size_t n = contacts.size(); n < counted; ++n) {
    RawContact unseen = seen;
    unseen.x = static_cast<std::int32_t>(model_.minX + model_.width / 2);
    unseen.y = static_cast<std::int32_t>(model_.minY + model_.height / 2);
    unseen.id = kUnseenIds + static_cast<std::int32_t>(n);
    contacts.push(unseen);
  }
}

void ContactReader::setSlots(std::span<const RawContact> slots, int currentSlot,
                             int fingersByTools) noexcept {
  clear();
  usedSlots_ = std::min(slots.size(), kMaxSlots);
  std::copy_n(slots.begin(), usedSlots_, slots_.begin());
  const bool known = currentSlot >= 0 && currentSlot < model_.slots;
  currentSlot_ = known ? static_cast<std::size_t>(currentSlot) : 0;
  tools_ = fingersByTools > 0 ? 1U << fingersByTools : 0;
}

void ContactReader::clear() noexcept {
  slots_.fill(RawContact());
  usedSlots_ = 0;
  tools_ = 0;
  frame_.clear();
  described_ = RawContact();
  describedHasPosition_ = false;
}

}  // namespace velotap
