// The one settings window: made when it is asked for, gone when it is closed.
//
// What draws it is large, so it exists only while the window does; and so every opening starts with
// fresh panes. Its place and size are remembered in a file of state, which is no setting. Main
// thread. The view context outlives the window.
#pragma once

#include <QString>
#include <QTimer>
#include <functional>
#include <memory>
#include <vector>

#include "base/observer_list.hpp"
#include "settings/preferences_tabs.hpp"
#include "settings/views/bridge/view_context.hpp"
#include "settings/window/view.hpp"
#include "settings/window/window_object.hpp"

namespace velotap {

class SettingsWindow {
 public:
  struct Effects {
    std::function<Texts()> texts;
    /// Makes the panes other than the window's own, as children of what they are handed.
    std::function<void(PanesObject& panes)> makePanes;
    /// Subscribes to whatever changes what the panes show.
    std::function<std::vector<Observation>(std::function<void()> changed)> observe;
    QString frameFile;  ///< remembers the place and size; empty: nothing does
    /// The window and all that belonged to it are gone.
    std::function<void()> closed = nullptr;
    /// Ends the program; for systems on which no menu does.
    std::function<void()> quit = nullptr;
  };

  SettingsWindow(ViewContext& context, Effects effects);
  ~SettingsWindow();

  /// Opens the window, or brings the open one to the front, with this pane.
  void show(PreferencesTab tab);
  /// The same with the practice place open above the pane of gestures.
  void showPractice();
  void close();
  [[nodiscard]] bool isOpen() const { return view_ != nullptr; }
  [[nodiscard]] QQuickView* view() { return view_.get(); }
  [[nodiscard]] PanesObject* panes() { return panes_.get(); }
  void refreshLocalizedLabels();
  /// Whether it looks each second for what nobody tells: only while a pane that shows it is seen.
  [[nodiscard]] bool isFollowing() const { return everySecond_.isActive(); }

 private:
  void build();
  void drop();
  void followLook();
  void retitle();
  bool restoreFrame();
  void rememberFrame() const;
  void centre();
  void followFacts();
  [[nodiscard]] PaneObject* paneOfFacts() const;

  ViewContext& context_;
  Effects effects_;
  std::unique_ptr<PanesObject> panes_;
  WindowObject* window_ = nullptr;
  std::unique_ptr<QQuickView> view_;
  std::vector<Observation> observations_;
  QTimer everySecond_;
  QTimer onceClosed_;
};

}  // namespace velotap
