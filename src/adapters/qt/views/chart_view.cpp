#include "adapters/qt/views/chart_view.h"

#include <QChart>
#include <QEvent>
#include <QGraphicsLayout>
#include <QLegend>
#include <QLegendMarker>
#include <QValueAxis>
#include <algorithm>
#include <cmath>

namespace orvane {
namespace {

using std::chrono::milliseconds;
using std::chrono::nanoseconds;

constexpr milliseconds kShortestRest{34};
/// Of the time between two drawings, one part in so many goes to the drawing.
constexpr int kShare = 80;
/// However dear a drawing was, it may have been the first one, or the machine busy.
constexpr milliseconds kLongestRest{500};
constexpr milliseconds kLook{250};

}  // namespace

ChartColours ChartColoursFor(const QPalette& palette) {
  const QColor ground = palette.color(QPalette::Base);
  const QColor text = palette.color(QPalette::Text);
  QColor grid = text;
  grid.setAlphaF(0.16F);
  if (ground.lightness() < 128) return {ground, text, grid, "#56b4e9", "#e69f00", "#3fc79a", "#f08cc0"};
  return {ground, text, grid, "#0072b2", "#d55e00", "#00805c", "#a8437f"};
}

double RoundStep(double length, int most) {
  const double least = length / most;
  const double power = std::pow(10, std::floor(std::log10(least)));
  for (const double step : {power, 2 * power, 5 * power}) {
    if (step >= least) return step;
  }
  return 10 * power;
}

ChartView::ChartView(QWidget* parent) : QChartView(new QChart, parent) {
  setRenderHint(QPainter::Antialiasing);
  setViewportUpdateMode(FullViewportUpdate);
  setFrameShape(NoFrame);
  // Room for half of the last label.
  chart()->setMargins({4, 2, fontMetrics().horizontalAdvance("0000") / 2, 2});
  chart()->layout()->setContentsMargins(0, 0, 0, 0);
  chart()->setBackgroundRoundness(0);
  chart()->legend()->setAlignment(Qt::AlignTop);
  chart()->legend()->setMarkerShape(QLegend::MarkerShapeFromSeries);
  // The toolkit would set a smaller one, in which the labels have no room.
  setMinimumSize(fontMetrics().height() * 15, fontMetrics().height() * 9);
  rest_.setSingleShot(true);
  connect(&rest_, &QTimer::timeout, this, &ChartView::DrawDue);
}

QSize ChartView::sizeHint() const {
  const int line = fontMetrics().height();
  return {line * 26, line * 14};
}

void ChartView::Touch() {
  due_ = true;
  if (isVisible() && !rest_.isActive()) rest_.start(0);
}

void ChartView::DrawDue() {
  if (!due_ || !isVisible()) return;
  due_ = false;
  ++drawings_;
  QElapsedTimer time;
  time.start();
  Draw();
  cost_ = nanoseconds(time.nsecsElapsed());
  Rest();
}

void ChartView::Rest() {
  rest_.start(std::clamp(std::chrono::duration_cast<milliseconds>(cost_ * kShare), kShortestRest, kLongestRest));
}

void ChartView::paintEvent(QPaintEvent* event) {
  QElapsedTimer time;
  time.start();
  QChartView::paintEvent(event);
  if (!rest_.isActive()) return;
  cost_ += nanoseconds(time.nsecsElapsed());
  Rest();
}

void ChartView::showEvent(QShowEvent* event) {
  QChartView::showEvent(event);
  if (!dressed_) DressAll();
  // A chart is never seen with what was true before.
  DrawDue();
}

void ChartView::changeEvent(QEvent* event) {
  QChartView::changeEvent(event);
  if (event->type() == QEvent::PaletteChange || event->type() == QEvent::FontChange) dressed_ = false;
  if (!dressed_ && isVisible()) DressAll();
}

void ChartView::DressAll() {
  dressed_ = true;
  const ChartColours colours = ChartColoursFor(palette());
  chart()->setBackgroundBrush(colours.ground);
  setBackgroundBrush(colours.ground);
  chart()->setTitleBrush(colours.text);
  QFont titleFont = font();
  titleFont.setWeight(QFont::DemiBold);
  chart()->setTitleFont(titleFont);
  chart()->legend()->setLabelColor(colours.text);
  chart()->legend()->setFont(font());
  for (QAbstractAxis* axis : chart()->axes()) {
    axis->setLabelsColor(colours.text);
    axis->setLabelsFont(font());
    axis->setTitleBrush(colours.text);
    axis->setTitleFont(font());
    axis->setGridLineColor(colours.grid);
    axis->setLinePenColor(colours.text);
  }
  Dress(colours);
}

QValueAxis* ChartView::AddAxis(Qt::AlignmentFlag side, const QString& title) {
  auto* axis = new QValueAxis;
  axis->setTitleText(title);
  chart()->addAxis(axis, side);
  return axis;
}

void ChartView::Attach(QAbstractSeries* series, const QString& name, const QList<QAbstractAxis*>& axes) {
  series->setName(name);
  chart()->addSeries(series);
  for (QAbstractAxis* axis : axes) series->attachAxis(axis);
  if (name.isEmpty()) ShowInLegend(series, false);
}

void ChartView::ShowInLegend(QAbstractSeries* series, bool shown) {
  for (QLegendMarker* marker : chart()->legend()->markers(series)) marker->setVisible(shown);
}

void ChartView::ShadeInLegend(QAbstractSeries* area, const QBrush& shade) {
  for (QLegendMarker* marker : chart()->legend()->markers(area)) {
    marker->setShape(QLegend::MarkerShapeRectangle);
    marker->setBrush(shade);
    marker->setPen(Qt::NoPen);
  }
}

void ChartView::Watch(std::function<std::vector<int>()> look) {
  connect(&watch_, &QTimer::timeout, this, [this, look = std::move(look), seen = std::vector<int>()]() mutable {
    if (!isVisible()) return;
    std::vector<int> now = look();
    if (now == seen) return;
    seen = std::move(now);
    Touch();
  });
  watch_.start(kLook);
}

}  // namespace orvane
