#pragma once

#include "platform/controls.h"
#include "platform/file_dialogs.h"
#include "platform/panel.h"

namespace orvane {

/// "DownLoad": moves RF parameters between file, record and Target; its lower half takes the settings of a hand test
/// of the Target's EEPROM.
struct FrmDownLoad : Panel {
  FrmDownLoad() : Panel("frmDownLoad", "DownLoad") {
    fraBBOption.Hold({&chkChargerParam});
    fraBBOption.SetEnabled(false);
    prgDownload.SetVisible(false);
  }

  Frame fraDownloadMode{*this, "fraDownloadMode", "Download Mode"};
  OptionGroup downloadMode;
  OptionButton optFullDownload{*this, "optFullDownload", "Full ", downloadMode, OptionButton::Start::Selected};
  OptionButton optPartialDownload{*this, "optPartialDownload", "Partial", downloadMode};
  Frame fraBBOption{*this, "fraBBOption", "BB Options"};
  CheckBox chkChargerParam{*this, "chkChargerParam", "Charger Params"};
  Frame fraDownloadOption{*this, "fraDownloadOption", "RF Parameter Download"};
  OptionGroup downloadOption;
  OptionButton optDownloadFileLoad{*this, "optDownloadFileLoad", "File load", downloadOption};
  OptionButton optDownloadRAM{*this, "optDownloadRAM", "RAM", downloadOption};
  OptionButton optDownloadFlash{*this, "optDownloadFlash", "Flash", downloadOption, OptionButton::Start::Selected};
  Button cmdEepromDownLoad{*this, "cmdEepromDownLoad", "Download"};
  Button cmdUpLoad{*this, "cmdUpLoad", "Up Load"};
  Frame fraFlashTest{*this, "fraFlashTest", "Flash Test"};
  /// Does nothing.
  Button cmdse{*this, "cmdse", "SE3"};
  ListBox lstDataReadWindow{*this, "lstDataReadWindow"};
  ProgressBar prgDownload{*this, "prgDownload"};
  FileDialog dlgDownload{"RF Parameters Download/", "(*.epm)|*.epm|(*.txt)|*.txt|All Files(*.*)|*.*;", "epm", "", ""};
  /// Name of the last download.
  std::string downloadFileName;

  Frame fraEepromTest{*this, "fraEepromTest", "EEPROM Test"};
  Frame fraActionMode{*this, "fraActionMode", "Read / Write"};
  OptionGroup actionMode;
  OptionButton optEepromRead{*this, "optEepromRead", "Read", actionMode};
  OptionButton optEepromWrite{*this, "optEepromWrite", "Write", actionMode};
  Frame fraBytePageMode{*this, "fraBytePageMode", "Byte / Page"};
  OptionGroup bytePageMode;
  OptionButton optEepromByte{*this, "optEepromByte", "Byte", bytePageMode};
  OptionButton optEepromPage{*this, "optEepromPage", "Page", bytePageMode};
  Frame fraStratAddresLength{*this, "fraStratAddresLength", "Start Address && Length"};
  Label lblEepromAddress{*this, "lblEepromAddress", "Address"};
  TextBox txtEepromStartAddress{*this, "txtEepromStartAddress", "0"};
  UpDown updEepromStartAddress{*this, "updEepromStartAddress", &txtEepromStartAddress, 0, 65536, 0};
  Label lblEepromLength{*this, "lblEepromLength", "Length"};
  TextBox txtEepromLength{*this, "txtEepromLength", "1"};
  UpDown updEepromLength{*this, "updEepromLength", &txtEepromLength, 0, 65536, 1};
  Frame fraEepromDataRead{*this, "fraEepromDataRead", "Data Read"};
  Frame fraEepromDataWrite{*this, "fraEepromDataWrite", "Data Write"};
  Label lblDisplayAddress{*this, "lblDisplayAddress", "Add"};
  TextBox txtEepromDataWriteAddress{*this, "txtEepromDataWriteAddress"};
  Label lblEepromData{*this, "lblEepromData", "Data"};
  TextBox txtEepromDataWrite{*this, "txtEepromDataWrite"};
  /// No action behind these two.
  Button cmdEepromTest{*this, "cmdEepromTest", "Test"};
  Button cmdEepromErase{*this, "cmdEepromErase", "All Erase"};
};

}  // namespace orvane
