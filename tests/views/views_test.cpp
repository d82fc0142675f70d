#include <gtest/gtest.h>

#include <QAreaSeries>
#include <QChart>
#include <QCoreApplication>
#include <QElapsedTimer>
#include <QLegendMarker>
#include <QLineSeries>
#include <QScatterSeries>
#include <QThread>
#include <QValueAxis>
#include <algorithm>

#include "adapters/qt/views/channel_axis.h"
#include "adapters/qt/views/channel_codes_view.h"
#include "adapters/qt/views/chart_view.h"
#include "adapters/qt/views/compensation_view.h"
#include "adapters/qt/views/ramp_shape_view.h"
#include "adapters/qt/views/search_view.h"
#include "panels/frm_ramp_table.h"

namespace orvane {
namespace {

using Points = QList<QPointF>;

/// A view on the screen, and its charts.
struct Shown {
  explicit Shown(QWidget* made) : view(made) {
    view->resize(640, 320);
    view->show();
    charts = view->findChildren<ChartView*>();
    if (auto* chart = dynamic_cast<ChartView*>(made)) charts.append(chart);
  }

  /// Serves events until `done`; what never comes ends the wait too.
  template <class Done>
  static void ServeUntil(Done done) {
    QElapsedTimer time;
    time.start();
    while (time.elapsed() < 20000 && !done()) Serve();
  }
  static void Serve() {
    QCoreApplication::processEvents();
    QThread::msleep(1);
  }
  /// Draws what has changed since.
  void Renew() {
    ServeUntil(
        [this] { return std::none_of(charts.begin(), charts.end(), [](auto* chart) { return chart->Due(); }); });
  }

  template <class Series>
  Series* Find(const QString& name) {
    for (ChartView* chart : charts) {
      for (QAbstractSeries* series : chart->chart()->series()) {
        if (auto* found = qobject_cast<Series*>(series); found != nullptr && series->name() == name) return found;
      }
    }
    throw std::runtime_error("There is no such series.");
  }
  Points PointsOf(const QString& name) { return Find<QXYSeries>(name)->points(); }
  /// The lines that are not empty and have no name.
  std::vector<Points> Stretches() {
    std::vector<Points> stretches;
    for (QAbstractSeries* series : charts.front()->chart()->series()) {
      const auto* line = qobject_cast<QLineSeries*>(series);
      if (line != nullptr && line->name().isEmpty() && line->count() > 0) stretches.push_back(line->points());
    }
    return stretches;
  }

  std::unique_ptr<QWidget> view;
  QList<ChartView*> charts;
};

TEST(RampShape, FollowsTheBoxesWhileTheyAreTyped) {
  FrmRampTable panel;
  for (auto& box : panel.editor.txtUP) box->SetText("3");
  for (auto& box : panel.editor.txtDN) box->SetText("1");
  Shown shown(MakeRampShapeView(panel.editor, nullptr));
  EXPECT_EQ(shown.PointsOf("Up").size(), 16);
  EXPECT_EQ(shown.PointsOf("Down")[0], QPointF(18, 1));
  panel.editor.txtUP[15]->SetText("31");
  panel.editor.txtDN[0]->SetText("28");
  shown.Renew();
  EXPECT_EQ(shown.PointsOf("Up")[15], QPointF(15, 31));
  EXPECT_EQ(shown.PointsOf("Down")[0], QPointF(18, 28));
  EXPECT_EQ(shown.Stretches().size(), 2U);
}

TEST(RampShape, ATextThatIsNoNumberLeavesAGap) {
  FrmRampTable panel;
  for (auto& box : panel.editor.txtUP) box->SetText("3");
  for (auto& box : panel.editor.txtDN) box->SetText("1");
  Shown shown(MakeRampShapeView(panel.editor, nullptr));
  panel.editor.txtUP[4]->SetText("");
  panel.editor.txtUP[6]->SetText("3x");
  panel.editor.txtDN[0]->SetText("2.5");
  shown.Renew();
  EXPECT_EQ(shown.PointsOf("Up").size(), 14);
  EXPECT_EQ(shown.PointsOf("Down").size(), 15);
  const auto stretches = shown.Stretches();
  ASSERT_EQ(stretches.size(), 4U);
  EXPECT_EQ(stretches[0].size(), 4);
  EXPECT_EQ(stretches[1], Points{QPointF(5, 3)});
  EXPECT_EQ(stretches[2].front(), QPointF(7, 3));
  EXPECT_EQ(stretches[3].front(), QPointF(19, 1));
}

TEST(RampShape, EveryOtherBoxEmptyIsAStretchEach) {
  FrmRampTable panel;
  for (std::size_t i = 0; i < 16; ++i) panel.editor.txtUP[i]->SetText(i % 2 == 0 ? "" : "9");
  for (auto& box : panel.editor.txtDN) box->SetText("");
  Shown shown(MakeRampShapeView(panel.editor, nullptr));
  EXPECT_EQ(shown.Stretches().size(), 8U);
  for (std::size_t i = 0; i < 16; ++i) panel.editor.txtUP[i]->SetText(i % 2 == 0 ? "9" : "");
  shown.Renew();
  EXPECT_EQ(shown.Stretches().size(), 8U);
}

struct Search {
  SearchTrail trail;
  Shown shown{MakeSearchView(trail, nullptr)};

  void Begin(int level, Decimal4 target) {
    trail.Begin({0, SearchSubject::Kind::Level, level, "GSM level " + std::to_string(level)}, target, "0.25"_d4);
  }
};

TEST(SearchView, ShowsPowerAndDacOfEachPass) {
  Search search;
  search.Begin(19, 7);
  search.trail.Pass({45, "6.5"_d4, "0.2"_d4});
  search.trail.Pass({46, "6.9"_d4, "0.15"_d4});
  search.shown.Renew();
  EXPECT_EQ(search.shown.PointsOf("Power"), (Points{{1, 6.5}, {2, 6.9}}));
  EXPECT_EQ(search.shown.PointsOf("DAC"), (Points{{1, 45}, {2, 46}}));
  EXPECT_EQ(search.shown.charts[0]->chart()->title(), "GSM level 19<br>DAC 46, 6.9 of 7 dBm");
}

TEST(SearchView, OnlyALevelOffItsTargetIsInTheLegendAsOne) {
  Search search;
  const auto isInLegend = [&] {
    search.shown.Renew();
    auto* offTarget = search.shown.Find<QScatterSeries>("Off target");
    return search.shown.charts[1]->chart()->legend()->markers(offTarget).front()->isVisible();
  };
  EXPECT_FALSE(isInLegend());
  search.Begin(6, 31);
  search.trail.Accept(1020, "26.1"_d4, false);
  search.trail.End();
  EXPECT_TRUE(isInLegend());
}

TEST(ChartView, LabelsStandAtRoundNumbers) {
  const struct {
    double length;
    int most;
    double step;
  } rows[] = {{1, 6, 0.2}, {2.9, 6, 0.5}, {40, 6, 10}, {1020, 6, 200}, {12, 8, 2}, {26, 8, 5}, {6, 6, 1}};
  for (const auto& row : rows) EXPECT_NEAR(RoundStep(row.length, row.most), row.step, 1e-9) << row.length;
}

TEST(SearchView, TheToleranceBandHasTheEdgesThatWereInForce) {
  Search search;
  search.Begin(19, 7);
  search.trail.Pass({45, "6.5"_d4, "0.2"_d4});
  search.trail.Pass({46, "6.9"_d4, "0.15"_d4});
  search.shown.Renew();
  const auto* band = search.shown.Find<QAreaSeries>("Tolerance");
  EXPECT_EQ(band->upperSeries()->points(), (Points{{0, 7.25}, {1, 7.2}, {2, 7.15}, {8, 7.15}}));
  EXPECT_EQ(band->lowerSeries()->points(), (Points{{0, 6.75}, {1, 6.8}, {2, 6.85}, {8, 6.85}}));
  EXPECT_EQ(search.shown.PointsOf("Target"), (Points{{0, 7}, {8, 7}}));
}

TEST(SearchView, ANewSearchTakesTheOldOnesPlaceAndLeavesItsLevel) {
  Search search;
  search.trail.BeginBand(0);
  search.Begin(19, 7);
  search.trail.Pass({45, "6.5"_d4, "0.2"_d4});
  search.trail.Accept(45, "6.5"_d4, false);
  search.trail.End();
  search.Begin(18, 8);
  search.shown.Renew();
  EXPECT_TRUE(search.shown.PointsOf("Power").isEmpty());
  EXPECT_EQ(search.shown.PointsOf("GSM"), (Points{{19, 45}}));
  EXPECT_EQ(search.shown.PointsOf("Off target"), (Points{{19, 45}}));
}

TEST(SearchView, OfALongSearchTheEndIsSeen) {
  Search search;
  search.Begin(19, 7);
  for (int pass = 1; pass <= 1100; ++pass) search.trail.Pass({static_cast<Integer>(pass % 1000), 5, "0.2"_d4});
  search.shown.Renew();
  const Points powers = search.shown.PointsOf("Power");
  EXPECT_EQ(powers.size(), 60);
  EXPECT_EQ(powers.back(), QPointF(1100, 5));
}

TEST(ChannelCodes, AreStepsThatEndWithTheirSegments) {
  RFParameter record;
  const std::pair<int, int> gsm[] = {{10, 130}, {114, 128}, {124, 126}, {980, 131}, {1023, 128}, {1023, 128}};
  for (int k = 0; k < 6; ++k) {
    record.BAND[0].chan_cal(3, k) = {static_cast<Integer>(gsm[k].first), static_cast<Integer>(gsm[k].second)};
  }
  RunReport report;
  Shown shown(MakeChannelCodesView(record, report, nullptr));
  const auto at = [](std::size_t span, int channel, int code) {
    return QPointF(*PlaceOf(kChannelSpans[span], channel), code);
  };
  EXPECT_EQ(shown.PointsOf("GSM 900"), (Points{at(0, 0, 130), at(0, 10, 130), at(0, 11, 128), at(0, 114, 128),
                                               at(0, 115, 126), at(0, 124, 126)}));
  EXPECT_EQ(shown.PointsOf("E-GSM 900"),
            (Points{at(2, 975, 131), at(2, 980, 131), at(2, 981, 128), at(2, 1023, 128)}));
}

TEST(Compensation, ShowsTheRowsOfTheRecordAndSeesThemChange) {
  RFParameter record;
  RunReport report;
  Shown shown(MakeCompensationView(record, report, nullptr));
  record.BAND[0].agc_bands[1] = {21, -3};
  record.BAND[1].agc_bands[6] = {885, 9};
  record.BAND[0].agc_bands[8] = {999, 2};
  Shown::ServeUntil([&] { return shown.PointsOf("E-GSM 900").size() > 0; });
  // Channel 0 is a GSM channel: the rows that were never written stand there.
  EXPECT_TRUE(shown.PointsOf("GSM 900").contains(QPointF(*PlaceOf(kChannelSpans[0], 21), -3)));
  EXPECT_EQ(shown.PointsOf("DCS 1800"), (Points{{*PlaceOf(kChannelSpans[1], 885), 9}}));
  EXPECT_EQ(shown.PointsOf("E-GSM 900"), (Points{{*PlaceOf(kChannelSpans[2], 999), 2}}));
  const auto* sound = shown.Find<QAreaSeries>("Sound receiver");
  EXPECT_EQ(sound->upperSeries()->at(0).y(), 5);
  EXPECT_EQ(sound->lowerSeries()->at(0).y(), -5);
}

TEST(Compensation, OfTheUnitBeforeAreNoneInANewRun) {
  RFParameter record;
  RunReport report;
  record.BAND[1].agc_bands[6] = {885, 9};
  Shown shown(MakeCompensationView(record, report, nullptr));
  EXPECT_FALSE(shown.PointsOf("DCS 1800").isEmpty());
  report.RunBegins(RunKind::Gsm);
  shown.Renew();
  EXPECT_FALSE(shown.PointsOf("DCS 1800").isEmpty()) << "that one finds none";
  report.RunIsOver();

  report.RunBegins(RunKind::Whole);
  report.Read({"rx.885.level", 9, "0.1 dB"});
  shown.Renew();
  EXPECT_TRUE(shown.PointsOf("DCS 1800").isEmpty());
  EXPECT_EQ(shown.charts[0]->chart()->title(), "Not found yet in this run");
  report.Read({"rx.885.compensation", 9, "half dB"});
  shown.Renew();
  EXPECT_EQ(shown.PointsOf("DCS 1800"), (Points{{*PlaceOf(kChannelSpans[1], 885), 9}})) << "the same as before";
  EXPECT_EQ(shown.charts[0]->chart()->title(), "");
  report.RunIsOver();
}

TEST(ChannelCodes, OfTheUnitBeforeAreNoneInANewRunUntilTheRecordHasOthers) {
  RFParameter record;
  RunReport report;
  record.BAND[1].chan_cal(3, 0) = {885, 130};
  Shown shown(MakeChannelCodesView(record, report, nullptr));
  EXPECT_FALSE(shown.PointsOf("DCS 1800").isEmpty());
  report.RunBegins(RunKind::Transmit);
  shown.Renew();
  EXPECT_TRUE(shown.PointsOf("DCS 1800").isEmpty());
  record.BAND[1].chan_cal(3, 0) = {885, 128};
  Shown::ServeUntil([&] { return !shown.PointsOf("DCS 1800").isEmpty(); });
  EXPECT_EQ(shown.PointsOf("DCS 1800").front().y(), 128);
  report.RunIsOver();
}

TEST(SearchView, ShowsNothingOfTheUnitBefore) {
  Search search;
  search.trail.BeginBand(0);
  search.Begin(19, 7);
  search.trail.Pass({45, "6.5"_d4, "0.2"_d4});
  search.trail.Accept(45, "6.5"_d4, false);
  search.trail.End();
  search.shown.Renew();
  EXPECT_FALSE(search.shown.PointsOf("GSM").isEmpty());
  search.trail.Forget();
  search.shown.Renew();
  for (const char* series : {"GSM", "Off target", "Power", "DAC", "Target"}) {
    EXPECT_TRUE(search.shown.PointsOf(series).isEmpty()) << series;
  }
  EXPECT_EQ(search.shown.Find<QAreaSeries>("Tolerance")->upperSeries()->count(), 0);
  EXPECT_TRUE(search.shown.charts[0]->chart()->title().startsWith("No search yet"));
}

TEST(ChartView, ABurstOfChangesIsDrawnOnce) {
  Search search;
  search.Begin(19, 7);
  search.shown.Renew();
  const int before = search.shown.charts[0]->Drawings();
  for (int pass = 0; pass < 500; ++pass) search.trail.Pass({40, 5, "0.2"_d4});
  search.shown.Renew();
  EXPECT_EQ(search.shown.charts[0]->Drawings(), before + 1);
}

TEST(ChartView, IsDrawnThirtyTimesASecondAtTheMostHoweverOftenItsModelChanges) {
  Search search;
  search.Begin(19, 7);
  const int before = search.shown.charts[0]->Drawings();
  QElapsedTimer time;
  time.start();
  int changes = 0;
  const auto drawings = [&] { return search.shown.charts[0]->Drawings() - before; };
  Shown::ServeUntil([&] {
    search.trail.Pass({40, 5, "0.2"_d4});
    return ++changes > 200 && drawings() >= 4;
  });
  EXPECT_GE(drawings(), 4);
  EXPECT_LE(drawings(), 1 + time.elapsed() * 30 / 1000);
}

TEST(ChartView, IsNotDrawnWhileItIsHiddenAndIsTrueWhenItIsShown) {
  Search search;
  search.shown.view->hide();
  const int before = search.shown.charts[0]->Drawings();
  search.Begin(19, 7);
  search.trail.Pass({45, "6.5"_d4, "0.2"_d4});
  for (int turn = 0; turn < 50; ++turn) Shown::Serve();
  EXPECT_EQ(search.shown.charts[0]->Drawings(), before);
  search.shown.view->show();
  EXPECT_EQ(search.shown.PointsOf("Power"), (Points{{1, 6.5}}));
}

TEST(ChartView, AViewThatIsGoneIsNotToldAnyMore) {
  SearchTrail trail;
  { const Shown shown(MakeSearchView(trail, nullptr)); }
  trail.Begin({0, SearchSubject::Kind::Level, 5, "GSM level 5"}, 32, "0.1"_d4);
  trail.End();
  EXPECT_FALSE(trail.UnderWay());
}

TEST(ChartView, TakesUpTheDesktopsDarkColours) {
  Search search;
  QPalette dark;
  dark.setColor(QPalette::Base, QColor(30, 30, 34));
  dark.setColor(QPalette::Text, Qt::white);
  search.shown.view->setPalette(dark);
  EXPECT_EQ(search.shown.charts[0]->chart()->backgroundBrush().color(), QColor(30, 30, 34));
  EXPECT_EQ(search.shown.charts[0]->chart()->titleBrush().color(), QColor(Qt::white));
}

}  // namespace
}  // namespace orvane
