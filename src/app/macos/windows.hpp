// The windows of the program on a Mac, whatever draws them.
//
// A build has one of two: Qt's, or none but the system's own alerts. Which one is the build's
// choice; the rest of the program knows this header only. Main thread.
#pragma once

#include <functional>
#include <memory>
#include <optional>
#include <string>

#include "adapters/macos/cocoa/cocoa_appearance.hpp"
#include "adapters/macos/shell/mac_panels.hpp"
#include "adapters/macos/shell/program_facts.hpp"
#include "app/application.hpp"
#include "platform/applications.hpp"

namespace velotap {

/// What windows need of the system beyond Platform and ShellPlatform. All of it outlives them.
struct WindowSurroundings {
  Applications& applications;
  MacPanels& panels;
  CocoaAppearance& appearance;
  ProgramFacts program;
  std::string stateFolder;         ///< where places and sizes are remembered
  std::function<void()> activate;  ///< brings the program to the front
};

class Windows {
 public:
  /// Does an edit command in the window that has the keyboard; false when none of these has it.
  using Editor = std::function<bool(ResponderCommand)>;

  virtual ~Windows() = default;
  /// Once, before anything below: what the windows show. The application outlives them.
  virtual void connect(Application& application) = 0;
  virtual void showSettings(SettingsPane pane) = 0;
  virtual void refreshLocalizedLabels() = 0;
  /// Empty when the system's own way to the window with the keyboard is enough.
  [[nodiscard]] virtual Editor editor() = 0;
  /// The program ends: what is remembered of windows is written.
  virtual void close() = 0;
};

/// The windows that this build has. Once, before any other use of AppKit.
[[nodiscard]] std::unique_ptr<Windows> makeWindows(int& argc, char** argv,
                                                   WindowSurroundings surroundings);

/// Paints pictures of the settings window if the arguments ask for them: the exit status. Before
/// everything else.
[[nodiscard]] std::optional<int> capturePicturesIfRequested(int argc, char** argv);

}  // namespace velotap
