#include "instruments/test_set_session.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <chrono>

#include "instruments_rig.h"

namespace orvane::test {
namespace {

using namespace std::chrono_literals;
using testing::ElementsAre;
using testing::HasSubstr;
using testing::IsEmpty;

constexpr Colour kGreenLamp = 0x00FF00;
constexpr Colour kRedLamp = 0x0000FF;
constexpr Colour kStartLamp = 0x8000000F;

struct TestSetSessionTest : testing::Test, InstrumentsRig {};

TEST_F(TestSetSessionTest, InitializeSetsTheSessionUpAndShowsWhatTheInstrumentSays) {
  Instrument().readings = {"Agilent,8960,0,A.1\n"};
  CWGPIB1.readSize = 7;
  CWGPIB1.optionFlag = true;

  EXPECT_EQ(op.Click(main.cmdInstrumentInitialize), std::nullopt);

  EXPECT_THAT(Instrument().lines, ElementsAre("*IDN?", "RFAN:CONT:AUTO OFF"));
  EXPECT_THAT(bus.Opened(), ElementsAre(GpibAddress{0, 1, 0}));
  EXPECT_EQ(CWGPIB1.readSize, 1000);
  EXPECT_EQ(CWGPIB1.timeOutCode, 13);
  EXPECT_FALSE(CWGPIB1.optionFlag);
  EXPECT_EQ(Shown(), "Agilent,8960,0,A.1\r\n");
  EXPECT_EQ(state.testSet.TestSetKind, "HP8960");
  EXPECT_EQ(state.testSet.GpibBoardNumber, 0);
  EXPECT_EQ(state.testSet.GpibPrimaryAddress, 1);
  EXPECT_EQ(state.testSet.GpibSecondaryAddress, 0);
  EXPECT_EQ(state.testSet.GpibReadSize, 1000);
  EXPECT_TRUE(state.testSet.TestSetReady);
  EXPECT_EQ(main.shpInstrumentOnOff.BackColor(), kGreenLamp);
  EXPECT_THAT(boxes.shown, IsEmpty());
}

TEST_F(TestSetSessionTest, TheReplyIsShownAsItStandsWithoutALineEndOfItsOwn) {
  Instrument().readings = {"HP,8922M"};
  op.Click(main.cmdInstrumentInitialize);
  EXPECT_EQ(Shown(), "HP,8922M");
}

TEST_F(TestSetSessionTest, TheReplysLeadingBackspaceTakesACharacterOffTheConsole) {
  main.txtResults.SetText("ab");
  Instrument().readings = {"\bHP,8922M"};
  op.Click(main.cmdInstrumentInitialize);
  EXPECT_EQ(Shown(), "aHP,8922M");
}

TEST_F(TestSetSessionTest, OnlyAnHP8960IsToldToLeaveItsAnalyserAlone) {
  for (const char* kind : {"HP8922M", "4400M(WaveTek)"}) {
    Instrument().lines.clear();
    Select(kind);
    op.Click(main.cmdInstrumentInitialize);
    EXPECT_THAT(Instrument().lines, ElementsAre("*IDN?")) << kind;
    EXPECT_EQ(state.testSet.TestSetKind, kind);
    EXPECT_TRUE(state.testSet.TestSetReady);
  }
}

TEST_F(TestSetSessionTest, TheDialectIsTheOneOfTheLastInitialize) {
  op.Click(main.cmdInstrumentInitialize);
  Select("HP8922M");
  EXPECT_EQ(testSet.Kind(), Dialect::Hp8960);
  op.Click(main.cmdInstrumentInitialize);
  EXPECT_EQ(testSet.Kind(), Dialect::Hp8922M);
}

TEST_F(TestSetSessionTest, TwoInitializesInARowConfigureTwiceAndWarnOfNothing) {
  op.Click(main.cmdInstrumentInitialize);
  op.Click(main.cmdInstrumentInitialize);
  EXPECT_EQ(Instrument().sessions, 2);
  EXPECT_THAT(Instrument().lines, ElementsAre("*IDN?", "RFAN:CONT:AUTO OFF", "*IDN?", "RFAN:CONT:AUTO OFF"));
  EXPECT_TRUE(state.testSet.TestSetReady);
  EXPECT_THAT(boxes.shown, IsEmpty());
}

struct TimeOutCase {
  const char* text;
  Integer code;
};

// The published time-out codes of NI-488.
constexpr TimeOutCase kTimeOutCases[] = {
    {"None", 0}, {"10us", 1},  {"30us", 2},   {"100us", 3}, {"300us", 4}, {"1ms", 5},  {"3ms", 6},  {"10ms", 7},
    {"30ms", 8}, {"100ms", 9}, {"300ms", 10}, {"1s", 11},   {"3s", 12},   {"10s", 13}, {"30s", 14}, {"100s", 15},
};

TEST_F(TestSetSessionTest, MapsEveryTimeOutToItsCode) {
  for (const auto& [text, code] : kTimeOutCases) {
    main.cboTimeOut.SetText(text);
    op.Click(main.cmdInstrumentInitialize);
    EXPECT_EQ(CWGPIB1.timeOutCode, code) << text;
  }
  EXPECT_THAT(boxes.shown, IsEmpty());
}

TEST_F(TestSetSessionTest, ATimeOutOutsideTheTableLeavesTheControlsOwn) {
  CWGPIB1.timeOutCode = 11;
  session.Configure(-1);
  EXPECT_EQ(CWGPIB1.timeOutCode, 11);
}

TEST_F(TestSetSessionTest, AsksForWhatIsNotSelected) {
  // Straight into the boxes: an emptied list box would be refused by its own check.
  main.cboInstrumentList.onChange = nullptr;
  main.cboTimeOut.onChange = nullptr;
  const struct {
    ComboBox& box;
    const char* words;
  } cases[] = {{main.cboTimeOut, "Select Time Out"},
               {main.cboPrimaryAddress, "Select Primary Address"},
               {main.cboInstrumentList, "Select the kind of Test Set"}};
  for (const auto& [box, words] : cases) {
    box.SetText("");
    boxes.shown.clear();
    op.Click(main.cmdInstrumentInitialize);
    ASSERT_EQ(boxes.shown.size(), 1U);
    ExpectAlarm(boxes.shown[0], words);
  }
  EXPECT_THAT(bus.Opened(), IsEmpty());
  EXPECT_FALSE(state.testSet.TestSetReady);
}

TEST_F(TestSetSessionTest, AnAbsentTestSetIsOneFailureAndTheStateStays) {
  Instrument().absent = true;
  const auto outcome = op.Click(main.cmdInstrumentInitialize);
  ASSERT_TRUE(outcome.has_value());
  EXPECT_THAT(*outcome, HasSubstr("iberr = 2"));
  EXPECT_EQ(boxes.shown.size(), 1U);
  EXPECT_FALSE(state.testSet.TestSetReady);
  EXPECT_EQ(main.shpInstrumentOnOff.BackColor(), kStartLamp);
}

TEST_F(TestSetSessionTest, ATestSetThatGoesAwayStaysReadyUntilReset) {
  op.Click(main.cmdInstrumentInitialize);
  Instrument().absent = true;
  EXPECT_TRUE(op.Click(main.cmdInstrumentInitialize).has_value());
  EXPECT_TRUE(state.testSet.TestSetReady);
  EXPECT_TRUE(op.Click(main.cmdInsturmentReset).has_value());
  EXPECT_TRUE(state.testSet.TestSetReady);
  EXPECT_EQ(main.shpInstrumentOnOff.BackColor(), kGreenLamp);
}

TEST_F(TestSetSessionTest, ASilentTestSetCostsTheTimeOut) {
  main.cboTimeOut.SetText("3s");
  Instrument().silent = true;
  EXPECT_TRUE(op.Click(main.cmdInstrumentInitialize).has_value());
  EXPECT_EQ(loop.Now(), TimePoint{3s});
  EXPECT_FALSE(state.testSet.TestSetReady);
}

TEST_F(TestSetSessionTest, ResetEndsTheSession) {
  op.Click(main.cmdInstrumentInitialize);
  Instrument().lines.clear();
  EXPECT_EQ(op.Click(main.cmdInsturmentReset), std::nullopt);
  EXPECT_THAT(Instrument().lines, ElementsAre("*RST"));
  EXPECT_EQ(Instrument().locals, 1);
  EXPECT_FALSE(CWGPIB1.HasSession());
  EXPECT_FALSE(state.testSet.TestSetReady);
  EXPECT_EQ(main.shpInstrumentOnOff.BackColor(), kRedLamp);

  EXPECT_EQ(op.Click(main.cmdInstrumentInitialize), std::nullopt);
  EXPECT_TRUE(state.testSet.TestSetReady);
}

TEST_F(TestSetSessionTest, ResetBeforeAnyInitializeTouchesNothing) {
  op.Click(main.cmdInsturmentReset);
  ASSERT_EQ(boxes.shown.size(), 1U);
  ExpectWarning(boxes.shown[0], "Initialize the Test Set at first.");
  EXPECT_THAT(Instrument().lines, IsEmpty());
  EXPECT_EQ(main.shpInstrumentOnOff.BackColor(), kStartLamp);
}

TEST_F(TestSetSessionTest, RefusesTypedTextsOutsideTheLists) {
  const struct {
    ComboBox& box;
    const char* typed;
    const char* words;
    const char* reset;
  } cases[] = {
      {main.cboInstrumentList, "HP8970", "Input the Item in the List.", "HP8960"},
      {main.cboInstrumentList, "", "Input the Item in the List.", "HP8960"},
      {main.cboTimeOut, "2s", "Input the Item in the List.", "10s"},
      {main.cboPrimaryAddress, "1 ", "Input the number without blank.", "1"},
      {main.cboPrimaryAddress, "/", "Input the number without blank.", "1"},
      {main.cboPrimaryAddress, ":", "Input the number without blank.", "1"},
      {main.cboPrimaryAddress, "2~", "Input the number without blank.", "1"},
      {main.cboPrimaryAddress, "-1", "Input the number without blank.", "1"},
  };
  for (const auto& [box, typed, words, reset] : cases) {
    boxes.shown.clear();
    op.Type(box, typed);
    ASSERT_EQ(boxes.shown.size(), 1U) << typed;
    ExpectWarning(boxes.shown[0], words);
    EXPECT_EQ(box.Text(), reset) << typed;
  }
}

TEST_F(TestSetSessionTest, TakesAnAddressOfDigitsAndAnEmptyOne) {
  op.Type(main.cboPrimaryAddress, "30");
  op.Type(main.cboPrimaryAddress, "");
  op.Type(main.cboPrimaryAddress, "14");
  EXPECT_THAT(boxes.shown, IsEmpty());
  op.Click(main.cmdInstrumentInitialize);
  EXPECT_THAT(bus.At(14).lines, ElementsAre("*IDN?", "RFAN:CONT:AUTO OFF"));
}

TEST_F(TestSetSessionTest, AHangulLetterPassesTheAddressBoxAndFailsAsANumber) {
  op.Type(main.cboPrimaryAddress, "ㄱ");
  EXPECT_THAT(boxes.shown, IsEmpty());
  EXPECT_EQ(main.cboPrimaryAddress.Text(), "ㄱ");
  EXPECT_TRUE(op.Click(main.cmdInstrumentInitialize).has_value());
  EXPECT_THAT(bus.Opened(), IsEmpty());
}

TEST_F(TestSetSessionTest, ACompletionEndsAReplyWaitAndKeepsTheDataWithoutLineFeeds) {
  state.reply.ReplyDone = false;
  CWGPIB1.onCompletion(0, "12.5\n\n");
  EXPECT_TRUE(state.reply.ReplyDone);
  EXPECT_EQ(state.testSet.TestSetEventText, "12.5");
  EXPECT_THAT(boxes.shown, IsEmpty());
}

TEST_F(TestSetSessionTest, ABadCompletionWarnsAndEndsTheWaitAllTheSame) {
  for (const Integer status : {Integer{-1}, Integer{1}}) {
    boxes.shown.clear();
    state.reply.ReplyDone = false;
    state.testSet.TestSetEventText = "";
    CWGPIB1.onCompletion(status, "1\n2");
    ASSERT_EQ(boxes.shown.size(), 1U) << status;
    ExpectWarning(boxes.shown[0], "Can't read Power from Test Set. Check the Test Set.");
    EXPECT_TRUE(state.reply.ReplyDone);
    EXPECT_EQ(state.testSet.TestSetEventText, "12");
  }
}

TEST(EmptyReading, IsNothingButBlanksAndLineEnds) {
  for (const char* reply : {"", "\n", " \r\n", "\t \n"}) EXPECT_TRUE(IsEmptyReading(reply)) << reply;
  for (const char* reply : {"0\n", " -12.5 ", "9.91E+37"}) EXPECT_FALSE(IsEmptyReading(reply)) << reply;
}

TEST_F(TestSetSessionTest, ARunsLineIsWrittenAndThenShown) {
  op.Click(main.cmdInstrumentInitialize);
  main.txtResults.SetText("");
  testSet.WriteShown("CALL:CELL:BAND EGSM");
  EXPECT_EQ(Instrument().lines.back(), "CALL:CELL:BAND EGSM");
  EXPECT_EQ(Shown(), "CALL:CELL:BAND EGSM\r\n");
}

}  // namespace
}  // namespace orvane::test
