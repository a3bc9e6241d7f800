#include "app/qt/status_item.hpp"

#include <QCursor>
#include <QGuiApplication>
#include <QIcon>
#include <utility>

#include "settings/views/bridge/icon_painter.hpp"

namespace velotap {
namespace {

// Sizes that panels ask for.
constexpr std::array<int, 5> kSides = {16, 22, 24, 32, 48};

// A desktop that has our symbolic icons in its theme colours them itself.
const char* themeName(StatusIconState state) {
  switch (state) {
    case StatusIconState::active:
      return "velotap-active-symbolic";
    case StatusIconState::unavailable:
      return "velotap-unavailable-symbolic";
    case StatusIconState::disabled:
      break;
  }
  return "velotap-disabled-symbolic";
}

QIcon drawn(const StatusIcon& icon, bool darkPanel) {
  const QColor ink = darkPanel ? QColor(0xf5f6f8) : QColor(0x24262b);
  QIcon result;
  for (const int side : kSides) {
    result.addPixmap(
        QPixmap::fromImage(paintSymbol(QString::fromStdString(icon.symbol), {side, side}, ink)));
  }
  return result;
}

std::optional<StatusItemClick> clickOf(QSystemTrayIcon::ActivationReason reason) {
  const bool control = (QGuiApplication::queryKeyboardModifiers() & Qt::ControlModifier) != 0;
  switch (reason) {
    case QSystemTrayIcon::Trigger:
      return StatusItemClick{StatusItemClick::Button::left, control};
    case QSystemTrayIcon::MiddleClick:
      return StatusItemClick{StatusItemClick::Button::other, control};
    case QSystemTrayIcon::Context:      // the menu is shown by Qt or by the host
    case QSystemTrayIcon::DoubleClick:  // its first click has come already
    case QSystemTrayIcon::Unknown:
      break;
  }
  return std::nullopt;
}

}  // namespace

bool panelIsDark(const QString& desktops, bool darkWindows) {
  return darkWindows || desktops.split(u':').contains(QStringLiteral("GNOME"));
}

StatusItem::StatusItem(TrayMenu& model, std::function<void()> missing)
    : model_(model), menu_([this] {
        model_.rebuildContextMenu();
        menu_.show(model_.contextMenu());
      }) {
  QObject::connect(&host_, &TrayHost::appeared, &host_, [this] { make(); });
  QObject::connect(&host_, &TrayHost::missing, &host_, [tell = std::move(missing)] { tell(); });
}

TrayMenu::View StatusItem::view() {
  return {.create = [this] { host_.await(); },
          .setIcon =
              [this](const StatusIcon& icon) {
                shown_ = icon;
                showIcon();
              },
          .setVisible =
              [this](bool visible) {
                visible_ = visible;
                showVisibility();
              },
          .popUpMenu = [this](const std::vector<MenuItem>&) { popUp(); }};
}

void StatusItem::setDarkPanel(bool dark) {
  if (std::exchange(darkPanel_, dark) != dark) showIcon();
}

void StatusItem::make() {
  icon_ = std::make_unique<QSystemTrayIcon>();
  model_.rebuildContextMenu();
  menu_.show(model_.contextMenu());
  icon_->setContextMenu(&menu_.menu());
  QObject::connect(icon_.get(), &QSystemTrayIcon::activated, icon_.get(),
                   [this](QSystemTrayIcon::ActivationReason reason) {
                     if (const auto click = clickOf(reason)) model_.statusItemClicked(click);
                   });
  showIcon();
  showVisibility();
}

void StatusItem::showIcon() {
  if (!icon_ || !shown_) return;
  icon_->setIcon(
      QIcon::fromTheme(QString::fromLatin1(themeName(shown_->state)), drawn(*shown_, darkPanel_)));
  icon_->setToolTip(QString::fromStdString(shown_->label));
}

void StatusItem::showVisibility() {
  if (icon_) icon_->setVisible(visible_);
}

void StatusItem::popUp() {
  menu_.menu().popup(QCursor::pos());
}

}  // namespace velotap
