#include "app/qt/menu_view.hpp"

#include <QAction>
#include <QKeySequence>
#include <utility>

namespace velotap {
namespace {

// A title is not a mnemonic.
QString titleOf(const MenuItem& item) {
  return QString::fromStdString(item.title).replace(u'&', QStringLiteral("&&"));
}

QKeySequence keysOf(const MenuItem& item) {
  if (!item.key) return {};
  const QString modifiers =
      item.key->shift ? QStringLiteral("Ctrl+Shift+%1") : QStringLiteral("Ctrl+%1");
  return QKeySequence(modifiers.arg(QChar::fromLatin1(item.key->key).toUpper()));
}

bool fits(const QAction& action, const MenuItem& item) {
  return action.isSeparator() == item.separator &&
         (action.menu() != nullptr) == !item.submenu.empty();
}

bool fits(const QMenu& menu, const std::vector<MenuItem>& items) {
  const QList<QAction*> actions = menu.actions();
  if (static_cast<std::size_t>(actions.size()) != items.size()) return false;
  for (std::size_t i = 0; i < items.size(); ++i) {
    if (!fits(*actions.at(static_cast<qsizetype>(i)), items[i])) return false;
  }
  return true;
}

void update(QAction& action, const MenuItem& item) {
  action.setText(titleOf(item));
  action.setEnabled(item.enabled);
  action.setVisible(!item.hidden);
  action.setToolTip(QString::fromStdString(item.toolTip));
  action.setCheckable(item.checked.has_value());
  action.setChecked(item.checked.value_or(false));
  action.setShortcut(keysOf(item));
  QObject::disconnect(&action, &QAction::triggered, nullptr, nullptr);
  if (!item.action) return;
  // After the menu has closed: what is done may show another one, or build this one anew.
  QObject::connect(
      &action, &QAction::triggered, &action, [act = item.action] { act(); }, Qt::QueuedConnection);
}

}  // namespace

MenuView::MenuView(std::function<void()> aboutToShow) {
  menu_.setToolTipsVisible(true);
  QObject::connect(&menu_, &QMenu::aboutToShow, &menu_,
                   [refresh = std::move(aboutToShow)] { refresh(); });
}

void MenuView::show(const std::vector<MenuItem>& items) {
  sync(menu_, items);
}

void MenuView::sync(QMenu& menu, const std::vector<MenuItem>& items) {
  if (!fits(menu, items)) build(menu, items);
  const QList<QAction*> actions = menu.actions();
  for (std::size_t i = 0; i < items.size(); ++i) {
    QAction& action = *actions.at(static_cast<qsizetype>(i));
    if (items[i].separator) continue;
    update(action, items[i]);
    if (action.menu() != nullptr) sync(*action.menu(), items[i].submenu);
  }
}

void MenuView::build(QMenu& menu, const std::vector<MenuItem>& items) {
  for (QAction* action : menu.actions()) {
    if (action->menu() != nullptr) action->menu()->deleteLater();
  }
  menu.clear();
  for (const MenuItem& item : items) {
    if (item.separator) {
      menu.addSeparator();
    } else if (item.submenu.empty()) {
      menu.addAction(titleOf(item));
    } else {
      menu.addMenu(new QMenu(&menu));
    }
  }
}

}  // namespace velotap
