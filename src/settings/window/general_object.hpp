// The General pane and the settings search, as QML sees them.
#pragma once

#include <functional>
#include <optional>
#include <string>

#include "settings/general_pane.hpp"
#include "settings/preferences_tabs.hpp"
#include "settings/settings_search_index.hpp"
#include "settings/window/pane_object.hpp"

namespace velotap {

/// What the pane reaches.
struct GeneralEffects {
  std::function<Texts()> texts;
  std::function<GeneralFacts()> facts;
  std::function<void(PreferencesTab)> showPane;
  std::function<void(GestureDevice)> chooseDevice;
  std::function<void(bool)> setEnabled;
  /// The master switch changed, here or anywhere else.
  std::function<void()> synchronizeEnabled;
  std::function<void()> setUpAccessibility;
  std::function<void()> startListeners;
  std::function<void()> toggleLaunchAtLogin;
  std::function<void()> openLoginItems;
  std::function<void(bool)> setLeftClickToggles;
  std::function<void(bool)> setHideIcon;
  std::function<void(bool)> setAutomaticChecks;
  std::function<void()> checkForUpdates;
};

class GeneralObject final : public PaneObject {
  Q_OBJECT
  Q_PROPERTY(velotap::RowModel* results READ results CONSTANT)
  Q_PROPERTY(velotap::RowModel* readiness READ readiness CONSTANT)
  Q_PROPERTY(velotap::RowModel* notes READ notes CONSTANT)
  Q_PROPERTY(velotap::RowModel* devices READ devices CONSTANT)
  Q_PROPERTY(velotap::RowModel* desktop READ desktop CONSTANT)

 public:
  explicit GeneralObject(GeneralEffects effects, QObject* parent = nullptr);

  void refresh() override;
  [[nodiscard]] RowModel* results() { return &results_; }
  [[nodiscard]] RowModel* readiness() { return &readiness_; }
  [[nodiscard]] RowModel* notes() { return &notes_; }
  [[nodiscard]] RowModel* devices() { return &devices_; }
  [[nodiscard]] RowModel* desktop() { return &desktop_; }

  Q_INVOKABLE void setQuery(const QString& query);
  Q_INVOKABLE void openResult(const QString& id);
  /// What the status card offers.
  Q_INVOKABLE void act();
  /// What the readiness row with this number offers.
  Q_INVOKABLE void resolve(int row);
  Q_INVOKABLE void setEnabled(bool on);
  Q_INVOKABLE void openDevice(const QString& device);
  Q_INVOKABLE void openGestures();
  Q_INVOKABLE void openTuning();
  Q_INVOKABLE void setLaunchAtLogin(bool on);
  Q_INVOKABLE void openLoginItems();
  Q_INVOKABLE void setLeftClickToggles(bool on);
  Q_INVOKABLE void setHideIcon(bool on);
  Q_INVOKABLE void setAutomaticUpdates(bool on);
  Q_INVOKABLE void checkForUpdates();

 private:
  void perform(GeneralAction action);
  void showRows();
  [[nodiscard]] GeneralFacts facts();

  GeneralEffects effects_;
  std::optional<bool> enabled_;
  std::string query_;
  GeneralView view_;
  SettingsSearchView search_;
  RowModel results_;
  RowModel readiness_;
  RowModel notes_;
  RowModel devices_;
  RowModel desktop_;
};

}  // namespace velotap
