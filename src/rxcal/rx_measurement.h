#pragma once

#include <array>
#include <optional>
#include <string>

#include "instruments/test_set.h"
#include "link/target_link.h"
#include "panels/frm_auto_cal.h"
#include "state/cal_state.h"
#include "state/run_report.h"
#include "state/rx_channels.h"
#include "state/rx_trail.h"

namespace orvane {

/// What the Target read on each channel, in tenths of a dB.
using RxLevels = std::array<Integer, 12>;

/// The measuring loop of the receive run: the test set sends -74 dBm on one channel after the other, and the Target
/// reports the level that it sees there.
class RxMeasurement {
 public:
  RxMeasurement(TargetLink& link, ReplyState& reply, TestSet& testSet, PanelRef<FrmAutoCal> autoCal, CalState& cal,
                Boxes& boxes, RunReport& report, RxTrail& trail)
      : link_(link),
        reply_(reply),
        testSet_(testSet),
        autoCal_(autoCal),
        cal_(cal),
        boxes_(boxes),
        report_(report),
        trail_(trail) {}

  /// No value: the run leaves, and the report says why. @throws StationFailure for readings and boxes that are no
  /// numbers, and for a test set that fails.
  [[nodiscard]] std::optional<RxLevels> Measure(const RxChannels& channels);

 private:
  /// Generator frequencies below and above the carrier, in MHz.
  struct Carrier {
    Decimal4 low;
    Decimal4 high;
  };

  void SetUpBand(std::size_t i, Integer channel);
  void SetUpChannel(Integer channel);
  Carrier CarrierOf(Integer channel);
  void WriteFrequency(Decimal4 megahertz);
  bool TuneTarget(Integer channel);
  bool Settle();
  std::optional<Integer> ReadLevel(Integer channel, Decimal4 low);
  bool Average(Integer channel, Decimal4 low);
  /// One report of the Target. The run takes what stands in `PowerMeasureTimes10` then, old or new; the run's report
  /// tells when it is an old one.
  void Report(Integer channel);
  bool HasReading(std::string_view words);
  /// Whether it succeeded; when not, the report takes a note.
  bool Command(const std::string& line);

  [[nodiscard]] bool IsCw() const { return autoCal_->ComboFunction.Text() == "CW"; }

  TargetLink& link_;
  ReplyState& reply_;
  TestSet& testSet_;
  PanelRef<FrmAutoCal> autoCal_;
  CalState& cal_;
  Boxes& boxes_;
  RunReport& report_;
  RxTrail& trail_;
  /// Carrier of the channel before, which a channel outside the bands leaves in force.
  Decimal4 frequency_;
};

}  // namespace orvane
