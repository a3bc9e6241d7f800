#include "adapters/qt/desktop/qt_alerts.hpp"

#include <QAbstractButton>
#include <QMessageBox>
#include <QPushButton>

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
    box.setEscapeButton(request.closesWithFirst ? buttons.first() : buttons.last());
  }
  box.show();
  box.raise();
  box.activateWindow();
  box.exec();
  for (int i = 0; i < buttons.size(); ++i) {
    if (box.clickedButton() == buttons.at(i)) return i;
  }
  // Closed by nobody's hand, for example because the program ends: nothing was agreed to.
  const bool first = request.closesWithFirst || buttons.isEmpty();
  return first ? 0 : static_cast<int>(buttons.size()) - 1;
}

void QtAlerts::openUrl(const std::string& url) {
  openUrl_(url);
}

}  // namespace velotap
