#include "app/qt/status_item.hpp"

#include <QCursor>
#include <QGuiApplication>
#include <QIcon>
#include <QPainter>
#include <QScreen>
#include <algorithm>
#include <utility>

#include "settings/views/bridge/icon_painter.hpp"

namespace velotap {
namespace {

constexpr int kSettlingMs = 1000;

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

// How the screen is at the corners of an item, which its mark leaves free. Nothing where the item's
// place is not known, or the screen is nobody's business.
std::optional<bool> panelIsDark(const QRect& item) {
  QScreen* const screen = QGuiApplication::screenAt(item.center());
  if (item.isEmpty() || screen == nullptr) return std::nullopt;
  const QRect place = item.translated(-screen->geometry().topLeft());
  const QImage seen =
      screen->grabWindow(0, place.x(), place.y(), place.width(), place.height()).toImage();
  if (seen.isNull()) return std::nullopt;
  const QRect corners = seen.rect();
  int lightness = 0;
  for (const QPoint& corner :
       {corners.topLeft(), corners.topRight(), corners.bottomLeft(), corners.bottomRight()}) {
    lightness += seen.pixelColor(corner).lightness();
  }
  return lightness < 4 * 128;
}

// The mark with an outline in the other tone. Not every panel lets its colour be known: on the one
// that was expected the outline cannot be seen, on the other it is what is seen.
QPixmap outlined(const QString& symbol, int side, const QColor& ink, const QColor& outline) {
  const int width = std::max(1, side / 16);
  const QSize inner(side - 2 * width, side - 2 * width);
  const QImage edge = paintSymbol(symbol, inner, outline);
  QPixmap result(side, side);
  result.fill(Qt::transparent);
  QPainter painter(&result);
  for (int y = 0; y <= 2 * width; ++y) {
    for (int x = 0; x <= 2 * width; ++x) painter.drawImage(x, y, edge);
  }
  painter.drawImage(width, width, paintSymbol(symbol, inner, ink));
  return result;
}

QIcon drawn(const StatusIcon& icon, bool onDark, bool certain) {
  const QColor light(0xf5f6f8);
  const QColor dark(0x24262b);
  const QColor& ink = onDark ? light : dark;
  const QString symbol = QString::fromStdString(icon.symbol);
  QIcon result;
  for (const int side : kSides) {
    result.addPixmap(certain ? QPixmap::fromImage(paintSymbol(symbol, {side, side}, ink))
                             : outlined(symbol, side, ink, onDark ? dark : light));
  }
  return result;
}

std::optional<StatusItemClick> clickOf(QSystemTrayIcon::ActivationReason reason) {
  const bool control = (QGuiApplication::queryKeyboardModifiers() & Qt::ControlModifier) != 0;
  switch (reason) {
    case QSystemTrayIcon::Trigger:
    case QSystemTrayIcon::DoubleClick:  // what the second of two quick clicks is called
      return StatusItemClick{StatusItemClick::Button::left, control};
    case QSystemTrayIcon::MiddleClick:
      return StatusItemClick{StatusItemClick::Button::other, control};
    case QSystemTrayIcon::Context:  // the menu is shown by Qt or by the host
    case QSystemTrayIcon::Unknown:
      break;
  }
  return std::nullopt;
}

}  // namespace

bool expectsDarkPanel(const QString& desktops, bool darkWindows) {
  return darkWindows || desktops.split(u':').contains(QStringLiteral("GNOME"));
}

StatusItem::StatusItem(TrayMenu& model, std::function<void()> missing)
    : model_(model), menu_([this] {
        model_.rebuildContextMenu();
        menu_.show(model_.contextMenu());
      }) {
  settling_.setSingleShot(true);
  QObject::connect(&settling_, &QTimer::timeout, &host_, [this] { showIcon(); });
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
  // Its place in the panel is given to it later, and nobody tells.
  settling_.start(kSettlingMs);
}

void StatusItem::showIcon() {
  if (!icon_ || !shown_) return;
  const QString name = QString::fromLatin1(themeName(shown_->state));
  const auto dark = panelIsDark(icon_->geometry());
  const QIcon mark = drawn(*shown_, dark.value_or(darkPanel_), dark.has_value());
  // Who has a place for a window has no colours for it.
  icon_->setIcon(dark ? mark : QIcon::fromTheme(name, mark));
  icon_->setToolTip(QString::fromStdString(shown_->label));
}

void StatusItem::showVisibility() {
  if (icon_) icon_->setVisible(visible_);
}

void StatusItem::popUp() {
  menu_.menu().popup(QCursor::pos());
}

}  // namespace velotap
