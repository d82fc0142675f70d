#pragma once

#include <gtest/gtest.h>

#include <QCoreApplication>

#include "adapters/qt_event_loop.h"

namespace orvane::test {

/// The one application object of the test program.
struct QtApplication {
  QtApplication() {
    static int argc = 1;
    static char name[] = "adapters_tests";
    static char* argv[] = {name, nullptr};
    static QCoreApplication application(argc, argv);
  }
};

/// A test in real time.
class QtTest : public testing::Test, private QtApplication {
 protected:
  template <class Condition>
  bool YieldUntil(Condition condition, TimePoint limit = std::chrono::seconds(2)) {
    const TimePoint until = loop_.Now() + limit;
    while (!condition() && loop_.Now() < until) loop_.Yield(until);
    return condition();
  }
  void YieldFor(TimePoint span) {
    YieldUntil([] { return false; }, span);
  }

  QtEventLoop loop_;
};

}  // namespace orvane::test
