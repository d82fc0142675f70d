#include "adapters/qt/views/channel_codes_view.h"

#include <QLineSeries>
#include <QValueAxis>
#include <algorithm>

#include "adapters/qt/views/channel_axis.h"
#include "adapters/qt/views/record_chart.h"
#include "txcal/band_table.h"

namespace orvane {
namespace {

constexpr int kSegments = 8;
/// The four steps on either side of the neutral code that a channel step can give.
constexpr int kFurthestStep = 4;

class ChannelCodesView final : public RecordChart {
 public:
  ChannelCodesView(const RFParameter& record, RunReport& report, QWidget* parent)
      : RecordChart(report, {{RunKind::Whole, RunKind::Rf, RunKind::Transmit}, "tx.", ".code"}, parent),
        record_(record) {
    setAccessibleName(tr("Channel codes"));
    channels_ = MakeChannelAxis();
    chart()->addAxis(channels_, Qt::AlignBottom);
    codes_ = AddAxis(Qt::AlignLeft, tr("Code"));
    codes_->setLabelFormat("%d");
    neutral_ = Add(new QLineSeries, tr("Neutral %1").arg(kNeutralCode), {channels_, codes_});
    for (std::size_t i = 0; i < bands_.size(); ++i) {
      bands_[i] = Add(new QLineSeries, kChannelSpans[i].name, {channels_, codes_});
    }
  }

 private:
  /// Of the record, the second band serves the second span, the first one the other two.
  [[nodiscard]] const RFParameter::Band& BandOf(std::size_t span) const { return record_.BAND[span == 1 ? 1 : 0]; }

  [[nodiscard]] std::vector<int> Looked() const override {
    std::vector<int> seen;
    for (const RFParameter::Band& band : record_.BAND) {
      for (int segment = 0; segment < kSegments; ++segment) {
        seen.push_back(band.chan_cal(kCodeTable, segment).arfcn_limit);
        seen.push_back(band.chan_cal(kCodeTable, segment).chan_cal);
      }
    }
    return seen;
  }

  /// A step for each segment that reaches into the span; a segment ends with its limit.
  QList<QPointF> StepsOf(const ChannelSpan& span, const RFParameter::Band& band) {
    QList<QPointF> steps;
    int next = span.first;
    for (int segment = 0; segment < kSegments && next <= span.last; ++segment) {
      const auto [limit, code] = band.chan_cal(kCodeTable, segment);
      if (limit < next) continue;
      const int end = std::min<int>(limit, span.last);
      steps.append({*PlaceOf(span, next), static_cast<double>(code)});
      // The step lies half-way between two channels; at the end of the span there is no next one.
      steps.append({*PlaceOf(span, end), static_cast<double>(code)});
      lowest_ = std::min<int>(lowest_, code);
      highest_ = std::max<int>(highest_, code);
      next = end + 1;
    }
    return steps;
  }

  void DrawRecord(bool isFound) override {
    lowest_ = kNeutralCode - kFurthestStep;
    highest_ = kNeutralCode + kFurthestStep;
    for (std::size_t i = 0; i < bands_.size(); ++i) {
      bands_[i]->replace(isFound ? StepsOf(kChannelSpans[i], BandOf(i)) : QList<QPointF>());
    }
    neutral_->replace({{channels_->min(), kNeutralCode}, {channels_->max(), kNeutralCode}});
    codes_->setRange(lowest_ - 1, highest_ + 1);
    codes_->setTickType(QValueAxis::TicksDynamic);
    codes_->setTickAnchor(kNeutralCode);
    codes_->setTickInterval(RoundStep(highest_ - lowest_, 5));
  }

  void Dress(const ChartColours& colours) override {
    neutral_->setPen(QPen(colours.text, 1, Qt::DashLine));
    const std::array of{colours.first, colours.second, colours.third};
    for (std::size_t i = 0; i < bands_.size(); ++i) {
      bands_[i]->setPen(QPen(of[i], 3, Qt::SolidLine, Qt::FlatCap, Qt::RoundJoin));
    }
  }

  const RFParameter& record_;
  QCategoryAxis* channels_ = nullptr;
  QValueAxis* codes_ = nullptr;
  QLineSeries* neutral_ = nullptr;
  std::array<QLineSeries*, kChannelSpans.size()> bands_{};
  int lowest_ = 0;
  int highest_ = 0;
};

}  // namespace

QWidget* MakeChannelCodesView(const RFParameter& record, RunReport& report, QWidget* parent) {
  return new ChannelCodesView(record, report, parent);
}

}  // namespace orvane
