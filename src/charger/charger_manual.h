#pragma once

#include <string>

#include "link/target_link.h"
#include "panels/frm_base_band.h"
#include "panels/orvane_main.h"
#include "platform/boxes.h"
#include "platform/controls.h"
#include "results/results_console.h"

namespace orvane {

/// Step of the charger's voltage DAC for the distance of the raw count from the count that is sought.
[[nodiscard]] Integer CvDacStep(Long difference);

/// The charger's calibration by hand: test mode on and off, single reads, zero calibration, search of the CV DAC.
class ChargerManual {
 public:
  /// `searchList` is where the search shows its lines. frmBaseBand has no such list, and then a search ends with a
  /// failure behind its first round, whose lines stand in `txtChargerDisplay`.
  ChargerManual(TargetLink& link, ReplyState& reply, PanelRef<FrmBaseBand> panel, PanelRef<OrvaneMain> main,
                ResultsConsole& console, Boxes& boxes, ListBox* searchList = nullptr)
      : link_(link),
        reply_(reply),
        panel_(panel),
        main_(main),
        console_(console),
        boxes_(boxes),
        searchList_(searchList) {}

  void Connect();

 private:
  void SwitchTestMode(const char* command, Colour lamp);
  void ReadRawAdc();
  void ZeroCal();
  void SearchCvDac();
  Long Read(const char* command);
  void ShowSearchLines(const std::string& readBack, const std::string& raw);
  void SendWithoutWait(const char* command);

  TargetLink& link_;
  ReplyState& reply_;
  PanelRef<FrmBaseBand> panel_;
  PanelRef<OrvaneMain> main_;
  ResultsConsole& console_;
  Boxes& boxes_;
  ListBox* searchList_;
};

}  // namespace orvane
