#include "adapters/qt/views/record_chart.h"

#include <QChart>
#include <QPointer>
#include <algorithm>

namespace orvane {

RecordChart::RecordChart(RunReport& report, const Finding& finding, QWidget* parent) : ChartView(parent) {
  Follow(report, finding);
  Watch([this] { return Looked(); });
}

void RecordChart::Follow(RunReport& report, const Finding& finding) {
  report.runBegan.Connect([view = QPointer(this), runs = std::vector(finding.runs)](RunKind kind) {
    if (!view || std::find(runs.begin(), runs.end(), kind) == runs.end()) return;
    view->before_ = view->Looked();
    view->Touch();
  });
  // One that is found as it was before changes nothing in the record.
  report.read.Connect([view = QPointer(this), first = finding.first, last = finding.last](const Reading& reading) {
    if (!view || !view->before_ || !reading.name.starts_with(first) || !reading.name.ends_with(last)) return;
    view->before_.reset();
    view->Touch();
  });
}

void RecordChart::Draw() {
  if (before_ && *before_ != Looked()) before_.reset();
  chart()->setTitle(before_ ? tr("Not found yet in this run") : QString());
  DrawRecord(!before_);
}

}  // namespace orvane
