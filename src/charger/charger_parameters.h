#pragma once

#include <string>

#include "base/decimal4.h"
#include "link/target_link.h"
#include "panels/frm_base_band.h"
#include "platform/boxes.h"
#include "results/results_console.h"
#include "state/cal_state.h"
#include "state/run_report.h"

namespace orvane {

/// What the charger's working values come from.
struct ChargerMeasured {
  Integer x = 0;             ///< Raw ADC count at 4.2 V.
  Integer y = 0;             ///< Raw ADC count at the shut-down voltage.
  Integer z = 0;             ///< Raw count of zero calibration.
  Integer d = 0;             ///< DAC value of the CV search.
  Decimal4 shutDownVoltage;  ///< In volts.
};

struct ChargerParameters {
  Integer ccDac = 0;
  Integer cvCut = 0;
};

/// @throws StationFailure for overflows, and when the slope rounds to 0.
[[nodiscard]] ChargerParameters CalculateParameters(const ChargerMeasured& measured);

/// The two operations that turn the counts into what the Target keeps: `cmdCalculateParameter` and
/// `cmdWriteChargerEEPROM`.
class ChargerParameterPanel {
 public:
  /// `resultList` is where the five results are listed. frmBaseBand has no such list: then the lines stand in
  /// `txtChargerDisplay`, and the operation ends with a failure.
  ChargerParameterPanel(TargetLink& link, PanelRef<FrmBaseBand> panel, CalState& cal, ResultsConsole& console,
                        Boxes& boxes, RunReport& report, ListBox* resultList = nullptr)
      : link_(link),
        panel_(panel),
        cal_(cal),
        console_(console),
        boxes_(boxes),
        report_(report),
        resultList_(resultList) {}

  void Connect();

 private:
  void Calculate();
  void ShowResults(const ChargerMeasured& measured, const ChargerParameters& results);
  void WriteFlash();
  void FailFlash(const std::string& command);
  bool IsThere(const TextBox& box, const char* words);

  TargetLink& link_;
  PanelRef<FrmBaseBand> panel_;
  CalState& cal_;
  ResultsConsole& console_;
  Boxes& boxes_;
  RunReport& report_;
  ListBox* resultList_;
};

}  // namespace orvane
