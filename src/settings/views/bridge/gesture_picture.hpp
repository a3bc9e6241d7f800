// A small picture of a gesture: the surface, the fingers on it, and what they do.
//
// Drawn in units of the item, in colours that the view hands in. Main thread.
#pragma once

#include <QColor>
#include <QQuickPaintedItem>
#include <QString>

namespace velotap {

class GesturePainting : public QQuickPaintedItem {
  Q_OBJECT
  QML_ELEMENT
  Q_PROPERTY(int fingers MEMBER fingers_ NOTIFY changed)
  Q_PROPERTY(QString kind MEMBER kind_ NOTIFY changed)
  Q_PROPERTY(bool mouse MEMBER mouse_ NOTIFY changed)
  Q_PROPERTY(QColor surface MEMBER surface_ NOTIFY changed)
  Q_PROPERTY(QColor edge MEMBER edge_ NOTIFY changed)
  Q_PROPERTY(QColor finger MEMBER finger_ NOTIFY changed)
  Q_PROPERTY(QColor accent MEMBER accent_ NOTIFY changed)

 public:
  explicit GesturePainting(QQuickItem* parent = nullptr);
  void paint(QPainter* painter) override;

 signals:
  void changed();

 private:
  [[nodiscard]] QRectF body() const;
  [[nodiscard]] QPointF tip(const QRectF& body, int finger) const;
  void paintBody(QPainter& painter, const QRectF& body) const;
  void paintFingers(QPainter& painter, const QRectF& body) const;
  void paintMovement(QPainter& painter, const QRectF& body) const;

  int fingers_ = 3;
  QString kind_;
  bool mouse_ = false;
  QColor surface_;
  QColor edge_;
  QColor finger_;
  QColor accent_;
};

}  // namespace velotap
