// The practice place as QML sees it: counts what arrives, and lets the rules know where it is.
#pragma once

#include <functional>
#include <optional>

#include "base/point.hpp"
#include "settings/window/pane_object.hpp"

namespace velotap {

/// What the practice reaches.
struct PracticeEffects {
  std::function<Texts()> texts;
  /// Where a gesture may act although a window of ours is in front; nothing: nowhere.
  std::function<void(std::optional<Rect>)> setTarget;
  std::function<void()> showGeneral;
  std::function<void()> showGestures;
  std::function<void()> showTuning;
};

/// What has arrived since the last reset.
struct PracticeCounts {
  int middle = 0;
  int other = 0;
  enum class Last { none, middle, other } last = Last::none;
};

/// Button 2 is the middle one.
[[nodiscard]] PracticeCounts counted(PracticeCounts counts, int button) noexcept;

class PracticeObject : public PaneObject {
  Q_OBJECT

 public:
  explicit PracticeObject(PracticeEffects effects, QObject* parent = nullptr);
  ~PracticeObject() override;

  void refresh() override;

  Q_INVOKABLE void press(int button);
  Q_INVOKABLE void release();
  Q_INVOKABLE void reset();
  /// The surface `id` is at this place on the screen, or nowhere. One that goes away does not take
  /// the target from another that came since.
  Q_INVOKABLE void place(int id, bool present, double x, double y, double width, double height);
  Q_INVOKABLE void openReadiness();
  Q_INVOKABLE void openGestures();
  Q_INVOKABLE void openTuning();

 private:
  void publish(std::optional<Rect> target);

  PracticeEffects effects_;
  PracticeCounts counts_;
  bool down_ = false;
  int owner_ = 0;
  std::optional<Rect> target_;
};

}  // namespace velotap
