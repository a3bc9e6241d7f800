#include "view_fixture.hpp"

#include <QDir>
#include <QEventLoop>
#include <QQuickItem>

#include "settings/views/bridge/image_providers.hpp"

namespace velotap::test {
namespace {

QStringList gComplaints;

void collect(QtMsgType type, const QMessageLogContext&, const QString& message) {
  if (type == QtDebugMsg || type == QtInfoMsg) return;
  // What a machine without a desktop says of itself.
  if (message.startsWith(QStringLiteral("This plugin does not support"))) return;
  gComplaints.append(message);
}

}  // namespace

Complaints::Complaints() {
  gComplaints.clear();
  qInstallMessageHandler(&collect);
}

Complaints::~Complaints() {
  qInstallMessageHandler(nullptr);
}

QStringList Complaints::all() const {
  return gComplaints;
}

ViewTest::ViewTest() {
  static const bool kChosen = [] {  // Qt listens only before its first window
    QQuickWindow::setGraphicsApi(QSGRendererInterface::Software);
    return true;
  }();
  static_cast<void>(kChosen);
}

ViewTest::~ViewTest() {
  EXPECT_TRUE(complaints.all().isEmpty()) << complaints.all().join(u'\n').toStdString();
}

QQuickItem* ViewTest::show(const QUrl& view, QSize size) {
  window = std::make_unique<QQuickView>();
  window->engine()->addImportPath(QStringLiteral(":/velotap/qml"));
  window->engine()->addImageProvider(QStringLiteral("glyph"), new GlyphProvider);
  window->engine()->addImageProvider(QStringLiteral("application"), new ApplicationIconProvider);
  window->setResizeMode(QQuickView::SizeRootObjectToView);
  window->setSource(view);
  window->resize(size);
  QEventLoop shown;
  QObject::connect(window.get(), &QQuickWindow::frameSwapped, &shown, &QEventLoop::quit,
                   Qt::QueuedConnection);
  window->show();
  shown.exec();
  return window->rootObject();
}

QImage ViewTest::picture(const QString& name) {
  QImage image = window->grabWindow();
  const QString folder = qEnvironmentVariable("VELOTAP_PICTURES");
  if (!folder.isEmpty()) {
    image.save(QDir(folder).filePath(name + QStringLiteral(".png")));
  }
  return image;
}

QStringList truncatedTexts(const QQuickItem* root) {
  QStringList found;
  if (!root->isVisible()) return found;
  const QVariant truncated = root->property("truncated");
  if (truncated.isValid() && truncated.toBool()) {
    found.append(QStringLiteral("%1 (%2 x %3)")
                     .arg(root->property("text").toString())
                     .arg(root->width())
                     .arg(root->height()));
  }
  for (const QQuickItem* child : root->childItems()) found += truncatedTexts(child);
  return found;
}

}  // namespace velotap::test
