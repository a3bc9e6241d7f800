// Every component of the module loads, by itself, without a complaint; and what they look like.

#include <QDirIterator>
#include <QQmlComponent>
#include <QQuickItem>

#include "settings/views/bridge/image_providers.hpp"
#include "view_fixture.hpp"

namespace velotap::test {
namespace {

class ComponentTest : public ViewTest {};

TEST_F(ComponentTest, EveryOneLoads) {
  QQmlEngine engine;
  engine.addImportPath(QStringLiteral(":/velotap/qml"));
  int count = 0;
  QDirIterator files(QStringLiteral(":/velotap/qml/Velotap"), {QStringLiteral("*.qml")},
                     QDir::Files, QDirIterator::Subdirectories);
  while (files.hasNext()) {
    const QUrl url(QStringLiteral("qrc") + files.next());
    if (url.fileName() == QStringLiteral("Theme.qml")) continue;  // a singleton
    QQmlComponent component(&engine, url);
    EXPECT_TRUE(component.isReady()) << component.errorString().toStdString();
    ++count;
  }
  EXPECT_GT(count, 20);
}

class FilterDisclosureTest : public ComponentTest {
 protected:
  // With one filter as its content.
  std::unique_ptr<QQuickItem> made(int active) {
    engine_.addImportPath(QStringLiteral(":/velotap/qml"));
    engine_.addImageProvider(QStringLiteral("glyph"), new GlyphProvider);
    QQmlComponent component(&engine_);
    component.setData(
        QStringLiteral("import Velotap\nFilterDisclosure { title: 'Filter'; activeCount: %1; "
                       "resetText: 'Reset'; width: 300; FilterToggle { title: 'One' } }")
            .arg(active)
            .toUtf8(),
        QUrl());
    return std::unique_ptr<QQuickItem>(qobject_cast<QQuickItem*>(component.create()));
  }
  static QQuickItem* button(QQuickItem* root, const char* text) {
    if (root->inherits("QQuickButton") && root->property("text") == QLatin1String(text)) {
      return root;
    }
    for (QQuickItem* child : root->childItems()) {
      if (QQuickItem* found = button(child, text)) return found;
    }
    return nullptr;
  }
  static bool expanded(const QQuickItem& item) { return item.property("expanded").toBool(); }

 private:
  QQmlEngine engine_;
};

TEST_F(FilterDisclosureTest, OpensItselfWhereAFilterIsInForce) {
  const auto open = made(3);
  ASSERT_NE(open, nullptr);
  EXPECT_TRUE(expanded(*open));
  ASSERT_NE(button(open.get(), "Reset"), nullptr);
  EXPECT_TRUE(button(open.get(), "Reset")->isVisible());
  const auto closed = made(0);
  EXPECT_FALSE(expanded(*closed));
  EXPECT_FALSE(button(closed.get(), "Reset")->isVisible());
}

TEST_F(FilterDisclosureTest, NeverClosesItselfNorOpensLater) {
  const auto item = made(1);
  item->setProperty("activeCount", 0);
  EXPECT_TRUE(expanded(*item)) << "the person is still at it";
  EXPECT_FALSE(button(item.get(), "Reset")->isVisible());
  item->setProperty("activeCount", 1);
  EXPECT_TRUE(button(item.get(), "Reset")->isVisible());
  QMetaObject::invokeMethod(button(item.get(), "Filter"), "clicked");
  EXPECT_FALSE(expanded(*item)) << "by hand";
  item->setProperty("activeCount", 2);
  EXPECT_FALSE(expanded(*item)) << "only when it appears";
}

TEST_F(FilterDisclosureTest, ShowsBySymbolWhetherAFilterIsInForce) {
  const auto item = made(0);
  EXPECT_EQ(item->property("symbol"), QStringLiteral("line.3.horizontal.decrease.circle"));
  item->setProperty("activeCount", 1);
  EXPECT_EQ(item->property("symbol"), QStringLiteral("line.3.horizontal.decrease.circle.fill"));
}

// The symbol's square, the title as a heading of the largest type, and all of it one thing to read.
TEST_F(ComponentTest, AnIntroductionIsOneHeading) {
  QQmlEngine engine;
  engine.addImportPath(QStringLiteral(":/velotap/qml"));
  engine.addImageProvider(QStringLiteral("glyph"), new GlyphProvider);
  QQmlComponent component(&engine);
  component.setData(
      "import QtQuick\nimport Velotap\nIntroduction { symbol: 'hand.tap'; title: 'A'; text: 'B'\n"
      "readonly property int said: Accessible.role\n"
      "readonly property string name: Accessible.name\n"
      "readonly property string description: Accessible.description\n"
      "readonly property int heading: Accessible.Heading }",
      QUrl());
  const std::unique_ptr<QObject> made(component.create());
  auto* item = qobject_cast<QQuickItem*>(made.get());
  ASSERT_NE(item, nullptr) << component.errorString().toStdString();
  EXPECT_EQ(item->property("said"), item->property("heading"));
  EXPECT_EQ(item->property("name"), QStringLiteral("A"));
  EXPECT_EQ(item->property("description"), QStringLiteral("B"));
  EXPECT_EQ(item->childItems().first()->size(), QSizeF(40, 40));
}

TEST_F(ComponentTest, GalleryInLightDarkAndHighContrast) {
  for (const auto& [look, name] :
       {std::pair(Look{}, "gallery-light"), std::pair(Look{ColorScheme::dark}, "gallery-dark"),
        std::pair(Look{ColorScheme::light, true}, "gallery-contrast"),
        std::pair(Look{ColorScheme::dark, false, 1.4}, "gallery-large")}) {
    context.setLook(look);
    const QQuickItem* root = show(QUrl(QStringLiteral("qrc:/gallery/Gallery.qml")), {560, 1500});
    ASSERT_NE(root, nullptr);
    EXPECT_EQ(truncatedTexts(root), QStringList());
    EXPECT_FALSE(picture(QString::fromLatin1(name)).isNull());
  }
}

}  // namespace
}  // namespace velotap::test
