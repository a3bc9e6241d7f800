#include "app/macos/qt/qt_windows.hpp"

#include <QFile>
#include <QGuiApplication>
#include <QKeyEvent>
#include <QWindow>
#include <utility>

#include "settings/window/values.hpp"

namespace velotap {
namespace {

// The keys that every editor of Qt's knows these commands by; what Qt calls Control is the Command
// key of a Mac.
struct EditKey {
  Qt::Key key;
  Qt::KeyboardModifiers modifiers = Qt::ControlModifier;
};

std::optional<EditKey> editKey(ResponderCommand command) {
  switch (command) {
    case ResponderCommand::undo:
      return EditKey{Qt::Key_Z};
    case ResponderCommand::redo:
      return EditKey{Qt::Key_Z, Qt::ControlModifier | Qt::ShiftModifier};
    case ResponderCommand::cut:
      return EditKey{Qt::Key_X};
    case ResponderCommand::copy:
      return EditKey{Qt::Key_C};
    case ResponderCommand::paste:
      return EditKey{Qt::Key_V};
    case ResponderCommand::selectAll:
      return EditKey{Qt::Key_A};
    case ResponderCommand::close:
    case ResponderCommand::minimize:
      break;  // every window of the system does these itself
  }
  return std::nullopt;
}

bool sendKeys(QWindow& window, const EditKey& keys) {
  QKeyEvent press(QEvent::KeyPress, keys.key, keys.modifiers);
  QKeyEvent release(QEvent::KeyRelease, keys.key, keys.modifiers);
  QCoreApplication::sendEvent(&window, &press);
  QCoreApplication::sendEvent(&window, &release);
  return true;
}

std::string notices() {
  QFile file(QStringLiteral(":/velotap/ThirdPartyNotices.txt"));
  if (!file.open(QIODevice::ReadOnly)) return {};
  return file.readAll().toStdString();
}

}  // namespace

struct QtWindows::Shown {
  Shown(QtWindows& windows, Application& application)
      : model(application.onboarding()),
        onboarding(application.onboarding(), windows.context_,
                   [this, &windows] {
                     windows.surroundings_.activate();
                     settings.showPractice();
                   }),
        panes(application, windows.panesDesktop(),
              [&windows](PreferencesTab tab) { windows.showPane(tab); }),
        settings(windows.context_,
                 panes.effects(qt(windows.surroundings_.stateFolder + "/windows.ini"))) {
    model.setView(onboarding.view());
  }
  ~Shown() {
    if (onboarding.window() != nullptr) model.windowWillClose();
    model.setView({});
  }
  Shown(const Shown&) = delete;
  Shown& operator=(const Shown&) = delete;

  Onboarding& model;
  OnboardingWindow onboarding;
  SettingsPanes panes;
  SettingsWindow settings;
};

QtWindows::QtWindows(WindowSurroundings surroundings)
    : surroundings_(std::move(surroundings)),
      appearanceChanges_(surroundings_.appearance.observe([this] { followAppearance(); })) {
  followAppearance();
}

QtWindows::~QtWindows() = default;

void QtWindows::connect(Application& application) {
  shown_ = std::make_unique<Shown>(*this, application);
}

void QtWindows::showSettings(SettingsPane pane) {
  showPane(pane == SettingsPane::about ? PreferencesTab::about : PreferencesTab::general);
}

void QtWindows::showPane(PreferencesTab tab) {
  if (!shown_) return;  // the program ends
  surroundings_.activate();
  shown_->settings.show(tab);
}

void QtWindows::refreshLocalizedLabels() {
  if (shown_) shown_->settings.refreshLocalizedLabels();
}

// To the system every view of Qt's claims to cut, copy and paste, and then throws, because it
// does so for menu items of Qt's only. Hence as keys.
Windows::Editor QtWindows::editor() {
  return [](ResponderCommand command) {
    QWindow* window = QGuiApplication::focusWindow();
    const auto keys = editKey(command);
    return window != nullptr && keys && sendKeys(*window, *keys);
  };
}

void QtWindows::close() {
  shown_.reset();
}

SettingsWindow* QtWindows::settings() const {
  return shown_ ? &shown_->settings : nullptr;
}

OnboardingWindow* QtWindows::onboarding() const {
  return shown_ ? &shown_->onboarding : nullptr;
}

SettingsPanes::Desktop QtWindows::panesDesktop() {
  MacPanels& panels = surroundings_.panels;
  const ProgramFacts& program = surroundings_.program;
  return {.applications = surroundings_.applications,
          .appsOptions = [] { return AppsPane::Options{}; },
          .facts = [] { return DesktopFacts{}; },
          .system = "macOS",
          .systemVersion = program.systemVersion,
          .build = {.version = program.version, .build = program.build, .notice = program.notice},
          .chooseApplications =
              [&panels](const std::string& message) { return panels.chooseApplications(message); },
          .save = [&panels](std::string_view name,
                            const std::string& text) { return panels.saveText(name, text); },
          .copy = [&panels](const std::string& text) { return panels.copyText(text); },
          .reveal = [&panels](const std::string& location) { panels.reveal(location); },
          .icon = [&panels](const std::string& bundleID) { return panels.icon(bundleID); },
          .notices = &notices};
}

void QtWindows::followAppearance() {
  CocoaAppearance& appearance = surroundings_.appearance;
  context_.setLook({.scheme = appearance.dark() ? ColorScheme::dark : ColorScheme::light,
                    .highContrast = appearance.highContrast()});
}

}  // namespace velotap
