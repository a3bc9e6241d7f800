// The Gestures pane as QML sees it.
#pragma once

#include <functional>

#include "settings/gestures_pane.hpp"
#include "settings/window/pane_object.hpp"

namespace velotap {

/// What the pane reaches beside its settings.
struct GesturesEffects {
  std::function<Texts()> texts;
  std::function<GestureFacts()> facts;
  std::function<void()> openAccessibilitySettings;
  std::function<void()> startListeners;
  std::function<void()> showGeneral;
  GesturesPane::DidEnable didEnable;
};

class GesturesObject final : public PaneObject {
  Q_OBJECT
  Q_PROPERTY(velotap::RowModel* middle READ middle CONSTANT)
  Q_PROPERTY(velotap::RowModel* more READ more CONSTANT)

 public:
  /// Both outlive the pane.
  GesturesObject(DefaultsStore& defaults, GestureDeviceSelection& selection,
                 GesturesEffects effects, QObject* parent = nullptr);

  void refresh() override;
  [[nodiscard]] RowModel* middle() { return &middle_; }
  [[nodiscard]] RowModel* more() { return &more_; }

  Q_INVOKABLE void setDevice(const QString& device);
  /// "automatic", "native" or "post".
  Q_INVOKABLE void setTrackpadMode(const QString& mode);
  Q_INVOKABLE void setQuery(const QString& query);
  /// "all", "middle" or "more".
  Q_INVOKABLE void setSection(const QString& section);
  Q_INVOKABLE void setEnabledOnly(bool on);
  Q_INVOKABLE void setModifiedOnly(bool on);
  Q_INVOKABLE void resetFilters();
  Q_INVOKABLE void setTrigger(const QString& key, bool on);
  /// The first trigger of the list; empty when there is none.
  Q_INVOKABLE [[nodiscard]] QString firstTrigger() const;
  Q_INVOKABLE void explain(const QString& key);
  Q_INVOKABLE void resetSelected();
  Q_INVOKABLE void actOnNote(const QString& key);
  Q_INVOKABLE void disableAll();
  Q_INVOKABLE void restoreDefaults();
  Q_INVOKABLE void undo();

 private:
  void filter(const std::function<void(GestureFilter&)>& change);
  [[nodiscard]] QVariantMap filterState(const GesturesView& view, const Texts& texts) const;
  void showRows(const GesturesView& view);

  GesturesEffects effects_;
  GesturesPane pane_;
  GesturesView view_;
  RowModel middle_;
  RowModel more_;
};

}  // namespace velotap
