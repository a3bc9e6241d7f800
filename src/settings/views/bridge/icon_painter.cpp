#include "settings/views/bridge/icon_painter.hpp"

#include <QFile>
#include <QIcon>
#include <QPainter>
#include <QSvgRenderer>

namespace velotap {
namespace {

QImage emptyImage(QSize pixels) {
  QImage image(pixels, QImage::Format_ARGB32_Premultiplied);
  image.fill(Qt::transparent);
  return image;
}

// Qt's own hash differs between processors and runs; a tile keeps its colour.
int hueOf(const QString& name) {
  unsigned hash = 7;
  for (const QChar letter : name) hash = hash * 31 + letter.unicode();
  return static_cast<int>(hash % 360);
}

void paintTile(QPainter& painter, const QString& name, QSize pixels, bool dark) {
  const int hue = hueOf(name);
  const qreal side = pixels.width();
  QLinearGradient gradient(0, 0, 0, pixels.height());
  gradient.setColorAt(0, QColor::fromHsl(hue, 110, dark ? 112 : 120));
  gradient.setColorAt(1, QColor::fromHsl(hue, 130, dark ? 84 : 92));
  painter.setPen(Qt::NoPen);
  painter.setBrush(gradient);
  painter.drawRoundedRect(QRectF(side * .04, side * .04, side * .92, side * .92), side * .23,
                          side * .23);
  QFont font(QStringLiteral("Inter"));
  font.setPixelSize(static_cast<int>(side * .5));
  font.setWeight(QFont::DemiBold);
  painter.setFont(font);
  painter.setPen(Qt::white);
  painter.drawText(QRectF(QPointF(), QSizeF(pixels)), Qt::AlignCenter, name.left(1).toUpper());
}

}  // namespace

QImage paintSymbol(const QString& name, QSize pixels, const QColor& color) {
  QImage image = emptyImage(pixels);
  QFile file(QStringLiteral(":/velotap/icons/%1.svg").arg(name));
  if (!file.open(QIODevice::ReadOnly)) {
    qWarning("no such symbol: %s", qPrintable(name));
    return image;
  }
  QByteArray svg = file.readAll();
  svg.replace("currentColor", color.name(QColor::HexRgb).toLatin1());
  QSvgRenderer renderer(svg);
  QPainter painter(&image);
  painter.setOpacity(color.alphaF());
  renderer.render(&painter, QRectF(QPointF(), QSizeF(pixels)));
  return image;
}

QImage paintApplication(const QString& icon, const QString& name, QSize pixels, bool dark) {
  QImage image = emptyImage(pixels);
  const QIcon found = icon.startsWith(u'/') ? QIcon(icon) : QIcon::fromTheme(icon);
  QPainter painter(&image);
  painter.setRenderHint(QPainter::Antialiasing);
  painter.setRenderHint(QPainter::SmoothPixmapTransform);
  const QPixmap pixmap = found.pixmap(pixels, 1.0);
  if (pixmap.isNull()) {
    paintTile(painter, name, pixels, dark);
  } else {
    painter.drawPixmap(QRect(QPoint(), pixels), pixmap);
  }
  return image;
}

}  // namespace velotap
