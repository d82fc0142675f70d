#include <gtest/gtest.h>

#include <QApplication>
#include <QLoggingCategory>

/// A test program with windows on a screen in memory. The application goes before the toolkit's own statics do.
int main(int argc, char** argv) {
  qputenv("QT_QPA_PLATFORM", "offscreen");
  // As in the program: the other dispatcher leaves nothing out of its turn.
  qputenv("QT_NO_GLIB", "1");
  QLoggingCategory::setFilterRules("qt.qpa.*=false");
  const QApplication application(argc, argv);
  ::testing::InitGoogleTest(&argc, argv);
  return RUN_ALL_TESTS();
}
