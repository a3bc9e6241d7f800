// Nothing that the window can show is cut off, lies over something else or leaves its place: in
// every language, as narrow as the window gets and as it opens, and with large text.

#include <QQmlComponent>

#include "layout_check.hpp"
#include "scene.hpp"

namespace velotap::test {
namespace {

class LayoutTest : public SceneTest, public testing::WithParamInterface<const char*> {
 protected:
  void check(const char* locale, int width, const char* how) {
    for (const SceneState& state : sceneStates()) {
      open(locale, state, width);
      QQuickItem* all = settings->view()->contentItem();
      const QString where = QStringLiteral("%1-%2-%3-%4")
                                .arg(QLatin1String(state.name), QLatin1String(locale))
                                .arg(width)
                                .arg(QLatin1String(how));
      const QStringList problems = truncatedTexts(all) + layoutProblems(all);
      EXPECT_EQ(problems.join(u'\n').toStdString(), "") << where.toStdString();
      keep(where);
    }
  }
};

TEST_P(LayoutTest, HoldsWhenNarrow) {
  check(GetParam(), 480, "narrow");
}

TEST_P(LayoutTest, HoldsAsTheWindowOpens) {
  check(GetParam(), 560, "default");
}

TEST_P(LayoutTest, HoldsWithLargeText) {
  context.setLook({.scheme = ColorScheme::dark, .textScale = 1.4});
  check(GetParam(), 480, "large");
}

INSTANTIATE_TEST_SUITE_P(Languages, LayoutTest, testing::ValuesIn(kLanguages),
                         [](const auto& made) { return std::string(made.param); });

// The check itself: two labels in a frame that is too narrow for them.
class LayoutCheckTest : public ViewTest {
 protected:
  QStringList problemsOf(const char* body) {
    QQmlEngine engine;
    QQmlComponent component(&engine);
    component.setData(QByteArray("import QtQuick\nItem { width: 100; height: 100\n") + body + "}",
                      QUrl());
    const std::unique_ptr<QObject> made(component.create());
    return layoutProblems(qobject_cast<QQuickItem*>(made.get()));
  }
};

TEST_F(LayoutCheckTest, LeavesWhatIsInOrderAlone) {
  EXPECT_EQ(problemsOf("Rectangle { width: 90; height: 40; Text { text: 'a'; x: 2 } }"
                       "Text { text: 'b'; y: 50 }"),
            QStringList());
}

TEST_F(LayoutCheckTest, SeesWhatLiesOverOneAnother) {
  EXPECT_EQ(problemsOf("Text { text: 'aa' } Text { text: 'bb'; x: 3 }").size(), 1);
  EXPECT_EQ(problemsOf("Text { text: 'aa' } Text { text: 'bb'; x: 3; visible: false }").size(), 0);
}

TEST_F(LayoutCheckTest, SeesWhatLeavesItsPlace) {
  EXPECT_EQ(problemsOf("Text { text: 'a'; x: 97 }").size(), 1) << "the window";
  EXPECT_EQ(problemsOf("Rectangle { width: 50; height: 5; Text { text: 'a' } }").size(), 1);
  EXPECT_EQ(problemsOf("Item { clip: true; width: 4; height: 50; Text { text: 'aaa' } }").size(),
            1);
}

}  // namespace
}  // namespace velotap::test
