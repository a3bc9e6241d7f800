#include "adapters/linux/gesture/gesture_output.hpp"

#include <algorithm>
#include <cstddef>
#include <string>
#include <system_error>
#include <utility>

namespace velotap {
namespace {

std::optional<double> earlier(std::optional<double> a, std::optional<double> b) {
  if (!a) return b;
  if (!b) return a;
  return std::min(*a, *b);
}

}  // namespace

GestureOutput::GestureOutput(PadDevice& pad, GestureWays ways, DiagnosticLog& log)
    : pad_(pad), ways_(std::move(ways)), log_(log) {}

GestureOutput::~GestureOutput() {
  writeWheel(wheel_.release());
  if (const auto frame = player_.abandon()) writePad(*frame);
  pad_.destroy();
}

void GestureOutput::prepare(double now) {
  // Where the desktop ignores touchpads there is nothing to make ready, and nothing to say yet.
  if (ways_.padUsable()) (void)createPad(now);
}

void GestureOutput::handle(const GestureNote& note, double now) {
  if (note.phase == GesturePhase::began) {
    const Way way = chooseWay(now);
    if (way != way_) cancel(now);
    way_ = way;
    chosen_ = true;
  }
  if (!chosen_) return;
  switch (way_) {
    case Way::pad:
      player_.handle(note.kind, note.phase, note.value, now);
      break;
    case Way::wheel:
      if (note.kind == GestureKind::rotate) {
        tellOnce(toldNoRotation_, "rotation is not possible without the virtual touchpad");
      }
      writeWheel(wheel_.handle(note.kind, note.phase, note.value, now));
      break;
  }
}

void GestureOutput::cancel(double now) {
  player_.handle(GestureKind::magnify, GesturePhase::cancelled, 0, now);
  player_.handle(GestureKind::rotate, GesturePhase::cancelled, 0, now);
  writeWheel(wheel_.release());
}

void GestureOutput::turn(double now) {
  writeWheel(wheel_.expire(now));
  // Asked even without a gesture: what woke us must be read, or it wakes us for ever.
  if (!padReady_) padReady_ = pad_.ready(now);
  if (!padReady_) return;
  if (const auto frame = player_.step(now)) writePad(*frame);
}

std::optional<double> GestureOutput::deadline() const {
  return earlier(wheel_.deadline(), padReady_ ? player_.deadline() : pad_.wakeAt());
}

GestureOutput::Way GestureOutput::chooseWay(double now) {
  if (!ways_.padUsable()) {
    tellOnce(toldUnusable_, "the desktop ignores touchpads at present: zooming with the wheel");
    return Way::wheel;
  }
  return createPad(now) ? Way::pad : Way::wheel;
}

bool GestureOutput::createPad(double now) {
  const int error = pad_.create(now);
  if (error == 0) return true;
  if (error != toldError_ && log_.enabled()) {
    log_.line("no virtual touchpad (" + std::generic_category().message(error) +
              "): zooming with the wheel");
  }
  toldError_ = error;
  return false;
}

void GestureOutput::writePad(const PadFrame& frame) {
  const auto events = encoder_.encode(frame);
  if (events.empty() || pad_.write(events)) return;
  pad_.destroy();
  padReady_ = false;
  chosen_ = false;
  (void)player_.abandon();
  encoder_ = {};
}

void GestureOutput::writeWheel(const WheelEvents& events) {
  const input_event* begin = events.begin();
  for (const input_event* event = begin; event != events.end(); ++event) {
    if (event->type != EV_SYN) continue;
    // A refused frame is not repeated; Control's release is written all the same.
    if (ways_.writeCombined) {
      (void)ways_.writeCombined({begin, static_cast<std::size_t>(event + 1 - begin)});
    }
    begin = event + 1;
  }
}

void GestureOutput::tellOnce(bool& told, const char* line) {
  if (!told && log_.enabled()) log_.line(line);
  told = true;
}

}  // namespace velotap
