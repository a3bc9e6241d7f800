// The practice place as QML sees it: what arrived, and where the rules let gestures act.
#pragma once

#include <functional>
#include <memory>

#include "settings/gesture_practice.hpp"
#include "settings/views/bridge/practice_surface.hpp"
#include "settings/window/pane_object.hpp"

namespace velotap {

/// What the practice reaches. The target outlives it.
struct PracticeEffects {
  PracticeTarget& target;
  std::function<Texts()> texts;
  std::function<void()> showGeneral;
  std::function<void()> showGestures;
  std::function<void()> showTuning;
};

class PracticeObject : public PaneObject {
  Q_OBJECT

 public:
  explicit PracticeObject(PracticeEffects effects, QObject* parent = nullptr);

  void refresh() override;

  Q_INVOKABLE void press(int button);
  Q_INVOKABLE void release(int button);
  Q_INVOKABLE void reset();
  Q_INVOKABLE void place(const velotap::SurfaceFacts& facts);
  Q_INVOKABLE void leave();
  /// "readiness", "gestures" or "tuning".
  Q_INVOKABLE void open(const QString& place);

 private:
  PracticeEffects effects_;
  GesturePractice practice_;
  std::unique_ptr<PracticeTracking> tracking_;
};

}  // namespace velotap
