#include "settings/window/practice_object.hpp"

#include <utility>

#include "settings/window/values.hpp"

namespace velotap {
namespace {

constexpr const char* kReadiness = "readiness";
constexpr const char* kGestures = "gestures";
constexpr const char* kTuning = "tuning";

const char* toneOf(GesturePractice::Outcome outcome) {
  switch (outcome) {
    case GesturePractice::Outcome::middle:
      return "good";
    case GesturePractice::Outcome::other:
      return "warning";
    case GesturePractice::Outcome::none:
      break;
  }
  return "neutral";
}

QVariantList countLines(const GesturePractice& practice, const PracticeView& view) {
  QVariantList lines;
  if (practice.middleClicks() > 0) {
    lines.append(
        fields({{"text", view.middleCount}, {"symbol", "checkmark.circle"}, {"tone", "good"}}));
  }
  if (practice.otherClicks() > 0) {
    lines.append(
        fields({{"text", view.otherCount}, {"symbol", "cursorarrow.click"}, {"tone", "neutral"}}));
  }
  return lines;
}

QVariantMap link(const char* id, const std::string& title, const char* symbol) {
  return fields({{"id", id}, {"title", title}, {"symbol", symbol}});
}

QVariantList links(const PracticeView& view) {
  return {link(kReadiness, view.openReadiness, "gearshape"),
          link(kGestures, view.openGestures, "hand.tap"),
          link(kTuning, view.openTuning, "slider.horizontal.3")};
}

}  // namespace

PracticeObject::PracticeObject(PracticeEffects effects, QObject* parent)
    : PaneObject(parent), effects_(std::move(effects)) {
  PracticeObject::refresh();
}

void PracticeObject::refresh() {
  const PracticeView view = practice_.view(effects_.texts());
  setState(fields({{"title", view.title},
                   {"instructions", view.instructions},
                   {"steps", view.steps},
                   {"safety", view.safety},
                   {"symbol", view.symbol},
                   {"outcomeSymbol", view.outcomeSymbol},
                   {"outcome", view.outcome},
                   {"outcomeNote", view.help},
                   {"tone", toneOf(practice_.last())},
                   {"counts", countLines(practice_, view)},
                   {"again", view.tryAgain},
                   {"canTryAgain", view.canTryAgain},
                   {"links", links(view)},
                   {"done", view.done}}));
}

void PracticeObject::open(const QString& place) {
  if (place == QLatin1String(kReadiness)) effects_.showGeneral();
  if (place == QLatin1String(kGestures)) effects_.showGestures();
  if (place == QLatin1String(kTuning)) effects_.showTuning();
}

void PracticeObject::press(int button) {
  practice_.mouseDown(button);
  refresh();
}

void PracticeObject::release(int button) {
  practice_.mouseUp(button);
  refresh();
}

void PracticeObject::reset() {
  practice_.reset();
  refresh();
}

void PracticeObject::place(const SurfaceFacts& facts) {
  if (!tracking_) tracking_ = std::make_unique<PracticeTracking>(effects_.target);
  const QRectF& seen = facts.visible;
  tracking_->refreshTarget({.windowIsKey = facts.windowIsActive,
                            .windowIsVisible = facts.windowIsVisible,
                            .windowIsMiniaturised = facts.windowIsMinimized,
                            .windowIgnoresMouse = facts.windowIgnoresMouse,
                            .windowIsOccluded = facts.windowIsCovered,
                            .surfaceIsHidden = facts.isHidden,
                            .hasScreen = facts.hasScreen,
                            .visibleRectangle = {seen.x(), seen.y(), seen.width(), seen.height()}});
}

void PracticeObject::leave() {
  tracking_.reset();
}

}  // namespace velotap
