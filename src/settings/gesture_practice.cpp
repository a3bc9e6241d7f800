#include "settings/gesture_practice.hpp"

#include <atomic>

#include "config/settings_keys.hpp"
#include "platform/event_stream.hpp"
#include "settings/gesture_explanation.hpp"

namespace velotap {
namespace {

PracticeSurfaceId nextSurface() {
  static std::atomic<PracticeSurfaceId> last{0};
  return ++last;
}

// Buttons without a bit of their own share the last one.
unsigned bitOf(int button) {
  return 1U << static_cast<unsigned>(button < 0 || button > 30 ? 31 : button);
}

int fingersOf(std::string_view key) {
  if (key.find('1') != std::string_view::npos) return 1;
  if (key.find('2') != std::string_view::npos) return 2;
  if (key.find('4') != std::string_view::npos) return 4;
  return 3;
}

}  // namespace

std::optional<Rect> practiceRectangle(const PracticeSurfaceFacts& facts) noexcept {
  const bool reachable = facts.windowIsKey && facts.windowIsVisible &&
                         !facts.windowIsMiniaturised && !facts.windowIgnoresMouse &&
                         !facts.windowIsOccluded && !facts.surfaceIsHidden && facts.hasScreen;
  if (!reachable) return std::nullopt;
  return facts.visibleRectangle;
}

PracticeTracking::PracticeTracking(PracticeTarget& target) : target_(target), id_(nextSurface()) {}

PracticeTracking::~PracticeTracking() {
  stop();
}

void PracticeTracking::refreshTarget(const PracticeSurfaceFacts& facts) {
  target_.update(id_, practiceRectangle(facts));
}

void PracticeTracking::stop() {
  target_.update(id_, std::nullopt);
}

void GesturePractice::mouseDown(int button) {
  pressed_ |= bitOf(button);
  if (button == kMiddleButton) {
    ++middle_;
    last_ = Outcome::middle;
  } else {
    ++other_;
    last_ = Outcome::other;
  }
}

void GesturePractice::mouseUp(int button) {
  pressed_ &= ~bitOf(button);
}

PracticeView GesturePractice::view(const Texts& texts) const {
  PracticeView view;
  view.title = texts("Try a middle click");
  view.instructions = texts("gesture.practice.instructions");
  view.steps = texts("design.practice.steps");
  view.safety = texts("gesture.practice.safety");
  view.symbol = pressed_ != 0 ? "cursorarrow.click" : "cursorarrow";
  const std::string other = texts("design.practice.other", {texts.format().wholeNumber(other_)});
  switch (last_) {
    case Outcome::none:
      view.outcome = texts("design.practice.help");
      break;
    case Outcome::middle:
      view.outcome = texts("Middle click received");
      view.outcomeSymbol = "checkmark.circle";
      break;
    case Outcome::other:
      view.outcome = other;
      view.outcomeSymbol = "info.circle";
      view.help = texts("design.practice.other.help");
      break;
  }
  if (middle_ > 0) {
    view.middleCount = texts("design.practice.middle", {texts.format().wholeNumber(middle_)});
  }
  if (other_ > 0) view.otherCount = other;
  view.tryAgain = texts("Try Again");
  view.canTryAgain = last_ != Outcome::none;
  view.openReadiness = texts("design.open.readiness");
  view.openGestures = texts("Open Gestures");
  view.openTuning = texts("design.open.tuning");
  view.done = texts("Done");
  return view;
}

GesturePreview gesturePreview(std::string_view triggerKey) noexcept {
  using Kind = GesturePreview::Kind;
  GesturePreview preview{.kind = Kind::tap,
                         .fingers = fingersOf(triggerKey),
                         .inCenter = triggerKey == keys::kMouseClick1Center,
                         .device = gestureDeviceOfKey(triggerKey)};
  if (triggerKey == keys::kMousePinchZoom || triggerKey == keys::kMouseRotate) {
    preview.kind = triggerKey == keys::kMouseRotate ? Kind::rotate : Kind::pinch;
    preview.fingers = 2;
  } else if (triggerKey == keys::kMouseSwipe3Nav) {
    preview.kind = Kind::swipe;
  } else if (triggerKey.find("Click") != std::string_view::npos) {
    preview.kind = Kind::click;
  }
  return preview;
}

}  // namespace velotap
