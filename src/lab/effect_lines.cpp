#include "lab/effect_lines.hpp"

#include "input/device_class.hpp"
#include "lab/json_line.hpp"

namespace velotap::lab {
namespace {

std::string seconds(VirtualTime t) {
  const auto microseconds = std::chrono::round<std::chrono::microseconds>(t).count();
  std::string decimals = std::to_string(microseconds % 1'000'000);
  decimals.insert(0, 6 - decimals.size(), '0');
  return std::to_string(microseconds / 1'000'000) + "." + decimals;
}

JsonLine lineAt(VirtualTime t, std::string_view kind) {
  JsonLine line;
  line.raw("t", seconds(t)).text("kind", kind);
  return line;
}

std::string_view name(MouseEventType type) {
  switch (type) {
    case MouseEventType::leftDown:
      return "leftMouseDown";
    case MouseEventType::leftUp:
      return "leftMouseUp";
    case MouseEventType::rightDown:
      return "rightMouseDown";
    case MouseEventType::rightUp:
      return "rightMouseUp";
    case MouseEventType::leftDragged:
      return "leftMouseDragged";
    case MouseEventType::rightDragged:
      return "rightMouseDragged";
    case MouseEventType::otherDown:
      return "otherMouseDown";
    case MouseEventType::otherUp:
      return "otherMouseUp";
    case MouseEventType::otherDragged:
      return "otherMouseDragged";
  }
  return "";
}

std::string_view name(GesturePhase phase) {
  switch (phase) {
    case GesturePhase::began:
      return "began";
    case GesturePhase::changed:
      return "changed";
    case GesturePhase::ended:
      return "ended";
    case GesturePhase::cancelled:
      return "cancelled";
  }
  return "";
}

std::string_view name(TapActivity::Outcome outcome) {
  switch (outcome) {
    case TapActivity::Outcome::click:
      return "click";
    case TapActivity::Outcome::tooLong:
      return "tooLong";
    case TapActivity::Outcome::moved:
      return "moved";
    case TapActivity::Outcome::tooSoon:
      return "tooSoon";
  }
  return "";
}

struct PostedLine {
  VirtualTime t;

  std::string operator()(const MouseEvent& event) const {
    return lineAt(t, "mouse")
        .text("event", name(event.type))
        .integer("button", event.button)
        .real("x", event.location.x)
        .real("y", event.location.y)
        .str();
  }
  std::string operator()(const KeyEvent& event) const {
    return lineAt(t, "key")
        .integer("code", event.keyCode)
        .boolean("down", event.down)
        .integer("flags", static_cast<std::int64_t>(event.flags))
        .str();
  }
  std::string operator()(const GestureEvent& event) const {
    return lineAt(t, "gesture")
        .text("gesture", event.kind == GestureKind::magnify ? "magnify" : "rotate")
        .text("phase", name(event.phase))
        .real("value", event.value)
        .real("x", event.location.x)
        .real("y", event.location.y)
        .str();
  }
};

}  // namespace

std::string postedLine(VirtualTime t, const PostedEvent& event) {
  return std::visit(PostedLine{t}, event);
}

std::string clickLine(VirtualTime t, const SystemMouseEvent& in,
                      const std::optional<SystemMouseEvent>& out) {
  return lineAt(t, "click")
      .text("in", name(in.type))
      .integer("number", in.number)
      .text("out", out ? name(out->type) : "dropped")
      .str();
}

std::string activityLine(VirtualTime t, const TapActivity& activity) {
  return lineAt(t, "activity")
      .integer("id", activity.id)
      .text("device", deviceClassName(activity.deviceClass))
      .integer("fingers", activity.fingers)
      .real("duration", activity.duration)
      .real("drift", activity.drift)
      .real("maxDuration", activity.maxDuration)
      .real("maxDrift", activity.maxDrift)
      .text("outcome", name(activity.outcome))
      .str();
}

std::string listenersLine(VirtualTime t, bool running) {
  return lineAt(t, "listeners").boolean("running", running).str();
}

std::string notificationLine(VirtualTime t, std::string_view notification) {
  return lineAt(t, "notification").text("name", notification).str();
}

std::string logLine(VirtualTime t, std::string_view line) {
  return lineAt(t, "log").text("line", line).str();
}

std::string scenarioLine(std::string_view file) {
  return JsonLine().text("scenario", file).str();
}

}  // namespace velotap::lab
