#include "rxcal/mp_panel.h"

#include "platform/input_filter.h"

namespace orvane {
namespace {

struct NumberBox {
  TextBox FrmMPAutoCal::*box;
  std::string_view resetText;
};

// The two DCS boxes of "DAC Use" go to "750", not to their defaults "950" and "50".
constexpr std::array kNumberBoxes{
    NumberBox{&FrmMPAutoCal::txtGSMArfcn1, "0"},     NumberBox{&FrmMPAutoCal::txtGSMArfcn2, "40"},
    NumberBox{&FrmMPAutoCal::txtGSMArfcn3, "124"},   NumberBox{&FrmMPAutoCal::txtEGSMArfcn1, "975"},
    NumberBox{&FrmMPAutoCal::txtEGSMArfcn2, "1023"}, NumberBox{&FrmMPAutoCal::txtDCSArfcn1, "512"},
    NumberBox{&FrmMPAutoCal::txtDCSArfcn2, "574"},   NumberBox{&FrmMPAutoCal::txtDCSArfcn3, "636"},
    NumberBox{&FrmMPAutoCal::txtDCSArfcn4, "700"},   NumberBox{&FrmMPAutoCal::txtDCSArfcn5, "760"},
    NumberBox{&FrmMPAutoCal::txtDCSArfcn6, "822"},   NumberBox{&FrmMPAutoCal::txtDCSArfcn7, "885"},
    NumberBox{&FrmMPAutoCal::txtMPDAC, "750"},       NumberBox{&FrmMPAutoCal::txtMPPattern, "0"},
    NumberBox{&FrmMPAutoCal::txtDACUseGSM1, "700"},  NumberBox{&FrmMPAutoCal::txtDACUseGSM2, "50"},
    NumberBox{&FrmMPAutoCal::txtDACUseDCS1, "750"},  NumberBox{&FrmMPAutoCal::txtDACUseDCS2, "750"},
    NumberBox{&FrmMPAutoCal::txtTargetLevel1, "5"},  NumberBox{&FrmMPAutoCal::txtTargetLevel2, "10"},
    NumberBox{&FrmMPAutoCal::txtTargetLevel3, "15"}, NumberBox{&FrmMPAutoCal::txtTargetLevel4, "19"},
    NumberBox{&FrmMPAutoCal::txtTargetLevel5, "0"},  NumberBox{&FrmMPAutoCal::txtTargetLevel6, "5"},
    NumberBox{&FrmMPAutoCal::txtTargetLevel7, "10"}, NumberBox{&FrmMPAutoCal::txtTargetLevel8, "15"},
};

}  // namespace

void MpPanel::Connect() {
  FrmMPAutoCal& panel = panel_.Untouched();
  panel.cmdMPAutoCalClose.onClick = [this] { panel_->Hide(); };
  for (const NumberBox& row : kNumberBoxes) {
    TextBox& box = panel.*row.box;
    box.onChange = [this, &box, &row] { FilterInput(box, {}, row.resetText, boxes_); };
  }
}

void MpPanel::MPRxCalRun() {
  // Reaching for the check box may load frmAutoCal, which sets the save mode.
  if (autoCal_->chkAutoSaveMode.Checked() && (cal_.SaveMode == "File" || cal_.SaveMode == "EEPROMFile")) {
    downloadSaveFileName_();
  }
  panel_->cmdMPRxAllAutoCal.Click();
  link_.PaceDelay();
  if (autoCal_->chkAutoSaveMode.Checked()) autoCal_->cmdAutoCalResultSave.Click();
  cal_.CalMode = "END";
  boxes_.Alarm("Auto Calibration is completed.");
}

}  // namespace orvane
