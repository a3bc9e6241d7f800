// Paints the settings window with fictional data into files.
//
// Main thread, with an application object that draws without a display. One for a run.
#pragma once

#include <QString>
#include <memory>
#include <string>

#include "settings/capture/fixture.hpp"
#include "settings/settings_capture.hpp"
#include "settings/window/settings_window.hpp"

namespace velotap {

class QtCaptureStudio final : public CaptureStudio {
 public:
  /// Texts and notation of this locale.
  QtCaptureStudio(std::string locale, std::string version, std::string build);

  [[nodiscard]] CaptureEnvironment environment() override;
  [[nodiscard]] std::optional<std::string> prepare(const CaptureRequest& request,
                                                   const ValueMap& settings) override;
  [[nodiscard]] std::variant<CapturedImage, std::string> render(const CaptureShot& shot,
                                                                const std::string& path) override;
  [[nodiscard]] std::optional<std::string> writeFile(const std::string& path,
                                                     std::string_view text) override;

 private:
  void open(const CaptureShot& shot);
  void openDetails(const CaptureShot& shot);
  [[nodiscard]] bool scrollCaptureToBottom();
  void awaitFrame();

  std::string locale_;
  std::string version_;
  std::string build_;
  ViewContext context_;
  ValueMap settings_;
  std::unique_ptr<Fixture> fixture_;
  std::unique_ptr<SettingsWindow> window_;
};

}  // namespace velotap
