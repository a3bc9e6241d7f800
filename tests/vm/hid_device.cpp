#include "hid_device.hpp"

#include <linux/input.h>

#include <algorithm>
#include <array>

namespace velotap::vm {
namespace {

constexpr HidRange kSigned12{-2048, 2047};
constexpr HidRange kSigned13{-4096, 4095};
// y is sent negated, so its range is the mirror image.
constexpr HidRange kNegated12{-2047, 2048};
constexpr HidRange kNegated13{-4095, 4096};
constexpr HidRange kByte{0, 255};
constexpr HidRange kSixBits{0, 63};

// The trackpad's fingertip is that of real Bluetooth frames of a Magic Trackpad 2. Of the mouse no
// frames are at hand; the same fingertip in its coarser units is an assumption.
constexpr std::array<HidModel, 5> kModels{{
    {.kind = HidKind::magicMouse1,
     .option = "magic-mouse-1",
     .product = "Magic Mouse",
     .bus = BUS_BLUETOOTH,
     .vendor = 0x05ac,
     .productId = 0x030d,
     .multitouch = true,
     .x = kSigned12,
     .y = kNegated12,
     .size = kSixBits,
     .orientation = {-32, 31},
     .finger = {.major = 80, .minor = 64, .size = 25}},
    {.kind = HidKind::magicMouse2,
     .option = "magic-mouse-2",
     .product = "Magic Mouse 2",
     .bus = BUS_BLUETOOTH,
     .vendor = 0x004c,
     .productId = 0x0269,
     .multitouch = true,
     .x = kSigned12,
     .y = kNegated12,
     .size = kSixBits,
     .orientation = {-32, 31},
     .finger = {.major = 80, .minor = 64, .size = 25}},
    {.kind = HidKind::magicTrackpad1,
     .option = "magic-trackpad-1",
     .product = "Magic Trackpad",
     .bus = BUS_BLUETOOTH,
     .vendor = 0x05ac,
     .productId = 0x030e,
     .multitouch = true,
     .x = kSigned13,
     .y = kNegated13,
     .size = kSixBits,
     .orientation = {-32, 31},
     .finger = {.major = 105, .minor = 78, .size = 26}},
    {.kind = HidKind::magicTrackpad2,
     .option = "magic-trackpad-2",
     .product = "Magic Trackpad 2",
     .bus = BUS_BLUETOOTH,
     .vendor = 0x004c,
     .productId = 0x0265,
     .multitouch = true,
     .x = kSigned13,
     .y = kNegated13,
     .size = kByte,
     .orientation = {-4, 3},
     .finger = {.major = 105, .minor = 78, .size = 26, .pressure = 10}},
    {.kind = HidKind::plainMouse,
     .option = "plain-mouse",
     .product = "Plain Mouse",
     .bus = BUS_USB,
     .vendor = 0x1209,
     .productId = 0x0001,
     .multitouch = false,
     .x = {},
     .y = {},
     .size = {},
     .orientation = {},
     .finger = {}},
}};

// A mouse with two buttons and relative motion under report 0x12, a battery and a vendor page: the
// descriptor of a Magic Mouse 2 over Bluetooth.
constexpr std::array<std::uint8_t, 135> kMagicMouse2Descriptor{
    0x05, 0x01, 0x09, 0x02, 0xa1, 0x01, 0x85, 0x12, 0x05, 0x09, 0x19, 0x01, 0x29, 0x02, 0x15,
    0x00, 0x25, 0x01, 0x95, 0x02, 0x75, 0x01, 0x81, 0x02, 0x95, 0x01, 0x75, 0x06, 0x81, 0x03,
    0x05, 0x01, 0x09, 0x01, 0xa1, 0x00, 0x16, 0x01, 0xf8, 0x26, 0xff, 0x07, 0x36, 0x01, 0xfb,
    0x46, 0xff, 0x04, 0x65, 0x13, 0x55, 0x0d, 0x09, 0x30, 0x09, 0x31, 0x75, 0x10, 0x95, 0x02,
    0x81, 0x06, 0x75, 0x08, 0x95, 0x02, 0x81, 0x01, 0xc0, 0x06, 0x02, 0xff, 0x09, 0x55, 0x85,
    0x55, 0x15, 0x00, 0x26, 0xff, 0x00, 0x75, 0x08, 0x95, 0x40, 0xb1, 0xa2, 0xc0, 0x06, 0x00,
    0xff, 0x09, 0x14, 0xa1, 0x01, 0x85, 0x90, 0x05, 0x84, 0x75, 0x01, 0x95, 0x03, 0x15, 0x00,
    0x25, 0x01, 0x09, 0x61, 0x05, 0x85, 0x09, 0x44, 0x09, 0x46, 0x81, 0x02, 0x95, 0x05, 0x81,
    0x01, 0x75, 0x08, 0x95, 0x01, 0x15, 0x00, 0x26, 0xff, 0x00, 0x09, 0x65, 0x81, 0x02, 0xc0};

// The mouse collection alone, under the report that the other devices send before they are switched
// to multitouch. Their touch reports are not described: the driver registers them itself.
constexpr std::array<std::uint8_t, 70> kBareDescriptor{
    0x05, 0x01, 0x09, 0x02, 0xa1, 0x01, 0x85, 0x10, 0x05, 0x09, 0x19, 0x01, 0x29, 0x02,
    0x15, 0x00, 0x25, 0x01, 0x95, 0x02, 0x75, 0x01, 0x81, 0x02, 0x95, 0x01, 0x75, 0x06,
    0x81, 0x03, 0x05, 0x01, 0x09, 0x01, 0xa1, 0x00, 0x16, 0x01, 0xf8, 0x26, 0xff, 0x07,
    0x36, 0x01, 0xfb, 0x46, 0xff, 0x04, 0x65, 0x13, 0x55, 0x0d, 0x09, 0x30, 0x09, 0x31,
    0x75, 0x10, 0x95, 0x02, 0x81, 0x06, 0x75, 0x08, 0x95, 0x02, 0x81, 0x01, 0xc0, 0xc0};

// Three buttons, two axes and a wheel, a byte each, without report numbers.
constexpr std::array<std::uint8_t, 52> kPlainMouseDescriptor{
    0x05, 0x01, 0x09, 0x02, 0xa1, 0x01, 0x09, 0x01, 0xa1, 0x00, 0x05, 0x09, 0x19,
    0x01, 0x29, 0x03, 0x15, 0x00, 0x25, 0x01, 0x95, 0x03, 0x75, 0x01, 0x81, 0x02,
    0x95, 0x01, 0x75, 0x05, 0x81, 0x01, 0x05, 0x01, 0x09, 0x30, 0x09, 0x31, 0x09,
    0x38, 0x15, 0x81, 0x25, 0x7f, 0x75, 0x08, 0x95, 0x03, 0x81, 0x06, 0xc0, 0xc0};

constexpr std::uint8_t byteOf(int value, int shift = 0) noexcept {
  return static_cast<std::uint8_t>((static_cast<std::uint32_t>(value) >> shift) & 0xffU);
}

/// `bits` of `value` from `from` on, moved to bit `to` of a byte.
constexpr std::uint8_t bitsOf(int value, int from, int bits, int to) noexcept {
  const std::uint32_t mask = (1U << bits) - 1U;
  return static_cast<std::uint8_t>(((static_cast<std::uint32_t>(value) >> from) & mask) << to);
}

constexpr std::uint8_t join(std::uint8_t low, std::uint8_t high) noexcept {
  return static_cast<std::uint8_t>(low | high);
}

bool down(const HidContact& contact) noexcept {
  return contact.state != TouchState::none;
}

void appendMouseContact(std::vector<std::uint8_t>& out, const HidContact& contact) {
  const int y = -contact.y;
  out.insert(out.end(),
             {byteOf(contact.x), join(bitsOf(contact.x, 8, 4, 0), bitsOf(y, 0, 4, 4)), byteOf(y, 4),
              byteOf(contact.major), byteOf(contact.minor),
              join(bitsOf(contact.size, 0, 6, 0), bitsOf(contact.id, 0, 2, 6)),
              join(bitsOf(contact.id, 2, 2, 0), bitsOf(contact.orientation + 32, 0, 6, 2)),
              static_cast<std::uint8_t>(contact.state)});
}

void appendTrackpad1Contact(std::vector<std::uint8_t>& out, const HidContact& contact) {
  const int y = -contact.y;
  out.insert(out.end(),
             {byteOf(contact.x), join(bitsOf(contact.x, 8, 5, 0), bitsOf(y, 0, 3, 5)), byteOf(y, 3),
              bitsOf(y, 11, 2, 0), byteOf(contact.major), byteOf(contact.minor),
              join(bitsOf(contact.size, 0, 6, 0), bitsOf(contact.id, 0, 2, 6)),
              join(bitsOf(contact.id, 2, 2, 0), bitsOf(contact.orientation + 32, 0, 6, 2)),
              static_cast<std::uint8_t>(contact.state)});
}

void appendTrackpad2Contact(std::vector<std::uint8_t>& out, const HidContact& contact) {
  const int y = -contact.y;
  const std::uint8_t state = down(contact) ? 0x80 : 0x00;
  out.insert(out.end(),
             {byteOf(contact.x), join(bitsOf(contact.x, 8, 5, 0), bitsOf(y, 0, 3, 5)), byteOf(y, 3),
              join(bitsOf(y, 11, 2, 0), state), byteOf(contact.major), byteOf(contact.minor),
              byteOf(contact.size), byteOf(contact.pressure),
              join(bitsOf(contact.id, 0, 4, 0), bitsOf(contact.orientation + 4, 0, 3, 5))});
}

std::vector<std::uint8_t> mouse1Header(const HidFrame& frame, int stamp) {
  return {0x29,
          byteOf(frame.dx),
          byteOf(frame.dy),
          join(join(bitsOf(frame.buttons, 0, 2, 0), bitsOf(frame.dx, 8, 2, 2)),
               join(bitsOf(frame.dy, 8, 2, 4), bitsOf(stamp, 0, 2, 6))),
          byteOf(stamp, 2),
          byteOf(stamp, 10)};
}

std::vector<std::uint8_t> mouse2Header(const HidFrame& frame, int stamp) {
  return {0x12,
          bitsOf(frame.buttons, 0, 2, 0),
          byteOf(frame.dx),
          byteOf(frame.dx, 8),
          byteOf(frame.dy),
          byteOf(frame.dy, 8),
          0,
          0,
          0,
          0,
          0,
          byteOf(stamp),
          byteOf(stamp, 8),
          byteOf(stamp, 16)};
}

std::vector<std::uint8_t> trackpadHeader(std::uint8_t report, const HidFrame& frame, int stamp) {
  return {report, join(bitsOf(frame.buttons, 0, 1, 0), bitsOf(stamp, 0, 2, 6)), byteOf(stamp, 2),
          byteOf(stamp, 10)};
}

std::string outside(std::string_view what, int value, const HidRange& range) {
  std::string text(what);
  text += ' ';
  text += std::to_string(value);
  text += " is outside ";
  text += std::to_string(range.minimum);
  text += "..";
  text += std::to_string(range.maximum);
  return text;
}

}  // namespace

std::span<const HidModel> hidModels() noexcept {
  return kModels;
}

const HidModel& hidModel(HidKind kind) noexcept {
  return *std::find_if(kModels.begin(), kModels.end(),
                       [kind](const HidModel& model) { return model.kind == kind; });
}

std::optional<HidKind> hidKindFromOption(std::string_view option) noexcept {
  for (const HidModel& model : kModels) {
    if (model.option == option) return model.kind;
  }
  return std::nullopt;
}

std::vector<std::uint8_t> hidDescriptor(HidKind kind) {
  switch (kind) {
    case HidKind::magicMouse2:
      return {kMagicMouse2Descriptor.begin(), kMagicMouse2Descriptor.end()};
    case HidKind::magicMouse1:
    case HidKind::magicTrackpad1:
    case HidKind::magicTrackpad2:
      return {kBareDescriptor.begin(), kBareDescriptor.end()};
    case HidKind::plainMouse:
      break;
  }
  return {kPlainMouseDescriptor.begin(), kPlainMouseDescriptor.end()};
}

std::string contactProblem(const HidModel& model, const HidContact& contact) {
  struct Field {
    std::string_view name;
    int value;
    HidRange range;
  };
  if (!model.multitouch) return std::string(model.option) + " has no touch surface";
  const std::array<Field, 8> fields{{{"contact", contact.id, {0, kContactIds - 1}},
                                     {"x", contact.x, model.x},
                                     {"y", contact.y, model.y},
                                     {"major", contact.major, kByte},
                                     {"minor", contact.minor, kByte},
                                     {"size", contact.size, model.size},
                                     {"pressure", contact.pressure, kByte},
                                     {"orientation", contact.orientation, model.orientation}}};
  for (const Field& field : fields) {
    if (!field.range.holds(field.value)) return outside(field.name, field.value, field.range);
  }
  return {};
}

std::vector<std::uint8_t> encodeReport(HidKind kind, const HidFrame& frame) {
  const int stamp = static_cast<int>(frame.timestamp & 0xffffffU);
  std::vector<std::uint8_t> out;
  switch (kind) {
    case HidKind::magicMouse1:
      out = mouse1Header(frame, stamp);
      for (const HidContact& contact : frame.contacts) appendMouseContact(out, contact);
      break;
    case HidKind::magicMouse2:
      out = mouse2Header(frame, stamp);
      for (const HidContact& contact : frame.contacts) appendMouseContact(out, contact);
      break;
    case HidKind::magicTrackpad1:
      out = trackpadHeader(0x28, frame, stamp);
      for (const HidContact& contact : frame.contacts) appendTrackpad1Contact(out, contact);
      break;
    case HidKind::magicTrackpad2:
      out = trackpadHeader(0x31, frame, stamp);
      for (const HidContact& contact : frame.contacts) appendTrackpad2Contact(out, contact);
      break;
    case HidKind::plainMouse:
      out = {bitsOf(frame.buttons, 0, 3, 0), byteOf(frame.dx), byteOf(frame.dy),
             byteOf(frame.wheel)};
      break;
  }
  return out;
}

}  // namespace velotap::vm
