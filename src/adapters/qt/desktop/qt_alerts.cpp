#include "adapters/qt/desktop/qt_alerts.hpp"

#include <QAbstractButton>
#include <QDesktopServices>
#include <QMessageBox>
#include <QPushButton>
#include <QUrl>

namespace velotap {

int QtAlerts::runModal(const AlertRequest& request) {
  QMessageBox box;
  box.setTextFormat(Qt::PlainText);
  box.setText(QString::fromStdString(request.message));
  box.setInformativeText(QString::fromStdString(request.informativeText));
  QList<QPushButton*> buttons;
  for (const std::string& title : request.buttons) {
    buttons.append(box.addButton(QString::fromStdString(title), buttons.isEmpty()
                                                                    ? QMessageBox::AcceptRole
                                                                    : QMessageBox::RejectRole));
  }
  if (!buttons.isEmpty()) {
    box.setDefaultButton(buttons.first());
    box.setEscapeButton(buttons.last());
  }
  box.show();
  box.raise();
  box.activateWindow();
  box.exec();
  for (int i = 0; i < buttons.size(); ++i) {
    if (box.clickedButton() == buttons.at(i)) return i;
  }
  return 0;
}

void QtAlerts::openUrl(const std::string& url) {
  QDesktopServices::openUrl(QUrl(QString::fromStdString(url)));
}

}  // namespace velotap
