#include "adapters/linux/evdev/surface_model.hpp"

#include <algorithm>
#include <array>

namespace velotap {
namespace {

constexpr std::int32_t kMagicMouseFamily = 112;
constexpr std::int32_t kOtherTrackpadFamily = 136;

constexpr std::uint16_t kAppleUsb = 0x05AC;
constexpr std::uint16_t kAppleBluetooth = 0x004C;

struct KnownDevice {
  std::uint16_t vendor;
  std::uint16_t product;
  std::int32_t familyId;
};

// Described for people in docs/devices.md.
constexpr std::array kKnownDevices = {
    KnownDevice{kAppleUsb, 0x030D, kMagicMouseFamily},        // Magic Mouse
    KnownDevice{kAppleBluetooth, 0x0269, kMagicMouseFamily},  // Magic Mouse 2
    KnownDevice{kAppleUsb, 0x0269, kMagicMouseFamily},
    KnownDevice{kAppleBluetooth, 0x0323, kMagicMouseFamily},  // Magic Mouse USB-C
    KnownDevice{kAppleUsb, 0x0323, kMagicMouseFamily},
    KnownDevice{kAppleUsb, 0x030E, 128},        // Magic Trackpad
    KnownDevice{kAppleBluetooth, 0x0265, 129},  // Magic Trackpad 2
    KnownDevice{kAppleUsb, 0x0265, 129},
    KnownDevice{kAppleBluetooth, 0x0324, 130},  // Magic Trackpad USB-C
    KnownDevice{kAppleUsb, 0x0324, 130},
};

// The kernel's driver gives the mouse 26 units/mm across and 70 along, which would make it 91 mm
// wide and 52 mm long. These fit its real 57 by 114 mm less the rim.
constexpr double kMagicMouseUnitsX = 45.8;
constexpr double kMagicMouseUnitsY = 40.1;

// For a surface that does not tell its resolution.
constexpr double kAssumedWidthMm = 100;
constexpr double kAssumedHeightMm = 60;

// The Apple drivers report contact ellipses in these units; a fingertip at rest measures 240 to 650
// on a trackpad. Its contacts beyond 900 are palms. A mouse is touched more lightly, by fingers
// that lie on it.
constexpr double kPadFingertip = 400;
constexpr double kPadPalm = 900;
constexpr double kMouseFingertip = 200;
constexpr double kMousePalm = 700;
constexpr double kMinorToMajor = 0.75;

// Elsewhere nobody says how large a finger is, only how large a contact can be.
constexpr double kFingertipOfRange = 0.3;
constexpr double kPalmOfRange = 0.8;

const AxisInfo* axis(const EvdevDevice& device, unsigned code) {
  const auto& info = device.absoluteAxes[code];
  return info ? &*info : nullptr;
}

std::int32_t knownFamily(const EvdevDevice& device) {
  const auto found = std::find_if(kKnownDevices.begin(), kKnownDevices.end(), [&](const auto& k) {
    return k.vendor == device.vendor && k.product == device.product;
  });
  return found != kKnownDevices.end() ? found->familyId : 0;
}

// A surface that moves a pointer and knows nothing of finger tools is a mouse with a touch surface.
bool looksLikeMouse(const EvdevDevice& device) {
  return device.relativeAxes[REL_X] && !device.keys[BTN_TOOL_FINGER];
}

std::int32_t family(const EvdevDevice& device) {
  if (const std::int32_t known = knownFamily(device); known != 0) return known;
  return looksLikeMouse(device) ? kMagicMouseFamily : kOtherTrackpadFamily;
}

// Buses that end inside the case, and the USB trackpads of Apple's own notebooks.
bool isBuiltIn(const EvdevDevice& device) {
  switch (device.bus) {
    case BUS_I2C:
    case BUS_I8042:
    case BUS_RMI:
    case BUS_HOST:
    case BUS_SPI:
      return true;
    default:
      return device.bus == BUS_USB && device.vendor == kAppleUsb && knownFamily(device) == 0;
  }
}

void measureSurface(const EvdevDevice& device, SurfaceModel& model) {
  const auto measure = [&](unsigned code, double assumedMm, double& low, double& range,
                           double& unitsPerMm) {
    const AxisInfo* info = axis(device, code);
    if (info == nullptr) return;
    low = info->minimum;
    range = std::max(1.0, static_cast<double>(info->maximum) - info->minimum);
    unitsPerMm = info->resolution > 0 ? info->resolution : range / assumedMm;
  };
  measure(ABS_MT_POSITION_X, kAssumedWidthMm, model.minX, model.width, model.unitsPerMmX);
  measure(ABS_MT_POSITION_Y, kAssumedHeightMm, model.minY, model.height, model.unitsPerMmY);
  if (model.familyId == kMagicMouseFamily && knownFamily(device) != 0) {
    model.unitsPerMmX = kMagicMouseUnitsX;
    model.unitsPerMmY = kMagicMouseUnitsY;
  }
}

void measureFingers(const EvdevDevice& device, SurfaceModel& model) {
  const AxisInfo* major = axis(device, ABS_MT_TOUCH_MAJOR);
  if (major == nullptr || major->maximum <= 0) return;
  if (knownFamily(device) != 0) {
    const bool mouse = model.familyId == kMagicMouseFamily;
    model.fingertipMajor = mouse ? kMouseFingertip : kPadFingertip;
    model.palmMajor = mouse ? kMousePalm : kPadPalm;
  } else {
    model.fingertipMajor = kFingertipOfRange * major->maximum;
    model.palmMajor = kPalmOfRange * major->maximum;
  }
  if (axis(device, ABS_MT_TOUCH_MINOR) != nullptr) {
    model.fingertipMinor = kMinorToMajor * model.fingertipMajor;
  }
}

}  // namespace

MTPoint SurfaceModel::normalised(std::int32_t x, std::int32_t y) const noexcept {
  return {static_cast<float>((x - minX) / width), static_cast<float>((minY + height - y) / height)};
}

MTPoint SurfaceModel::millimetres(std::int32_t x, std::int32_t y) const noexcept {
  return {static_cast<float>((x - minX) / unitsPerMmX),
          static_cast<float>((minY + height - y) / unitsPerMmY)};
}

SurfaceModel surfaceModel(const EvdevDevice& device) {
  SurfaceModel model;
  model.familyId = family(device);
  model.builtIn = isBuiltIn(device);
  const AxisInfo* slot = axis(device, ABS_MT_SLOT);
  model.protocol = slot != nullptr ? ContactProtocol::slots : ContactProtocol::anonymous;
  // A device may claim any number; nobody has this many fingers.
  model.slots = slot != nullptr ? std::clamp(slot->maximum, 0, 63) + 1 : 0;
  model.countsWithTools = device.keys[BTN_TOOL_DOUBLETAP];
  measureSurface(device, model);
  measureFingers(device, model);
  return model;
}

}  // namespace velotap
