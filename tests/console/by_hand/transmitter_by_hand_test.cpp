#include "console/by_hand/transmitter_by_hand.h"

#include "hand_rig.h"

namespace orvane::test {
namespace {

using testing::ElementsAre;
using testing::IsEmpty;

constexpr Colour kBurstOn = 0x00FF8080;

struct TransmitterByHandTest : testing::Test, HandRig {};

TEST_F(TransmitterByHandTest, SetsALevelOnTheChannelOfTheOtherTabAndReadsItBack) {
  op.Type(main.txtServing, "62");
  EXPECT_THAT(Trace([this] { op.Click(main.Command4); }),
              ElementsAre("Target: rfpw 2 62 +11", "Target: txpw 1 5 +11", "Target: txpr 1"));
  EXPECT_EQ(Shown(), "Tx power level = 5\r\n");
}

TEST_F(TransmitterByHandTest, ALevelIsSetAfterItsPauseAlsoWhenTheTargetRefusedTheChannel) {
  failing = 1;
  EXPECT_THAT(Trace([this] { op.Click(main.Command4); }),
              ElementsAre("Target: rfpw 2 30 +62511", "Target: txpw 1 5 +11", "Target: txpr 1"))
      << "a refusal leaves the wait its 2.5 s, which are 62500 paces";
}

TEST_F(TransmitterByHandTest, SendsADcsLevelAHundredHigher) {
  EXPECT_THAT(Trace([this] { op.Select(main.optTxLevelDCS); }), ElementsAre("Target: txpw 1 105"));
  EXPECT_THAT(Trace([this] { op.Click(main.Command4); }),
              ElementsAre("Target: rfpw 2 30 +11", "Target: txpw 1 105 +11", "Target: txpr 1"));
  EXPECT_EQ(Shown(), "Tx power level = 105\r\n");
}

TEST_F(TransmitterByHandTest, ReadsNoLevelBackThatTheTargetRefused) {
  failing = 2;
  EXPECT_THAT(CommandsOf([this] { op.Click(main.Command4); }), ElementsAre("rfpw 2 30", "txpw 1 5"));
  failing = commands + 1;
  EXPECT_THAT(CommandsOf([this] { op.Click(main.Command4); }), ElementsAre("rfpw 2 30", "txpw 1 5", "txpr 1"))
      << "only the level's own status counts";
  EXPECT_THAT(boxes.shown, IsEmpty());
}

TEST_F(TransmitterByHandTest, SendsALevelAsSoonAsItsBoxOrTheBandChanges) {
  EXPECT_THAT(Trace([this] { op.Type(main.txtTxLevelIndex, "19"); }), ElementsAre("Target: txpw 1 19"));
  EXPECT_THAT(Trace([this] { op.Step(main.updTxLevelIndex, -1); }), ElementsAre("Target: txpw 1 18"));
  EXPECT_THAT(Trace([this] { op.Select(main.optTxLevelDCS); }), ElementsAre("Target: txpw 1 118"));
  EXPECT_THAT(Trace([this] { op.Select(main.optTxLevelDCS); }), ElementsAre("Target: txpw 1 118"))
      << "a click on the chosen band too";
  EXPECT_THAT(Trace([this] { op.Select(main.optTxLevelGSM); }), ElementsAre("Target: txpw 1 18"));
}

TEST_F(TransmitterByHandTest, AnEmptyLevelIsPassedOverInSilence) {
  op.Type(main.txtTxLevelIndex, "");
  op.Select(main.optTxLevelDCS);
  op.Select(main.optTxLevelGSM);
  op.Click(main.Command4);
  EXPECT_THAT(serial.commands, IsEmpty());
  EXPECT_THAT(boxes.shown, IsEmpty());
}

TEST_F(TransmitterByHandTest, ALevelThatIsNoNumberIsForTheInterpreterInGsmAndAFailureInDcs) {
  EXPECT_EQ(op.Type(main.txtTxLevelIndex, "x"), std::nullopt);
  EXPECT_EQ(Shown(), "Invalid Command !! \r\n");
  EXPECT_NE(op.Select(main.optTxLevelDCS), std::nullopt);
  EXPECT_NE(op.Type(main.txtTxLevelIndex, "32700"), std::nullopt) << "100 more does not fit";
  EXPECT_THAT(serial.commands, IsEmpty());
}

TEST_F(TransmitterByHandTest, AClosedPortIsABoxForEveryKeystroke) {
  serial.Close();
  op.Type(main.txtTxLevelIndex, "");
  for (const char32_t key : {U'1', U'5'}) op.Key(main.txtTxLevelIndex, key);
  EXPECT_THAT(boxes.Texts(),
              ElementsAre("Target must be initialized at first.", "Target must be initialized at first."));
  EXPECT_THAT(Commands(), ElementsAre("txpw 1 1", "txpw 1 15"));
}

TEST_F(TransmitterByHandTest, SetsADacValueAndShowsWhatTheTargetHolds) {
  op.Type(main.txtPowerLevel, "600");
  EXPECT_THAT(Trace([this] { op.Click(main.cmdPowerlevelSet); }),
              ElementsAre("Target: txpw 4 600 +11", "Target: txpr 4"));
  EXPECT_THAT(serial.commands.at(0).data, ElementsAre(4, 0, 0x58, 0x02)) << "two bytes above 255";
  EXPECT_EQ(Shown(), "APC DAC value = 600\r\n");

  serial.answer = [this](const SentCommand& command) {
    if (command.operation == 55) return PaddedReply(55, 0, ItemAndValue(4, 599));
    return Answer(command);
  };
  op.Click(main.cmdPowerlevelSet);
  EXPECT_EQ(main.txtPowerLevel.Text(), "599") << "the Target's word stands";
}

TEST_F(TransmitterByHandTest, ADacValueThatTheTargetRefusesIsNotReadBack) {
  failing = 1;
  EXPECT_THAT(CommandsOf([this] { op.Click(main.cmdPowerlevelSet); }), ElementsAre("txpw 4 450"));
  EXPECT_EQ(main.txtPowerLevel.Text(), "450");
  EXPECT_THAT(boxes.shown, IsEmpty());
}

TEST_F(TransmitterByHandTest, NeedsADacValue) {
  op.Type(main.txtPowerLevel, "");
  op.Click(main.cmdPowerlevelSet);
  ASSERT_EQ(boxes.shown.size(), 1U);
  ExpectWarning(boxes.shown[0], "Run after inputing value.");
  EXPECT_THAT(serial.commands, IsEmpty());
}

TEST_F(TransmitterByHandTest, TheBurstButtonStartsAndStopsAndItsCaptionSaysWhatComesNext) {
  // Neither is sent: the burst is what the Target holds.
  op.Pick(main.cboULPattern, 2);
  op.Pick(main.cboULSlot, 7);
  const TimePoint start = loop.Now();
  EXPECT_THAT(Trace([this] { op.Click(main.cmdULTest); }), ElementsAre("Target: rfe 2"));
  EXPECT_EQ(loop.Now() - start, 101 * TimePoint{20000 * 2}) << "the pause comes first";
  EXPECT_EQ(main.cmdULTest.Caption(), "Stop");
  EXPECT_EQ(main.cmdULTest.BackColor(), kBurstOn);

  const TimePoint stop = loop.Now();
  EXPECT_THAT(Trace([this] { op.Click(main.cmdULTest); }), ElementsAre("Target: rfe 0 +101", "Target: rfe 0"));
  EXPECT_EQ(loop.Now() - stop, 202 * TimePoint{20000 * 2});
  EXPECT_EQ(main.cmdULTest.Caption(), "Test");
  EXPECT_EQ(main.cmdULTest.BackColor(), kButtonFace);
  EXPECT_THAT(boxes.shown, IsEmpty());
}

TEST_F(TransmitterByHandTest, TheBurstButtonChangesBeforeItsPauseAndItsCommand) {
  main.txtSyncDelay.SetText("x");
  EXPECT_NE(op.Click(main.cmdULTest), std::nullopt) << "a pause of no length fails";
  EXPECT_EQ(main.cmdULTest.Caption(), "Stop");
  EXPECT_EQ(main.cmdULTest.BackColor(), kBurstOn);
  EXPECT_NE(op.Click(main.cmdULTest), std::nullopt);
  EXPECT_EQ(main.cmdULTest.Caption(), "Test");
  EXPECT_EQ(main.cmdULTest.BackColor(), kButtonFace);
  EXPECT_THAT(serial.commands, IsEmpty());
}

TEST_F(TransmitterByHandTest, AStopThatFailsIsToldAndNotRepeated) {
  op.Click(main.cmdULTest);
  failing = 2;
  EXPECT_THAT(CommandsOf([this] { op.Click(main.cmdULTest); }), ElementsAre("rfe 0"));
  ASSERT_EQ(boxes.shown.size(), 1U);
  ExpectWarning(boxes.shown[0], "Error during Test.");
  EXPECT_EQ(main.cmdULTest.Caption(), "Test") << "whatever the Target does";
  EXPECT_EQ(main.cmdULTest.BackColor(), kButtonFace);
}

TEST_F(TransmitterByHandTest, AStartThatFailsIsNotTold) {
  failing = 1;
  op.Click(main.cmdULTest);
  EXPECT_EQ(main.cmdULTest.Caption(), "Stop");
  EXPECT_THAT(boxes.shown, IsEmpty());
}

TEST_F(TransmitterByHandTest, AStopForgetsItsStatusBeforeItRepeatsTheCommand) {
  op.Click(main.cmdULTest);
  std::string between = "untouched";
  main.txtUserCommand.changed.Connect([&] {
    if (main.txtUserCommand.Text() == "rfe 0") between = state.reply.TMStatus;
  });
  op.Click(main.cmdULTest);
  EXPECT_EQ(between, "");
}

TEST_F(TransmitterByHandTest, ABurstNeedsATrainingSequence) {
  // An operator cannot leave the box empty: it falls back to an entry at once.
  main.cboULSlot.onChange = nullptr;
  main.cboULSlot.SetText("");
  op.Click(main.cmdULTest);
  ASSERT_EQ(boxes.shown.size(), 1U);
  ExpectWarning(boxes.shown[0], "Input TSC .");
  EXPECT_EQ(main.cmdULTest.Caption(), "Test");
  EXPECT_THAT(serial.commands, IsEmpty());
}

TEST_F(TransmitterByHandTest, ItsBoxesRefuseWhatIsNoNumber) {
  ExpectFilter(*this, FilterRow<TextBox>{main.txtPowerLevel, "", true, "650"});
  ExpectFilter(*this, FilterRow<TextBox>{main.txtAPCLoss, "-./", true, "-0.5"});
  EXPECT_THAT(serial.commands, IsEmpty());
}

TEST_F(TransmitterByHandTest, ItsListsTakeOnlyTheirEntries) {
  const struct {
    ComboBox& box;
    const char* entry;
    const char* resetText;
  } cases[] = {{main.cboULPattern, "1010", "All 0"}, {main.cboULSlot, "7", "4"}};
  for (const auto& [box, entry, resetText] : cases) {
    for (const char* outside : {"8", "all 0", "", "\u3131"}) {
      boxes.shown.clear();
      op.Type(box, outside);
      ASSERT_EQ(boxes.shown.size(), 1U) << box.Name() << " " << outside;
      ExpectWarning(boxes.shown[0], "Input the Item in the List.");
      EXPECT_EQ(box.Text(), resetText);
    }
    boxes.shown.clear();
    op.Type(box, entry);
    EXPECT_EQ(box.Text(), entry);
    EXPECT_THAT(boxes.shown, IsEmpty());
  }
}

TEST_F(TransmitterByHandTest, MovingTheLossUpDownWritesItsTenths) {
  op.Move(main.updAPCLoss, -5);
  EXPECT_EQ(main.txtAPCLoss.Text(), "-0.5");
  op.Step(main.updAPCLoss, -1);
  EXPECT_EQ(main.txtAPCLoss.Text(), "-0.6");
  op.Move(main.updAPCLoss, -200);
  EXPECT_EQ(main.txtAPCLoss.Text(), "-20");
  op.Move(main.updAPCLoss, 0);
  EXPECT_EQ(main.txtAPCLoss.Text(), "0");
}

TEST_F(TransmitterByHandTest, TypingALossDoesNotMoveTheUpDown) {
  main.updAPCLoss.SetValue(-5);
  op.Type(main.txtAPCLoss, "-2.5");
  EXPECT_EQ(main.updAPCLoss.Value(), -5);
  op.Step(main.updAPCLoss, 1);
  EXPECT_EQ(main.txtAPCLoss.Text(), "-0.4");
}

}  // namespace
}  // namespace orvane::test
