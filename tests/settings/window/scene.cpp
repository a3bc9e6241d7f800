#include "scene.hpp"

#include <QCoreApplication>
#include <QEventLoop>

#include "settings/window/values.hpp"

namespace velotap::test {
namespace {

constexpr int kHeight = PreferencesWindowSize::kHeight;

QQuickItem* named(QQuickItem* root, const QString& name) {
  if (!root->isVisible()) return nullptr;
  const bool pressable = root->inherits("QQuickAbstractButton");
  if (pressable && (root->property("text") == name || root->property("name") == name ||
                    root->property("title") == name)) {
    return root;
  }
  for (QQuickItem* child : root->childItems()) {
    if (QQuickItem* found = named(child, name)) return found;
  }
  return nullptr;
}

void collectTexts(const QQuickItem* item, QStringList& texts) {
  if (!item->isVisible()) return;
  if (item->inherits("QQuickText") || item->inherits("QQuickAbstractButton")) {
    for (const char* property : {"text", "name", "title", "help"}) {
      const QString text = item->property(property).toString();
      if (!text.isEmpty()) texts += text;
    }
  }
  if (item->inherits("QQuickTextField")) texts += item->property("hint").toString();
  for (const QQuickItem* child : item->childItems()) collectTexts(child, texts);
}

}  // namespace

void SceneTest::open(const char* locale, PreferencesTab tab, QSize size) {
  settings.reset();
  fixture = std::make_unique<Fixture>(locale);
  settings = std::make_unique<SettingsWindow>(
      context, SettingsWindow::Effects{
                   .texts = [this] { return fixture->texts(); },
                   .makePanes = [this](PanesObject& panes) { fixture->makePanes(panes); },
                   .observe = [](std::function<void()>) { return std::vector<Observation>(); },
                   .frameFile = {}});
  settings->show(tab);
  settings->view()->resize(size);
  awaitFrame();
}

void SceneTest::open(const char* locale, const SceneState& state, int width) {
  open(locale, state.tab, {width, kHeight});
  if (state.facts != nullptr) {
    state.facts(*fixture);
    settings->panes()->refresh();
  }
  if (state.act != nullptr) state.act(*this);
  awaitFrame();
  if (!state.sheet) fit();
}

void SceneTest::awaitFrame() {
  QEventLoop shown;
  const auto connection = QObject::connect(settings->view(), &QQuickWindow::frameSwapped, &shown,
                                           &QEventLoop::quit, Qt::QueuedConnection);
  settings->view()->update();
  shown.exec();
  QObject::disconnect(connection);
}

QQuickItem* SceneTest::page() const {
  QVariant found;
  QMetaObject::invokeMethod(
      settings->view()->rootObject(), "page", Q_RETURN_ARG(QVariant, found),
      Q_ARG(QVariant, settings->panes()->window->property("state").toMap()[QStringLiteral("tab")]));
  return found.value<QQuickItem*>();
}

QStringList SceneTest::texts() const {
  QStringList texts(settings->view()->title());
  collectTexts(settings->view()->contentItem(), texts);
  return texts;
}

void SceneTest::fit() {
  const QQuickItem* pane = page();
  const int above = qRound(pane->mapToScene({0, 0}).y());
  settings->view()->resize(settings->view()->width(),
                           above + qCeil(pane->property("contentHeight").toReal()));
  awaitFrame();
}

QQuickItem* SceneTest::control(const QString& name) const {
  return named(settings->view()->contentItem(), name);
}

void SceneTest::press(const QString& name) {
  QQuickItem* item = control(name);
  ASSERT_NE(item, nullptr) << name.toStdString();
  ASSERT_TRUE(item->isEnabled()) << name.toStdString();
  item->forceActiveFocus(Qt::TabFocusReason);
  key(Qt::Key_Space);
  awaitFrame();
}

void SceneTest::key(Qt::Key key, Qt::KeyboardModifiers modifiers) {
  const QString text = key == Qt::Key_Space ? QStringLiteral(" ") : QString();
  for (const auto type : {QEvent::KeyPress, QEvent::KeyRelease}) {
    QKeyEvent event(type, key, modifiers, text);
    QCoreApplication::sendEvent(settings->view(), &event);
  }
}

void SceneTest::pressText(std::string_view key) {
  press(qt(fixture->texts()(key)));
}

GeneralObject& SceneTest::general() const {
  return *qobject_cast<GeneralObject*>(settings->panes()->general);
}

GesturesObject& SceneTest::gestures() const {
  return *qobject_cast<GesturesObject*>(settings->panes()->gestures);
}

TuningObject& SceneTest::tuning() const {
  return *qobject_cast<TuningObject*>(settings->panes()->tuning);
}

AppsObject& SceneTest::apps() const {
  return *qobject_cast<AppsObject*>(settings->panes()->apps);
}

AboutObject& SceneTest::about() const {
  return *qobject_cast<AboutObject*>(settings->panes()->about);
}

PracticeObject& SceneTest::practice() const {
  return *qobject_cast<PracticeObject*>(settings->panes()->practice);
}

void SceneTest::keep(const QString& name) {
  const QString folder = qEnvironmentVariable("VELOTAP_PICTURES");
  if (folder.isEmpty()) return;
  settings->view()->grabWindow().save(folder + u'/' + name + QStringLiteral(".png"));
}

}  // namespace velotap::test
