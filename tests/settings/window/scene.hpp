// The settings window with the fictional desktop, opened, changed and looked at.
//
// Main thread; see view_fixture.hpp for what it complains of and where pictures are kept.
#pragma once

#include <QImage>
#include <QQuickItem>
#include <memory>
#include <span>
#include <string>
#include <vector>

#include "settings/capture/fixture.hpp"
#include "settings/window/settings_window.hpp"
#include "view_fixture.hpp"

namespace velotap::test {

inline constexpr std::array<const char*, 5> kLanguages = {"en", "bg", "de", "es", "fr"};
inline constexpr std::array<const char*, 5> kTabs = {"general", "gestures", "tuning", "apps",
                                                     "about"};

class SceneTest;

/// Something the window can show, under a name for its picture.
struct SceneState {
  const char* name;
  PreferencesTab tab;
  void (*facts)(Fixture& fixture) = nullptr;  ///< before the window opens
  void (*act)(SceneTest& scene) = nullptr;    ///< what a person then does
  bool sheet = false;                         ///< it ends with a sheet in front of the pane
};

/// Every state worth looking at.
[[nodiscard]] std::span<const SceneState> sceneStates();

class SceneTest : public ViewTest {
 public:
  /// Opens the window with a pane in front.
  void open(const char* locale, PreferencesTab tab, QSize size);
  /// Brings about a state, with the window as tall as its pane, or of the standard height with a
  /// sheet.
  void open(const char* locale, const SceneState& state, int width);
  void awaitFrame();
  /// As tall as the pane in front.
  void fit();

  /// Whatever can be pressed and has this name to assistive programs; null without one.
  [[nodiscard]] QQuickItem* control(const QString& name) const;
  /// Presses it as a person with a keyboard would.
  void press(const QString& name);
  void key(Qt::Key key, Qt::KeyboardModifiers modifiers = Qt::NoModifier);
  /// The same by a key of the table of texts.
  void pressText(std::string_view key);

  [[nodiscard]] GeneralObject& general() const;
  [[nodiscard]] GesturesObject& gestures() const;
  [[nodiscard]] TuningObject& tuning() const;
  [[nodiscard]] AppsObject& apps() const;
  [[nodiscard]] AboutObject& about() const;
  [[nodiscard]] PracticeObject& practice() const;
  [[nodiscard]] QQuickItem* page() const;
  /// Every text that can be read, in the order of the items; and what assistive programs hear.
  [[nodiscard]] QStringList texts() const;
  void keep(const QString& name);

  std::unique_ptr<Fixture> fixture;
  std::unique_ptr<SettingsWindow> settings;
};

}  // namespace velotap::test
