// The Tuning pane as QML sees it.
#pragma once

#include <functional>

#include "settings/tuning_pane.hpp"
#include "settings/window/pane_object.hpp"

namespace velotap {

/// What the pane works on and reaches. The services outlive it.
struct TuningEffects {
  DefaultsStore& defaults;
  TapActivityLog& log;
  NotificationCenter& notifications;
  std::function<Texts()> texts;
  TuningPane::Announce announce;
  std::function<void()> showGestures;
};

class TuningObject : public PaneObject {
  Q_OBJECT
  Q_PROPERTY(velotap::RowModel* tapSliders READ tapSliders CONSTANT)
  Q_PROPERTY(velotap::RowModel* pinchSliders READ pinchSliders CONSTANT)
  Q_PROPERTY(velotap::RowModel* centerSliders READ centerSliders CONSTANT)
  Q_PROPERTY(velotap::RowModel* newestTap READ newestTap CONSTANT)
  Q_PROPERTY(velotap::RowModel* otherTaps READ otherTaps CONSTANT)

 public:
  explicit TuningObject(TuningEffects effects, QObject* parent = nullptr);

  void refresh() override;
  [[nodiscard]] RowModel* tapSliders() { return &tapSliders_; }
  [[nodiscard]] RowModel* pinchSliders() { return &pinchSliders_; }
  [[nodiscard]] RowModel* centerSliders() { return &centerSliders_; }
  [[nodiscard]] RowModel* newestTap() { return &newestTap_; }
  [[nodiscard]] RowModel* otherTaps() { return &otherTaps_; }

  Q_INVOKABLE void applyPreset(const QString& preset);
  Q_INVOKABLE void applyCenterPreset(const QString& preset);
  Q_INVOKABLE void restoreDefaults();
  Q_INVOKABLE void undo();
  Q_INVOKABLE void move(int slider, double value);
  Q_INVOKABLE void step(int slider, int steps);
  Q_INVOKABLE void resetValue(int slider);
  /// The slider of the edge that a press there takes hold of; places are parts of the bar's width.
  Q_INVOKABLE [[nodiscard]] int edgeAt(double place) const;
  Q_INVOKABLE void dragEdge(int slider, double place);
  Q_INVOKABLE void openGestures();
  Q_INVOKABLE void turnOnPinch();
  Q_INVOKABLE void setPaused(bool paused);
  /// The picker "device", "outcome", "order" or "reason", and one of its values.
  Q_INVOKABLE void setFilter(const QString& picker, const QString& value);
  Q_INVOKABLE void resetFilters();
  Q_INVOKABLE void clearTaps();
  Q_INVOKABLE void applySuggestion(int tap);

 private:
  void showRows();
  [[nodiscard]] QVariantMap tapsState(const Texts& texts) const;
  [[nodiscard]] QVariantList pickers() const;

  TuningEffects effects_;
  TuningPane pane_;
  TuningView view_;
  RowModel tapSliders_;
  RowModel pinchSliders_;
  RowModel centerSliders_;
  RowModel newestTap_;
  RowModel otherTaps_;
};

}  // namespace velotap
