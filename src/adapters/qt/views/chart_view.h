#pragma once

#include <QChartView>
#include <QElapsedTimer>
#include <QTimer>
#include <chrono>
#include <functional>
#include <vector>

class QAbstractAxis;
class QValueAxis;
class QXYSeries;

namespace orvane {

/// The colours of a chart, told apart by everybody and on the ground that the desktop has; marks differ too.
struct ChartColours {
  QColor ground;
  QColor text;
  QColor grid;
  QColor first;
  QColor second;
  QColor third;
  QColor doubtful;
};

[[nodiscard]] ChartColours ChartColoursFor(const QPalette& palette);

/// The labels of an axis stand at round numbers: steps of 1, 2 or 5 of a power of ten, so long that a range of that
/// length holds at most so many of them.
[[nodiscard]] double RoundStep(double length, int most);

/// A chart that follows something that may change very often. It is drawn anew soon after a change, but at most 30
/// times a second, and rests for so long behind each drawing that all of them together take a small share of the
/// time: a run is not held up by being looked at. What nobody sees is not drawn.
class ChartView : public QChartView {
 public:
  explicit ChartView(QWidget* parent);

  /// What the chart shows has changed.
  void Touch();
  /// A change waits for being drawn.
  [[nodiscard]] bool Due() const { return due_; }
  /// How often the chart was drawn anew.
  [[nodiscard]] int Drawings() const { return drawings_; }

  [[nodiscard]] QSize sizeHint() const override;

 protected:
  /// Puts what is to be shown into the series.
  virtual void Draw() = 0;
  /// Gives the series their colours.
  virtual void Dress(const ChartColours& colours) = 0;

  QValueAxis* AddAxis(Qt::AlignmentFlag side, const QString& title = {});
  /// The series with the axes that it belongs to. One without a name is not in the legend.
  template <class Series>
  Series* Add(Series* series, const QString& name, const QList<QAbstractAxis*>& axes) {
    Attach(series, name, axes);
    return series;
  }

  void ShowInLegend(QAbstractSeries* series, bool shown);
  /// The legend has no colours of an area by itself.
  void ShadeInLegend(QAbstractSeries* area, const QBrush& shade);

  /// For what tells nobody that it changes: a cheap look at it a few times a second, as long as the chart is shown.
  void Watch(std::function<std::vector<int>()> look);

  void showEvent(QShowEvent* event) override;
  void paintEvent(QPaintEvent* event) override;
  void changeEvent(QEvent* event) override;

 private:
  void Attach(QAbstractSeries* series, const QString& name, const QList<QAbstractAxis*>& axes);
  void DrawDue();
  void DressAll();
  void Rest();

  bool due_ = true;
  bool dressed_ = false;
  int drawings_ = 0;
  /// What the last drawing has cost.
  std::chrono::nanoseconds cost_{0};
  QTimer rest_;
  QTimer watch_;
};

}  // namespace orvane
