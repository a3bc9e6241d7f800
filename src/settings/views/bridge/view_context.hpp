// What every view may ask: how things look.
//
// QML knows it as the singleton `App`. The program makes one before the first view and keeps it
// until the last is gone; views never own it. Main thread.
#pragma once

#include <QColor>
#include <QList>
#include <QObject>
#include <QQmlEngine>
#include <QString>
#include <QVariantMap>

#include "settings/views/theme/palette.hpp"

namespace velotap {

/// How the desktop wants its windows.
struct Look {
  ColorScheme scheme = ColorScheme::light;
  bool highContrast = false;
  double textScale = 1;

  bool operator==(const Look&) const = default;
};

class ViewContext : public QObject {
  Q_OBJECT
  QML_NAMED_ELEMENT(App)
  QML_SINGLETON
  Q_PROPERTY(QVariantMap palette READ palette NOTIFY lookChanged)
  Q_PROPERTY(bool dark READ dark NOTIFY lookChanged)
  Q_PROPERTY(double textScale READ textScale NOTIFY lookChanged)
  Q_PROPERTY(QString fontFamily READ fontFamily CONSTANT)
  Q_PROPERTY(QString monoFamily READ monoFamily CONSTANT)
  Q_PROPERTY(bool still READ still CONSTANT)

 public:
  /// `still` shows every change at once, for pictures and tests. (Without a parameter to give QML
  /// would make an object of its own.)
  explicit ViewContext(bool still, QObject* parent = nullptr);
  ~ViewContext() override;
  ViewContext(const ViewContext&) = delete;
  ViewContext& operator=(const ViewContext&) = delete;

  static ViewContext* create(QQmlEngine* engine, QJSEngine* scripts);

  [[nodiscard]] QVariantMap palette() const { return palette_; }
  [[nodiscard]] bool dark() const { return look_.scheme == ColorScheme::dark; }
  [[nodiscard]] double textScale() const { return look_.textScale; }
  /// Loads the type when the first view asks: without a window it would only take memory.
  [[nodiscard]] QString fontFamily() const;
  /// The same for those that come after the last view is gone.
  void dropFonts();
  [[nodiscard]] QString monoFamily() const { return monoFamily_; }
  [[nodiscard]] bool still() const { return still_; }
  [[nodiscard]] const Look& look() const { return look_; }
  void setLook(const Look& look);

  Q_INVOKABLE [[nodiscard]] QString hex(const QColor& color) const;

 signals:
  void lookChanged();

 private:
  Look look_;
  QVariantMap palette_;
  mutable QString fontFamily_;
  mutable QList<int> fonts_;
  QString monoFamily_;
  bool still_;
};

}  // namespace velotap
