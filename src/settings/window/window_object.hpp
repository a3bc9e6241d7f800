// The frame of the settings window as QML sees it: its tabs, and which is chosen.
#pragma once

#include <functional>

#include "settings/preferences_tabs.hpp"
#include "settings/window/pane_object.hpp"

namespace velotap {

class WindowObject final : public PaneObject {
  Q_OBJECT
  Q_PROPERTY(velotap::RowModel* tabs READ tabs CONSTANT)

 public:
  /// What the keys that every window has lead to.
  struct Commands {
    std::function<void()> close;
    std::function<void()> minimise;
    std::function<void()> quit;
  };
  WindowObject(std::function<Texts()> texts, Commands commands, QObject* parent = nullptr);

  void refresh() override;
  [[nodiscard]] RowModel* tabs() { return &tabs_; }
  [[nodiscard]] PreferencesTab tab() const { return tab_; }
  void choose(PreferencesTab tab);

  /// A number that is no tab's changes nothing.
  Q_INVOKABLE void setTab(int tab);
  Q_INVOKABLE void close() { commands_.close(); }
  Q_INVOKABLE void minimise() { commands_.minimise(); }
  Q_INVOKABLE void quit() { commands_.quit(); }

 signals:
  void tabChanged();

 private:
  std::function<Texts()> texts_;
  Commands commands_;
  PreferencesTab tab_ = PreferencesTab::general;
  RowModel tabs_;
};

/// All panes of one window. QML reaches them by these names.
class PanesObject : public QObject {
  Q_OBJECT
  Q_PROPERTY(QObject* window MEMBER window CONSTANT)
  Q_PROPERTY(QObject* general MEMBER general CONSTANT)
  Q_PROPERTY(QObject* gestures MEMBER gestures CONSTANT)
  Q_PROPERTY(QObject* tuning MEMBER tuning CONSTANT)
  Q_PROPERTY(QObject* apps MEMBER apps CONSTANT)
  Q_PROPERTY(QObject* about MEMBER about CONSTANT)
  Q_PROPERTY(QObject* practice MEMBER practice CONSTANT)

 public:
  using QObject::QObject;

  QObject* window = nullptr;
  QObject* general = nullptr;
  QObject* gestures = nullptr;
  QObject* tuning = nullptr;
  QObject* apps = nullptr;
  QObject* about = nullptr;
  QObject* practice = nullptr;

  /// All of them anew: the language, the region or the settings changed.
  void refresh();
};

}  // namespace velotap
