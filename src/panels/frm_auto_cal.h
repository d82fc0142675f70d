#pragma once

#include "platform/controls.h"
#include "platform/file_dialogs.h"
#include "platform/panel.h"

namespace orvane {

/// "Auto Calibration": the settings and buttons of every RF calibration of a Target.
struct FrmAutoCal : Panel {
  FrmAutoCal() : Panel("frmAutoCal", "Auto Calibration") {}

  // Channels, losses in dB, tolerance in dB, last readings.
  TextBox txtARFCN{*this, "txtARFCN", "62"};
  UpDown UpDownARFCN{*this, "UpDownARFCN", &txtARFCN, 0, 1023, 62};
  TextBox txtdcsarfcn{*this, "txtdcsarfcn", "699"};
  UpDown UpDowndcs{*this, "UpDowndcs", &txtdcsarfcn, 0, 1023, 699};
  TextBox txtLoss{*this, "txtLoss", "-0.5"};
  UpDown updLoss{*this, "updLoss", &txtLoss, -200, 0, 0};
  TextBox txtDCSLoss{*this, "txtDCSLoss", "-0.5"};
  UpDown updDCSLoss{*this, "updDCSLoss", &txtDCSLoss, -200, 0, 0};
  TextBox txtRxCableLossGSM{*this, "txtRxCableLossGSM", "-0.5"};
  /// The two receive losses count tenths and are no plain spins.
  UpDown updRxCableLossGSM{*this, "updRxCableLossGSM", nullptr, -200, 0, -5};
  TextBox txtRxCableLossDCS{*this, "txtRxCableLossDCS", "-0.5"};
  UpDown updRxCableLossDCS{*this, "updRxCableLossDCS", nullptr, -200, 0, -5};
  TextBox txtErrorRate{*this, "txtErrorRate", "0.1"};
  TextBox txtPeakPower{*this, "txtPeakPower"};
  TextBox txtTXP{*this, "txtTXP"};
  OptionGroup channelCal;
  OptionButton optNoChanCal{*this, "optNoChanCal", "No CHN CAL", channelCal, OptionButton::Start::Selected};
  OptionButton optChanCal{*this, "optChanCal", "Execute CHN CAL", channelCal};

  // Runs.
  Button cmdGSM{*this, "cmdGSM", "GSM"};
  Button cmdDCS{*this, "cmdDCS", "DCS"};
  Button cmdTxAllCal{*this, "cmdTxAllCal", "Tx Auto Cal"};
  Button cmdAllCalStart{*this, "cmdAllCalStart", "All Cal"};
  Button Command1{*this, "Command1", "RF Cal"};
  Button cmdAutoCalStop{*this, "cmdAutoCalStop", "Stop"};
  Button cmdAutoCalClose{*this, "cmdAutoCalClose", "Close"};
  Button cmdTxResults{*this, "cmdTxResults", "Tx Results"};
  Button cmdRxAutoCalResults{*this, "cmdRxAutoCalResults", "Rx Results"};
  Button cmdMP{*this, "cmdMP", "MP Show"};
  Button cmdRampShape{*this, "cmdRampShape", "Ramp Table"};

  // AFC.
  TextBox txtAutoCalAFC{*this, "txtAutoCalAFC", "-1180"};
  UpDown updAutoCalAFC{*this, "updAutoCalAFC", &txtAutoCalAFC, -4096, 4095, -1180};
  Button cmdAutoCalSet{*this, "cmdAutoCalSet", "Set"};

  // Receive run.
  ComboBox ComboFunction{*this, "ComboFunction", "CW", {"CW", "BCHTCH"}};
  ComboBox comboOffset{*this, "comboOffset", "Average", {"Average", "+offset", "-offset"}};
  TextBox txtfreqOffset{*this, "txtfreqOffset", "67"};
  TextBox txtAutocalSetPointIL{*this, "txtAutocalSetPointIL", "-34"};
  UpDown updAutocalSetPointIL{*this, "updAutocalSetPointIL", &txtAutocalSetPointIL, -120, 0, -34};

  // Result save.
  OptionGroup saveMode;
  OptionButton optSaveModeEEPROM{*this, "optSaveModeEEPROM", "Flash", saveMode};
  OptionButton optSaveModeFile{*this, "optSaveModeFile", "File(*.epm)", saveMode};
  OptionButton optSaveModeEEPROMFile{*this, "optSaveModeEEPROMFile", "Flash+ File", saveMode};
  CheckBox chkAutoSaveMode{*this, "chkAutoSaveMode", "Auto"};
  Button cmdAutoCalResultSave{*this, "cmdAutoCalResultSave", "Save"};
  ProgressBar prgAutoCalDownload{*this, "prgAutoCalDownload"};

  // "Power Index": txtPowerIndex holds a level, txtPowerIndexLevel a power in dBm.
  Frame fraPowerIndex{*this, "fraPowerIndex", "Power Index"};
  OptionGroup powerIndexBand;
  OptionButton optPowerIndexGSM{*this, "optPowerIndexGSM", "GSM", powerIndexBand};
  OptionButton optPowerIndexDCS{*this, "optPowerIndexDCS", "DCS", powerIndexBand};
  TextBox txtPowerIndex{*this, "txtPowerIndex", "5"};
  UpDown updPowerIndex{*this, "updPowerIndex", &txtPowerIndex, 0, 19, 5};
  TextBox txtPowerIndexLevel{*this, "txtPowerIndexLevel", "32"};
  UpDown updPowerIndexLevel{*this, "updPowerIndexLevel", &txtPowerIndexLevel, 0, 33, 32};
  Button cmdPowerIndexSet{*this, "cmdPowerIndexSet", "Set"};
  Button cmdPowerIndexSave{*this, "cmdPowerIndexSave", "Save"};
  Button cmdPowerIndexLoad{*this, "cmdPowerIndexLoad", "Load"};
  FileDialog dlgPowerIndex{"", "(*.pwr)|*.pwr|All Files (*.*)|*.*;", "", "", ""};

  // "Initial Value": txtinitialLevel holds a level, txtinitialDAC an APC DAC value.
  Frame fraInitialValue{*this, "fraInitialValue", "Initial Value"};
  OptionGroup initialBand;
  OptionButton optinitialGSM{*this, "optinitialGSM", "GSM", initialBand};
  OptionButton optinitialDCS{*this, "optinitialDCS", "DCS", initialBand};
  TextBox txtinitialLevel{*this, "txtinitialLevel", "5"};
  UpDown updinitialLevel{*this, "updinitialLevel", &txtinitialLevel, 0, 19, 5};
  TextBox txtinitialDAC{*this, "txtinitialDAC"};
  UpDown updinitialDAC{*this, "updinitialDAC", &txtinitialDAC, 0, 1023, 500};
  Button cmdinitialSet{*this, "cmdinitialSet", "Set"};
  Button cmdinitialSave{*this, "cmdinitialSave", "Save"};
  Button cmdinitialLoad{*this, "cmdinitialLoad", "Load"};
  FileDialog dlgInitial{"", "(*.init)|*.init|All Files (*.*)|*.*;", "", "", ""};

  // "Cable Loss".
  Frame fraCableLoss{*this, "fraCableLoss", "Cable Loss"};
  Button cmdRxLossSet{*this, "cmdRxLossSet", "Set"};
  Button cmdRxLossSave{*this, "cmdRxLossSave", "Save"};
  Button cmdRxLossLoad{*this, "cmdRxLossLoad", "Load"};
  FileDialog dlgLoss{"", "(*.loss)|*.loss|All Files (*.*)|*.*;", "", "", ""};

  // Without behaviour: the live receive run is on frmMPAutoCal, and nothing reads these boxes.
  Button cmdAutoCalAGCStart{*this, "cmdAutoCalAGCStart", "AGC"};
  Button cmdAutoCalGMAGICStart{*this, "cmdAutoCalGMAGICStart", "G-MAGIC"};
  Button cmdCompensationChannel{*this, "cmdCompensationChannel", "Channel"};
  Button cmdCompensationTemperature{*this, "cmdCompensationTemperature", "Temperature"};
  Button cmdChannel{*this, "cmdChannel", "Channel"};
  Button cmdTempCal{*this, "cmdTempCal", "Temperature"};
  Button cmdRxAllAutoCal{*this, "cmdRxAllAutoCal", "Rx Auto Cal"};
  TextBox txtAutoCalPM{*this, "txtAutoCalPM"};
  TextBox txtAutoCalDCSPM{*this, "txtAutoCalDCSPM"};
  TextBox txtGMAGICGSM900F71{*this, "txtGMAGICGSM900F71"};
  TextBox txtGMAGICDCS1800F71{*this, "txtGMAGICDCS1800F71"};
  TextBox txtAutoCalGMAGICARFCN{*this, "txtAutoCalGMAGICARFCN", "700"};
  TextBox txtAutoCalAGCARFCN{*this, "txtAutoCalAGCARFCN", "40"};
};

}  // namespace orvane
