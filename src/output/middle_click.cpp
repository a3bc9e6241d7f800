#include "output/middle_click.hpp"

#include "base/log_text.hpp"

namespace velotap {
namespace {

Point pointerOrOrigin(EventStream& events) {
  return events.pointerLocation().value_or(Point{});
}

}  // namespace

std::optional<std::array<MouseEvent, 2>> middleEvents(EventStream& events, Point location) {
  auto press = events.makeMouse(MouseEventType::otherDown, kMiddleButton, location);
  if (!press) return std::nullopt;
  auto release = events.makeMouse(MouseEventType::otherUp, kMiddleButton, location);
  if (!release) return std::nullopt;
  return std::array{*std::move(press), *std::move(release)};
}

void postMiddle(EventStream& events, DiagnosticLog& log) {
  const Point location = pointerOrOrigin(events);
  const auto pair = middleEvents(events, location);
  if (!pair) return;
  for (const MouseEvent& event : *pair) events.post(event);
  if (log.enabled()) log.line("posted middle click at " + pointText(location));
}

void postMiddleRelease(EventStream& events, DiagnosticLog& log) {
  const Point location = pointerOrOrigin(events);
  if (const auto release = events.makeMouse(MouseEventType::otherUp, kMiddleButton, location)) {
    events.post(*release);
  }
  if (log.enabled()) log.line("cancelled held middle click at " + pointText(location));
}

}  // namespace velotap
