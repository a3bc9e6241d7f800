// Every component of the module loads, by itself, without a complaint; and what they look like.

#include <QDirIterator>
#include <QQmlComponent>

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
