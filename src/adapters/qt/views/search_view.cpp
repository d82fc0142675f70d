#include "adapters/qt/views/search_view.h"

#include <QHBoxLayout>

#include "adapters/qt/views/convergence_chart.h"
#include "adapters/qt/views/found_levels_chart.h"

namespace orvane {

QWidget* MakeSearchView(SearchTrail& trail, QWidget* parent) {
  auto* view = new QWidget(parent);
  auto* row = new QHBoxLayout(view);
  row->setContentsMargins(0, 0, 0, 0);
  row->addWidget(new ConvergenceChart(trail, view), 1);
  row->addWidget(new FoundLevelsChart(trail, view), 1);
  return view;
}

}  // namespace orvane
