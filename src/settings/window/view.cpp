#include "settings/window/view.hpp"

#include <QQmlEngine>

#include "settings/views/bridge/image_providers.hpp"

namespace velotap {
namespace {

const QString kModulePath = QStringLiteral(":/velotap/qml");

int gViews = 0;

// Outlives the view that it counts, and so the view's engine.
class CountedView {
 public:
  explicit CountedView(ViewContext& context) : context_(context) { ++gViews; }
  ~CountedView() {
    if (--gViews > 0) return;
    qmlClearTypeRegistrations();
    context_.dropFonts();
  }
  CountedView(const CountedView&) = delete;
  CountedView& operator=(const CountedView&) = delete;

 private:
  ViewContext& context_;
};

class View final : private CountedView, public QQuickView {
 public:
  explicit View(ViewContext& context) : CountedView(context) {}
};

}  // namespace

std::unique_ptr<QQuickView> makeView(ViewContext& context) {
  // A settings window needs no graphics processor. Qt listens only before its first window.
  static const bool kChosen = [] {
    QQuickWindow::setGraphicsApi(QSGRendererInterface::Software);
    return true;
  }();
  static_cast<void>(kChosen);
  auto view = std::make_unique<View>(context);
  view->engine()->addImportPath(kModulePath);
  view->engine()->addImageProvider(QStringLiteral("glyph"), new GlyphProvider);
  view->engine()->addImageProvider(QStringLiteral("application"), new ApplicationIconProvider);
  view->setResizeMode(QQuickView::SizeRootObjectToView);
  return view;
}

QUrl viewUrl(const QString& component) {
  return QUrl(QStringLiteral("qrc:/velotap/qml/Velotap/panes/%1.qml").arg(component));
}

}  // namespace velotap
