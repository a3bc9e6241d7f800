// The Apps pane as QML sees it.
#pragma once

#include <functional>
#include <memory>
#include <optional>
#include <string>
#include <vector>

#include "platform/applications.hpp"
#include "settings/apps_pane.hpp"
#include "settings/running_apps_chooser.hpp"
#include "settings/window/pane_object.hpp"

namespace velotap {

/// What the pane works on and reaches. The services outlive it.
struct AppsEffects {
  Config& config;
  Applications& applications;
  AppsPane::Options options;
  std::string ownBundleID;
  std::function<Texts()> texts;
  std::function<void(const std::string& text)> announce;
  /// Lets the person choose among installed applications; their identifiers.
  std::function<std::vector<std::string>(const std::string& message)> choose;
  std::function<bool(const std::string& text)> copy;
  std::function<void(const std::string& location)> reveal;
  /// Name or path of the application's icon.
  std::function<std::string(const std::string& bundleID)> icon;
};

class AppsObject : public PaneObject {
  Q_OBJECT
  Q_PROPERTY(velotap::RowModel* ignored READ ignored CONSTANT)
  Q_PROPERTY(velotap::RowModel* zoom READ zoom CONSTANT)
  Q_PROPERTY(velotap::RowModel* suggestions READ suggestions CONSTANT)
  Q_PROPERTY(velotap::RowModel* running READ running CONSTANT)
  /// Of the sheet with the running applications, apart so that a letter typed there leaves the pane
  /// below alone.
  Q_PROPERTY(QVariantMap runningState READ runningState NOTIFY runningStateChanged)

 public:
  explicit AppsObject(AppsEffects effects, QObject* parent = nullptr);

  void refresh() override;
  [[nodiscard]] RowModel* ignored() { return &ignored_; }
  [[nodiscard]] RowModel* zoom() { return &zoom_; }
  [[nodiscard]] RowModel* suggestions() { return &suggestions_; }
  [[nodiscard]] RowModel* running() { return &running_; }
  [[nodiscard]] const QVariantMap& runningState() const { return runningState_; }

  Q_INVOKABLE void setQuery(const QString& query);
  /// The picker "type", "availability" or "sort", and one of its values.
  Q_INVOKABLE void setFilter(const QString& picker, const QString& value);
  Q_INVOKABLE void setOverriddenOnly(bool on);
  Q_INVOKABLE void setShowsIdentifiers(bool on);
  Q_INVOKABLE void resetFilters();
  /// Lists are "ignored" and "zoom".
  Q_INVOKABLE void chooseApplications(const QString& list);
  Q_INVOKABLE void remove(const QString& list, const QString& bundleID);
  Q_INVOKABLE void removeVisible();
  Q_INVOKABLE void undo();
  Q_INVOKABLE void resolve(const QString& bundleID);
  Q_INVOKABLE void reveal(const QString& bundleID);
  Q_INVOKABLE void copyIdentifier(const QString& bundleID);
  Q_INVOKABLE void addSuggestion(const QString& bundleID);

  Q_INVOKABLE void openRunning(const QString& list);
  /// The same with everything that is installed; the other calls go on with what was opened last.
  Q_INVOKABLE void openInstalled(const QString& list);
  /// For what is not listed: the system's panel, for the list that the sheet was opened for.
  Q_INVOKABLE void chooseFile();
  Q_INVOKABLE void setRunningQuery(const QString& query);
  Q_INVOKABLE void toggleRunning(const QString& bundleID);
  Q_INVOKABLE void selectVisible();
  Q_INVOKABLE void clearSelection();
  Q_INVOKABLE void refreshRunning();
  Q_INVOKABLE void addRunning();

 signals:
  void runningStateChanged();

 private:
  void show();
  void showRunning();
  void filter(const std::function<void(AppRuleFilter&)>& change);
  void showRows(const AppsView& view);
  [[nodiscard]] QVariantMap filterState(const AppsView& view) const;
  [[nodiscard]] QVariantMap makeRunningState(const Texts& texts);
  [[nodiscard]] std::vector<AppEntry> candidates(AppsOffered offered) const;
  void openChooser(const QString& list, AppsOffered offered);
  void choose(AppRuleList list);

  AppsEffects effects_;
  AppsPane pane_;
  AppRuleList runningFor_ = AppRuleList::ignored;
  std::string runningQuery_;
  RunningAppsChooser chooser_;
  RowModel ignored_;
  RowModel zoom_;
  RowModel suggestions_;
  RowModel running_;
  QVariantMap runningState_;
};

}  // namespace velotap
