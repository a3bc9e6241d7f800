// Chosen by the build where there is Qt.
#include <QGuiApplication>
#include <QLocale>
#include <iostream>
#include <string_view>
#include <utility>
#include <vector>

#include "app/macos/qt/qt_windows.hpp"
#include "settings/capture/qt_capture_studio.hpp"

namespace velotap {
namespace {

// Qt's application object beside the windows that need it; the object goes last.
class GuestWindows final : public Windows {
 public:
  GuestWindows(std::unique_ptr<QGuiApplication> application, WindowSurroundings surroundings)
      : application_(std::move(application)), windows_(std::move(surroundings)) {}

  void connect(Application& application) override { windows_.connect(application); }
  void showSettings(SettingsPane pane) override { windows_.showSettings(pane); }
  void refreshLocalizedLabels() override { windows_.refreshLocalizedLabels(); }
  [[nodiscard]] Editor editor() override { return windows_.editor(); }
  void close() override { windows_.close(); }

 private:
  std::unique_ptr<QGuiApplication> application_;
  QtWindows windows_;
};

}  // namespace

std::unique_ptr<Windows> makeWindows(int& argc, char** argv, WindowSurroundings surroundings) {
  // Leaves the loop, the delegate and the menu bar to AppKit.
  QCoreApplication::setAttribute(Qt::AA_PluginApplication);
  // Otherwise Qt would give the program a place in the Dock when it runs outside of its bundle.
  qputenv("QT_MAC_DISABLE_FOREGROUND_APPLICATION_TRANSFORM", "1");
  auto application = std::make_unique<QGuiApplication>(argc, argv);
  QGuiApplication::setQuitOnLastWindowClosed(false);
  return std::make_unique<GuestWindows>(std::move(application), std::move(surroundings));
}

// Pictures need neither a display nor a home; only the type that the program carries is used.
std::optional<int> capturePicturesIfRequested(int argc, char** argv) {
  const std::vector<std::string_view> arguments(argv, argv + argc);
  std::unique_ptr<QGuiApplication> application;
  std::unique_ptr<QtCaptureStudio> studio;
  return captureSettingsIfRequested(
      arguments,
      [&]() -> CaptureStudio& {
        qputenv("QT_QPA_PLATFORM", "offscreen");
        application = std::make_unique<QGuiApplication>(argc, argv);
        studio = std::make_unique<QtCaptureStudio>(QLocale::system().name().toStdString(),
                                                   VELOTAP_VERSION, VELOTAP_BUILD);
        return *studio;
      },
      [](std::string_view line) { std::cerr << line << std::flush; });
}

}  // namespace velotap
