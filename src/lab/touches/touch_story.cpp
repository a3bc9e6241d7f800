#include "lab/touches/touch_story.hpp"

#include <array>
#include <cmath>
#include <optional>

#include "adapters/simulated/simulated_desktop.hpp"
#include "base/log_text.hpp"
#include "control/services.hpp"

namespace velotap::lab {
namespace {

constexpr const char* kDevice = "surface";
// A recording begins with its first contact; a device is there before it is touched.
constexpr double kBeforeFirstTouch = 0.1;

std::string milliseconds(double seconds) {
  return std::to_string(std::lround(seconds * 1000)) + " ms";
}

std::string fingersText(int count) {
  constexpr std::array kWords = {"no finger",     "one finger",   "two fingers",
                                 "three fingers", "four fingers", "five fingers"};
  return count < static_cast<int>(kWords.size()) ? kWords[static_cast<std::size_t>(count)]
                                                 : std::to_string(count) + " fingers";
}

std::string eventText(const PostedEvent& event) {
  if (const auto* mouse = std::get_if<MouseEvent>(&event)) {
    return mouse->type == MouseEventType::otherDown ? "middle press" : "middle release";
  }
  if (const auto* key = std::get_if<KeyEvent>(&event)) {
    return std::string("key ") + std::to_string(key->keyCode) + (key->down ? " down" : " up");
  }
  const auto& gesture = std::get<GestureEvent>(event);
  const std::string kind = gesture.kind == GestureKind::magnify ? "magnify" : "rotate";
  switch (gesture.phase) {
    case GesturePhase::began:
      return kind + " began";
    case GesturePhase::changed:
      return kind + " " + fixedText(gesture.value, 3);
    case GesturePhase::ended:
      return kind + " ended";
    case GesturePhase::cancelled:
      return kind + " cancelled";
  }
  return kind;
}

// One touch session as an onlooker measures it, to be judged by the recogniser's own rules.
struct Onlooker {
  double start = 0;
  int maxFingers = 0;
  TapMotionTracker motion;
  bool running = false;

  void see(const Fingers& fingers, double time) {
    if (!running) *this = {.start = time, .maxFingers = 0, .motion = {}, .running = true};
    motion.update(fingers);
    maxFingers = std::max(maxFingers, static_cast<int>(fingers.size()));
  }
};

class Story {
 public:
  Story(const PlayedRecording& recording, const ValueMap& settings) : recording_(recording) {
    desktop_.preferences.store(kSettingsDomain, settings);
    desktop_.multitouch.add({.name = kDevice,
                             .family = recording.model.familyId,
                             .builtIn = recording.model.builtIn,
                             .registers = true,
                             .starts = true});
    desktop_.workspace.activate(RunningApplication{AppId::intern("com.example.editor"), "Editor"});
    services_ = std::make_unique<Services>(desktop_.platform);
    posts_ = desktop_.events.observePosts(
        [this](const PostedEvent& event) { posted_.push_back(event); });
    services_->launch();
  }

  std::vector<std::string> tell() {
    auto refusal = recording_.refusals.begin();
    for (const PlayedFrame& frame : recording_.frames) {
      const double time =
          frame.touches.empty() && frame.time == 0 ? 0 : frame.time + kBeforeFirstTouch;
      desktop_.mainQueue.runUntil(virtualTime(time));
      for (; refusal != recording_.refusals.end() && refusal->time <= frame.time; ++refusal) {
        lines_.push_back(at(refusal->time + kBeforeFirstTouch) + "contact " +
                         std::to_string(refusal->contact) + " is not a finger: " + refusal->reason);
      }
      show(frame, time);
    }
    return std::move(lines_);
  }

 private:
  static std::string at(double time) { return "  " + fixedText(time, 3) + " s  "; }

  void show(const PlayedFrame& frame, double time) {
    const Fingers fingers =
        activeFingers(frame.touches.data(), static_cast<std::ptrdiff_t>(frame.touches.size()));
    if (!fingers.empty()) onlooker_.see(fingers, time);
    desktop_.mainQueue.runElsewhere([&] {
      desktop_.multitouch.deliver(kDevice, frame.touches.data(),
                                  static_cast<std::int32_t>(frame.touches.size()));
    });
    if (fingers.empty() && onlooker_.running) finish(time);
  }

  void finish(double time) {
    const TapMeasurement tap = {.duration = time - onlooker_.start,
                                .drift = onlooker_.motion.maxDrift(),
                                .pinching = false,
                                .sinceNatural = std::numeric_limits<double>::infinity(),
                                .sinceEmulated = onlooker_.start - lastClick_};
    lines_.push_back(at(onlooker_.start) + fingersText(onlooker_.maxFingers) + ", " +
                     milliseconds(tap.duration) + ", drift " + fixedText(tap.drift, 3) + "  ->  " +
                     outcome(tap, time));
    posted_.clear();
    onlooker_.running = false;
  }

  std::string outcome(const TapMeasurement& tap, double time) {
    if (posted_.empty()) return "nothing: " + reason(tap);
    if (std::holds_alternative<MouseEvent>(posted_.front())) lastClick_ = time;
    // A gesture has many steps; its first and last tell enough.
    constexpr std::size_t kMostTold = 4;
    std::string text;
    for (std::size_t i = 0; i < posted_.size(); ++i) {
      if (posted_.size() > kMostTold && i == 1) {
        text += ", … (" + std::to_string(posted_.size() - 2) + " steps)";
      }
      if (posted_.size() > kMostTold && i >= 1 && i + 1 < posted_.size()) continue;
      text += (text.empty() ? "" : ", ") + eventText(posted_[i]);
    }
    return text;
  }

  [[nodiscard]] bool tapsWith(int fingers) const {
    const Config& config = services_->config;
    if (classifyDevice(recording_.model.familyId) == DeviceClass::magicMouse) {
      return fingers == 3 && config.isOn(Trigger::mouseTap3);
    }
    return (fingers == 3 && config.isOn(Trigger::padTap3)) ||
           (fingers == 4 && config.isOn(Trigger::padTap4));
  }

  [[nodiscard]] std::string reason(const TapMeasurement& tap) const {
    const TapLimits limits = {.duration = services_->config.maxTapDuration(),
                              .drift = services_->config.maxTapDrift()};
    if (!tapsWith(onlooker_.maxFingers)) {
      return fingersText(onlooker_.maxFingers) + (onlooker_.maxFingers == 1 ? " is" : " are") +
             " not a tap here";
    }
    switch (judgeTap(tap, limits)) {
      case TapVerdict::tooLong:
        return "held too long (limit " + milliseconds(limits.duration) + ")";
      case TapVerdict::moved:
        return "moved too much (limit " + fixedText(limits.drift, 2) + ")";
      case TapVerdict::tooSoon:
        return "too soon after the previous click";
      case TapVerdict::pinching:
      case TapVerdict::besidePhysicalClick:
      case TapVerdict::click:
        return "the application in front takes no gestures";
    }
    return "";
  }

  const PlayedRecording& recording_;
  SimulatedDesktop desktop_;
  std::unique_ptr<Services> services_;
  Observation posts_;
  std::vector<PostedEvent> posted_;
  Onlooker onlooker_;
  double lastClick_ = -std::numeric_limits<double>::infinity();
  std::vector<std::string> lines_;
};

}  // namespace

std::vector<std::string> tellTouches(const PlayedRecording& recording, const ValueMap& settings) {
  return Story(recording, settings).tell();
}

}  // namespace velotap::lab
