#pragma once

#include <gtest/gtest.h>

#include <functional>
#include <optional>
#include <string>

#include "screen/screen_station.h"

namespace orvane::test {

/// Roads on a display of the test's own, with somebody who answers the boxes on it.
class RoadOnScreen : public testing::Test {
 protected:
  void SetUp() override;

  /// Presses the OK of every box that comes before that window does. @return how many there were.
  int AnswerBoxesUntil(const std::string& window, ScreenStation& station, const std::function<void()>& ahead = {});
  /// The picture in the verdict's window is that one and none of the others.
  static void ExpectPicture(const ScreenStation& station, const std::string& window, const std::string& name);

  std::optional<XDisplay> display_;
};

}  // namespace orvane::test
