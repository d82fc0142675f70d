#pragma once

#include <array>

#include "platform/controls.h"
#include "platform/file_dialogs.h"
#include "platform/panel.h"

namespace orvane {

/// "MP Auto Cal": the production operator's set-up. The Rx part holds the channels and results of the receive run;
/// of the Tx part only the pattern editor is alive.
struct FrmMPAutoCal : Panel {
  FrmMPAutoCal() : Panel("frmMPAutoCal", "MP Auto Cal") {}

  Button cmdMPRxAllAutoCal{*this, "cmdMPRxAllAutoCal", "Rx Auto Cal"};
  Button cmdMPAutoCalClose{*this, "cmdMPAutoCalClose", "Close"};

  Frame frmMPAutoCalRx{*this, "frmMPAutoCalRx", "Rx Part"};
  Frame frmGSMRxCal{*this, "frmGSMRxCal", "GSM / EGSM Band"};
  TextBox txtGSMArfcn1{*this, "txtGSMArfcn1", "0"};
  UpDown updGSMArfcn1{*this, "updGSMArfcn1", &txtGSMArfcn1, 0, 1023, 0};
  TextBox txtGSMArfcn2{*this, "txtGSMArfcn2", "40"};
  UpDown updGSMArfcn2{*this, "updGSMArfcn2", &txtGSMArfcn2, 0, 1023, 40};
  TextBox txtGSMArfcn3{*this, "txtGSMArfcn3", "124"};
  UpDown updGSMArfcn3{*this, "updGSMArfcn3", &txtGSMArfcn3, 0, 1023, 124};
  TextBox txtEGSMArfcn1{*this, "txtEGSMArfcn1", "975"};
  UpDown updEGSMArfcn1{*this, "updEGSMArfcn1", &txtEGSMArfcn1, 0, 1023, 975};
  TextBox txtEGSMArfcn2{*this, "txtEGSMArfcn2", "1023"};
  UpDown updEGSMArfcn2{*this, "updEGSMArfcn2", &txtEGSMArfcn2, 0, 1023, 1023};
  Frame frmDCSRxCal{*this, "frmDCSRxCal", "DCS Band"};
  TextBox txtDCSArfcn1{*this, "txtDCSArfcn1", "512"};
  UpDown updDCSArfcn1{*this, "updDCSArfcn1", &txtDCSArfcn1, 0, 1023, 512};
  TextBox txtDCSArfcn2{*this, "txtDCSArfcn2", "574"};
  UpDown updDCSArfcn2{*this, "updDCSArfcn2", &txtDCSArfcn2, 0, 1023, 574};
  TextBox txtDCSArfcn3{*this, "txtDCSArfcn3", "636"};
  UpDown updDCSArfcn3{*this, "updDCSArfcn3", &txtDCSArfcn3, 0, 1023, 636};
  TextBox txtDCSArfcn4{*this, "txtDCSArfcn4", "700"};
  UpDown updDCSArfcn4{*this, "updDCSArfcn4", &txtDCSArfcn4, 0, 1023, 700};
  TextBox txtDCSArfcn5{*this, "txtDCSArfcn5", "760"};
  UpDown updDCSArfcn5{*this, "updDCSArfcn5", &txtDCSArfcn5, 0, 1023, 760};
  TextBox txtDCSArfcn6{*this, "txtDCSArfcn6", "822"};
  UpDown updDCSArfcn6{*this, "updDCSArfcn6", &txtDCSArfcn6, 0, 1023, 822};
  TextBox txtDCSArfcn7{*this, "txtDCSArfcn7", "885"};
  UpDown updDCSArfcn7{*this, "updDCSArfcn7", &txtDCSArfcn7, 0, 1023, 885};
  Frame frmMPAutoCalGMAGIC{*this, "frmMPAutoCalGMAGIC", "G-MAGIC"};
  TextBox txtMPGMAGICGSM900F80{*this, "txtMPGMAGICGSM900F80"};
  TextBox txtMPGMAGICGSM900F71{*this, "txtMPGMAGICGSM900F71"};
  TextBox txtMPGMAGICDCS1800F80{*this, "txtMPGMAGICDCS1800F80"};
  TextBox txtMPGMAGICDCS1800F71{*this, "txtMPGMAGICDCS1800F71"};
  ListBox lstMPRxChannelCalResult{*this, "lstMPRxChannelCalResult"};

  Frame frmMPAutoCalTx{*this, "frmMPAutoCalTx", "Tx Part"};
  Button cmdMPTxAutoCal{*this, "cmdMPTxAutoCal", "Level Use"};
  Button cmdSlopeUse{*this, "cmdSlopeUse", "Slope Use"};
  Button cmdDACuse{*this, "cmdDACuse", "DAC Use"};
  Frame fraDACUse{*this, "fraDACUse", "APCDAC OR Slope Method"};
  TextBox txtDACUseGSM1{*this, "txtDACUseGSM1", "700"};
  TextBox txtDACUseGSM2{*this, "txtDACUseGSM2", "50"};
  TextBox txtDACUseDCS1{*this, "txtDACUseDCS1", "950"};
  TextBox txtDACUseDCS2{*this, "txtDACUseDCS2", "50"};
  Frame fraTargetLevel{*this, "fraTargetLevel", "Target Level Method"};
  TextBox txtTargetLevel1{*this, "txtTargetLevel1", "5"};
  TextBox txtTargetLevel2{*this, "txtTargetLevel2", "10"};
  TextBox txtTargetLevel3{*this, "txtTargetLevel3", "15"};
  TextBox txtTargetLevel4{*this, "txtTargetLevel4", "19"};
  TextBox txtTargetLevel5{*this, "txtTargetLevel5", "0"};
  TextBox txtTargetLevel6{*this, "txtTargetLevel6", "5"};
  TextBox txtTargetLevel7{*this, "txtTargetLevel7", "10"};
  TextBox txtTargetLevel8{*this, "txtTargetLevel8", "15"};
  Frame fraMPTxResults{*this, "fraMPTxResults", "Tx Results"};
  ListBox listMPTxResults{*this, "listMPTxResults"};
  Frame fraAPCDACPattern{*this, "fraAPCDACPattern", "APCDAC Pattern"};
  OptionGroup patternBand;
  OptionButton optGSMPattern{*this, "optGSMPattern", "GSM", patternBand, OptionButton::Start::Selected};
  OptionButton optDCSPattern{*this, "optDCSPattern", "DCS", patternBand};
  TextBox txtMPPattern{*this, "txtMPPattern", "0"};
  UpDown updMPPattern{*this, "updMPPattern", &txtMPPattern, 0, 2, 0};
  TextBox txtMPLevel{*this, "txtMPLevel", "5"};
  UpDown updMPLevel{*this, "updMPLevel", &txtMPLevel, 5, 19, 5};
  TextBox txtMPDAC{*this, "txtMPDAC", "750"};
  UpDown updMPDAC{*this, "updMPDAC", &txtMPDAC, 0, 1023, 750};
  Button cmdMPSet{*this, "cmdMPSet", "Set"};
  Button cmdPatternLoad{*this, "cmdPatternLoad", "Load"};
  FileDialog dlgMPPatternSave{"", "", "", "", ""};

  /// The twelve channel boxes of the receive run in measuring order: GSM, DCS, EGSM.
  [[nodiscard]] std::array<const TextBox*, 12> ArfcnBoxes() const {
    return {&txtGSMArfcn1, &txtGSMArfcn2, &txtGSMArfcn3, &txtDCSArfcn1, &txtDCSArfcn2,  &txtDCSArfcn3,
            &txtDCSArfcn4, &txtDCSArfcn5, &txtDCSArfcn6, &txtDCSArfcn7, &txtEGSMArfcn1, &txtEGSMArfcn2};
  }
};

}  // namespace orvane
