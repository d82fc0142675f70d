#include "app/windows/front_end.h"

#include <QScreen>
#include <algorithm>

#include "app/windows/status_strip.h"
#include "windows/windows_test.h"

namespace orvane::test {
namespace {

/// The windows of a whole station as the program has them.
class FrontEndTest : public testing::Test {
 protected:
  QRect Shown(Panel& panel) {
    on_.station.Nest().Run([&] { panel.Show(); });
    return windows_.WindowOf(panel)->frameGeometry();
  }

  VirtualStation on_;
  Desk desk_{on_.loop, "/tmp"};
  FrontEnd windows_{on_.loop, desk_, on_.station};
};

TEST_F(FrontEndTest, APanelHasNoWindowBeforeItIsShown) {
  on_.station.Nest().Run([&] { on_.Panels().baseBand.Touch(); });
  EXPECT_EQ(windows_.WindowOf(on_.Panels().baseBand), nullptr);
  Shown(on_.Panels().baseBand);
  EXPECT_TRUE(windows_.WindowOf(on_.Panels().baseBand)->isVisible());
}

TEST_F(FrontEndTest, WindowsAreMadeAheadOneByOneWhileNothingIsUnderWay) {
  Shown(on_.Panels().main);
  const auto made = [this] {
    const auto panels = LayOutAll(on_.Panels());
    return std::ranges::count_if(panels, [&](const auto& l) { return windows_.WindowOf(*l.panel) != nullptr; });
  };
  windows_.UseFreeTime(on_.loop.Now() + std::chrono::seconds(3));  // As in a wait for a reply.
  EXPECT_EQ(made(), 1);
  for (int turn = 2; turn <= 5; ++turn) {
    windows_.UseFreeTime(kForever);
    EXPECT_EQ(made(), turn);
    on_.loop.Yield(on_.loop.Now() + TimePoint{1});
  }
  const auto all = static_cast<int>(LayOutAll(on_.Panels()).size());
  for (int turn = 0; turn < all; ++turn) windows_.UseFreeTime(kForever);
  EXPECT_EQ(made(), all);
  for (const auto& layout : LayOutAll(on_.Panels())) {
    EXPECT_EQ(windows_.WindowOf(*layout.panel)->isVisible(), layout.panel->Visible()) << layout.panel->Name();
  }
}

TEST_F(FrontEndTest, NoWindowComesUpRightOverAnotherOneOrOffTheScreen) {
  const QRect room = QGuiApplication::primaryScreen()->availableGeometry();
  std::vector<QRect> places;
  for (Panel* panel : {static_cast<Panel*>(&on_.Panels().main), static_cast<Panel*>(&on_.Panels().autoCal),
                       static_cast<Panel*>(&on_.Panels().baseBand)}) {
    const QRect place = Shown(*panel);
    EXPECT_TRUE(room.intersects(place)) << panel->Name();
    EXPECT_TRUE(room.contains(place.topLeft())) << panel->Name() << ": it is moved by the bar at its top";
    for (const QRect& other : places) EXPECT_NE(place.topLeft(), other.topLeft()) << panel->Name();
    places.push_back(place);
  }
}

TEST_F(FrontEndTest, TheMainWindowFitsOnASmallScreenWithItsStatus) {
  const StationStatus status(on_.loop, on_.bench.Serial(), on_.State(), on_.Panels());
  QWidget* strip = nullptr;
  windows_.belowMain = [&](QWidget* parent) { return strip = new StatusStrip(status, Surroundings{}, parent); };
  Shown(on_.Panels().main);
  ASSERT_NE(strip, nullptr);
  EXPECT_TRUE(strip->isVisible());
  const QSize least = windows_.WindowOf(on_.Panels().main)->minimumSizeHint();
  EXPECT_LE(least.width(), 1270);
  EXPECT_LE(least.height(), 680);
  delete strip;  // It looks at a status that goes before the windows.
}

TEST_F(FrontEndTest, AVerdictComesUpInTheMiddleOfTheScreen) {
  const QRect room = QGuiApplication::primaryScreen()->availableGeometry();
  for (Panel* panel : {static_cast<Panel*>(&on_.Panels().pass), static_cast<Panel*>(&on_.Panels().fail)}) {
    const QPoint off = Shown(*panel).center() - room.center();
    EXPECT_LE(off.manhattanLength(), 4) << panel->Name();
  }
}

TEST_F(FrontEndTest, AVerdictStandsInFrontAndEnterPressesItsButton) {
  for (Panel* const panel : {static_cast<Panel*>(&on_.Panels().pass), static_cast<Panel*>(&on_.Panels().fail)}) {
    SCOPED_TRACE(panel->Name());
    Shown(*panel);
    PanelWindow& window = *windows_.WindowOf(*panel);
    EXPECT_TRUE(window.windowFlags().testFlag(Qt::WindowStaysOnTopHint));
    window.activateWindow();
    QCoreApplication::processEvents();
    QTest::keyClick(&window, Qt::Key_Return);
    on_.loop.Yield(on_.loop.Now());
    EXPECT_FALSE(panel->Visible());
  }
  Shown(on_.Panels().main);
  EXPECT_FALSE(windows_.WindowOf(on_.Panels().main)->windowFlags().testFlag(Qt::WindowStaysOnTopHint));
}

TEST_F(FrontEndTest, AWindowThatARunOpensLeavesTheKeyboardWhereItIs) {
  Panel& beside = on_.Panels().mpAutoCal;
  Shown(on_.Panels().main);
  PanelWindow& main = *windows_.WindowOf(on_.Panels().main);
  auto* line = main.findChild<QWidget*>("txtUserCommand");
  ASSERT_NE(line, nullptr);
  on_.station.Nest().Run([&] { beside.ShowBeside(); });
  PanelWindow& window = *windows_.WindowOf(beside);
  EXPECT_TRUE(window.isVisible());
  // This platform gives the keyboard to every new window, whatever that says of itself.
  EXPECT_TRUE(window.testAttribute(Qt::WA_ShowWithoutActivating));

  main.activateWindow();
  line->setFocus();
  QCoreApplication::processEvents();
  ASSERT_EQ(QApplication::focusWidget(), line);
  on_.station.Nest().Run([&] { beside.ShowBeside(); });
  QCoreApplication::processEvents();
  EXPECT_EQ(QApplication::activeWindow(), &main);
  EXPECT_EQ(QApplication::focusWidget(), line);

  Shown(beside);
  QCoreApplication::processEvents();
  EXPECT_FALSE(window.testAttribute(Qt::WA_ShowWithoutActivating));
  EXPECT_EQ(QApplication::activeWindow(), &window) << "somebody who opens it wants to type there";
}

TEST_F(FrontEndTest, NoWindowTakesActsWhileABoxLiesOpen) {
  Shown(on_.Panels().autoCal);
  auto* line = windows_.WindowOf(on_.Panels().autoCal)->findChild<QWidget*>("txtARFCN");
  ASSERT_NE(line, nullptr);
  on_.loop.PostAt(on_.loop.Now() + TimePoint{1},
                  [&] { QTest::sendKeyEvent(QTest::Click, line, Qt::Key_7, "7", Qt::NoModifier); });
  on_.loop.PostAt(on_.loop.Now() + TimePoint{1000}, [&] { desk_.Press(desk_.OpenBoxes().back().id, "OK"); });
  desk_.Show({"A box."});
  EXPECT_EQ(on_.Panels().autoCal.txtARFCN.Text(), "62");

  QTest::sendKeyEvent(QTest::Click, line, Qt::Key_7, "7", Qt::NoModifier);
  on_.loop.Yield(on_.loop.Now());
  EXPECT_EQ(on_.Panels().autoCal.txtARFCN.Text(), "627");
}

}  // namespace
}  // namespace orvane::test
