#include <gmock/gmock.h>

#include <QAbstractButton>
#include <QGroupBox>
#include <QLabel>
#include <QLineEdit>
#include <QListView>
#include <QScrollBar>
#include <QStyle>
#include <QSvgWidget>
#include <set>

#include "adapters/qt/fitting_area.h"
#include "app/windows/theme.h"
#include "windows/windows_test.h"

namespace orvane::test {
namespace {

class WindowShapes : public testing::Test {
 protected:
  void SetUp() override {
    windowed_.emplace();
    windowed_->on.station.Start();
  }
  PanelWindow& Shown(Panel& panel) {
    windowed_->on.station.Nest().Run([&] { panel.Show(); });
    PanelWindow& window = windowed_->WindowOf(panel);
    windowed_->Settle();
    return window;
  }

  std::optional<WindowedStation> windowed_;
};

TEST_F(WindowShapes, EveryWindowFitsOnASmallScreen) {
  for (Panel* panel : windowed_->on.Panels().All()) {
    const PanelWindow& window = Shown(*panel);
    EXPECT_LE(window.width(), 1270) << panel->Name();
    EXPECT_LE(window.height(), 680) << panel->Name();
    EXPECT_GE(window.width(), window.minimumSizeHint().width()) << panel->Name();
    EXPECT_GE(window.height(), window.minimumSizeHint().height()) << panel->Name();
  }
}

std::vector<std::string> Scrolled(PanelWindow& window) {
  std::vector<std::string> scrolled;
  for (const FittingArea* area : window.findChildren<FittingArea*>()) {
    const bool moves = area->verticalScrollBar()->maximum() > 0 || area->horizontalScrollBar()->maximum() > 0;
    if (area->isVisible() && moves) scrolled.push_back(window.objectName().toStdString());
  }
  return scrolled;
}

TEST_F(WindowShapes, NothingIsScrolledInTheUsualType) {
  for (Panel* panel : windowed_->on.Panels().All()) EXPECT_THAT(Scrolled(Shown(*panel)), testing::IsEmpty());
  OrvaneMain& main = windowed_->on.Panels().main;
  for (int page = 0; page < 3; ++page) {
    main.SSTab1.Select(page);
    EXPECT_THAT(Scrolled(Shown(main)), testing::IsEmpty()) << page;
  }
}

/// The type of all windows, for as long as it lives.
class TypeOf {
 public:
  explicit TypeOf(double times) {
    QFont larger = usual_;
    larger.setPointSizeF(usual_.pointSizeF() * times);
    QApplication::setFont(larger);
  }
  TypeOf(const TypeOf&) = delete;
  TypeOf& operator=(const TypeOf&) = delete;
  ~TypeOf() { QApplication::setFont(usual_); }

 private:
  QFont usual_ = QApplication::font();
};

TEST_F(WindowShapes, InALargeTypeEveryWindowFitsOnASmallScreenToo) {
  for (const double times : {1.25, 1.6}) {
    const TypeOf large(times);
    SetUp();
    for (Panel* panel : windowed_->on.Panels().All()) {
      PanelWindow& window = Shown(*panel);
      EXPECT_LE(window.width(), 1270) << panel->Name() << " " << times;
      EXPECT_LE(window.height(), 680) << panel->Name() << " " << times;
      for (const FittingArea* area : window.findChildren<FittingArea*>()) {
        const QWidget* content = area->widget();
        EXPECT_GE(content->width(), content->minimumSizeHint().width()) << "what has no room is scrolled to";
        EXPECT_GE(content->height(), content->minimumSizeHint().height()) << "what has no room is scrolled to";
      }
    }
  }
}

/// Widgets of a kind that have less room than what is written on them takes.
template <class Widget>
std::vector<std::string> Clipped(PanelWindow& window) {
  std::vector<std::string> clipped;
  for (const Widget* widget : window.findChildren<Widget*>()) {
    if (!widget->isVisible() || widget->text().isEmpty()) continue;
    if (widget->width() < widget->sizeHint().width() || widget->height() < widget->sizeHint().height()) {
      clipped.push_back(widget->text().toStdString());
    }
  }
  return clipped;
}

TEST_F(WindowShapes, NoCaptionIsClipped) {
  for (Panel* panel : windowed_->on.Panels().All()) {
    PanelWindow& window = Shown(*panel);
    EXPECT_THAT(Clipped<QAbstractButton>(window), testing::IsEmpty()) << panel->Name();
    EXPECT_THAT(Clipped<QLabel>(window), testing::IsEmpty()) << panel->Name();
    for (const QGroupBox* group : window.findChildren<QGroupBox*>()) {
      if (!group->isVisible()) continue;
      EXPECT_GE(group->width(), group->fontMetrics().horizontalAdvance(group->title()))
          << group->title().toStdString();
    }
  }
}

TEST_F(WindowShapes, WhatStandsInABoxIsReadWhole) {
  for (Panel* panel : windowed_->on.Panels().All()) {
    PanelWindow& window = Shown(*panel);
    for (const QLineEdit* box : window.findChildren<QLineEdit*>()) {
      if (!box->isVisible()) continue;
      constexpr int kFrame = 8;
      EXPECT_GE(box->width() - kFrame, box->fontMetrics().horizontalAdvance(box->text()))
          << panel->Name() << "." << box->objectName().toStdString() << ": " << box->text().toStdString();
    }
  }
}

TEST_F(WindowShapes, WhoCannotSeeAnEntryHearsItsCaption) {
  StationPanels& panels = windowed_->on.Panels();
  Shown(panels.autoCal);
  const auto spoken = [&](Control& control) { return windowed_->Of(control).accessibleName(); };
  EXPECT_EQ(spoken(panels.autoCal.txtDCSLoss), "Channels and losses: Tx loss (dB), DCS");
  auto* arrow = windowed_->Of(panels.autoCal.updDCSLoss).findChild<QWidget*>("up");
  EXPECT_EQ(arrow->accessibleName(), "Channels and losses: Tx loss (dB), DCS up");
  EXPECT_EQ(spoken(panels.main.cmdULTest), "Uplink Normal Burst test, Test");
  panels.main.cmdULTest.SetCaption("Stop");
  EXPECT_EQ(spoken(panels.main.cmdULTest), "Uplink Normal Burst test, Stop");
  EXPECT_EQ(spoken(panels.autoCal.cmdAutoCalStop), "");
  EXPECT_EQ(windowed_->Of(panels.main.shpTargetOnOff).accessibleDescription(), "Not used yet");
  panels.main.shpTargetOnOff.SetBackColor(kGreen);
  windowed_->Settle();
  EXPECT_EQ(windowed_->Of(panels.main.shpTargetOnOff).accessibleDescription(), "Ready");
}

TEST_F(WindowShapes, WhatComesUpInARunMovesNothing) {
  StationPanels& panels = windowed_->on.Panels();
  for (ProgressBar* bar : {&panels.autoCal.prgAutoCalDownload, &panels.downLoad.prgDownload}) {
    const QSize before = Shown(bar->Owner()).minimumSizeHint();
    bar->SetVisible(true);
    const QSize after = Shown(bar->Owner()).minimumSizeHint();
    EXPECT_TRUE(windowed_->Of(*bar).isVisible()) << bar->Owner().Name();
    EXPECT_EQ(after.height(), before.height()) << bar->Owner().Name();
  }
}

/// How far apart the lightest and the darkest dot of a picture are.
int Contrast(const QImage& drawn) {
  int darkest = 255;
  int lightest = 0;
  for (int y = 0; y < drawn.height(); ++y) {
    for (int x = 0; x < drawn.width(); ++x) {
      darkest = std::min(darkest, qGray(drawn.pixel(x, y)));
      lightest = std::max(lightest, qGray(drawn.pixel(x, y)));
    }
  }
  return lightest - darkest;
}

TEST_F(WindowShapes, TheLampOfAClosedPortBearsNoCross) {
  Lamp& port = windowed_->on.Panels().main.shpTargetOnOff;
  PanelWindow& window = Shown(windowed_->on.Panels().main);
  QWidget& lamp = windowed_->Of(port);
  const auto drawn = [&] { return window.grab(QRect(lamp.mapTo(&window, QPoint()), lamp.size())).toImage(); };
  const QRgb ground = drawn().pixel(lamp.width() / 2, lamp.height() / 2);
  port.SetBackColor(kRed);
  windowed_->Settle();
  const QImage ring = drawn();
  EXPECT_EQ(ring.pixel(ring.width() / 2, ring.height() / 2), ground);
  int reds = 0;
  for (int x = 0; x < ring.width(); ++x) {
    const QRgb dot = ring.pixel(x, ring.height() / 2);
    reds += qRed(dot) > 180 && qGreen(dot) < 120 ? 1 : 0;
  }
  EXPECT_GE(reds, 3);
}

TEST_F(WindowShapes, OnADarkScreenEmptyBoxesAndLampsHaveAnEdge) {
  const QPalette usual = QApplication::palette();
  const QString usualStyle = QApplication::style()->objectName();
  Wear(Theme::Dark);
  SetUp();
  StationPanels& panels = windowed_->on.Panels();
  for (Panel* panel : {static_cast<Panel*>(&panels.main), static_cast<Panel*>(&panels.baseBand)}) Shown(*panel);
  constexpr int kSeen = 60;
  for (Control* control :
       {static_cast<Control*>(&panels.main.txtUserCommand), static_cast<Control*>(&panels.main.txtResults),
        static_cast<Control*>(&panels.main.shpTargetOnOff), static_cast<Control*>(&panels.baseBand.shpBatCalOnOff)}) {
    EXPECT_GE(Contrast(windowed_->Of(*control).grab().toImage()), kSeen) << control->Name();
  }
  QApplication::setStyle(usualStyle);
  QApplication::setPalette(usual);
}

void CollectViews(const Layout& layout, std::vector<std::string>& views) {
  if (layout.kind == Layout::Kind::View) views.push_back(layout.text);
  for (const Layout& part : layout.parts) CollectViews(part, views);
}

TEST_F(WindowShapes, EveryViewOfALayoutIsThere) {
  for (const auto& [panel, layout] : LayOutAll(windowed_->on.Panels())) {
    std::vector<std::string> views;
    CollectViews(layout, views);
    PanelWindow& window = Shown(*panel);
    for (const std::string& view : views) {
      EXPECT_NE(window.findChild<QWidget*>(QString::fromStdString(view)), nullptr) << panel->Name() << ": " << view;
    }
  }
}

TEST_F(WindowShapes, ThePaceIsTimedBesideItsTurns) {
  OrvaneMain& main = windowed_->on.Panels().main;
  auto* time = Shown(main).findChild<QLabel*>("paceTime");
  ASSERT_NE(time, nullptr);
  // Two nanoseconds a turn on virtual time.
  EXPECT_EQ(time->text(), "a pace: 0.04 ms");
  main.txtSyncDelay.SetText("500000");
  EXPECT_EQ(time->text(), "a pace: 1 ms");
  main.txtSyncDelay.SetText("many");
  EXPECT_EQ(time->text(), "");
}

/// The colours in one line of a picture, so many hundredths of its height below its top.
std::set<QRgb> ColoursOf(const QImage& drawn, int hundredths) {
  std::set<QRgb> colours;
  for (int x = 0; x < drawn.width(); ++x) colours.insert(drawn.pixel(x, drawn.height() * hundredths / 100));
  return colours;
}

/// How high the word of a verdict is: the lines below the middle that have its colour.
int HeightOfWord(const QImage& drawn) {
  int lines = 0;
  for (int hundredths = 50; hundredths < 100; ++hundredths) {
    lines += ColoursOf(drawn, hundredths).contains(0xFFFFFFFFU) ? 1 : 0;
  }
  return drawn.height() * lines / 100;
}

TEST_F(WindowShapes, AVerdictIsAWordAndAMarkToBeToldFromFarAway) {
  constexpr QRgb kGreenGround = 0xFF1B7F3A;
  constexpr QRgb kRedGround = 0xFFC62828;
  constexpr QRgb kAmberGround = 0xFFFFBF00;
  FrmFailPass& passPanel = windowed_->on.Panels().pass;
  auto* passed = Shown(passPanel).findChild<QSvgWidget*>("Image1");
  auto* failed = Shown(windowed_->on.Panels().fail).findChild<QSvgWidget*>("Image1");
  ASSERT_NE(passed, nullptr);
  ASSERT_NE(failed, nullptr);

  const QImage pass = passed->grab().toImage();
  const QImage fail = failed->grab().toImage();
  for (const int line : {30, 75}) {
    EXPECT_THAT(ColoursOf(pass, line), testing::IsSupersetOf({kGreenGround, 0xFFFFFFFFU})) << line;
    EXPECT_THAT(ColoursOf(fail, line), testing::IsSupersetOf({kRedGround, 0xFFFFFFFFU})) << line;
  }
  // A tenth of a usual screen's height.
  EXPECT_GE(HeightOfWord(pass), 108);
  EXPECT_GE(HeightOfWord(fail), 108);

  passPanel.Image1.SetPicture("not measured");
  windowed_->Settle();
  EXPECT_THAT(ColoursOf(passed->grab().toImage(), 50), testing::IsSupersetOf({kAmberGround, 0xFF000000U}));
  passPanel.Image1.SetPicture("out of tolerance");
  windowed_->Settle();
  constexpr QRgb kDarkGround = 0xFF201800;
  EXPECT_THAT(ColoursOf(passed->grab().toImage(), 25), testing::IsSupersetOf({kAmberGround, kDarkGround}));
}

TEST_F(WindowShapes, OfAPassThatIsNoneYetAllIsSeenAtOnceAndLongReasonsWrap) {
  FrmFailPass& panel = windowed_->on.Panels().pass;
  PanelWindow& window = Shown(panel);
  const std::string reason =
      "transmitGSM: The test set gave an empty reading at GSM level 5. GSM level 6 stopped at DAC 1020, 4.91 dB from "
      "its target. Commands that failed in the Target: 4.";
  panel.lstIncomplete.AddItem(reason);
  for (int step = 0; step < 4; ++step) panel.lstIncomplete.AddItem("save: The step did not run.");
  panel.lblDoubt.SetCaption(std::string(FlawText(FlawKind::NotMeasured)));
  panel.lblRemedy.SetCaption(std::string(RemedyText(FlawKind::NotMeasured)));
  for (Control* control : {static_cast<Control*>(&panel.lblDoubt), static_cast<Control*>(&panel.lblIncomplete),
                           static_cast<Control*>(&panel.lstIncomplete), static_cast<Control*>(&panel.lblRemedy)}) {
    control->SetVisible(true);
  }
  RunReport& report = windowed_->on.State().report;
  report.Begin();
  report.Enter(RunStep::TransmitGsm);
  for (int level = 5; level < 15; ++level) {
    report.Read({"tx.gsm.level." + std::to_string(level) + ".power", 0, "dBm", 1, 2});
  }
  report.Flaw(reason);
  report.Conclude(Verdict::Pass);
  report.End();
  for (int turn = 0; turn < 4; ++turn) windowed_->Settle();
  window.TakeItsSize();
  windowed_->Settle();
  EXPECT_LE(window.height(), 680);
  EXPECT_THAT(Scrolled(window), testing::IsEmpty());

  auto* list = window.findChild<QListView*>("lstIncomplete");
  const QRect row = list->visualRect(list->model()->index(0, 0));
  EXPECT_GE(row.height(), 2 * list->fontMetrics().height());
  EXPECT_LE(row.right(), list->viewport()->width());
  EXPECT_LT(list->height(), 6 * list->fontMetrics().lineSpacing());
}

TEST_F(WindowShapes, APassThatIsNoneYetShowsItsSecondWordReasonsAndRemedy) {
  FrmFailPass& panel = windowed_->on.Panels().pass;
  PanelWindow& window = Shown(panel);
  const std::initializer_list<Control*> doubts{&panel.lblDoubt, &panel.lblIncomplete, &panel.lstIncomplete,
                                               &panel.lblRemedy};
  for (Control* control : doubts) {
    EXPECT_FALSE(window.findChild<QWidget*>(ToQt(control->Name()))->isVisible()) << control->Name();
  }
  panel.lblDoubt.SetCaption(std::string(FlawText(FlawKind::OutOfTolerance)));
  panel.lblRemedy.SetCaption(std::string(RemedyText(FlawKind::NotMeasured)));
  for (Control* control : doubts) control->SetVisible(true);
  windowed_->Settle();
  for (Control* control : doubts) {
    const auto* widget = window.findChild<QWidget*>(ToQt(control->Name()));
    EXPECT_TRUE(widget->isVisible()) << control->Name();
    EXPECT_GE(widget->width(), widget->sizeHint().width()) << control->Name() << " is cut off";
  }
}

}  // namespace
}  // namespace orvane::test
