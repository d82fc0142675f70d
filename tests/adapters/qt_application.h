#pragma once

#include <QCoreApplication>

namespace orvane::test {

/// The one application object of the test program.
inline void NeedQtApplication() {
  static int argc = 1;
  static char name[] = "adapters_tests";
  static char* argv[] = {name, nullptr};
  static QCoreApplication application(argc, argv);
}

}  // namespace orvane::test
