#include "settings/window/practice_object.hpp"

#include <utility>

#include "settings/window/values.hpp"

namespace velotap {
namespace {

constexpr int kMiddle = 2;

QVariantList countLines(const PracticeCounts& counts, const Texts& texts) {
  QVariantList lines;
  const auto line = [&lines, &texts](const char* key, int count, const char* symbol,
                                     const char* tone) {
    if (count == 0) return;
    lines.append(fields({{"text", texts(key, {texts.format().wholeNumber(count)})},
                         {"symbol", symbol},
                         {"tone", tone}}));
  };
  line("design.practice.middle", counts.middle, "checkmark.circle", "good");
  line("design.practice.other", counts.other, "cursorarrow.click", "neutral");
  return lines;
}

struct Outcome {
  std::string text;
  std::string note;
  const char* tone = "neutral";
};

Outcome outcomeOf(const PracticeCounts& counts, const Texts& texts) {
  switch (counts.last) {
    case PracticeCounts::Last::none:
      return {.text = {}, .note = texts("design.practice.help")};
    case PracticeCounts::Last::middle:
      return {.text = texts("Middle click received"), .note = {}, .tone = "good"};
    case PracticeCounts::Last::other:
      break;
  }
  return {.text = texts("design.practice.other", {texts.format().wholeNumber(counts.other)}),
          .note = texts("design.practice.other.help"),
          .tone = "warning"};
}

}  // namespace

PracticeCounts counted(PracticeCounts counts, int button) noexcept {
  if (button == kMiddle) {
    ++counts.middle;
    counts.last = PracticeCounts::Last::middle;
  } else {
    ++counts.other;
    counts.last = PracticeCounts::Last::other;
  }
  return counts;
}

PracticeObject::PracticeObject(PracticeEffects effects, QObject* parent)
    : PaneObject(parent), effects_(std::move(effects)) {
  refresh();
}

PracticeObject::~PracticeObject() {
  publish(std::nullopt);
}

void PracticeObject::refresh() {
  const Texts texts = effects_.texts();
  const Outcome outcome = outcomeOf(counts_, texts);
  const bool received = counts_.last == PracticeCounts::Last::middle;
  setState(fields({{"title", texts("Try a middle click")},
                   {"instructions", texts("gesture.practice.instructions")},
                   {"steps", texts("design.practice.steps")},
                   {"safety", texts("gesture.practice.safety")},
                   {"symbol", down_      ? "cursorarrow.click"
                              : received ? "checkmark.circle"
                                         : "cursorarrow"},
                   {"down", down_},
                   {"outcome", outcome.text},
                   {"outcomeNote", outcome.note},
                   {"tone", outcome.tone},
                   {"counts", countLines(counts_, texts)},
                   {"again", texts("Try Again")},
                   {"openReadiness", texts("design.open.readiness")},
                   {"openGestures", texts("Open Gestures")},
                   {"openTuning", texts("design.open.tuning")},
                   {"done", texts("Done")}}));
}

void PracticeObject::press(int button) {
  counts_ = counted(counts_, button);
  down_ = true;
  refresh();
}

void PracticeObject::release() {
  down_ = false;
  refresh();
}

void PracticeObject::reset() {
  counts_ = {};
  down_ = false;
  refresh();
}

void PracticeObject::place(int id, bool present, double x, double y, double width, double height) {
  if (present) {
    owner_ = id;
    publish(Rect{x, y, width, height});
  } else if (owner_ == id) {
    owner_ = 0;
    publish(std::nullopt);
  }
}

// Surfaces tell more often than they move.
void PracticeObject::publish(std::optional<Rect> target) {
  if (target == target_) return;
  target_ = target;
  effects_.setTarget(target);
}

void PracticeObject::openReadiness() {
  effects_.showGeneral();
}

void PracticeObject::openGestures() {
  effects_.showGestures();
}

void PracticeObject::openTuning() {
  effects_.showTuning();
}

}  // namespace velotap
