#include "adapters/qt/views/convergence_chart.h"

#include <QAreaSeries>
#include <QLineSeries>
#include <QPointer>
#include <QScatterSeries>
#include <QValueAxis>
#include <algorithm>

#include "txcal/power_search.h"

namespace orvane {
namespace {

constexpr int kMostLabels = 6;

void SetRange(QValueAxis& axis, double low, double high) {
  axis.setTickType(QValueAxis::TicksDynamic);
  axis.setTickInterval(RoundStep(high - low, kMostLabels));
  axis.setRange(low, high);
}

/// The range with some room around it, at least `least` wide.
void Embrace(QValueAxis& axis, double low, double high, double least) {
  const double room = std::max({(high - low) * 0.08, (least - (high - low)) / 2, 0.0});
  SetRange(axis, low - room, high + room);
}

}  // namespace

ConvergenceChart::ConvergenceChart(SearchTrail& trail, QWidget* parent) : ChartView(parent), trail_(trail) {
  setAccessibleName(tr("Power search"));
  // The labels of either side have the colour of their marks: titles beside them would take the marks' room.
  passes_ = AddAxis(Qt::AlignBottom, tr("Pass"));
  passes_->setLabelFormat("%d");
  passes_->setRange(0, 8);
  power_ = AddAxis(Qt::AlignLeft);
  power_->setLabelFormat("%.1f");
  SetRange(*power_, 0, 40);
  dac_ = AddAxis(Qt::AlignRight);
  dac_->setLabelFormat("%d");
  SetRange(*dac_, 0, kDacLimit);
  dac_->setGridLineVisible(false);

  tolerance_ = new QAreaSeries(new QLineSeries(this), new QLineSeries(this));
  Add(tolerance_, tr("Tolerance"), {passes_, power_});
  target_ = Add(new QLineSeries, tr("Target"), {passes_, power_});
  ShowInLegend(target_, false);
  dacLine_ = Add(new QLineSeries, "", {passes_, dac_});
  dacMarks_ = Add(new QScatterSeries, tr("DAC"), {passes_, dac_});
  dacMarks_->setMarkerShape(QScatterSeries::MarkerShapeRectangle);
  dacMarks_->setMarkerSize(7);
  powerLine_ = Add(new QLineSeries, "", {passes_, power_});
  powerMarks_ = Add(new QScatterSeries, tr("Power"), {passes_, power_});
  powerMarks_->setMarkerSize(8);

  const auto touch = [view = QPointer(this)](const auto&) {
    if (view) view->Touch();
  };
  trail.forgotten.Connect([touch] { touch(0); });
  trail.began.Connect(touch);
  trail.passed.Connect(touch);
  trail.ended.Connect(touch);
}

/// In two lines: the second half of it would not fit on a small screen.
QString ConvergenceChart::TitleOf(const SearchStory& search) const {
  const QString title = QString::fromStdString(search.subject.name) + "<br>";
  const QString target = QString::fromStdString(search.target.Text());
  if (search.passes.empty()) return title + tr("target %1 dBm").arg(target);
  const SearchPass& last = search.passes.back();
  return title + tr("DAC %1, %2 of %3 dBm").arg(last.dac).arg(QString::fromStdString(last.power.Text()), target);
}

void ConvergenceChart::Draw() {
  if (!trail_.Last()) {
    chart()->setTitle(tr("No search yet") + "<br>&nbsp;");
    for (QXYSeries* series :
         {static_cast<QXYSeries*>(tolerance_->upperSeries()), static_cast<QXYSeries*>(tolerance_->lowerSeries()),
          static_cast<QXYSeries*>(target_), static_cast<QXYSeries*>(powerLine_), static_cast<QXYSeries*>(powerMarks_),
          static_cast<QXYSeries*>(dacLine_), static_cast<QXYSeries*>(dacMarks_)}) {
      series->clear();
    }
    return;
  }
  const SearchStory& search = *trail_.Last();
  chart()->setTitle(TitleOf(search));
  const std::size_t from = search.passes.size() > kShown ? search.passes.size() - kShown : 0;
  passes_->setRange(static_cast<double>(from),
                    static_cast<double>(std::max<std::size_t>(from + 8, search.passes.size() + 1)));
  passes_->setTickType(QValueAxis::TicksDynamic);
  passes_->setTickInterval(search.passes.size() - from > 30 ? 10 : search.passes.size() > 12 ? 5 : 1);
  DrawTolerance(search, from);
  DrawPasses(search, from);
}

/// What a pass is held against is the tolerance that it has itself brought.
void ConvergenceChart::DrawTolerance(const SearchStory& search, std::size_t from) {
  QList<QPointF> upper;
  QList<QPointF> lower;
  const auto place = [&](double x, Decimal4 tolerance) {
    upper.append({x, (search.target + tolerance).ToDouble()});
    lower.append({x, (search.target - tolerance).ToDouble()});
  };
  place(static_cast<double>(from), from == 0 ? search.tolerance : search.passes[from - 1].tolerance);
  for (std::size_t i = from; i < search.passes.size(); ++i) {
    place(static_cast<double>(i + 1), search.passes[i].tolerance);
  }
  place(passes_->max(), search.passes.empty() ? search.tolerance : search.passes.back().tolerance);
  tolerance_->upperSeries()->replace(upper);
  tolerance_->lowerSeries()->replace(lower);
  const double target = search.target.ToDouble();
  target_->replace({{passes_->min(), target}, {passes_->max(), target}});
}

void ConvergenceChart::DrawPasses(const SearchStory& search, std::size_t from) {
  QList<QPointF> powers;
  QList<QPointF> dacs;
  const double target = search.target.ToDouble();
  const double tolerance = search.tolerance.ToDouble();
  double low = target - tolerance;
  double high = target + tolerance;
  for (std::size_t i = from; i < search.passes.size(); ++i) {
    const auto x = static_cast<double>(i + 1);
    powers.append({x, search.passes[i].power.ToDouble()});
    dacs.append({x, static_cast<double>(search.passes[i].dac)});
    low = std::min(low, powers.back().y());
    high = std::max(high, powers.back().y());
  }
  powerLine_->replace(powers);
  powerMarks_->replace(powers);
  dacLine_->replace(dacs);
  dacMarks_->replace(dacs);
  Embrace(*power_, low, high, 1);
  if (dacs.isEmpty()) return;
  const auto byDac = [](const QPointF& a, const QPointF& b) { return a.y() < b.y(); };
  const auto [least, most] = std::minmax_element(dacs.begin(), dacs.end(), byDac);
  Embrace(*dac_, least->y(), most->y(), 20);
}

void ConvergenceChart::Dress(const ChartColours& colours) {
  QColor shade = colours.third;
  shade.setAlphaF(0.22F);
  tolerance_->setBrush(shade);
  tolerance_->setPen(QPen(colours.third, 1));
  ShadeInLegend(tolerance_, shade);
  target_->setPen(QPen(colours.third, 2, Qt::DashLine));
  powerLine_->setPen(QPen(colours.first, 2));
  dacLine_->setPen(QPen(colours.second, 1.5, Qt::DotLine));
  for (const auto& [marks, colour] : {std::pair{powerMarks_, colours.first}, {dacMarks_, colours.second}}) {
    marks->setColor(colour);
    marks->setBorderColor(colours.ground);
  }
  dac_->setLabelsColor(colours.second);
  power_->setLabelsColor(colours.first);
}

}  // namespace orvane
