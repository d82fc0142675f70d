#pragma once

#include <initializer_list>
#include <optional>
#include <string>
#include <vector>

#include "adapters/qt/views/chart_view.h"
#include "state/run_report.h"

namespace orvane {

/// A chart of what the record holds. The record keeps what the unit before has left in it: from the beginning of a
/// run that finds it anew up to that, the chart is empty and says so.
class RecordChart : public ChartView {
 public:
  /// What finds it, and the readings that tell of it: "rx.", ".compensation".
  struct Finding {
    std::initializer_list<RunKind> runs;
    std::string first;
    std::string last;
  };

 protected:
  RecordChart(RunReport& report, const Finding& finding, QWidget* parent);

  /// The numbers that are shown, in any order.
  [[nodiscard]] virtual std::vector<int> Looked() const = 0;
  /// @param isFound false where nothing of the record belongs to the unit.
  virtual void DrawRecord(bool isFound) = 0;

 private:
  void Draw() final;
  void Follow(RunReport& report, const Finding& finding);

  /// What the record held as the run began, as long as that was not found anew.
  std::optional<std::vector<int>> before_;
};

}  // namespace orvane
