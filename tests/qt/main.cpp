#include <gtest/gtest.h>

#include <QApplication>

int main(int argc, char** argv) {
  // Never on the developer's desktop.
  qputenv("QT_QPA_PLATFORM", "offscreen");
  testing::InitGoogleTest(&argc, argv);
  const QApplication app(argc, argv);
  return RUN_ALL_TESTS();
}
