#include "app/windows/onboarding_window.hpp"

#include <QGuiApplication>
#include <QScreen>
#include <algorithm>
#include <utility>

#include "settings/window/values.hpp"
#include "settings/window/view.hpp"

namespace velotap {
namespace {

constexpr int kWidth = 520;

QVariantList texts(const std::vector<std::string>& lines) {
  QVariantList list;
  for (const std::string& line : lines) list.append(qt(line));
  return list;
}

}  // namespace

OnboardingObject::OnboardingObject(Onboarding& model, QObject* parent)
    : PaneObject(parent), model_(model), changes_(model.observe([this] { refresh(); })) {
  refresh();
}

void OnboardingObject::refresh() {
  const OnboardingContent content = model_.content();
  setState(fields({{"granted", content.granted},
                   {"symbol", content.symbol},
                   {"title", content.title},
                   {"explanation", content.explanation},
                   {"stepsHeading", content.stepsHeading},
                   {"steps", texts(content.steps)},
                   {"mainButton", content.mainButton},
                   {"settingsError", content.settingsError},
                   {"waiting", content.waiting},
                   {"helpHeading", content.helpHeading},
                   {"help", texts(content.help)},
                   {"revealButton", content.revealButton},
                   {"laterButton", content.laterButton},
                   {"laterNote", content.laterNote},
                   {"tips", texts(content.tips)},
                   {"practiceButton", content.practiceButton},
                   {"continueButton", content.continueButton}}));
}

OnboardingWindow::OnboardingWindow(Onboarding& model, ViewContext& context,
                                   std::function<void()> openPractice)
    : model_(model), context_(context), openPractice_(std::move(openPractice)) {}

OnboardingWindow::~OnboardingWindow() = default;

Onboarding::View OnboardingWindow::view() {
  return {.create = [this](const std::string& title,
                           double maximumHeight) { create(title, maximumHeight); },
          .bringToFront =
              [this] {
                if (!window_) return;
                window_->show();
                window_->raise();
                window_->requestActivate();
              },
          .close =
              [this] {
                if (window_) window_->close();
              },
          .isVisible = [this] { return window_ && window_->isVisible(); },
          .setTitle =
              [this](const std::string& title) {
                if (window_) window_->setTitle(qt(title));
              },
          .visibleScreenHeight = []() -> std::optional<double> {
            const QScreen* screen = QGuiApplication::primaryScreen();
            if (screen == nullptr) return std::nullopt;
            return screen->availableGeometry().height();
          },
          .openPractice = openPractice_};
}

void OnboardingWindow::create(const std::string& title, double maximumHeight) {
  maximumHeight_ = maximumHeight;
  object_ = std::make_unique<OnboardingObject>(model_);
  window_ = makeView(context_);
  window_->setColor(context_.palette().value(QStringLiteral("window")).value<QColor>());
  window_->setTitle(qt(title));
  // Window managers give dialogues a title and a way to close them, and nothing else.
  window_->setFlags(Qt::Dialog | Qt::WindowTitleHint | Qt::WindowCloseButtonHint |
                    Qt::CustomizeWindowHint);
  window_->setInitialProperties(
      {{QStringLiteral("pane"), QVariant::fromValue<QObject*>(object_.get())}});
  fit(maximumHeight_);
  QObject::connect(object_.get(), &OnboardingObject::wantsHeight, window_.get(),
                   [this](double height) { fit(height); });
  window_->setSource(viewUrl(QStringLiteral("OnboardingView")));
  QObject::connect(window_.get(), &QWindow::visibleChanged, object_.get(), [this](bool visible) {
    // The window may still be in the middle of closing.
    if (!visible) {
      QMetaObject::invokeMethod(
          &alive_, [this] { drop(); }, Qt::QueuedConnection);
    }
  });
  centre();
  window_->show();
  window_->raise();
  window_->requestActivate();
}

void OnboardingWindow::centre() {
  const QScreen* screen = window_->screen();
  if (screen == nullptr) return;
  QRect frame(QPoint(), window_->size());
  frame.moveCenter(screen->availableGeometry().center());
  window_->setPosition(frame.topLeft());
}

void OnboardingWindow::fit(double height) {
  const QSize size(kWidth, static_cast<int>(std::min(height, maximumHeight_)));
  window_->setMinimumSize(size);
  window_->setMaximumSize(size);
  window_->resize(size);
  keepInside(size);
}

// It grows when the permission is taken away while it is low on the screen.
void OnboardingWindow::keepInside(QSize size) {
  const QScreen* screen = window_->screen();
  if (!window_->isVisible() || screen == nullptr) return;
  const QMargins edges = window_->frameMargins();
  const QRect frame = QRect(window_->position(), size).marginsAdded(edges);
  const QRect visible = screen->availableGeometry();
  const auto plain = [](const QRect& rect) {
    return ScreenFrame{.x = static_cast<double>(rect.x()),
                       .y = static_cast<double>(rect.y()),
                       .width = static_cast<double>(rect.width()),
                       .height = static_cast<double>(rect.height())};
  };
  const ScreenFrame kept = keptInside(plain(frame), plain(visible));
  const QPoint corner(static_cast<int>(kept.x), static_cast<int>(kept.y));
  if (corner != frame.topLeft()) window_->setFramePosition(corner);
}

void OnboardingWindow::drop() {
  if (window_ && window_->isVisible()) return;  // opened again before it was gone
  window_.reset();
  object_.reset();
  model_.windowWillClose();
}

}  // namespace velotap
