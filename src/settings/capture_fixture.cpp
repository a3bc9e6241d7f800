// The fictional person whose settings a capture shows, and the account of what was captured.

#include <array>
#include <chrono>
#include <cstdio>

#include "config/settings_keys.hpp"
#include "settings/preferences_tabs.hpp"
#include "settings/settings_capture.hpp"

namespace velotap {
namespace {

constexpr int kSchemaVersion = 1;

std::string quoted(std::string_view text) {
  std::string result = "\"";
  for (const char c : text) {
    if (c == '"' || c == '\\') {
      result += '\\';
      result += c;
    } else if (static_cast<unsigned char>(c) < 0x20) {
      std::array<char, 8> escape{};
      std::snprintf(escape.data(), escape.size(), "\\u%04x", static_cast<unsigned>(c));
      result += escape.data();
    } else {
      result += c;
    }
  }
  return result + "\"";
}

std::string textMember(std::string_view key, std::string_view text) {
  return "  " + quoted(key) + ": " + quoted(text) + ",\n";
}

std::string flagMember(std::string_view key, bool value) {
  return "  " + quoted(key) + (value ? ": true,\n" : ": false,\n");
}

std::string imageText(const ManifestImage& entry) {
  const CaptureShot& shot = entry.shot;
  const std::string_view scroll = shot.scroll == CaptureScroll::bottom ? "bottom" : "top";
  return "    {\"scene\": " + quoted(captureSceneName(shot.scene)) +
         ", \"layout\": " + quoted(shot.layoutName()) + ", \"path\": " + quoted(shot.fileName()) +
         ", \"scrollPosition\": " + quoted(scroll) +
         ", \"width\": " + std::to_string(entry.image.pixelWidth) +
         ", \"height\": " + std::to_string(entry.image.pixelHeight) + "}";
}

TapActivity tap(int id, int minutesAgo, DeviceClass deviceClass, double duration, double drift,
                TapActivity::Outcome outcome) {
  // 2 January 2024, 10:42:00 universal time.
  const auto end = std::chrono::system_clock::time_point(std::chrono::seconds(1'704'192'120));
  return {.id = id,
          .date = end - std::chrono::minutes(minutesAgo),
          .deviceClass = deviceClass,
          .fingers = 3,
          .duration = duration,
          .drift = drift,
          .maxDuration = 0.3,
          .maxDrift = 0.05,
          .outcome = outcome};
}

constexpr double kLongAgo = 3600;  // seconds

Finger finger(std::int32_t id, MTPoint millimetres) {
  return {.id = id,
          .pos = {millimetres.x / 100, millimetres.y / 100},
          .mmPos = millimetres,
          .velocity = {},
          .zTotal = 1,
          .zDensity = 1};
}

// Fingers side by side of which the first strays by a part of the surface.
TouchTrace straying(int fingers, float drift) {
  TouchTrace trace;
  for (const float strayed : {0.0F, drift}) {
    Fingers frame;
    for (int i = 0; i < fingers; ++i) {
      frame.push(finger(i, {static_cast<float>(20 * (i + 1)), i == 0 ? strayed * 100 : 0.0F}));
    }
    trace.add(frame);
  }
  return trace;
}

// Two fingers that move apart by so many millimetres, evenly to both sides.
TouchTrace spreading(float millimetres) {
  constexpr int kFrames = 30;
  TouchTrace trace;
  for (int i = 0; i <= kFrames; ++i) {
    const float half = 10 + millimetres / 2 * static_cast<float>(i) / kFrames;
    Fingers frame;
    frame.push(finger(1, {50 - half, 50}));
    frame.push(finger(2, {50 + half, 50}));
    trace.add(frame);
  }
  return trace;
}

}  // namespace

ValueMap captureSettings() {
  ValueMap settings = {
      {std::string(keys::kMouseClick1Center), true}, {std::string(keys::kMouseClick2), false},
      {std::string(keys::kMouseClick3), true},       {std::string(keys::kMouseTap3), true},
      {std::string(keys::kPadClick3), true},         {std::string(keys::kPadTap3), true},
      {std::string(keys::kPadTap4), false},          {std::string(keys::kMousePinchZoom), true},
      {std::string(keys::kMouseRotate), false},      {std::string(keys::kMouseSwipe3Nav), true},
      {std::string(keys::kMaxTapDurationMs), 300},   {std::string(keys::kMaxTapDrift), 0.05},
      {std::string(keys::kPinchSensitivity), 1.0},   {std::string(keys::kCenterMinX), 0.35},
      {std::string(keys::kCenterMaxX), 0.65}};
  settings.emplace(keys::kIgnoredApps, Value::strings({"com.apple.Safari", "com.apple.TextEdit"}));
  return settings;
}

std::vector<TapActivity> captureTaps() {
  using Outcome = TapActivity::Outcome;
  return {tap(4, 0, DeviceClass::trackpad, 0.128, 0.011, Outcome::click),
          tap(3, 1, DeviceClass::trackpad, 0.341, 0.014, Outcome::tooLong),
          tap(2, 2, DeviceClass::magicMouse, 0.164, 0.0612, Outcome::moved),
          tap(1, 4, DeviceClass::magicMouse, 0.142, 0.018, Outcome::click)};
}

void recordCaptureTouches(TapActivityLog& log) {
  const std::vector<TapActivity> taps = captureTaps();
  for (auto tap = taps.rbegin(); tap != taps.rend(); ++tap) {
    const double end = std::chrono::duration<double>(tap->date.time_since_epoch()).count();
    log.record(*tap, straying(tap->fingers, static_cast<float>(tap->drift)), end, kLongAgo);
  }
  for (const float spread : {6.0F, 14.0F, 22.0F, 9.0F}) log.keepPinch(spreading(spread));
  for (const float x : {0.42F, 0.51F, 0.66F, 0.48F, 0.57F}) log.keepClick({x, 0.7F});
}

std::string captureManifest(const CaptureEnvironment& environment, bool dark,
                            std::span<const ManifestImage> images) {
  std::string text = "{\n  \"schemaVersion\": " + std::to_string(kSchemaVersion) + ",\n";
  text += textMember("kind", "functionalQA");
  text += flagMember("fictionalData", true);
  text += textMember("executable", environment.executable);
  text += textMember("version", environment.version);
  text += textMember("build", environment.build);
  text += textMember("language", environment.language);
  text += textMember("appearance", dark ? "dark" : "light");
  text += textMember("locale", environment.locale);
  text += textMember("timeZone", environment.timeZone);
  text += flagMember("largeTextSupported", environment.largeTextSupported);
  text += "  \"images\": [";
  for (std::size_t i = 0; i < images.size(); ++i) {
    text += (i == 0 ? "\n" : ",\n") + imageText(images[i]);
  }
  return text + (images.empty() ? "]\n}\n" : "\n  ]\n}\n");
}

}  // namespace velotap
