#include "hid_hand.hpp"

#include <algorithm>
#include <cstddef>

namespace velotap::vm {
namespace {

int& field(HidContact& contact, ContactKey key) noexcept {
  switch (key) {
    case ContactKey::major:
      return contact.major;
    case ContactKey::minor:
      return contact.minor;
    case ContactKey::size:
      return contact.size;
    case ContactKey::pressure:
      return contact.pressure;
    case ContactKey::orientation:
      break;
  }
  return contact.orientation;
}

}  // namespace

bool HidHand::touching(const Finger& finger) noexcept {
  return finger.presence == Presence::landing || finger.presence == Presence::down;
}

bool HidHand::isDown(int id) const noexcept {
  return id >= 0 && id < kContactIds && touching(fingers_[static_cast<std::size_t>(id)]);
}

std::string HidHand::apply(const Statement& statement) {
  const auto& numbers = statement.numbers;
  switch (statement.verb) {
    case Verb::touch:
      return touch(statement);
    case Verb::move:
      return move(numbers[0], numbers[1], numbers[2]);
    case Verb::lift:
      return lift(numbers[0]);
    case Verb::button:
      buttons_ = numbers[0];
      return {};
    case Verb::motion:
      dx_ = numbers[0];
      dy_ = numbers[1];
      return {};
    case Verb::wheel:
      wheel_ = numbers[0];
      return {};
    case Verb::tremor:
      tremor_ = numbers[0];
      return {};
    case Verb::ready:
    case Verb::frame:
    case Verb::repeat:
    case Verb::cadence:
    case Verb::wait:
    case Verb::say:
    case Verb::mark:
    case Verb::destroy:
    case Verb::hold:
      break;
  }
  return "not a statement about the hand";
}

std::string HidHand::touch(const Statement& statement) {
  const int id = statement.numbers[0];
  HidContact contact = isDown(id) ? fingers_[static_cast<std::size_t>(id)].contact : model_.finger;
  contact.id = id;
  contact.x = statement.numbers[1];
  contact.y = statement.numbers[2];
  for (const auto& [key, value] : statement.contact) field(contact, key) = value;
  if (std::string problem = contactProblem(model_, contact); !problem.empty()) return problem;
  Finger& finger = fingers_[static_cast<std::size_t>(id)];
  // A finger whose lift has not been sent yet: landing again would hide it.
  if (finger.presence == Presence::lifting) return "send a frame between lift and touch";
  const auto present = std::count_if(fingers_.begin(), fingers_.end(), [](const Finger& each) {
    return each.presence != Presence::absent;
  });
  if (finger.presence == Presence::absent) {
    if (present >= static_cast<std::ptrdiff_t>(kMaxContacts)) return "too many contacts";
    finger.presence = Presence::landing;
  }
  finger.contact = contact;
  return {};
}

std::string HidHand::move(int id, int dx, int dy) {
  if (!isDown(id)) return "contact " + std::to_string(id) + " is not down";
  HidContact moved = fingers_[static_cast<std::size_t>(id)].contact;
  moved.x += dx;
  moved.y += dy;
  if (std::string problem = contactProblem(model_, moved); !problem.empty()) return problem;
  fingers_[static_cast<std::size_t>(id)].contact = moved;
  return {};
}

std::string HidHand::lift(int id) {
  if (!isDown(id)) return "contact " + std::to_string(id) + " is not down";
  Finger& finger = fingers_[static_cast<std::size_t>(id)];
  // A finger that no report has shown leaves without a trace.
  finger.presence = finger.presence == Presence::landing ? Presence::absent : Presence::lifting;
  return {};
}

std::string HidHand::moveAll(int dx, int dy) {
  auto moved = fingers_;
  for (Finger& finger : moved) {
    if (!touching(finger)) continue;
    finger.contact.x += dx;
    finger.contact.y += dy;
    if (std::string problem = contactProblem(model_, finger.contact); !problem.empty()) {
      return problem;
    }
  }
  fingers_ = moved;
  return {};
}

int HidHand::stray() noexcept {
  if (tremor_ == 0) return 0;
  random_ = random_ * 1664525U + 1013904223U;
  return static_cast<int>((random_ >> 16) % static_cast<std::uint32_t>(2 * tremor_ + 1)) - tremor_;
}

HidContact HidHand::reported(const Finger& finger) noexcept {
  HidContact contact = finger.contact;
  if (finger.presence == Presence::lifting) {
    // A lifted finger's last record keeps its place and has no size.
    contact.major = contact.minor = contact.size = contact.pressure = 0;
    contact.state = TouchState::none;
    return contact;
  }
  contact.x = std::clamp(contact.x + stray(), model_.x.minimum, model_.x.maximum);
  contact.y = std::clamp(contact.y + stray(), model_.y.minimum, model_.y.maximum);
  contact.state = finger.presence == Presence::landing ? TouchState::start : TouchState::drag;
  return contact;
}

HidFrame HidHand::takeFrame(std::uint32_t timestamp) {
  HidFrame frame{.buttons = buttons_,
                 .dx = dx_,
                 .dy = dy_,
                 .wheel = wheel_,
                 .timestamp = timestamp,
                 .contacts = {}};
  dx_ = dy_ = wheel_ = 0;
  for (Finger& finger : fingers_) {
    if (finger.presence == Presence::absent) continue;
    frame.contacts.push_back(reported(finger));
    finger.presence = finger.presence == Presence::lifting ? Presence::absent : Presence::down;
  }
  return frame;
}

}  // namespace velotap::vm
