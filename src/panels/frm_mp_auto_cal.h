#pragma once

#include <array>

#include "platform/controls.h"
#include "platform/file_dialogs.h"
#include "platform/panel.h"

namespace orvane {

/// "MP Auto Cal": the production operator's set-up. The Rx part holds the channels and results of the receive run.
/// The Tx part carries values that no run reads; of it only the pattern editor is alive.
struct FrmMPAutoCal : Panel {
  FrmMPAutoCal() : Panel("frmMPAutoCal", "MP Auto Cal") {}

  Button cmdMPRxAllAutoCal{*this, "cmdMPRxAllAutoCal", "Rx Auto Cal"};
  Button cmdMPAutoCalClose{*this, "cmdMPAutoCalClose", "Close"};

  Frame frmMPAutoCalRx{*this, "frmMPAutoCalRx", "Rx Part"};
  Frame frmGSMRxCal{*this, "frmGSMRxCal", "GSM / EGSM Band"};
  Label lblGBand1{*this, "lblGBand1", "GBand1"};
  TextBox txtGSMArfcn1{*this, "txtGSMArfcn1", "0"};
  UpDown updGSMArfcn1{*this, "updGSMArfcn1", &txtGSMArfcn1, 0, 1023, 0};
  Label lblGBand2{*this, "lblGBand2", "GBand2"};
  TextBox txtGSMArfcn2{*this, "txtGSMArfcn2", "40"};
  UpDown updGSMArfcn2{*this, "updGSMArfcn2", &txtGSMArfcn2, 0, 1023, 40};
  Label lblGBand3{*this, "lblGBand3", "GBand3"};
  TextBox txtGSMArfcn3{*this, "txtGSMArfcn3", "124"};
  UpDown updGSMArfcn3{*this, "updGSMArfcn3", &txtGSMArfcn3, 0, 1023, 124};
  Label lblEBand1{*this, "lblEBand1", "EBand1"};
  TextBox txtEGSMArfcn1{*this, "txtEGSMArfcn1", "975"};
  UpDown updEGSMArfcn1{*this, "updEGSMArfcn1", &txtEGSMArfcn1, 0, 1023, 975};
  Label lblEBand2{*this, "lblEBand2", "EBand2"};
  TextBox txtEGSMArfcn2{*this, "txtEGSMArfcn2", "1023"};
  UpDown updEGSMArfcn2{*this, "updEGSMArfcn2", &txtEGSMArfcn2, 0, 1023, 1023};
  Frame frmDCSRxCal{*this, "frmDCSRxCal", "DCS Band"};
  Label lblBand1{*this, "lblBand1", "Band1"};
  TextBox txtDCSArfcn1{*this, "txtDCSArfcn1", "512"};
  UpDown updDCSArfcn1{*this, "updDCSArfcn1", &txtDCSArfcn1, 0, 1023, 512};
  Label lblBand2{*this, "lblBand2", "Band2"};
  TextBox txtDCSArfcn2{*this, "txtDCSArfcn2", "574"};
  UpDown updDCSArfcn2{*this, "updDCSArfcn2", &txtDCSArfcn2, 0, 1023, 574};
  Label lblBand3{*this, "lblBand3", "Band3"};
  TextBox txtDCSArfcn3{*this, "txtDCSArfcn3", "636"};
  UpDown updDCSArfcn3{*this, "updDCSArfcn3", &txtDCSArfcn3, 0, 1023, 636};
  Label lblBand4{*this, "lblBand4", "Band4"};
  TextBox txtDCSArfcn4{*this, "txtDCSArfcn4", "700"};
  UpDown updDCSArfcn4{*this, "updDCSArfcn4", &txtDCSArfcn4, 0, 1023, 700};
  Label lblBand5{*this, "lblBand5", "Band5"};
  TextBox txtDCSArfcn5{*this, "txtDCSArfcn5", "760"};
  UpDown updDCSArfcn5{*this, "updDCSArfcn5", &txtDCSArfcn5, 0, 1023, 760};
  Label lblBand6{*this, "lblBand6", "Band6"};
  TextBox txtDCSArfcn6{*this, "txtDCSArfcn6", "822"};
  UpDown updDCSArfcn6{*this, "updDCSArfcn6", &txtDCSArfcn6, 0, 1023, 822};
  Label lblBand7{*this, "lblBand7", "Band7"};
  TextBox txtDCSArfcn7{*this, "txtDCSArfcn7", "885"};
  UpDown updDCSArfcn7{*this, "updDCSArfcn7", &txtDCSArfcn7, 0, 1023, 885};
  Frame frmMPAutoCalGMAGIC{*this, "frmMPAutoCalGMAGIC", "G-MAGIC"};
  Label lblMPGMAGICGSM900{*this, "lblMPGMAGICGSM900", "GSM900"};
  Label lblMPGMAGICGSM900F80{*this, "lblMPGMAGICGSM900F80", "F 8.0"};
  TextBox txtMPGMAGICGSM900F80{*this, "txtMPGMAGICGSM900F80"};
  Label lblMPGMAGICGSM900F71{*this, "lblMPGMAGICGSM900F71", "F 7.1"};
  TextBox txtMPGMAGICGSM900F71{*this, "txtMPGMAGICGSM900F71"};
  Label lblMPGMAGICDCS1800{*this, "lblMPGMAGICDCS1800", "DCS1800"};
  Label lblMPGMAGICDCS1800F80{*this, "lblMPGMAGICDCS1800F80", "F 8.0"};
  TextBox txtMPGMAGICDCS1800F80{*this, "txtMPGMAGICDCS1800F80"};
  Label lblMPGMAGICDCS1800F71{*this, "lblMPGMAGICDCS1800F71", "F 7.1"};
  TextBox txtMPGMAGICDCS1800F71{*this, "txtMPGMAGICDCS1800F71"};
  Frame fraMPRxResults{*this, "fraMPRxResults", "Rx Results"};
  ListBox lstMPRxChannelCalResult{*this, "lstMPRxChannelCalResult"};

  Frame frmMPAutoCalTx{*this, "frmMPAutoCalTx", "Tx Part"};
  Button cmdMPTxAutoCal{*this, "cmdMPTxAutoCal", "Level Use"};
  Button cmdSlopeUse{*this, "cmdSlopeUse", "Slope Use"};
  Button cmdDACuse{*this, "cmdDACuse", "DAC Use"};
  Frame fraDACUse{*this, "fraDACUse", "APCDAC OR Slope Method"};
  Label lblDACUseGSM1{*this, "lblDACUseGSM1", "GSM1"};
  TextBox txtDACUseGSM1{*this, "txtDACUseGSM1", "700"};
  Label lblDACUseGSM2{*this, "lblDACUseGSM2", "GSM2"};
  TextBox txtDACUseGSM2{*this, "txtDACUseGSM2", "50"};
  Label lblDACUseDCS1{*this, "lblDACUseDCS1", "DCS1"};
  TextBox txtDACUseDCS1{*this, "txtDACUseDCS1", "950"};
  Label lblDACUseDCS2{*this, "lblDACUseDCS2", "DCS2"};
  TextBox txtDACUseDCS2{*this, "txtDACUseDCS2", "50"};
  Frame fraTargetLevel{*this, "fraTargetLevel", "Target Level Method"};
  Label lblTargetLevel1{*this, "lblTargetLevel1", "Level1"};
  Label lblTargetLevel2{*this, "lblTargetLevel2", "Level2"};
  Label lblTargetLevel3{*this, "lblTargetLevel3", "Level3"};
  Label lblTargetLevel4{*this, "lblTargetLevel4", "Level4"};
  Label lblTargetLevelGSM{*this, "lblTargetLevelGSM", "GSM"};
  TextBox txtTargetLevel1{*this, "txtTargetLevel1", "5"};
  TextBox txtTargetLevel2{*this, "txtTargetLevel2", "10"};
  TextBox txtTargetLevel3{*this, "txtTargetLevel3", "15"};
  TextBox txtTargetLevel4{*this, "txtTargetLevel4", "19"};
  Label lblTargetLevelDCS{*this, "lblTargetLevelDCS", "DCS"};
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
  Label lblMPPattern{*this, "lblMPPattern", "Pattern"};
  TextBox txtMPPattern{*this, "txtMPPattern", "0"};
  UpDown updMPPattern{*this, "updMPPattern", &txtMPPattern, 0, 2, 0};
  Label lblMPLevel{*this, "lblMPLevel", "Level"};
  TextBox txtMPLevel{*this, "txtMPLevel", "5"};
  UpDown updMPLevel{*this, "updMPLevel", &txtMPLevel, 5, 19, 5};
  Label lblMPDAC{*this, "lblMPDAC", "DAC"};
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
