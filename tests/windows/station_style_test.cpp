#include "app/windows/station_style.h"

#include <gtest/gtest.h>

#include <QIcon>
#include <QImage>

namespace orvane::test {
namespace {

TEST(StationStyle, TheIconsOfBoxesAreSharpAtAnyDots) {
  const StationStyle style;
  const int side = style.pixelMetric(QStyle::PM_MessageBoxIconSize);
  std::vector<QImage> drawn;
  for (const auto name : {QStyle::SP_MessageBoxCritical, QStyle::SP_MessageBoxWarning,
                          QStyle::SP_MessageBoxInformation, QStyle::SP_MessageBoxQuestion}) {
    const QIcon icon = style.standardIcon(name, nullptr, nullptr);
    for (const int dots : {1, 2, 3}) {
      EXPECT_TRUE(icon.availableSizes().contains(QSize(side, side) * dots)) << name << " at " << dots;
    }
    const QImage large = icon.pixmap(QSize(side, side), 2).toImage();
    EXPECT_EQ(large.width(), side * 2);
    for (const QImage& other : drawn) EXPECT_NE(large, other) << name << " is told by its shape";
    drawn.push_back(large);
  }
}

TEST(StationStyle, OtherIconsAreTheToolkits) {
  const StationStyle style;
  EXPECT_FALSE(style.standardIcon(QStyle::SP_FileDialogToParent, nullptr, nullptr).isNull());
}

}  // namespace
}  // namespace orvane::test
