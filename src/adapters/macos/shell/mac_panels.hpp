// What the settings window asks of the system's panels, pasteboard, files and icons. Main thread.
#pragma once

#include <map>
#include <string>
#include <string_view>
#include <vector>

#include "adapters/macos/cocoa/cocoa_workspace.hpp"
#include "adapters/macos/shell/native_dialogs.hpp"

namespace velotap {

class MacPanels {
 public:
  MacPanels(NativeDialogs& dialogs, CocoaWorkspace& workspace)
      : dialogs_(dialogs), workspace_(workspace) {}
  ~MacPanels();
  MacPanels(const MacPanels&) = delete;
  MacPanels& operator=(const MacPanels&) = delete;

  /// Identifiers of the applications that the person chooses; those without one are left out.
  [[nodiscard]] std::vector<std::string> chooseApplications(const std::string& message);
  /// False when the text could not be written where the person wants it; they may want it nowhere.
  bool saveText(std::string_view name, const std::string& text);
  bool copyText(const std::string& text) { return dialogs_.copyText(text); }
  /// Shows a file in its folder.
  void reveal(const std::string& location) { workspace_.reveal(location); }
  /// A picture file with the icon of an installed application, there as long as this object is;
  /// empty when there is none.
  [[nodiscard]] std::string icon(const std::string& bundleId);

 private:
  [[nodiscard]] std::string drawnIcon(const std::string& path);

  NativeDialogs& dialogs_;
  CocoaWorkspace& workspace_;
  std::string folder_;                        ///< of the pictures; empty before the first one
  std::map<std::string, std::string> icons_;  ///< by the path of the application
};

}  // namespace velotap
