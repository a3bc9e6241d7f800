#include "settings/capture/fitted_size.hpp"

#include <gtest/gtest.h>

#include "scene.hpp"

namespace velotap::test {
namespace {

class FittedSizeTest : public testing::Test {
 protected:
  FittedSizeTest() { pane.setSize({480, 600}); }
  static void put(QQuickItem& item, QQuickItem& into, QRectF place) {
    item.setParentItem(&into);
    item.setPosition(place.topLeft());
    item.setSize(place.size());
  }

  QQuickItem pane;
  QQuickItem card;
};

TEST_F(FittedSizeTest, WhatFitsIsAsLargeAsItsPlace) {
  put(card, pane, {20, 20, 460, 580});
  EXPECT_EQ(fittedSize(pane), QSize(480, 600));
}

TEST_F(FittedSizeTest, WhatReachesFurtherIsMeasuredWhereverItLies) {
  QQuickItem row;
  put(card, pane, {20, 20, 440, 100});
  put(row, card, {400, 90, 61, 491});
  EXPECT_EQ(fittedSize(pane), QSize(481, 601));
}

TEST_F(FittedSizeTest, WhatIsNotSeenTakesNoRoom) {
  put(card, pane, {20, 20, 900, 900});
  card.setVisible(false);
  EXPECT_EQ(fittedSize(pane), QSize(480, 600));
  card.setVisible(true);
  card.setOpacity(0);
  EXPECT_EQ(fittedSize(pane), QSize(480, 600));
}

class FittedScene : public SceneTest {};

TEST_F(FittedScene, APaneThatScrollsMayBeLongerButNotWiderThanTheWindow) {
  open("de", PreferencesTab::tuning, {480, 600});
  QQuickItem& root = *settings->view()->rootObject();
  EXPECT_EQ(fittedSize(root), QSize(480, 600));
  root.setWidth(400);
  awaitFrame();
  EXPECT_GT(fittedSize(root).width(), 400) << "what is too wide is seen to be";
}

}  // namespace
}  // namespace velotap::test
