#pragma once

#include <array>

#include "adapters/qt/views/chart_view.h"
#include "state/search_trail.h"

class QScatterSeries;

namespace orvane {

/// The DAC value that each power level of the two bands has been given by the runs. One that was accepted without
/// reaching its target bears a mark of its own.
class FoundLevelsChart final : public ChartView {
 public:
  FoundLevelsChart(SearchTrail& trail, QWidget* parent);

 protected:
  void Draw() override;
  void Dress(const ChartColours& colours) override;

 private:
  const SearchTrail& trail_;
  QValueAxis* levels_;
  QValueAxis* dac_;
  std::array<QScatterSeries*, 2> bands_;
  QScatterSeries* offTarget_;
};

}  // namespace orvane
