#include "settings/capture/qt_pictures.hpp"

#include <QGuiApplication>
#include <QLocale>
#include <iostream>
#include <memory>
#include <string_view>
#include <vector>

#include "settings/capture/qt_capture_studio.hpp"

namespace velotap {

std::optional<int> takePicturesIfRequested(int argc, char** argv, const std::string& version,
                                           const std::string& build) {
  const std::vector<std::string_view> arguments(argv, argv + argc);
  std::unique_ptr<QGuiApplication> application;
  std::unique_ptr<QtCaptureStudio> studio;
  return captureSettingsIfRequested(
      arguments,
      [&]() -> CaptureStudio& {
        qputenv("QT_QPA_PLATFORM", "offscreen");
        application = std::make_unique<QGuiApplication>(argc, argv);
        studio = std::make_unique<QtCaptureStudio>(QLocale::system().name().toStdString(), version,
                                                   build);
        return *studio;
      },
      [](std::string_view line) { std::cerr << line << std::flush; });
}

}  // namespace velotap
