#include "charger_rig.h"

namespace orvane::test {
namespace {

using ::testing::ElementsAre;
using ::testing::IsEmpty;

struct ChargerManualTest : ::testing::Test {
  ChargerManualTest() { rig.Prepare(); }
  std::optional<std::string> Click(Button& button) {
    return rig.Act([&] { button.Click(); });
  }
  ChargerRig rig;
  FrmBaseBand& face = rig.panels.baseBand;
  ReplyState& reply = rig.state.reply;
};

TEST_F(ChargerManualTest, EnableAndDisableLightTheLampWhateverTheTargetSays) {
  rig.silent = true;
  Click(face.cmdBatCalEnable);
  EXPECT_EQ(face.shpBatCalOnOff.BackColor(), 65280U);
  Click(face.cmdBatCalDisable);
  EXPECT_EQ(face.shpBatCalOnOff.BackColor(), 255U);
  EXPECT_THAT(rig.Commands(), ElementsAre("tms 3", "tms 4"));
}

TEST_F(ChargerManualTest, AReadAtFullVoltageSetsTheStageAndOneAtShutDownLeavesIt) {
  reply.RawAdcSkip = 1;
  rig.raw = {625, 500};
  Click(face.cmdCC2CVADC);
  EXPECT_EQ(face.txtCC2CVADC.Text(), "0x0271");
  EXPECT_EQ(reply.RawAdcStage, 0);
  Click(face.cmdShutDownADC);
  EXPECT_EQ(face.txtShutDownADC.Text(), "0x01F4");
  EXPECT_THAT(rig.Commands(), ElementsAre("mpr 30", "mpr 30"));
}

TEST_F(ChargerManualTest, ReadsNeedAnOpenPort) {
  rig.serial.Close();
  Click(face.cmdCC2CVADC);
  EXPECT_EQ(reply.RawAdcStage, 1);
  Click(face.cmdShutDownADC);
  EXPECT_THAT(rig.boxes.Texts(),
              ElementsAre("Target must be initialized at first.", "Target must be initialized at first."));
  EXPECT_EQ(rig.boxes.shown.back().title, "Warning");
  EXPECT_THAT(rig.Commands(), IsEmpty());
}

TEST_F(ChargerManualTest, OutsideTestModeNothingHappensButTheStage) {
  reply.TargetMode = "NormalMode";
  for (Button* button : {&face.cmdCC2CVADC, &face.cmdShutDownADC, &face.cmdZeroCal, &face.cmdCVDAC}) Click(*button);
  EXPECT_THAT(rig.journal.Lines(), IsEmpty());
  EXPECT_EQ(reply.RawAdcStage, 1);
}

TEST_F(ChargerManualTest, ZeroCalibrationAveragesThreeReads) {
  rig.raw = {256, 100, 101, 101};
  Click(face.cmdZeroCal);
  EXPECT_THAT(rig.Commands(),
              ElementsAre("mpr 31", "cw 0 29 0x0009", "mpr 32", "mpr 32", "mpr 32", "cw 0 29 0x0000"));
  EXPECT_EQ(face.txtZeroCal.Text(), "0x0065");
}

TEST_F(ChargerManualTest, TheLastCommandOfZeroCalibrationIsNotWaitedFor) {
  rig.raw = {256, 100, 100, 100};
  Click(face.cmdZeroCal);
  EXPECT_FALSE(reply.ReplyDone);
}

TEST_F(ChargerManualTest, ZeroCalibrationPausesBeforeItReads) {
  rig.raw = {256, 100, 100, 100};
  rig.serial.delay = TimePoint{0};
  rig.panels.main.txtSyncDelay.SetText("500000");  // a pace of 1 ms
  std::vector<TimePoint> times;
  rig.serial.answer = [&](const SentCommand& command) {
    times.push_back(rig.loop.Now());
    return rig.Answer(command);
  };
  Click(face.cmdZeroCal);
  EXPECT_EQ(times.at(2) - times.at(1), std::chrono::milliseconds(151));
}

TEST_F(ChargerManualTest, TheSearchPausesBetweenTheDacAndItsReading) {
  face.txtCC2CVADC.SetText("0x0270");
  rig.raw = {300, 625};
  rig.serial.delay = TimePoint{0};
  rig.panels.main.txtSyncDelay.SetText("500000");  // a pace of 1 ms
  std::vector<TimePoint> times;
  rig.serial.answer = [&](const SentCommand& command) {
    times.push_back(rig.loop.Now());
    return rig.Answer(command);
  };
  Click(face.cmdCVDAC);
  ASSERT_EQ(times.size(), 5U);
  EXPECT_EQ(times[4] - times[3], std::chrono::milliseconds(101));
}

TEST_F(ChargerManualTest, WithoutAChargerBothProceduresEnd) {
  rig.raw = {255, 255};
  Click(face.cmdZeroCal);
  Click(face.cmdCVDAC);
  EXPECT_THAT(rig.boxes.Texts(), ElementsAre("Connect Charger.", "Connect the Charger."));
  EXPECT_THAT(rig.Commands(), ElementsAre("mpr 31", "mpr 31"));
  EXPECT_EQ(face.txtZeroCal.Text(), "");
}

TEST_F(ChargerManualTest, AZeroCalibrationClearsTheShutDownCountAndTripsTheWindow) {
  face.txtShutDownADC.SetText("0x01F0");
  rig.raw = {300, 100, 100, 100};
  const TimePoint start = rig.loop.Now();
  Click(face.cmdZeroCal);
  EXPECT_EQ(face.txtShutDownADC.Text(), "");
  EXPECT_EQ(reply.RawAdcOutOfWindow, 1);
  EXPECT_GT(rig.loop.Now() - start, std::chrono::seconds(10));  // four whole reply waits
}

TEST(CvDacStep, GoesByTheDistanceOfTheCount) {
  const struct {
    Long difference;
    int step;
  } rows[] = {{-65535, 8}, {-11, 8}, {-10, 8}, {-9, 7}, {-6, 7}, {-5, 4}, {-3, 4}, {-2, 1},  {-1, 1},
              {0, 0},      {1, -1},  {2, -1},  {3, -4}, {5, -4}, {6, -7}, {9, -7}, {10, -8}, {65535, -8}};
  for (const auto& row : rows) EXPECT_EQ(CvDacStep(row.difference), row.step) << row.difference;
}

TEST_F(ChargerManualTest, TheSearchEndsBehindItsFirstRoundForWantOfAList) {
  face.txtCC2CVADC.SetText("0x0270");
  rig.raw = {300, 625};
  EXPECT_TRUE(Click(face.cmdCVDAC));
  EXPECT_THAT(rig.Commands(), ElementsAre("mpr 31", "cw 0 25 0x01E5", "cw 0 29 0x0001", "cr 0 25", "mpr 30"));
  EXPECT_EQ(face.txtChargerDisplay.Text(), "0x0\r\n0x271\r\n");
  EXPECT_EQ(face.txtCVDACResult.Text(), "");
  EXPECT_EQ(face.txtLoopTime.Text(), "");
}

TEST_F(ChargerManualTest, TheSearchNeedsACountToSeek) {
  rig.raw = {300};
  EXPECT_TRUE(Click(face.cmdCVDAC));
  EXPECT_THAT(rig.Commands(), ElementsAre("mpr 31"));
}

/// The search where a list takes its lines.
struct CvDacSearch : ::testing::Test {
  CvDacSearch() {
    rig.Prepare();
    face.txtCC2CVADC.SetText("0x0270");
  }
  struct LinesPanel : Panel {
    LinesPanel() : Panel("lines", "") {}
    ListBox list{*this, "list"};
  } lines;
  ChargerRig rig{&lines.list};
  FrmBaseBand& face = rig.panels.baseBand;
};

TEST_F(CvDacSearch, EndsAtTheCountThatItSeeks) {
  rig.raw = {300, 618, 622, 624};
  face.cmdCVDAC.Click();
  EXPECT_THAT(rig.Commands(),
              ElementsAre("mpr 31", "cw 0 25 0x01E5", "cw 0 29 0x0001", "cr 0 25", "mpr 30",  // -6: 7 up
                          "cw 0 25 0x01EC", "cw 0 29 0x0001", "cr 0 25", "mpr 30",            // -2: 1 up
                          "cw 0 25 0x01ED", "cw 0 29 0x0001", "cr 0 25", "mpr 30", "cw 0 29 0x0000"));
  EXPECT_THAT(lines.list.Items(), ElementsAre("0x0", "0x26A", "0x0", "0x26E", "0x0", "0x270"));
  EXPECT_EQ(face.txtCVDACResult.Text(), "0x01ED");
  EXPECT_EQ(face.txtLoopTime.Text(), "3");
}

TEST_F(CvDacSearch, EndsAfterTenRoundsWithTheValueBehindTheLastStep) {
  rig.raw = {300};
  for (int i = 0; i < 20; ++i) rig.raw.push_back(400);
  face.cmdCVDAC.Click();
  EXPECT_EQ(face.txtLoopTime.Text(), "10");
  EXPECT_EQ(face.txtCVDACResult.Text(), "0x0235");  // 485 + 10 * 8
  EXPECT_THAT(rig.boxes.Texts(), IsEmpty());
}

TEST_F(ChargerManualTest, AShutDownVoltageIsCheckedOnAClickAlone) {
  for (const char* good : {"3.35", "3.3", "3.25", "3.2", "3.15", "3.1"}) {
    face.cboShutDownVoltage.SetText(good);
    rig.op.Click(face.cboShutDownVoltage);
    EXPECT_EQ(face.cboShutDownVoltage.Text(), good);
  }
  EXPECT_THAT(rig.boxes.Texts(), IsEmpty());
  rig.op.Type(face.cboShutDownVoltage, "3.0");
  EXPECT_THAT(rig.boxes.Texts(), IsEmpty());
  rig.op.Click(face.cboShutDownVoltage);
  EXPECT_THAT(rig.boxes.Texts(), ElementsAre("Select the Item."));
  EXPECT_EQ(face.cboShutDownVoltage.Text(), "3.25");
}

}  // namespace
}  // namespace orvane::test
