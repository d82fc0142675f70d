#include "adapters/qt/views/found_levels_chart.h"

#include <QLegendMarker>
#include <QPointer>
#include <QScatterSeries>
#include <QValueAxis>

namespace orvane {
namespace {

constexpr int kHighestLevel = 19;
constexpr int kDacRange = 1024;

}  // namespace

FoundLevelsChart::FoundLevelsChart(SearchTrail& trail, QWidget* parent) : ChartView(parent), trail_(trail) {
  setAccessibleName(tr("Levels found"));
  // As high as the title of the search beside it.
  chart()->setTitle(tr("Levels found") + "<br>&nbsp;");
  levels_ = AddAxis(Qt::AlignBottom, tr("Power level"));
  levels_->setLabelFormat("%d");
  levels_->setRange(-1, kHighestLevel + 1);
  levels_->setTickType(QValueAxis::TicksDynamic);
  levels_->setTickInterval(5);
  dac_ = AddAxis(Qt::AlignLeft, tr("APC DAC"));
  dac_->setLabelFormat("%d");
  // A value at either limit is still seen whole.
  dac_->setRange(-64, kDacRange + 64);
  dac_->setTickType(QValueAxis::TicksDynamic);
  dac_->setTickAnchor(0);
  dac_->setTickInterval(256);

  // Below the marks of the bands, which stay in sight.
  offTarget_ = Add(new QScatterSeries, tr("Off target"), {levels_, dac_});
  offTarget_->setMarkerShape(QScatterSeries::MarkerShapeStar);
  offTarget_->setMarkerSize(20);
  // In the legend no larger than the other marks.
  chart()->legend()->markers(offTarget_).front()->setShape(QLegend::MarkerShapeStar);
  bands_[0] = Add(new QScatterSeries, "GSM", {levels_, dac_});
  bands_[1] = Add(new QScatterSeries, "DCS", {levels_, dac_});
  bands_[1]->setMarkerShape(QScatterSeries::MarkerShapeRectangle);
  for (QScatterSeries* band : bands_) band->setMarkerSize(8);

  trail.forgotten.Connect([view = QPointer(this)] {
    if (view) view->Touch();
  });
  trail.bandBegan.Connect([view = QPointer(this)](std::size_t) {
    if (view) view->Touch();
  });
  trail.ended.Connect([view = QPointer(this)](const SearchStory&) {
    if (view) view->Touch();
  });
}

void FoundLevelsChart::Draw() {
  QList<QPointF> offTarget;
  for (std::size_t band = 0; band < bands_.size(); ++band) {
    QList<QPointF> points;
    for (const FoundValue& found : trail_.Found(band)) {
      if (found.subject.kind != SearchSubject::Kind::Level) continue;
      points.append({static_cast<double>(found.subject.number), static_cast<double>(found.dac)});
      if (!found.onTarget) offTarget.append(points.back());
    }
    bands_[band]->replace(points);
  }
  offTarget_->replace(offTarget);
  ShowInLegend(offTarget_, !offTarget.isEmpty());
}

void FoundLevelsChart::Dress(const ChartColours& colours) {
  const std::array of{colours.first, colours.second};
  for (std::size_t band = 0; band < bands_.size(); ++band) {
    bands_[band]->setColor(of[band]);
    bands_[band]->setBorderColor(colours.ground);
  }
  offTarget_->setColor(colours.doubtful);
  offTarget_->setBorderColor(colours.doubtful);
}

}  // namespace orvane
