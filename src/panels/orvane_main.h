#pragma once

#include "panels/ramp_editor_face.h"
#include "platform/controls.h"
#include "platform/file_dialogs.h"
#include "platform/panel.h"

namespace orvane {

/// The main panel. Around its tabs stand the console and the command line; "SYSTEM" connects Target and
/// instruments, "RX" and "TX" hold the manual tests, "TX" the ramp editor too.
struct OrvaneMain : Panel {
  OrvaneMain();

  // Outside the tabs.
  Label lblResults{*this, "lblResults", "Results"};
  TextBox txtResults{*this, "txtResults"};
  Label lblUserCommand{*this, "lblUserCommand", "User Command:"};
  TextBox txtUserCommand{*this, "txtUserCommand"};
  Button cmdLogOn{*this, "cmdLogOn", "Log On/Off"};
  Button cmdResultClear{*this, "cmdResultClear", "Clear"};
  Button cmdAutoCal{*this, "cmdAutoCal", "AUTO CAL"};
  Button Command1{*this, "Command1", "BASE BAND"};
  Button Command2{*this, "Command2", "DOWN LOAD"};
  Button cmdExit{*this, "cmdExit", "Exit"};
  TabControl SSTab1{*this, "SSTab1", {"SYSTEM", "RX", "TX"}};
  FileDialog dlgOpenLog{"Results Log On", "로그파일(*.log)|*.log|All Files (*.*)|*.*", "LOG", "", ""};

  // "SYSTEM": the Target.
  Frame fraTargetSystem{*this, "fraTargetSystem", "Target System (Serial) "};
  Label lblComPort{*this, "lblComPort", "Port Setting"};
  ComboBox cboPort{*this, "cboPort", "COM1", {"COM1", "COM2", "COM3", "COM4"}};
  Label lblTarget{*this, "lblTarget", "Target"};
  ComboBox cboTarget{*this, "cboTarget", "T9300", {"QM310", "QM420", "T9300"}};
  Label lblSyncDelay{*this, "lblSyncDelay", "Sync Delay"};
  TextBox txtSyncDelay{*this, "txtSyncDelay", "20000"};
  UpDown updSyncDelay{*this, "updSyncDelay", &txtSyncDelay, 0, 1000000, 20000, 1000};
  Button cmdTargetInitialize{*this, "cmdTargetInitialize", "Initialize"};
  Button cmdTargetReset{*this, "cmdTargetReset", "Reset"};
  Lamp shpTargetOnOff{*this, "shpTargetOnOff"};

  // "SYSTEM": the test set.
  Frame fraInstrument{*this, "fraInstrument", "Instrument (GPIB)"};
  Label lblInstrumentList{*this, "lblInstrumentList", "Instruments"};
  ComboBox cboInstrumentList{*this, "cboInstrumentList", "HP8960", {"HP8922M", "HP8960", "4400M(WaveTek)"}};
  Label lblPrimaryAddress{*this, "lblPrimaryAddress", "Primary Address"};
  ComboBox cboPrimaryAddress;
  Label lblTimeOut{*this, "lblTimeOut", "Time Out"};
  ComboBox cboTimeOut;
  Button cmdInstrumentInitialize{*this, "cmdInstrumentInitialize", "Initialize"};
  Button cmdInsturmentReset{*this, "cmdInsturmentReset", "Reset"};
  Lamp shpInstrumentOnOff{*this, "shpInstrumentOnOff"};

  // "SYSTEM": the bench supply, which lives on frmBaseBand.
  Frame Frame5{*this, "Frame5", "Power Supply (GPIB)"};
  Button cmdPSInitialize{*this, "cmdPSInitialize", "Initialize"};
  Button cmdPSReset{*this, "cmdPSReset", "Reset"};
  TextBox txtPSVoltage{*this, "txtPSVoltage", "4.21"};
  Button cmdPSVoltageSet{*this, "cmdPSVoltageSet", "Voltage Set"};
  TextBox txtVoltageLoss{*this, "txtVoltageLoss", "0.01"};

  // "RX".
  Frame fraBeacon{*this, "fraBeacon", "BCH Freq Setting"};
  TextBox txtBeacon{*this, "txtBeacon", "30"};
  Button cmdBeaconSet{*this, "cmdBeaconSet", "Set"};
  Frame fraServing{*this, "fraServing", "TCH Freq Setting"};
  TextBox txtServing{*this, "txtServing", "30"};
  Button cmdServingSet{*this, "cmdServingSet", "Set"};
  Frame fraAGCValue{*this, "fraAGCValue", "AGC Value Setting"};
  TextBox txtAGCValue{*this, "txtAGCValue", "40"};
  Button cmdAGCValue{*this, "cmdAGCValue", "Set"};
  CheckBox chkLNAOnOff{*this, "chkLNAOnOff", "LNA On/Off"};
  Frame fraAFCValue{*this, "fraAFCValue", "AFC Value Setting"};
  TextBox txtAFCValue{*this, "txtAFCValue", "-1180"};
  Button cmdAFCValueSet{*this, "cmdAFCValueSet", "Set"};
  Frame fraFBTest{*this, "fraFBTest", "Frequency Burst Test"};
  TextBox txtFBFrame{*this, "txtFBFrame", "10"};
  ComboBox cboFBMode{*this, "cboFBMode", "0", {"0", "1"}};
  Button cmdFBTest{*this, "cmdFBTest", "Test"};
  Frame fraPMStart{*this, "fraPMStart", "Power Measure Set"};
  TextBox txtPMFrame{*this, "txtPMFrame", "10"};
  Button cmdPMStart{*this, "cmdPMStart", "PM Start"};
  Frame fraAGCPM{*this, "fraAGCPM", "Power Measure Display"};
  TextBox txtAGCPM{*this, "txtAGCPM"};
  /// Never filled.
  TextBox txtAGCPMStandardDeviation{*this, "txtAGCPMStandardDeviation"};
  Frame fraAGCPowerLevel{*this, "fraAGCPowerLevel", "Instrument BS Power Level Setting"};
  TextBox txtAGCPowerLevel{*this, "txtAGCPowerLevel", "-85"};
  UpDown updAGCPowerLevel{*this, "updAGCPowerLevel", &txtAGCPowerLevel, -127, -7, -85};
  Button cmdAGCPowerLevelSet{*this, "cmdAGCPowerLevelSet", "Set"};
  Frame fraRxTargetRFMode{*this, "fraRxTargetRFMode", "Instrument RF MODE Setting"};
  ComboBox cboRxTargetRFMode{*this, "cboRxTargetRFMode", "GSM", {"GSM", "DCS"}};
  Button RXTargetSet{*this, "RXTargetSet", "Set"};

  // "TX".
  Frame fraTxLevel{*this, "fraTxLevel", "Target Power Level Setting"};
  OptionGroup txLevelBand;
  OptionButton optTxLevelGSM{*this, "optTxLevelGSM", "GSM", txLevelBand, OptionButton::Start::Selected};
  OptionButton optTxLevelDCS{*this, "optTxLevelDCS", "DCS", txLevelBand};
  Label lblTxLevelIndex{*this, "lblTxLevelIndex", "Index"};
  TextBox txtTxLevelIndex{*this, "txtTxLevelIndex", "5"};
  UpDown updTxLevelIndex{*this, "updTxLevelIndex", &txtTxLevelIndex, 0, 19, 5};
  Button Command4{*this, "Command4", "Set"};
  Label lblPowerLevel{*this, "lblPowerLevel", "DAC"};
  TextBox txtPowerLevel{*this, "txtPowerLevel", "450"};
  UpDown updPowerLevel{*this, "updPowerLevel", &txtPowerLevel, 0, 1023, 450};
  Button cmdPowerlevelSet{*this, "cmdPowerlevelSet", "Set"};
  Frame fraULTest{*this, "fraULTest", "Uplink Normal Burst test"};
  Label lblULPattern{*this, "lblULPattern", "Pattern"};
  ComboBox cboULPattern{*this, "cboULPattern", "All 0", {"All 0", "All 1", "1010"}};
  Label lblULSlot{*this, "lblULSlot", "TSC"};
  ComboBox cboULSlot{*this, "cboULSlot", "4", {"0", "1", "2", "3", "4", "5", "6", "7"}};
  Button cmdULTest{*this, "cmdULTest", "Test"};
  Frame fraTxTargetRFMode{*this, "fraTxTargetRFMode", "Instrument RF Mode Setting"};
  ComboBox cboTxTargetRFMode{*this, "cboTxTargetRFMode", "GSM", {"GSM", "DCS"}};
  Button TXTargetSet{*this, "TXTargetSet", "Set"};
  Frame fraAPCLoss{*this, "fraAPCLoss", "Instrument Loss"};
  TextBox txtAPCLoss{*this, "txtAPCLoss", "-0.5"};
  /// Keeps tenths of the box's number: no plain spin.
  UpDown updAPCLoss{*this, "updAPCLoss", nullptr, -200, 0, 0};
  Button cmdAPCLoss{*this, "cmdAPCLoss", "Set"};
  ComboBox cboDELU{*this, "cboDELU", "0", {}};
  ComboBox cboDELD{*this, "cboDELD", "0", {}};
  Button cmdRampDelaySet{*this, "cmdRampDelaySet", "Set"};
  RampEditorFace ramp{*this, "Command3"};
};

}  // namespace orvane
