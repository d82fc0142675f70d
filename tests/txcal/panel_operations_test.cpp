#include "base/failure.h"
#include "panel_desk.h"

namespace orvane::test {
namespace {

using ::testing::ElementsAre;
using ::testing::IsEmpty;

class CalibrationPanel : public PanelDesk {};

TEST_F(CalibrationPanel, ConnectingDoesNotCreateIt) {
  EXPECT_FALSE(panel.Created());
  EXPECT_FALSE(panels.downLoad.Created());
  EXPECT_EQ(cal.SaveMode, "");
}

TEST_F(CalibrationPanel, LoadsWithItsSettings) {
  // The sequencer's handler: the button follows the check.
  panel.chkAutoSaveMode.onClick = [this] { panel.cmdAutoCalResultSave.SetEnabled(!panel.chkAutoSaveMode.Checked()); };
  panel.Touch();
  EXPECT_FALSE(panel.prgAutoCalDownload.Visible());
  EXPECT_TRUE(panel.optPowerIndexGSM.Selected());
  EXPECT_TRUE(panel.optinitialGSM.Selected());
  EXPECT_EQ(panel.updPowerIndexLevel.Max(), 33);
  EXPECT_TRUE(panel.chkAutoSaveMode.Checked());
  EXPECT_TRUE(panel.cmdAutoCalResultSave.Enabled()) << "enabled although \"Auto\" is on";
  EXPECT_EQ(cal.SaveMode, "EEPROM");
  EXPECT_EQ(panel.txtinitialDAC.Text(), "500");
  EXPECT_EQ(cal.PowerIndex[0], Decimal4(32));
  EXPECT_EQ(cal.InitValueIndex[30], 48);
  EXPECT_THAT(boxes.shown, IsEmpty());
  EXPECT_THAT(Commands(), IsEmpty());
}

TEST_F(CalibrationPanel, LoadingItReplacesTheRampIndicesOfAParameterFile) {
  auto& bands = state.rf.RFParams.BAND;
  for (auto& band : bands) {
    for (auto& level : band.tx_Level) level.ramp_index = 77;
  }
  panel.Touch();
  const std::array<Integer, 33> gsm{0,  0,  0,  0,  0,  0,  1,  2,  3,  4,  5,  6,  7,  8,  9,  10, 11,
                                    12, 13, 14, 14, 14, 14, 14, 14, 14, 14, 14, 14, 14, 14, 14, 77};
  const std::array<Integer, 33> dcs{0,  1,  2,  3,  4,  5,  6,  7,  8,  9,  10, 11, 12, 13, 14, 15, 15,
                                    15, 15, 15, 15, 15, 15, 15, 15, 15, 15, 15, 15, 0,  0,  0,  77};
  for (std::size_t i = 0; i < gsm.size(); ++i) {
    EXPECT_EQ(bands[0].tx_Level[i].ramp_index, gsm[i]) << i;
    EXPECT_EQ(bands[1].tx_Level[i].ramp_index, dcs[i]) << i;
  }
}

TEST_F(CalibrationPanel, OptionsSetTheSaveMode) {
  panel.Touch();
  panel.optSaveModeFile.Select();
  EXPECT_EQ(cal.SaveMode, "File");
  panel.optSaveModeEEPROMFile.Select();
  EXPECT_EQ(cal.SaveMode, "EEPROMFile");
  panel.optSaveModeEEPROM.Select();
  EXPECT_EQ(cal.SaveMode, "EEPROM");
}

TEST_F(CalibrationPanel, ChannelOptionsAndIdleButtonsDoNothing) {
  panel.optChanCal.Select();
  for (Button* button :
       {&panel.cmdAutoCalAGCStart, &panel.cmdAutoCalGMAGICStart, &panel.cmdCompensationChannel,
        &panel.cmdCompensationTemperature, &panel.cmdChannel, &panel.cmdTempCal, &panel.cmdRxAllAutoCal}) {
    button->Click();
  }
  EXPECT_THAT(journal.Lines(), IsEmpty());
}

TEST_F(CalibrationPanel, ButtonsShowTheOtherPanels) {
  const std::vector<std::pair<Button*, Panel*>> shows{
      {&panel.cmdTxResults, &panels.txResult},
      {&panel.cmdRxAutoCalResults, &panels.rxResult},
      {&panel.cmdMP, &panels.mpAutoCal},
      {&panel.cmdRampShape, &panels.rampTable},
  };
  for (const auto& [button, shown] : shows) {
    EXPECT_FALSE(shown->Created());
    button->Click();
    EXPECT_TRUE(shown->Visible()) << shown->Name();
  }
  panel.Show();
  panel.cmdAutoCalClose.Click();
  EXPECT_FALSE(panel.Visible());
}

TEST_F(CalibrationPanel, AViewOpenedAgainShowsTheSameRows) {
  panel.cmdTxResults.Click();
  panels.txResult.listPowerLevel.AddItem("row");
  panels.txResult.Hide();
  panel.cmdTxResults.Click();
  EXPECT_TRUE(panels.txResult.Visible());
  EXPECT_THAT(panels.txResult.listPowerLevel.Items(), ElementsAre("row"));
}

class StopControl : public PanelDesk {};

TEST_F(StopControl, OneClickAsksForAStopAndASecondOneWithdrawsIt) {
  panel.cmdAutoCalStop.Click();
  EXPECT_TRUE(cal.CalStopRequested);
  EXPECT_EQ(cal.CalMode, "Stop");
  EXPECT_EQ(panel.cmdAutoCalStop.BackColor(), 255U);
  panel.cmdAutoCalStop.Click();
  EXPECT_FALSE(cal.CalStopRequested);
  EXPECT_EQ(cal.CalMode, "Stop");
  EXPECT_EQ(panel.cmdAutoCalStop.BackColor(), 0x8000000FU);
}

TEST_F(StopControl, WithdrawsAStopThatARunHasForced) {
  cal.CalStopRequested = true;
  cal.CalMode = "ALL";
  panel.cmdAutoCalStop.Click();
  EXPECT_FALSE(cal.CalStopRequested);
  EXPECT_EQ(cal.CalMode, "Stop");
}

class AfcSet : public PanelDesk {};

TEST_F(AfcSet, SendsTheValueAndReadsItBackWithoutAWait) {
  OpenPort();
  panel.cmdAutoCalSet.Click();
  EXPECT_THAT(Commands(), ElementsAre("rfpw 9 -1180", "rfpr 9"));
  EXPECT_FALSE(state.reply.ReplyDone) << "the reply is still on its way when the click has ended";
  loop.RunDry();
  EXPECT_TRUE(state.reply.ReplyDone);
  EXPECT_THAT(boxes.shown, IsEmpty());
}

TEST_F(AfcSet, DoesNotReadBackAValueThatTheTargetRefused) {
  OpenPort();
  serial.answer = [](const SentCommand& command) { return PaddedReply(command.operation, 1); };
  panel.cmdAutoCalSet.Click();
  EXPECT_THAT(Commands(), ElementsAre("rfpw 9 -1180"));
}

TEST_F(AfcSet, AsksForAValue) {
  OpenPort();
  panel.txtAutoCalAFC.SetText("");
  panel.cmdAutoCalSet.Click();
  EXPECT_THAT(Warnings(), ElementsAre("Input AFC Value."));
  EXPECT_THAT(Commands(), IsEmpty());
}

TEST_F(AfcSet, OutsideTestModeSendsNothingAndSaysNothing) {
  OpenPort();
  state.reply.TargetMode = "";
  panel.cmdAutoCalSet.Click();
  EXPECT_THAT(journal.Lines(), IsEmpty());
}

class DownlinkSetUp : public PanelDesk {
 protected:
  const std::vector<std::string> commands{"rxpw 2 4",  "scw 16 10", "scw 17 10",
                                          "scw 18 10", "scw 24 1",  "scw 25 0x0002"};
};

TEST_F(DownlinkSetUp, SendsSixCommands) {
  OpenPort();
  EXPECT_TRUE(calPanel.DownlinkParamSet());
  EXPECT_EQ(Commands(), commands);
  EXPECT_THAT(boxes.shown, IsEmpty());
}

TEST_F(DownlinkSetUp, EndsAtTheFirstFailureWithItsWords) {
  const std::vector<std::string> words{
      "Setting Time Slot is not Completed. Re-Start.",
      "Setting Loop is not Completed. Re-Start.",
      "Setting Number of Results report is not Completed. Re-Start.",
      "Setting Number of Results reset is not Completed. Re-Start.",
      "Setting stats type is not Completed. Re-Start.",
      "Setting bit mask is not Completed. Re-Start.",
  };
  OpenPort();
  for (std::size_t failing = 0; failing < words.size(); ++failing) {
    SCOPED_TRACE(commands[failing]);
    journal.Clear();
    serial.commands.clear();
    serial.answer = [&](const SentCommand& command) {
      return PaddedReply(command.operation, serial.commands.size() == failing + 1 ? 1 : 0);
    };
    EXPECT_FALSE(calPanel.DownlinkParamSet());
    EXPECT_THAT(Warnings(), ElementsAre(words[failing]));
    EXPECT_EQ(Commands(), std::vector(commands.begin(), commands.begin() + static_cast<std::ptrdiff_t>(failing) + 1));
  }
}

TEST_F(DownlinkSetUp, ASilentTargetFailsTheFirstCommand) {
  OpenPort();
  serial.answer = [](const SentCommand&) { return std::string(); };
  EXPECT_FALSE(calPanel.DownlinkParamSet());
  EXPECT_THAT(Warnings(), ElementsAre("Setting Time Slot is not Completed. Re-Start."));
}

class ResultFileName : public PanelDesk {};

TEST_F(ResultFileName, TakesANewName) {
  panels.downLoad.dlgDownload.fileName = "former.epm";
  dialogs.answers = {"/d/new.epm"};
  calPanel.DownloadSaveFileName();
  EXPECT_EQ(dialogs.shown.at(0).dialog.fileName, "") << "the dialog starts without a name";
  EXPECT_TRUE(dialogs.shown.at(0).save);
  EXPECT_EQ(dialogs.shown.at(0).dialog.title, "RF Parameters Download/") << "and with the title that stands there";
  EXPECT_EQ(cal.CalSaveFileName, "/d/new.epm");
  EXPECT_TRUE(cal.CalSaveFileOk);
}

TEST_F(ResultFileName, CancelMakesTheNameUnusableAndKeepsIt) {
  cal.CalSaveFileName = "old.epm";
  cal.CalSaveFileOk = true;
  calPanel.DownloadSaveFileName();
  EXPECT_EQ(cal.CalSaveFileName, "old.epm");
  EXPECT_FALSE(cal.CalSaveFileOk);
  EXPECT_THAT(boxes.shown, IsEmpty());
}

TEST_F(ResultFileName, NoKeepsTheOldFileAndTheNameIsUsable) {
  files.content["/d/a.epm"] = "old";
  dialogs.answers = {"/d/a.epm"};
  boxes.answers = {BoxButton::No};
  calPanel.DownloadSaveFileName();
  EXPECT_EQ(boxes.shown.at(0).text, "Do you want to change with /d/a.epm?");
  EXPECT_EQ(files.content["/d/a.epm"], "old");
  EXPECT_EQ(cal.oldSaveFile, OldFile::IsOverlaid);
  EXPECT_TRUE(cal.CalSaveFileOk);
}

TEST_F(ResultFileName, YesIsRememberedUntilTheSave) {
  files.content["a.epm"] = "old";
  dialogs.answers = {"a.epm"};
  boxes.answers = {BoxButton::Yes};
  calPanel.DownloadSaveFileName();
  EXPECT_EQ(files.content["a.epm"], "old") << "the run may never come to its save";
  EXPECT_EQ(cal.oldSaveFile, OldFile::Goes);
  EXPECT_TRUE(cal.CalSaveFileOk);
  calPanel.DownloadSaveFileName();  // Cancelled: the next run saves to the same name.
  EXPECT_EQ(cal.oldSaveFile, OldFile::Goes);
}

TEST_F(ResultFileName, CancelInTheQuestionShowsTheDialogAgainInTheSameFolder) {
  files.content["/d/a.epm"] = "old";
  dialogs.answers = {"/d/a.epm", std::nullopt};
  boxes.answers = {BoxButton::Cancel};
  calPanel.DownloadSaveFileName();
  ASSERT_EQ(dialogs.shown.size(), 2U);
  EXPECT_EQ(dialogs.shown[1].dialog.initialFolder, "/d");
  EXPECT_EQ(cal.CalSaveFileName, "/d/a.epm") << "the name was taken as it was chosen";
  EXPECT_FALSE(cal.CalSaveFileOk);
}

TEST_F(ResultFileName, AFileThatCannotBeReplacedShowsTheSystemsTextAndLeavesTheFlag) {
  for (const bool before : {false, true}) {
    boxes.shown.clear();
    cal.CalSaveFileOk = before;
    files.content["a.epm"] = "old";
    files.irreplaceable = {"a.epm"};
    dialogs.answers = {"a.epm"};
    boxes.answers = {BoxButton::Yes};
    calPanel.DownloadSaveFileName();
    ASSERT_EQ(boxes.shown.size(), 2U);
    EXPECT_EQ(boxes.shown[1].text, "a.epm: Permission denied");
    EXPECT_EQ(boxes.shown[1].icon, BoxIcon::Exclamation);
    EXPECT_EQ(cal.CalSaveFileOk, before);
  }
}

class TxPowerRead : public PanelDesk {
 protected:
  /// One pace with the default count, at 2 ns a turn.
  static constexpr TimePoint kPace{20000 * 2};
  FakeInstrument& TestSetAt1() { return bus.At(1); }
};

TEST_F(TxPowerRead, StartsAMeasurementAndLeavesItsResultToBeRead) {
  OpenTestSet();
  TestSetAt1().readings = {"\tTXP\r\n", "31.97\n"};
  const TimePoint start = loop.Now();
  EXPECT_EQ(calPanel.HP8960TxPowerRead(), "TXP");
  EXPECT_EQ(loop.Now() - start, 53 * kPace);
  EXPECT_EQ(panel.txtTXP.Text(), "TXP");
  EXPECT_THAT(TestSetAt1().lines, ElementsAre("INITIATE:TXPOWER", "INITIATE:DONE?", "FETC:TXP:POW?"));
  EXPECT_EQ(testSet.Read(), "31.97\n");
}

TEST_F(TxPowerRead, GivesAMeasurementThatIsNotDoneMoreTime) {
  OpenTestSet();
  TestSetAt1().readings = {" WAIT\n"};
  const TimePoint start = loop.Now();
  EXPECT_EQ(calPanel.HP8960TxPowerRead(), " WAIT") << "blanks stay";
  EXPECT_EQ(loop.Now() - start, 104 * kPace);
  EXPECT_EQ(TestSetAt1().lines.back(), "FETC:TXP:POW?");
}

}  // namespace
}  // namespace orvane::test
