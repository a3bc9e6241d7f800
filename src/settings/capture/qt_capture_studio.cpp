#include "settings/capture/qt_capture_studio.hpp"

#include <QCoreApplication>
#include <QDir>
#include <QEventLoop>
#include <QFileInfo>
#include <QQuickItem>
#include <QSaveFile>
#include <QTimeZone>
#include <utility>

#include "settings/capture/fitted_size.hpp"
#include "settings/window/values.hpp"

namespace velotap {
namespace {

PreferencesTab tabOf(CaptureScene scene) {
  switch (scene) {
    case CaptureScene::tuning:
      return PreferencesTab::tuning;
    case CaptureScene::apps:
      return PreferencesTab::apps;
    case CaptureScene::devices:
      return PreferencesTab::general;
    case CaptureScene::gestures:
    case CaptureScene::practice:
      break;
  }
  return PreferencesTab::gestures;
}

// The first visible item under `root` that scrolls.
QQuickItem* scrollView(QQuickItem* root) {
  if (root == nullptr || !root->isVisible()) return nullptr;
  if (root->inherits("QQuickFlickable") && root->property("flickableDirection").isValid() &&
      root->property("contentHeight").toDouble() > 0 && !root->inherits("QQuickListView")) {
    return root;
  }
  for (QQuickItem* child : root->childItems()) {
    if (QQuickItem* found = scrollView(child)) return found;
  }
  return nullptr;
}

}  // namespace

QtCaptureStudio::QtCaptureStudio(std::string locale, std::string version, std::string build)
    : locale_(std::move(locale)),
      version_(std::move(version)),
      build_(std::move(build)),
      context_(true) {}

CaptureEnvironment QtCaptureStudio::environment() {
  const std::string language = fixture_ ? fixture_->language() : Fixture(locale_).language();
  return {.executable = QFileInfo(QCoreApplication::applicationFilePath()).fileName().toStdString(),
          .version = version_,
          .build = build_,
          .language = language,
          .locale = locale_,
          .timeZone = QTimeZone::systemTimeZoneId().toStdString(),
          .largeTextSupported = true};
}

std::optional<std::string> QtCaptureStudio::prepare(const CaptureRequest& request,
                                                    const ValueMap& settings) {
  const QString folder = qt(request.folder);
  if (!QDir().mkpath(folder)) return "The folder " + request.folder + " could not be made.";
  settings_ = settings;
  context_.setLook({.scheme = request.dark ? ColorScheme::dark : ColorScheme::light});
  return std::nullopt;
}

void QtCaptureStudio::open(const CaptureShot& shot) {
  window_.reset();
  fixture_ = std::make_unique<Fixture>(locale_, settings_);
  window_ = std::make_unique<SettingsWindow>(
      context_, SettingsWindow::Effects{
                    .texts = [this] { return fixture_->texts(); },
                    .makePanes = [this](PanesObject& panes) { fixture_->makePanes(panes); },
                    .observe = [](std::function<void()>) { return std::vector<Observation>(); },
                    .frameFile = {}});
  window_->show(tabOf(shot.scene));
  window_->view()->resize(shot.width(), shot.height());
  awaitFrame();
}

// What a person would open to see more of the pane.
void QtCaptureStudio::openDetails(const CaptureShot& shot) {
  QObject* root = window_->view()->rootObject();
  const bool details = shot.layout == CaptureLayout::details;
  QMetaObject::invokeMethod(root, "showDetails", Q_ARG(QVariant, details),
                            Q_ARG(QVariant, shot.scene == CaptureScene::practice));
  awaitFrame();
}

bool QtCaptureStudio::scrollCaptureToBottom() {
  QQuickItem* view = scrollView(window_->view()->rootObject());
  if (view == nullptr) return false;
  const double bottom = view->property("contentHeight").toDouble() - view->height();
  view->setProperty("contentY", bottom);
  awaitFrame();
  return bottom > 0 && view->property("contentY").toDouble() == bottom;
}

void QtCaptureStudio::awaitFrame() {
  QEventLoop shown;
  const auto connection = QObject::connect(window_->view(), &QQuickWindow::frameSwapped, &shown,
                                           &QEventLoop::quit, Qt::QueuedConnection);
  window_->view()->update();
  shown.exec();
  QObject::disconnect(connection);
}

std::variant<CapturedImage, std::string> QtCaptureStudio::render(const CaptureShot& shot,
                                                                 const std::string& path) {
  open(shot);
  openDetails(shot);
  CapturedImage result;
  if (shot.scroll == CaptureScroll::bottom) result.reachedBottom = scrollCaptureToBottom();
  const QImage image = window_->view()->grabWindow();
  QSaveFile file(qt(path));
  if (!file.open(QIODevice::WriteOnly) || !image.save(&file, "PNG") || !file.commit()) {
    return "The file " + path + " could not be written.";
  }
  const QSize fitted = fittedSize(*window_->view()->rootObject());
  result.contentWidth = fitted.width();
  result.contentHeight = fitted.height();
  result.pixelWidth = image.width();
  result.pixelHeight = image.height();
  return result;
}

std::optional<std::string> QtCaptureStudio::writeFile(const std::string& path,
                                                      std::string_view text) {
  QSaveFile file(qt(path));
  const QByteArray bytes(text.data(), static_cast<qsizetype>(text.size()));
  if (!file.open(QIODevice::WriteOnly) || file.write(bytes) != bytes.size() || !file.commit()) {
    return "The file " + path + " could not be written.";
  }
  return std::nullopt;
}

}  // namespace velotap
