#include "settings/window/settings_window.hpp"

#include <QGuiApplication>
#include <QQuickItem>
#include <QScreen>
#include <QSettings>
#include <utility>

#include "settings/window/values.hpp"

namespace velotap {
namespace {

constexpr int kRefreshMs = 1000;

QString frameKey() {
  return qt(kPreferencesFrameName);
}

// At least so much of a remembered frame has to lie on a screen that is there now.
bool canBeReached(const QRect& frame) {
  const QRect handle(frame.x() + frame.width() / 4, frame.y(), frame.width() / 2, 40);
  for (const QScreen* screen : QGuiApplication::screens()) {
    if (screen->availableGeometry().intersects(handle)) return true;
  }
  return false;
}

}  // namespace

SettingsWindow::SettingsWindow(ViewContext& context, Effects effects)
    : context_(context), effects_(std::move(effects)) {
  everySecond_.setInterval(kRefreshMs);
  QObject::connect(&everySecond_, &QTimer::timeout, &everySecond_, [this] {
    if (PaneObject* pane = paneOfFacts()) pane->refresh();
  });
  onceClosed_.setSingleShot(true);
  QObject::connect(&onceClosed_, &QTimer::timeout, &onceClosed_, [this] {
    if (view_ && !view_->isVisible()) drop();
  });
}

SettingsWindow::~SettingsWindow() {
  drop();
}

void SettingsWindow::show(PreferencesTab tab) {
  const ShowPreferencesSteps steps = showPreferences(
      tab, {.exists = isOpen(),
            .miniaturised = isOpen() && (view_->windowStates() & Qt::WindowMinimized) != 0,
            .visible = isOpen() && view_->isVisible()});
  if (steps.build) build();
  window_->choose(steps.select);
  if (steps.restoreFromDock) view_->showNormal();
  view_->show();
  // Pictures are drawn where nothing lies above anything else, and Qt says so each time.
  if (QGuiApplication::platformName() != QStringLiteral("offscreen")) view_->raise();
  view_->requestActivate();
  followFacts();
}

void SettingsWindow::showPractice() {
  show(PreferencesTab::gestures);
  QMetaObject::invokeMethod(view_->rootObject(), "showDetails", Q_ARG(QVariant, false),
                            Q_ARG(QVariant, true));
}

void SettingsWindow::build() {
  panes_ = std::make_unique<PanesObject>();
  window_ = new WindowObject(effects_.texts,
                             {.close = [this] { close(); },
                              .minimise = [this] { view_->showMinimized(); },
                              .quit =
                                  [this] {
                                    if (effects_.quit) effects_.quit();
                                  }},
                             panes_.get());
  panes_->window = window_;
  effects_.makePanes(*panes_);
  view_ = makeView(context_);
  followLook();
  QObject::connect(&context_, &ViewContext::lookChanged, view_.get(), [this] { followLook(); });
  view_->setMinimumSize({PreferencesWindowSize::kLeastWidth, PreferencesWindowSize::kLeastHeight});
  view_->resize(PreferencesWindowSize::kWidth, PreferencesWindowSize::kHeight);
  if (!restoreFrame()) centre();
  view_->setInitialProperties(
      {{QStringLiteral("panes"), QVariant::fromValue<QObject*>(panes_.get())}});
  view_->setSource(viewUrl(QStringLiteral("SettingsView")));
  retitle();
  QObject::connect(window_, &PaneObject::stateChanged, view_.get(), [this] { retitle(); });
  QObject::connect(window_, &WindowObject::tabChanged, view_.get(), [this] { followFacts(); });
  QObject::connect(view_.get(), &QWindow::visibilityChanged, view_.get(),
                   [this] { followFacts(); });
  QObject::connect(view_.get(), &QWindow::visibleChanged, view_.get(), [this](bool visible) {
    // The window may still be in the middle of closing.
    if (!visible) onceClosed_.start();
  });
  observations_ = effects_.observe([this] {
    if (panes_) panes_->refresh();
  });
}

void SettingsWindow::close() {
  if (view_) view_->close();
}

void SettingsWindow::drop() {
  everySecond_.stop();
  onceClosed_.stop();
  if (!view_) return;
  rememberFrame();
  observations_.clear();
  view_.reset();
  window_ = nullptr;
  panes_.reset();
  if (effects_.closed) effects_.closed();
}

// What shows where the window grew and the pane was not drawn yet.
void SettingsWindow::followLook() {
  view_->setColor(context_.palette().value(QStringLiteral("window")).value<QColor>());
}

void SettingsWindow::retitle() {
  view_->setTitle(window_->state().value(QStringLiteral("title")).toString());
}

void SettingsWindow::refreshLocalizedLabels() {
  if (panes_) panes_->refresh();
}

// These show facts that have no notices of their own: devices, permission, what starts at login.
PaneObject* SettingsWindow::paneOfFacts() const {
  if (!view_ || !view_->isVisible() || view_->visibility() == QWindow::Minimized) return nullptr;
  if (window_->tab() == PreferencesTab::general) return qobject_cast<PaneObject*>(panes_->general);
  if (window_->tab() == PreferencesTab::gestures) {
    return qobject_cast<PaneObject*>(panes_->gestures);
  }
  return nullptr;
}

void SettingsWindow::followFacts() {
  PaneObject* pane = paneOfFacts();
  if (pane == nullptr) return everySecond_.stop();
  pane->refresh();
  everySecond_.start();
}

bool SettingsWindow::restoreFrame() {
  if (effects_.frameFile.isEmpty()) return false;
  const QRect frame =
      QSettings(effects_.frameFile, QSettings::IniFormat).value(frameKey()).toRect();
  if (!frame.isValid()) return false;
  view_->resize(frame.size().expandedTo(view_->minimumSize()));
  if (!canBeReached(frame)) return false;
  view_->setPosition(frame.topLeft());
  return true;
}

void SettingsWindow::rememberFrame() const {
  if (effects_.frameFile.isEmpty()) return;
  QSettings(effects_.frameFile, QSettings::IniFormat).setValue(frameKey(), view_->geometry());
}

void SettingsWindow::centre() {
  const QScreen* screen = QGuiApplication::primaryScreen();
  if (screen == nullptr) return;
  QRect frame(QPoint(), view_->size());
  frame.moveCenter(screen->availableGeometry().center());
  view_->setPosition(frame.topLeft());
}

}  // namespace velotap
