// Views need an application object and a platform that draws without a display.
// Type is the same everywhere.

#include <gtest/gtest.h>

#include <QGuiApplication>

int main(int argc, char** argv) {
  testing::InitGoogleTest(&argc, argv);
  qputenv("QT_QPA_PLATFORM", "offscreen");
  qputenv("FONTCONFIG_FILE", VELOTAP_FONTS_CONF);
  const QGuiApplication application(argc, argv);
  return RUN_ALL_TESTS();
}
