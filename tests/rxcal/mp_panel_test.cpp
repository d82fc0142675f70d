#include "rx_rig.h"

namespace orvane::test {
namespace {

using ::testing::ElementsAre;
using ::testing::IsEmpty;

struct MpPanelTest : ::testing::Test {
  RxRig rig;
  FrmMPAutoCal& face = rig.panels.mpAutoCal;
};

TEST_F(MpPanelTest, BadInputGoesBackToItsResetText) {
  const struct {
    TextBox& box;
    const char* reset;
  } rows[] = {{face.txtGSMArfcn1, "0"},     {face.txtGSMArfcn2, "40"},    {face.txtGSMArfcn3, "124"},
              {face.txtEGSMArfcn1, "975"},  {face.txtEGSMArfcn2, "1023"}, {face.txtDCSArfcn1, "512"},
              {face.txtDCSArfcn2, "574"},   {face.txtDCSArfcn3, "636"},   {face.txtDCSArfcn4, "700"},
              {face.txtDCSArfcn5, "760"},   {face.txtDCSArfcn6, "822"},   {face.txtDCSArfcn7, "885"},
              {face.txtMPDAC, "750"},       {face.txtMPPattern, "0"},     {face.txtDACUseGSM1, "700"},
              {face.txtDACUseGSM2, "50"},   {face.txtDACUseDCS1, "750"},  {face.txtDACUseDCS2, "750"},
              {face.txtTargetLevel1, "5"},  {face.txtTargetLevel2, "10"}, {face.txtTargetLevel3, "15"},
              {face.txtTargetLevel4, "19"}, {face.txtTargetLevel5, "0"},  {face.txtTargetLevel6, "5"},
              {face.txtTargetLevel7, "10"}, {face.txtTargetLevel8, "15"}};
  for (const auto& row : rows) {
    for (const char* bad : {" 3", "3.5", "-1", "x", "~", "\u3131", "\u3163"}) {
      rig.boxes.shown.clear();
      rig.op.Type(row.box, bad);
      EXPECT_THAT(rig.boxes.Texts(), ElementsAre("Input the number without blank.")) << row.box.Name() << bad;
      EXPECT_EQ(row.box.Text(), row.reset) << row.box.Name();
    }
    EXPECT_EQ(rig.boxes.shown.back().title, "Warning");
    EXPECT_EQ(rig.boxes.shown.back().icon, BoxIcon::Stop);
    rig.boxes.shown.clear();
    rig.op.Type(row.box, "3");
    EXPECT_THAT(rig.boxes.Texts(), IsEmpty()) << row.box.Name();
    EXPECT_EQ(row.box.Text(), "3");
  }
}

TEST_F(MpPanelTest, TheUpDownsBesideTheChannelsStepThemByOne) {
  const UpDown* const spins[] = {&face.updGSMArfcn1, &face.updGSMArfcn2, &face.updGSMArfcn3,  &face.updDCSArfcn1,
                                 &face.updDCSArfcn2, &face.updDCSArfcn3, &face.updDCSArfcn4,  &face.updDCSArfcn5,
                                 &face.updDCSArfcn6, &face.updDCSArfcn7, &face.updEGSMArfcn1, &face.updEGSMArfcn2};
  const auto boxes = face.ArfcnBoxes();
  for (std::size_t i = 0; i < boxes.size(); ++i) {
    EXPECT_EQ(spins[i]->Buddy(), boxes[i]) << boxes[i]->Name();
    EXPECT_EQ(spins[i]->Min(), 0);
    EXPECT_EQ(spins[i]->Max(), 1023);
    EXPECT_EQ(spins[i]->Step(), 1);
    EXPECT_EQ(std::to_string(spins[i]->Value()), boxes[i]->Text());
  }
  rig.op.Move(face.updGSMArfcn2, 41);
  EXPECT_EQ(face.txtGSMArfcn2.Text(), "41");
}

TEST_F(MpPanelTest, ConnectingDoesNotCreateThePanel) { EXPECT_FALSE(face.Created()); }

TEST_F(MpPanelTest, CloseHidesThePanel) {
  face.Show();
  face.cmdMPAutoCalClose.Click();
  EXPECT_FALSE(face.Visible());
}

TEST_F(MpPanelTest, ButtonsOfTheTxPartDoNothing) {
  for (Button* button : {&face.cmdMPTxAutoCal, &face.cmdSlopeUse, &face.cmdDACuse}) button->Click();
  EXPECT_THAT(rig.journal.Lines(), IsEmpty());
}

/// The run of receive calibration and save, with what it presses in the journal.
struct MPRxCalRun : MpPanelTest {
  MPRxCalRun() {
    face.cmdMPRxAllAutoCal.onClick = [this] { rig.journal.Add("Rx run"); };
    rig.autoCal.cmdAutoCalResultSave.onClick = [this] { rig.journal.Add("save"); };
  }
};

TEST_F(MPRxCalRun, AsksForAFileFirstWhenItSavesByItself) {
  rig.autoCal.chkAutoSaveMode.SetChecked(true);
  for (const char* mode : {"File", "EEPROMFile"}) {
    rig.journal.Clear();
    rig.state.cal.SaveMode = mode;
    rig.panel.MPRxCalRun();
    EXPECT_THAT(rig.journal.Lines(),
                ElementsAre("DownloadSaveFileName", "Rx run", "save", "box: Auto Calibration is completed."));
  }
  EXPECT_EQ(rig.boxes.shown.back().title, "Alarm");
  EXPECT_EQ(rig.boxes.shown.back().icon, BoxIcon::Information);
  EXPECT_EQ(rig.state.cal.CalMode, "END");
}

TEST_F(MPRxCalRun, OnePaceStandsBetweenTheRunAndItsSave) {
  rig.autoCal.chkAutoSaveMode.SetChecked(true);
  rig.state.cal.SaveMode = "EEPROM";
  const TimePoint before = rig.loop.Now();
  rig.link.PaceDelay();
  const TimePoint pace = rig.loop.Now() - before;
  rig.journal.Clear();
  rig.panel.MPRxCalRun();
  ASSERT_THAT(rig.journal.Lines(), ElementsAre("Rx run", "save", "box: Auto Calibration is completed."));
  EXPECT_EQ(rig.journal.Times()[1] - rig.journal.Times()[0], pace);
  EXPECT_EQ(rig.journal.Times()[2] - rig.journal.Times()[1], TimePoint{0});
}

TEST_F(MPRxCalRun, NeedsNoFileForTheTargetAlone) {
  rig.autoCal.chkAutoSaveMode.SetChecked(true);
  rig.state.cal.SaveMode = "EEPROM";
  rig.panel.MPRxCalRun();
  EXPECT_THAT(rig.journal.Lines(), ElementsAre("Rx run", "save", "box: Auto Calibration is completed."));
}

TEST_F(MPRxCalRun, AsksBehindTheRunOnceMoreWhetherItSavesByItself) {
  rig.autoCal.chkAutoSaveMode.SetChecked(true);
  rig.state.cal.SaveMode = "EEPROM";
  // As an operator may, while the run awaits a reply.
  face.cmdMPRxAllAutoCal.onClick = [this] { rig.autoCal.chkAutoSaveMode.SetChecked(false); };
  rig.panel.MPRxCalRun();
  EXPECT_THAT(rig.journal.Lines(), ElementsAre("box: Auto Calibration is completed."));
}

TEST_F(MPRxCalRun, HasEndedWhenItSaysSo) {
  rig.state.cal.CalMode = "ALL";
  std::string mode;
  rig.boxes.whileOpen = [&](const Box&) { mode = rig.state.cal.CalMode; };
  rig.panel.MPRxCalRun();
  EXPECT_EQ(mode, "END");
}

TEST_F(MPRxCalRun, LeavesTheSaveToTheOperatorWhenNotOnAuto) {
  rig.state.cal.SaveMode = "File";
  rig.panel.MPRxCalRun();
  EXPECT_THAT(rig.journal.Lines(), ElementsAre("Rx run", "box: Auto Calibration is completed."));
}

}  // namespace
}  // namespace orvane::test
