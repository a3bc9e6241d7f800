// A window in memory with one view in it, and every complaint that Qt has about it.
//
// Main thread. A picture is taken after the first frame, because layouts have not run before.
// With VELOTAP_PICTURES naming a folder, pictures are kept there to be looked at.
#pragma once

#include <gtest/gtest.h>

#include <QImage>
#include <QQmlEngine>
#include <QQuickView>
#include <QStringList>
#include <memory>

#include "settings/views/bridge/view_context.hpp"

namespace velotap::test {

/// Collects what Qt warns of while it lives.
class Complaints {
 public:
  Complaints();
  ~Complaints();
  Complaints(const Complaints&) = delete;
  Complaints& operator=(const Complaints&) = delete;

  [[nodiscard]] QStringList all() const;
};

class ViewTest : public testing::Test {
 protected:
  ViewTest();
  ~ViewTest() override;

  /// Shows the view and waits for its first frame; its root item.
  QQuickItem* show(const QUrl& view, QSize size);
  [[nodiscard]] QImage picture(const QString& name);

  Complaints complaints;
  ViewContext context{true};
  std::unique_ptr<QQuickView> window;
};

/// Texts under `root` that show less than they hold, as "text (width x height)".
[[nodiscard]] QStringList truncatedTexts(const QQuickItem* root);

}  // namespace velotap::test
