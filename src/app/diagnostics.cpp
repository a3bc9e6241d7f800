#include "app/diagnostics.hpp"

#include <algorithm>
#include <array>
#include <cinttypes>
#include <cstdio>
#include <cstring>
#include <mutex>
#include <string_view>
#include <vector>

namespace velotap {
namespace {

constexpr std::int32_t kMostDumped = 3;
constexpr double kDumpInterval = 1.0;

// The library's callbacks carry no context.
std::mutex calibrateLock;
DumpThrottle calibrateThrottle;
const DiagnosticsEnvironment* calibrateEnvironment = nullptr;

bool hasContacts(const MTTouch* touches, std::int32_t count) {
  return touches != nullptr && count >= 1;
}

void print(const std::string& line) {
  std::puts(line.c_str());
  std::fflush(stdout);
}

void watchCallback(MTDevice, const MTTouch* touches, std::int32_t count, double, std::int32_t) {
  if (const auto line = watchLine(touches, count)) print(*line);
}

void calibrateCallback(MTDevice, const MTTouch* touches, std::int32_t count, double, std::int32_t) {
  if (!hasContacts(touches, count)) return;
  {
    const std::lock_guard guard(calibrateLock);
    if (!calibrateThrottle.admit(calibrateEnvironment->uptime())) return;
  }
  if (const auto dump = calibrationDump(touches, count)) print(*dump);
}

bool has(int argc, const char* const* argv, std::string_view flag) {
  return std::any_of(argv, argv + argc, [flag](const char* argument) { return argument == flag; });
}

int startAll(const std::vector<MTDevice>& devices, MTFrameCallback callback,
             const DiagnosticsEnvironment& environment) {
  const auto started = std::count_if(devices.begin(), devices.end(), [&](MTDevice device) {
    return environment.multitouch.startDevice(device, callback);
  });
  if (started == 0) {
    print("ERROR: no multitouch device callback could be started");
    return 1;
  }
  environment.runMainLoop();
  return 0;
}

}  // namespace

std::optional<DiagnosticsMode> diagnosticsMode(int argc, const char* const* argv) {
  if (has(argc, argv, "--watch")) return DiagnosticsMode::watch;
  if (has(argc, argv, "--calibrate")) return DiagnosticsMode::calibrate;
  if (has(argc, argv, "--devices")) return DiagnosticsMode::devices;
  return std::nullopt;
}

std::optional<std::string> watchLine(const MTTouch* touches, std::int32_t count) {
  if (!hasContacts(touches, count)) return std::nullopt;
  const MTTouch& first = touches[0];
  std::array<char, 512> line;
  const int length = std::snprintf(
      line.data(), line.size(),
      "fingers=%" PRId32 "  touch0: stage=%" PRId32 " pos=(%.3f, %.3f) size=%.2f pressure=%.2f",
      count, first.stage, static_cast<double>(first.position.x),
      static_cast<double>(first.position.y), static_cast<double>(first.size),
      static_cast<double>(first.pressure));
  return std::string(line.data(), static_cast<std::size_t>(length));
}

std::optional<std::string> calibrationDump(const MTTouch* touches, std::int32_t count) {
  if (!hasContacts(touches, count)) return std::nullopt;
  const std::int32_t length =
      std::min(count, kMostDumped) * static_cast<std::int32_t>(sizeof(MTTouch));
  std::string dump = "\n=== frame: numTouches=" + std::to_string(count) +
                     ", assumed stride 96B, dumping " + std::to_string(length) +
                     "B ===\noffset |      int32 |      float";
  const auto* bytes = reinterpret_cast<const unsigned char*>(touches);
  for (std::int32_t offset = 0; offset < length; offset += 4) {
    std::int32_t word = 0;
    float real = 0;
    std::memcpy(&word, bytes + offset, sizeof word);
    std::memcpy(&real, bytes + offset, sizeof real);
    std::array<char, 128> row;
    std::snprintf(row.data(), row.size(), "\n%6" PRId32 " | %10" PRId32 " | %10.4f", offset, word,
                  static_cast<double>(real));
    dump += row.data();
    if (offset % static_cast<std::int32_t>(sizeof(MTTouch)) == 0) {
      dump +=
          "  <- touch[" + std::to_string(offset / static_cast<std::int32_t>(sizeof(MTTouch))) + "]";
    }
  }
  return dump;
}

bool DumpThrottle::admit(double now) noexcept {
  if (now - lastDump_ <= kDumpInterval) return false;
  lastDump_ = now;
  return true;
}

int runDiagnostics(DiagnosticsMode mode, const DiagnosticsEnvironment& environment) {
  MT& multitouch = environment.multitouch;
  if (!multitouch.isAvailable()) {
    print("ERROR: MultitouchSupport.framework unavailable");
    return 1;
  }
  const std::vector<MTDevice> devices = multitouch.deviceList();
  print("multitouch devices: " + std::to_string(devices.size()));
  for (std::size_t i = 0; i < devices.size(); ++i) {
    print("  device " + std::to_string(i) + ": " + multitouch.describe(devices[i]));
  }
  if (mode == DiagnosticsMode::devices) return 0;
  if (devices.empty()) {
    print("ERROR: no multitouch devices found");
    return 1;
  }
  if (mode == DiagnosticsMode::watch) {
    print("watching touch frames — touch a device surface, Ctrl-C to stop");
    return startAll(devices, &watchCallback, environment);
  }
  print(
      "CALIBRATION: rest two STILL fingers on the surface — one left-middle, one right-middle.\n"
      "Dumps raw frame bytes once per second. Ctrl-C to stop.");
  calibrateEnvironment = &environment;
  return startAll(devices, &calibrateCallback, environment);
}

}  // namespace velotap
