// The system's panels for files, its pasteboard and its icons. Main thread.
//
// Nothing is decided here; what is done with the answers is `MacPanels`' matter. The one
// implementation exists on a Mac only.
#pragma once

#include <cstddef>
#include <memory>
#include <optional>
#include <string>
#include <vector>

namespace velotap {

class NativeDialogs {
 public:
  virtual ~NativeDialogs() = default;
  /// Lets the person choose any number of applications, beginning in the folder "/Applications";
  /// the paths of their bundles, none when they changed their mind. Modal.
  [[nodiscard]] virtual std::vector<std::string> chooseApplications(const std::string& message) = 0;
  /// Lets the person say where a file is to be written, and make folders on the way. Modal.
  [[nodiscard]] virtual std::optional<std::string> chooseSaveLocation(const std::string& name) = 0;
  /// Puts a file in place of what was there, whole or not at all; false when it cannot.
  virtual bool writeFile(const std::string& path, const std::string& bytes) = 0;
  /// Replaces what is on the general pasteboard; false when it refuses.
  virtual bool copyText(const std::string& text) = 0;
  /// The icon of a file as a square PNG image; empty when it cannot be drawn.
  [[nodiscard]] virtual std::vector<std::byte> icon(const std::string& path, int pixels) = 0;

  /// The dialogs of this system. Exists on a Mac only.
  [[nodiscard]] static std::unique_ptr<NativeDialogs> system();
};

}  // namespace velotap
