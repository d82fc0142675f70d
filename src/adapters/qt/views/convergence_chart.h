#pragma once

#include <QCoreApplication>

#include "adapters/qt/views/chart_view.h"
#include "state/search_trail.h"

class QAreaSeries;
class QLineSeries;
class QScatterSeries;

namespace orvane {

/// Power and DAC value of the search under way, or of the last one, pass by pass, with the target and the tolerance
/// around it as it was in force.
class ConvergenceChart final : public ChartView {
  Q_DECLARE_TR_FUNCTIONS(ConvergenceChart)

 public:
  ConvergenceChart(SearchTrail& trail, QWidget* parent);

 protected:
  void Draw() override;
  void Dress(const ChartColours& colours) override;

 private:
  /// Passes that the chart shows; of a longer search its end.
  static constexpr std::size_t kShown = 60;

  void DrawTolerance(const SearchStory& search, std::size_t from);
  void DrawPasses(const SearchStory& search, std::size_t from);
  [[nodiscard]] QString TitleOf(const SearchStory& search) const;

  const SearchTrail& trail_;
  QValueAxis* passes_;
  QValueAxis* power_;
  QValueAxis* dac_;
  QAreaSeries* tolerance_;
  QLineSeries* target_;
  QLineSeries* dacLine_;
  QScatterSeries* dacMarks_;
  QLineSeries* powerLine_;
  QScatterSeries* powerMarks_;
};

}  // namespace orvane
