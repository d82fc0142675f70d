#include "app/windows/station_style.h"

#include <gtest/gtest.h>

#include <QApplication>
#include <QIcon>
#include <QImage>
#include <QPushButton>
#include <QStyle>
#include <QTabBar>
#include <QTabWidget>

#include "app/windows/theme.h"

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

/// How many dots differ strongly between two pictures.
int StrongDifferences(const QImage& one, const QImage& other) {
  constexpr int kStrong = 100;
  int dots = 0;
  for (int y = 0; y < one.height(); ++y) {
    for (int x = 0; x < one.width(); ++x) {
      dots += std::abs(qGray(one.pixel(x, y)) - qGray(other.pixel(x, y))) >= kStrong ? 1 : 0;
    }
  }
  return dots;
}

TEST(StationStyle, TheTabThatHasTheKeyboardIsSeenOnALightAndOnADarkScreen) {
  for (const Theme theme : {Theme::Light, Theme::Dark}) {
    SCOPED_TRACE(theme == Theme::Light ? "light" : "dark");
    const QPalette usual = QApplication::palette();
    const QString usualStyle = QApplication::style()->objectName();
    Wear(theme);
    QWidget window;
    auto* pages = new QTabWidget(&window);
    pages->addTab(new QWidget, "SYSTEM");
    pages->addTab(new QWidget, "RX");
    pages->resize(300, 100);
    QTabBar* const tabs = pages->tabBar();
    auto* other = new QPushButton("Other", &window);
    window.show();
    QApplication::setActiveWindow(&window);
    other->setFocus(Qt::TabFocusReason);
    const QImage without = tabs->grab().toImage();
    tabs->setFocus(Qt::TabFocusReason);
    ASSERT_TRUE(tabs->hasFocus());
    const QImage with = tabs->grab().toImage();
    const QRect tab = tabs->tabRect(0);
    EXPECT_GE(StrongDifferences(with.copy(tab), without.copy(tab)), tab.width() + tab.height());
    EXPECT_EQ(StrongDifferences(with.copy(tabs->tabRect(1)), without.copy(tabs->tabRect(1))), 0);
    QApplication::setStyle(usualStyle);
    QApplication::setPalette(usual);
  }
}

TEST(StationStyle, OtherIconsAreTheToolkits) {
  const StationStyle style;
  EXPECT_FALSE(style.standardIcon(QStyle::SP_FileDialogToParent, nullptr, nullptr).isNull());
}

}  // namespace
}  // namespace orvane::test
