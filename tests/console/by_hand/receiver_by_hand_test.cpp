#include "console/by_hand/receiver_by_hand.h"

#include "hand_rig.h"

namespace orvane::test {
namespace {

using testing::ElementsAre;
using testing::IsEmpty;

struct ReceiverByHandTest : testing::Test, HandRig {};

TEST_F(ReceiverByHandTest, WritesAValueAndReadsItBackAHundredAndOnePacesLater) {
  const struct {
    TextBox& box;
    Button& set;
    const char* text;
    const char* write;
    const char* read;
    const char* shown;
  } cases[] = {
      {main.txtBeacon, main.cmdBeaconSet, "62", "Target: rfpw 1 62 +101", "Target: rfpr 1", "BCCH ARFCN = 62\r\n"},
      {main.txtServing, main.cmdServingSet, "700", "Target: rfpw 2 700 +101", "Target: rfpr 2",
       "TCH ARFCN = 700\r\n"},
      {main.txtAGCValue, main.cmdAGCValue, "-10", "Target: rxpw 1 -10 +101", "Target: rxpr 1", "AGC = -10\r\n"},
  };
  for (const auto& [box, set, text, write, read, shown] : cases) {
    main.txtResults.SetText("");
    op.Type(box, text);
    EXPECT_THAT(Trace([&set = set, this] { op.Click(set); }), ElementsAre(write, read));
    EXPECT_EQ(Shown(), shown);
    EXPECT_EQ(box.Text(), text);
  }
  EXPECT_THAT(boxes.shown, IsEmpty());
}

TEST_F(ReceiverByHandTest, ReadsNothingBackThatTheTargetRefused) {
  const struct {
    Button& set;
    const char* write;
  } cases[] = {{main.cmdBeaconSet, "rfpw 1 30"}, {main.cmdServingSet, "rfpw 2 30"}, {main.cmdAGCValue, "rxpw 1 40"}};
  for (const auto& [set, write] : cases) {
    failing = commands + 1;
    EXPECT_THAT(CommandsOf([&set = set, this] { op.Click(set); }), ElementsAre(write));
    EXPECT_EQ(state.reply.TMStatus, "&H01");
  }
  EXPECT_THAT(boxes.shown, IsEmpty()) << "the dump on the console is all";
}

TEST_F(ReceiverByHandTest, WritesTheAfcValueAndReadsNothingBack) {
  EXPECT_THAT(CommandsOf([this] { op.Click(main.cmdAFCValueSet); }), ElementsAre("rfpw 9 -1180"));
  EXPECT_THAT(serial.commands.back().data, ElementsAre(9, 0, 0x64, 0xFB))
      << "16-bit two's complement, low byte first";
}

TEST_F(ReceiverByHandTest, NeedsAValue) {
  const struct {
    TextBox& box;
    Button& set;
    const char* words;
  } cases[] = {{main.txtBeacon, main.cmdBeaconSet, "Input ARFCN."},
               {main.txtServing, main.cmdServingSet, "Input ARFCN."},
               {main.txtAGCValue, main.cmdAGCValue, "Input the AGC Value."},
               {main.txtAFCValue, main.cmdAFCValueSet, "Input the AFC Value."}};
  for (const auto& [box, set, words] : cases) {
    op.Type(box, "");
    boxes.shown.clear();
    EXPECT_THAT(CommandsOf([&set = set, this] { op.Click(set); }), IsEmpty());
    ASSERT_EQ(boxes.shown.size(), 1U);
    ExpectWarning(boxes.shown[0], words);
  }
}

TEST_F(ReceiverByHandTest, TheLnaBoxChangesItsCaptionAndSendsNothing) {
  op.Check(main.chkLNAOnOff, true);
  EXPECT_EQ(main.chkLNAOnOff.Caption(), "LNA On");
  op.Check(main.chkLNAOnOff, false);
  EXPECT_EQ(main.chkLNAOnOff.Caption(), "LNA On/Off");
  EXPECT_THAT(serial.commands, IsEmpty());
}

TEST_F(ReceiverByHandTest, AFrequencyBurstTestIsEnabledByItsMode) {
  op.Type(main.txtFBFrame, "25");
  EXPECT_THAT(Trace([this] { op.Click(main.cmdFBTest); }),
              ElementsAre("Target: scw 16 25", "Target: scw 17 25", "Target: scw 18 25", "Target: scw 24 1",
                          "Target: scw 25 0x0004", "Target: rfe 13"));
  EXPECT_THAT(serial.commands.at(4).data, ElementsAre(25, 0, 0, 0, 4, 0, 0, 0));
  op.Pick(main.cboFBMode, 1);
  EXPECT_THAT(CommandsOf([this] { op.Click(main.cmdFBTest); }).back(), "rfe 12");
}

TEST_F(ReceiverByHandTest, AFrequencyBurstTestReadsItsBoxesAtEachStep) {
  // What an operator does while a reply is awaited counts from the next step on.
  serial.answer = [this](const SentCommand& command) {
    main.txtFBFrame.SetText("11");
    main.cboFBMode.SetText("1");
    return Answer(command);
  };
  EXPECT_THAT(CommandsOf([this] { op.Click(main.cmdFBTest); }),
              ElementsAre("scw 16 10", "scw 17 11", "scw 18 11", "scw 24 1", "scw 25 0x0004", "rfe 12"));
}

TEST_F(ReceiverByHandTest, AFrequencyBurstTestOfAnotherModeIsSetUpAndNotEnabled) {
  for (const char* mode : {"2", "00", ""}) {
    op.Type(main.cboFBMode, mode);
    boxes.shown.clear();
    EXPECT_THAT(CommandsOf([this] { op.Click(main.cmdFBTest); }),
                ElementsAre("scw 16 10", "scw 17 10", "scw 18 10", "scw 24 1", "scw 25 0x0004"));
    ASSERT_EQ(boxes.shown.size(), 1U);
    ExpectWarning(boxes.shown[0], "0 or 1 is available to set.");
  }
}

TEST_F(ReceiverByHandTest, AFrequencyBurstTestGoesOnWhateverTheTargetSays) {
  for (int step = 1; step <= 6; ++step) {
    failing = commands + step;
    EXPECT_EQ(CommandsOf([this] { op.Click(main.cmdFBTest); }).size(), 6U) << step;
  }
  EXPECT_THAT(boxes.shown, IsEmpty());
}

TEST_F(ReceiverByHandTest, APowerMeasurementShowsWhatTheTargetReports) {
  // The count in its box is not what is measured with.
  op.Type(main.txtPMFrame, "77");
  EXPECT_THAT(
      Trace([this] { op.Click(main.cmdPMStart); }),
      ElementsAre("Target: rfpw 8 0", "Target: rxpw 2 4", "Target: scw 16 10", "Target: scw 17 10",
                  "Target: scw 18 10", "Target: scw 24 1", "Target: rxpw 8 0", "Target: rfe 1", "Target: sr 1 2"));
  EXPECT_EQ(main.txtAGCPM.Text(), "50");
  EXPECT_EQ(main.txtAGCPMStandardDeviation.Text(), "");
  EXPECT_EQ(Shown(), "PM = 50\r\n");
  EXPECT_THAT(boxes.shown, IsEmpty());
}

TEST_F(ReceiverByHandTest, APowerMeasurementEndsAtTheStepThatFails) {
  const char* const words[] = {"Error with setting AFC flag. Re-Start.",
                               "Error with setting Time Slot. Re-Start.",
                               "Error with setting Loop. Re-Start.",
                               "Error with setting Results Report. Re-Start.",
                               "Error with setting Number of time to report Results. Re-Start.",
                               "Error with setting Stat Type. Re-Start.",
                               "Error with setting AGC Flag. Re-Start.",
                               "Error with setting rf_enable. Re-Start.."};
  std::size_t step = 0;
  for (const char* failure : words) {
    ++step;
    failing = commands + static_cast<int>(step);
    boxes.shown.clear();
    EXPECT_EQ(CommandsOf([this] { op.Click(main.cmdPMStart); }).size(), step);
    ASSERT_EQ(boxes.shown.size(), 1U) << step;
    ExpectWarning(boxes.shown[0], failure);
  }
  failing = commands + 9;
  boxes.shown.clear();
  op.Click(main.cmdPMStart);
  EXPECT_THAT(boxes.shown, IsEmpty()) << "a report that fails has no words";
  EXPECT_EQ(main.txtAGCPM.Text(), "");
}

TEST_F(ReceiverByHandTest, APowerMeasurementWithoutATargetStopsAtItsFirstStep) {
  serial.Close();
  op.Click(main.cmdPMStart);
  EXPECT_THAT(boxes.Texts(),
              ElementsAre("Target must be initialized at first.", "Error with setting AFC flag. Re-Start."));
  EXPECT_EQ(state.reply.TMStatus, "&HFF");

  boxes.shown.clear();
  serial.Open();
  silent = true;
  EXPECT_THAT(CommandsOf([this] { op.Click(main.cmdPMStart); }), ElementsAre("rfpw 8 0"));
  EXPECT_THAT(boxes.Texts(), ElementsAre("Error with setting AFC flag. Re-Start."));
}

TEST_F(ReceiverByHandTest, ItsBoxesRefuseWhatIsNoNumber) {
  for (const FilterRow<TextBox>& row :
       {FilterRow<TextBox>{main.txtAFCValue, "-", true, "-1180"},
        FilterRow<TextBox>{main.txtAGCValue, "-", true, "40"},
        FilterRow<TextBox>{main.txtAGCPowerLevel, "-", true, "-85"},
        FilterRow<TextBox>{main.txtBeacon, "-", false, "20"}, FilterRow<TextBox>{main.txtServing, "-", false, "30"},
        FilterRow<TextBox>{main.txtFBFrame, "", true, "10"}, FilterRow<TextBox>{main.txtPMFrame, "", true, "10"}}) {
    ExpectFilter(*this, row);
  }
  ExpectFilter(*this, FilterRow<ComboBox>{main.cboFBMode, "", true, "0"});
  EXPECT_THAT(serial.commands, IsEmpty());
}

TEST_F(ReceiverByHandTest, TheLevelsLimitsFollowTheBandAtTheNextChangeOfTheLevel) {
  op.Pick(main.cboRxTargetRFMode, 1);
  EXPECT_EQ(main.updAGCPowerLevel.Max(), -7) << "the band alone moves nothing";
  op.Type(main.txtAGCPowerLevel, "-90");
  EXPECT_EQ(main.updAGCPowerLevel.Min(), -127);
  EXPECT_EQ(main.updAGCPowerLevel.Max(), -12);
  op.Step(main.updAGCPowerLevel, 200);
  EXPECT_EQ(main.txtAGCPowerLevel.Text(), "-12");
  op.Pick(main.cboRxTargetRFMode, 0);
  op.Type(main.txtAGCPowerLevel, "-80");
  EXPECT_EQ(main.updAGCPowerLevel.Max(), -7);
  op.Type(main.cboRxTargetRFMode, "gsm");
  op.Type(main.txtAGCPowerLevel, "x");
  EXPECT_EQ(main.updAGCPowerLevel.Max(), -12) << "any text but \"GSM\", and after a refused level too";
}

}  // namespace
}  // namespace orvane::test
