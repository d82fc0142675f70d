#pragma once

#include "platform/controls.h"
#include "platform/panel.h"

namespace orvane {

/// One instrument's session settings on frmBaseBand.
struct BenchSessionFace {
  Label boardNumberLabel;
  TextBox boardNumber;
  Label primAddressLabel;
  ComboBox primAddress;
  Label secAddressLabel;
  ComboBox secAddress;
  Label timeOutLabel;
  ComboBox timeOut;
  Label bufferSizeLabel;
  TextBox bufferSize;
  Button initialize;
  Button reset;
};

/// "BaseBand": bench supply and electronic load, and the calibration of battery and charger thresholds.
struct FrmBaseBand : Panel {
  FrmBaseBand();

  Button cmdBaseBandClose{*this, "cmdBaseBandClose", "Close"};

  Frame fraPowerSupply{*this, "fraPowerSupply", "Power Supply"};
  BenchSessionFace supply;
  TextBox txtPSVoltage{*this, "txtPSVoltage", "4.21"};
  Button cmdPSVoltageSet{*this, "cmdPSVoltageSet", "Voltage Set"};
  Label lblVoltageLoss{*this, "lblVoltageLoss", "Voltage Loss"};
  TextBox txtVoltageLoss{*this, "txtVoltageLoss", "0.01"};
  /// The caption says what the next click does.
  Button cmdPSVoltageEnable{*this, "cmdPSVoltageEnable", "Enable"};

  Frame fraLoader{*this, "fraLoader", "Loader"};
  BenchSessionFace load;
  TextBox TxtLoaderCurrent{*this, "TxtLoaderCurrent", "0.1"};
  Button cmdLoaderCurrentSet{*this, "cmdLoaderCurrentSet", "Current"};
  TextBox txtLoaderResister{*this, "txtLoaderResister", "2000"};
  Button cmdLoaderResisterSet{*this, "cmdLoaderResisterSet", "Resister"};
  OptionGroup loaderUse;
  OptionButton optLoaderUse{*this, "optLoaderUse", "Use Loader", loaderUse, OptionButton::Start::Selected};
  OptionButton optLoaderDisuse{*this, "optLoaderDisuse", "Disuse Loader", loaderUse};

  Button cmdChargerAutoCal{*this, "cmdChargerAutoCal", "AutoCal"};
  Button cmdBatCalEnable{*this, "cmdBatCalEnable", "Calibration Enable"};
  Button cmdBatCalDisable{*this, "cmdBatCalDisable", "Calibration Disable"};
  Lamp shpBatCalOnOff{*this, "shpBatCalOnOff"};
  Button cmdCC2CVADC{*this, "cmdCC2CVADC", "4.2 V"};
  TextBox txtCC2CVADC{*this, "txtCC2CVADC"};
  Button cmdShutDownADC{*this, "cmdShutDownADC", "ShutDown"};
  TextBox txtShutDownADC{*this, "txtShutDownADC"};
  Button cmdZeroCal{*this, "cmdZeroCal", "ZeroCal"};
  TextBox txtZeroCal{*this, "txtZeroCal"};
  Button cmdCVDAC{*this, "cmdCVDAC", "CV DAC"};
  TextBox txtCVDACResult{*this, "txtCVDACResult"};
  Label lblLoopTime{*this, "lblLoopTime", "Loop Time"};
  TextBox txtLoopTime{*this, "txtLoopTime"};
  Label lblShutDownVoltage{*this, "lblShutDownVoltage", "ShutDown"};
  ComboBox cboShutDownVoltage{*this, "cboShutDownVoltage", "3.35", {"3.35"}};
  Label lblShutDownVoltageUnit{*this, "lblShutDownVoltageUnit", "(V)"};
  Label lblDelay{*this, "lblDelay", "Delay"};
  ComboBox cboDelay;
  Frame fraChargerDisplay{*this, "fraChargerDisplay", "Data to write in Flash"};
  TextBox txtChargerDisplay{*this, "txtChargerDisplay"};
  Button cmdCalculateParameter{*this, "cmdCalculateParameter", "Calculate"};
  Button cmdWriteChargerEEPROM{*this, "cmdWriteChargerEEPROM", "Write Flash"};
  Frame fraCalculatedResults{*this, "fraCalculatedResults", "Calculated Results"};
  Label lblCCDACResult{*this, "lblCCDACResult", "CC DAC"};
  TextBox txtCCDACResult{*this, "txtCCDACResult"};
  Label lblCVCutValue{*this, "lblCVCutValue", "CV Cut"};
  TextBox TxtCVCutValue{*this, "TxtCVCutValue"};
};

}  // namespace orvane
