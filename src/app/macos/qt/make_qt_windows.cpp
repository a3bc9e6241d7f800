// Chosen by the build where there is Qt.
#include <QGuiApplication>
#include <utility>

#include "app/macos/qt/qt_windows.hpp"
#include "settings/capture/qt_pictures.hpp"

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

std::optional<int> capturePicturesIfRequested(int argc, char** argv) {
  return takePicturesIfRequested(argc, argv, VELOTAP_VERSION, VELOTAP_BUILD);
}

}  // namespace velotap
