// Light or dark, contrast and text size, as the desktop's settings portal has them now.
//
// Asks once and then listens. A desktop without the portal gives light, usual contrast and size.
// Main thread.
#pragma once

#include <QDBusVariant>
#include <QObject>
#include <QString>

namespace velotap {

class DesktopAppearance : public QObject {
  Q_OBJECT

 public:
  explicit DesktopAppearance(QObject* parent = nullptr);

  [[nodiscard]] bool dark() const { return dark_; }
  [[nodiscard]] bool highContrast() const { return moreContrast_ || gnomeContrast_; }
  [[nodiscard]] double textScale() const { return textScale_; }

 signals:
  void changed();

 private slots:
  void settingChanged(const QString& space, const QString& key, const QDBusVariant& value);

 private:
  void ask(const QString& space, const QString& key);
  void take(const QString& space, const QString& key, const QVariant& value);

  bool dark_ = false;
  bool moreContrast_ = false;
  bool gnomeContrast_ = false;  // GNOME's own switch, which older desktops have alone
  double textScale_ = 1;
};

}  // namespace velotap
