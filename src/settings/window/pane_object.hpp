// What every pane's object has in common: a state for QML, made anew when asked to.
//
// Panes decide nothing. They gather facts, let the models of the settings room answer, and hand the
// answer to the view. Everything they reach is a closure, so a pane shows fictional facts as
// readily as real ones. Main thread; made when the window opens, gone when it closes.
#pragma once

#include <QObject>
#include <QVariantMap>
#include <functional>

#include "localization/texts.hpp"
#include "settings/views/bridge/row_model.hpp"

namespace velotap {

class PaneObject : public QObject {
  Q_OBJECT
  Q_PROPERTY(QVariantMap state READ state NOTIFY stateChanged)

 public:
  using QObject::QObject;

  [[nodiscard]] const QVariantMap& state() const { return state_; }
  /// Makes the state anew and tells the view what changed.
  virtual void refresh() = 0;

 signals:
  void stateChanged();

 protected:
  void setState(const QVariantMap& state) {
    if (state == state_) return;
    state_ = state;
    emit stateChanged();
  }

 private:
  QVariantMap state_;
};

}  // namespace velotap
