#include "adapters/qt/views/compensation_view.h"

#include <QAreaSeries>
#include <QLineSeries>
#include <QScatterSeries>
#include <QValueAxis>
#include <algorithm>

#include "adapters/qt/views/channel_axis.h"
#include "adapters/qt/views/record_chart.h"
#include "rxcal/rx_table.h"

namespace orvane {
namespace {

/// Where each span has its rows in the record.
struct Rows {
  std::size_t band;
  std::size_t first;
  std::size_t count;
};
constexpr std::array<Rows, kChannelSpans.size()> kRows{{{0, 0, 7}, {1, 0, 7}, {0, 7, 3}}};

constexpr std::array kShapes{QScatterSeries::MarkerShapeCircle, QScatterSeries::MarkerShapeRectangle,
                             QScatterSeries::MarkerShapeTriangle};

class CompensationView final : public RecordChart {
 public:
  CompensationView(const RFParameter& record, RunReport& report, QWidget* parent)
      : RecordChart(report, {{RunKind::Whole, RunKind::Rf, RunKind::Receive}, "rx.", ".compensation"}, parent),
        record_(record) {
    setAccessibleName(tr("Receive compensation"));
    channels_ = MakeChannelAxis();
    chart()->addAxis(channels_, Qt::AlignBottom);
    halfDb_ = AddAxis(Qt::AlignLeft, tr("Compensation (half dB)"));
    halfDb_->setLabelFormat("%d");
    sound_ = new QAreaSeries(new QLineSeries(this), new QLineSeries(this));
    Add(sound_, tr("Sound receiver"), {channels_, halfDb_});
    for (std::size_t i = 0; i < kRows.size(); ++i) {
      lines_[i] = Add(new QLineSeries, "", {channels_, halfDb_});
      marks_[i] = Add(new QScatterSeries, kChannelSpans[i].name, {channels_, halfDb_});
      marks_[i]->setMarkerShape(kShapes[i]);
      marks_[i]->setMarkerSize(9);
    }
  }

 private:
  [[nodiscard]] std::vector<int> Looked() const override {
    std::vector<int> seen;
    for (const Rows& rows : kRows) {
      for (std::size_t k = 0; k < rows.count; ++k) {
        const RFParameter::AgcBand& row = record_.BAND[rows.band].agc_bands[rows.first + k];
        seen.push_back(row.upper_bound);
        seen.push_back(row.agc_calib);
      }
    }
    return seen;
  }

  void DrawRecord(bool isFound) override {
    int reach = kSoundCompensation + 1;
    for (std::size_t i = 0; i < kRows.size(); ++i) {
      QList<QPointF> points;
      for (std::size_t k = 0; isFound && k < kRows[i].count; ++k) {
        const auto [channel, calib] = record_.BAND[kRows[i].band].agc_bands[kRows[i].first + k];
        const auto place = PlaceOf(kChannelSpans[i], channel);
        if (!place) continue;
        points.append({*place, static_cast<double>(calib)});
        reach = std::max(reach, std::abs(int{calib}) + 1);
      }
      lines_[i]->replace(points);
      marks_[i]->replace(points);
    }
    const double left = channels_->min();
    const double right = channels_->max();
    sound_->upperSeries()->replace({{left, kSoundCompensation}, {right, kSoundCompensation}});
    sound_->lowerSeries()->replace({{left, -kSoundCompensation}, {right, -kSoundCompensation}});
    halfDb_->setRange(-reach, reach);
    halfDb_->setTickType(QValueAxis::TicksDynamic);
    halfDb_->setTickInterval(RoundStep(2.0 * reach, 8));
  }

  void Dress(const ChartColours& colours) override {
    QColor shade = colours.third;
    shade.setAlphaF(0.14F);
    sound_->setBrush(shade);
    sound_->setPen(QPen(colours.grid, 1));
    ShadeInLegend(sound_, shade);
    const std::array of{colours.first, colours.second, colours.third};
    for (std::size_t i = 0; i < kRows.size(); ++i) {
      lines_[i]->setPen(QPen(of[i], 2));
      marks_[i]->setColor(of[i]);
      marks_[i]->setBorderColor(colours.ground);
    }
  }

  const RFParameter& record_;
  QCategoryAxis* channels_ = nullptr;
  QValueAxis* halfDb_ = nullptr;
  QAreaSeries* sound_ = nullptr;
  std::array<QLineSeries*, kRows.size()> lines_{};
  std::array<QScatterSeries*, kRows.size()> marks_{};
};

}  // namespace

QWidget* MakeCompensationView(const RFParameter& record, RunReport& report, QWidget* parent) {
  return new CompensationView(record, report, parent);
}

}  // namespace orvane
