#include "base/failure.h"
#include "link/link_rig.h"

namespace orvane::test {
namespace {

struct Row {
  std::string line;
  std::string reply;
  std::string shown;
};

class ReplyTable : public testing::TestWithParam<Row> {};

TEST_P(ReplyTable, ShowsAndEndsTheWaitAtOnce) {
  LinkRig rig;
  rig.Exchange(GetParam().line, GetParam().reply);
  EXPECT_EQ(rig.Shown(), GetParam().shown);
  EXPECT_EQ(rig.loop.Now(), std::chrono::milliseconds(1));
  EXPECT_EQ(rig.link.Status(), 0);
  EXPECT_EQ(rig.tally.foreignReplies, 0);
}

INSTANTIATE_TEST_SUITE_P(Simple, ReplyTable,
                         testing::Values(Row{"ti", "02 14 00 20 00 00 00 20 02", "TM Initiailize OK !!\r\n"},
                                         Row{"tms 1", "02 14 00 21 00 00 00 21 02", "Target Test Mode ready !!\r\n"},
                                         Row{"rfpr 8", "02 14 00 31 00 00 00 08 00 01 00 00 00 38 02",
                                             "AFC Enable Flag = 1\r\n"},
                                         Row{"stw 3 1", "02 14 00 52 00 00 00 03 00 51 02", ""},
                                         Row{"stw 100 0 0 0 0 0", "02 14 00 52 00 00 00 64 00 36 02",
                                             "&H02&H14&H00&H52&H00&H00&H00&H64&H00&H36\r\n"},
                                         Row{"str 3", "02 14 00 53 00 00 00 03 00 50 02", "str ok\r\n"},
                                         Row{"str 10", "02 14 00 53 00 00 00 0A 00 59 02", ""},
                                         Row{"se 1", "02 14 00 54 00 00 00 54 02", "\r\nOK!!!!!!!\r\n"},
                                         // Operations that are in no row end as well.
                                         Row{"scw 1 1", "02 14 00 25 00 00 00 25 02", ""},
                                         Row{"rfpw 1 1", "02 14 00 30 00 00 00 30 02", ""}));

INSTANTIATE_TEST_SUITE_P(
    RfItems, ReplyTable,
    testing::Values(Row{"rfpr 1", "02 14 00 31 00 00 00 01 00 3E 00 00 00 0E 02", "BCCH ARFCN = 62\r\n"},
                    Row{"rfpr 2", "02 14 00 31 00 00 10 00 02 00 3E 00 00 00 0D 02", "TCH ARFCN = 62\r\n"},
                    Row{"rfpr 3", "02 14 00 31 00 00 00 03 01 4F 00 03 01 7E 02", "MON ARFCN = 975\r\n"},
                    Row{"rfpr 4", "02 14 00 31 00 00 00 04 00 3E 00 00 00 0B 02", ""},
                    Row{"rfpr 9", "02 14 00 31 00 00 00 09 00 64 01 7B 01 27 02", "AFC DAC = -1180\r\n"},
                    Row{"rfpr 10", "02 14 00 31 00 00 00 0A 01 78 01 7F 00 3C 02",
                        "AFC Initial Value = -1\r\nAFC Initial Value 13.3F = -8\r\n"},
                    // 32767 counts as negative already.
                    Row{"rfpr 10", "02 14 00 31 00 00 00 0A 01 7F 00 7F 01 3B 02",
                        "AFC Initial Value = -4096.125\r\nAFC Initial Value 13.3F = -32769\r\n"},
                    Row{"rfpr 9", "02 14 00 31 00 00 00 09 01 7E 00 7F 01 39 02", "AFC DAC = 32766\r\n"},
                    // Unsigned items run to 65535.
                    Row{"rfpr 2", "02 14 00 31 00 00 10 00 02 01 7F 01 7F 00 33 02", "TCH ARFCN = 65535\r\n"},
                    Row{"rfpr 8", "02 14 00 31 00 00 00 08 01 7F 01 7F 00 39 02", "AFC Enable Flag = 65535\r\n"},
                    Row{"rfpr 1", "02 14 00 31 00 00 00 01 01 7F 01 7F 00 30 02", "BCCH ARFCN = 65535\r\n"}));

INSTANTIATE_TEST_SUITE_P(
    RxTxItems, ReplyTable,
    testing::Values(Row{"rxpr 1", "02 14 00 35 00 00 00 01 01 58 01 7F 00 13 02", "AGC = -40\r\n"},
                    Row{"rxpr 3", "02 14 00 35 00 00 00 03 01 58 01 7F 00 11 02", ""},
                    Row{"txpr 1", "02 14 00 37 00 00 00 01 00 05 00 00 00 33 02", "Tx power level = 5\r\n"},
                    Row{"txpr 1", "02 14 00 37 00 00 00 01 01 7F 01 7F 00 36 02", "Tx power level = 65535\r\n"},
                    Row{"txpr 4", "02 14 00 37 00 00 00 04 01 43 00 01 01 71 02", "APC DAC value = 451\r\n"},
                    Row{"txpr 4", "02 14 00 37 00 00 00 04 01 7F 01 7F 00 33 02", "APC DAC value = 65535\r\n"},
                    Row{"txpr 3", "02 14 00 37 00 00 00 03 01 43 00 01 01 76 02", ""}));

INSTANTIATE_TEST_SUITE_P(
    MiscItems, ReplyTable,
    testing::Values(
        Row{"mpr 19", "02 14 00 45 00 00 00 13 00 01 00 00 00 57 02", "ADC Enable = 1\r\n"},
        Row{"mpr 20", "02 14 00 45 00 00 00 14 00 70 10 00 02 00 23 02", "Converted ADC20  Values = 0x270\r\n"},
        Row{"mpr 28", "02 14 00 45 00 00 00 1C 01 7F 01 7F 00 59 02", "Converted ADC28  Values = 0xFFFF\r\n"},
        Row{"mpr 29", "02 14 00 45 00 00 00 1D 00 00 00 00 00 58 02", ""},
        Row{"mpr 30", "02 14 00 45 00 00 00 1E 01 74 00 01 01 2E 02", "Raw ADC30  Values = 0x1F4\r\n"},
        Row{"mpr 38", "02 14 00 45 00 00 00 26 01 74 00 01 01 16 02", "Raw ADC38  Values = 0x1F4\r\n"},
        Row{"mpr 39", "02 14 00 45 00 00 00 27 01 74 00 01 01 17 02", ""},
        Row{"mpr 127", "02 14 00 45 00 00 00 7F 00 01 00 00 00 3B 02", "Current Test Mode = Test Mode\r\n"},
        Row{"mpr 127", "02 14 00 45 00 00 00 7F 00 00 00 00 00 3A 02", "Current Test Mode = Normal Mode\r\n"},
        Row{"mpr 127", "02 14 00 45 00 00 00 7F 10 00 02 00 00 00 38 02", ""}));

INSTANTIATE_TEST_SUITE_P(
    Statistics, ReplyTable,
    testing::Values(Row{"sr 1 2", "02 14 00 24 00 00 00 01 00 00 10 00 02 00 00 01 00 00 0C 01 2B 02", "PM = 50\r\n"},
                    Row{"sr 1 1", "02 14 00 24 00 00 00 01 00 00 00 01 00 00 00 3F 00 00 00 1B 02",
                        "Rxlevel = 31.5\r\n"},
                    Row{"sr 1 3", "02 14 00 24 00 00 00 01 00 00 00 03 00 00 00 3F 00 00 00 19 02", ""},
                    Row{"sr 2 1", "02 14 00 24 00 00 10 00 02 00 00 00 01 00 00 00 3F 00 00 00 18 02", ""},
                    // Statistic and kind are words: 257 is neither 1.
                    Row{"sr 1 1", "02 14 00 24 00 00 00 01 00 01 00 01 00 00 00 3F 00 00 00 1A 02", ""},
                    Row{"sr 1 1", "02 14 00 24 00 00 00 01 00 00 00 01 00 01 00 3F 00 00 00 1A 02", ""}));

TEST(ReplyTable, AnAnswerToOperation51ShowsNothing) {
  LinkRig rig;
  rig.Exchange("rfpw 1 1", "02 14 00 33 00 00 00 01 00 05 00 00 00 37 02");
  EXPECT_EQ(rig.Shown(), "");
  EXPECT_TRUE(rig.state.ReplyDone);
  EXPECT_EQ(rig.state.ReplyItem, "");
}

TEST(ReplyValues, OfReadRepliesLandInTheirBoxes) {
  LinkRig rig;
  rig.Exchange("rfpr 1", "02 14 00 31 00 00 00 01 00 3E 00 00 00 0E 02");
  EXPECT_EQ(rig.main.txtBeacon.Text(), "62");
  EXPECT_EQ(rig.state.ReplyItem, "&H01");
  rig.Exchange("rfpr 3", "02 14 00 31 00 00 00 03 01 4F 00 03 01 7E 02");
  EXPECT_EQ(rig.main.txtBeacon.Text(), "975");
  rig.Exchange("rfpr 2", "02 14 00 31 00 00 10 00 02 00 05 00 00 00 36 02");
  EXPECT_EQ(rig.main.txtBeacon.Text(), "975");
  rig.Exchange("txpr 4", "02 14 00 37 00 00 00 04 01 43 00 01 01 71 02");
  EXPECT_EQ(rig.main.txtPowerLevel.Text(), "451");
}

TEST(ReplyValues, OfMiscItemsAreStored) {
  LinkRig rig;
  rig.Exchange("mpr 20", "02 14 00 45 00 00 00 14 00 70 10 00 02 00 23 02");
  EXPECT_EQ(rig.state.ConvertedAdcValue, 0x270);
  rig.Exchange("mpr 30", "02 14 00 45 00 00 00 1E 01 74 00 01 01 2E 02");
  EXPECT_EQ(rig.state.RawAdcValue, 500);
  rig.Exchange("mpr 127", "02 14 00 45 00 00 00 7F 10 00 02 00 00 00 38 02");
  EXPECT_EQ(rig.state.CurrentTestModeValue, 2);
}

TEST(ReplyValues, OfAPowerMeasurementAreKeptTimesTen) {
  LinkRig rig;
  rig.Exchange("sr 1 2", "02 14 00 24 00 00 00 01 00 00 10 00 02 00 00 01 01 00 0C 01 2A 02");
  EXPECT_EQ(rig.Shown(), "PM = 50.2\r\n");
  EXPECT_EQ(rig.main.txtAGCPM.Text(), "50.2");
  EXPECT_EQ(rig.state.PowerMeasureTimes10, "502");
  rig.Exchange("sr 1 1", "02 14 00 24 00 00 00 01 00 00 00 01 00 00 00 3F 00 00 00 1B 02");
  EXPECT_EQ(rig.state.PowerMeasureTimes10, "502") << "a receive level is none";
}

TEST(ReplyValues, ThatAreNoMeasurementStopTheRunAndLeaveTheOldOnes) {
  LinkRig rig;
  rig.Exchange("sr 1 2", "02 14 00 24 00 00 00 01 00 00 10 00 02 00 00 01 01 00 0C 01 2A 02");
  rig.main.txtResults.SetText("");
  rig.Later(std::chrono::milliseconds(1), "02 14 00 24 00 00 00 01 00 00 10 00 02 00 00 00 1F 00 00 00 38 02");
  const auto failure = rig.nest.Run([&] { rig.link.RunTargetCommand("sr 1 2"); });
  EXPECT_TRUE(failure.has_value());
  EXPECT_EQ(rig.boxes.shown.size(), 1U);
  EXPECT_EQ(rig.Shown(), "");
  EXPECT_EQ(rig.main.txtAGCPM.Text(), "50.2");
  EXPECT_EQ(rig.state.PowerMeasureTimes10, "502");
  EXPECT_TRUE(rig.state.ReplyDone);
}

TEST(ReplyValues, MissingFromAFrameCutShortAreAFailure) {
  const std::string whole = "02 14 00 45 00 00 00 13 00 01 00 00 00 57 02";
  for (const char* reply :
       {"02 14 00 45 00 00 00 13 02",        // no value
        "02 14 00 45 00 00 00 13 00 2A 02",  // no high byte
        "02 14 00 45 00 02",                 // no status
        // Values behind the terminator, and one byte ahead of them: they belong to no reply.
        "02 14 00 45 00 00 00 13 02 07 00 05 00 57 00", "02 14 00 45 00 00 00 13 00 02 00 05 00 57 00", "02 14 02"}) {
    LinkRig rig;
    rig.Exchange("mpr 19", whole);
    rig.Later(std::chrono::milliseconds(1), reply);
    EXPECT_TRUE(rig.nest.Run([&] { rig.link.RunTargetCommand("mpr 19"); }).has_value()) << reply;
    EXPECT_EQ(rig.state.AdcEnableValue, 1) << "never a value made of what an earlier reply left";
  }
}

TEST(FailureStatus, ShowsTenBytesWithWhatAnEarlierReplyLeft) {
  LinkRig rig;
  rig.Exchange("rfpr 1", "02 14 00 31 00 00 00 01 00 3E 00 00 00 0E 02");
  rig.main.txtResults.SetText("");
  rig.Exchange("rfpw 1 1", "02 14 00 30 00 07 00 37 02");
  EXPECT_EQ(rig.Shown(), "&H02&H14&H00&H30&H00&H07&H00&H37&H02&H3E\r\n&H30\r\n&H07\r\n");
}

TEST(FailureStatus, OfSpecialEnableShowsNoVerdictOfItsOwn) {
  LinkRig rig;
  rig.Exchange("se 1", "02 14 00 54 00 01 00 55 02");
  EXPECT_EQ(rig.Shown().find("OK!!!!!!!"), std::string::npos);
}

TEST(BatteryVoltages, AreShownOnTheChargerPanel) {
  LinkRig rig;
  rig.Exchange("str 100",
               "02 14 00 53 00 00 00 64 00 70 10 00 02 00 00 00 00 00 00 00 00 00 00 00 00 01 74 00 01 00 30 02");
  EXPECT_EQ(rig.Shown(), "str 100 ok\r\n");
  EXPECT_EQ(
      rig.baseBand.txtChargerDisplay.Text(),
      "CV_START_VOLTAGE     = 0x0270\r\nSHUTDOWN_VOLTAGE    = 0x01F4\r\n\r\n\r\nBattery Calibartion Success !!!");
}

TEST(BatteryVoltages, AddThePadAheadOfTheSecondOne) {
  LinkRig rig;
  rig.Exchange("str 100",
               "02 14 00 53 00 00 00 64 00 70 00 03 00 00 00 00 00 00 00 00 00 00 00 00 05 74 00 01 00 30 02");
  EXPECT_EQ(rig.baseBand.txtChargerDisplay.Text().substr(0, 59),
            "CV_START_VOLTAGE     = 0x0370\r\nSHUTDOWN_VOLTAGE    = 0x0179");
}

TEST(BatteryVoltages, TakeThePadOfTheSecondLowByteAlong) {
  LinkRig rig;
  rig.Exchange("str 100",
               "02 14 00 53 00 00 00 64 00 70 10 00 02 00 00 00 00 00 00 00 00 00 00 00 00 05 74 00 01 00 30 02");
  EXPECT_NE(rig.baseBand.txtChargerDisplay.Text().find("SHUTDOWN_VOLTAGE    = 0x0179\r\n"), std::string::npos);
}

// A ramp row: the values stand one behind the other without pads, the first of them in the place of the status.
std::string RampReply(const std::string& row, const std::string& values) {
  return "02 14 00 39 " + row + " " + values + " 2B 02";
}
const std::string kUp = "00 03 03 03 03 03 03 03 03 03 03 03 03 03 03 03";
const std::string kDown = " 05 05 05 05 05 05 05 05 05 05 05 05 05 05 05 0F";

TEST(RampRow, FillsSixteenUpAndSixteenDownValues) {
  LinkRig rig;
  rig.Exchange("ttr 7", RampReply("07", kUp + kDown));
  EXPECT_EQ(rig.Shown(),
            "Up Rampe Table #7\r\n0 3 3 3 3 3 3 3 3 3 3 3 3 3 3 3 \r\nDown Rampe Table #7\r\n"
            "5 5 5 5 5 5 5 5 5 5 5 5 5 5 5 15 \r\n");
  const auto& row = rig.ramp.RampTable[7];
  EXPECT_EQ(row[0], "0");
  EXPECT_EQ(row[15], "3");
  EXPECT_EQ(row[16], "5");
  EXPECT_EQ(row[31], "15");
  EXPECT_EQ(rig.state.ReplyItem, "&H07");
  EXPECT_EQ(rig.link.Status(), 0);
}

TEST(RampRow, InAReplyToAnotherCommandFillsTheTablesAndNothingStandsOnThemAnyMore) {
  LinkRig rig;
  rig.Exchange("ttr 7", RampReply("07", kUp + kDown));
  EXPECT_EQ(rig.ramp.damage, "") << "it was asked for";
  rig.Exchange("tms 1", RampReply("08", kUp + kDown));
  EXPECT_EQ(rig.ramp.RampTable[8], rig.ramp.RampTable[7]);
  EXPECT_EQ(rig.ramp.damage,
            "A row of the ramp tables was overwritten by a reply to another command: load the tables again.");
}

TEST(RampRow, ThatIsTooLongAndStraysLeavesItsMarkAllTheSame) {
  LinkRig rig;
  rig.Later(std::chrono::milliseconds(1), RampReply("08", kUp + kDown + " 01 01"));
  EXPECT_TRUE(rig.nest.Run([&] { rig.link.RunTargetCommand("tms 1"); }).has_value());
  EXPECT_EQ(rig.ramp.RampTable[8][31], "15");
  EXPECT_NE(rig.ramp.damage, "");
}

TEST(RampRow, AOneInThePlaceOfAPadIsEaten) {
  LinkRig rig;
  rig.Exchange("ttr 7", RampReply("07", "00 01 03 03 03 03 03 03 03 03 03 03 03 03 03 03" + kDown));
  EXPECT_EQ(rig.ramp.RampTable[7][1], "0");
  EXPECT_EQ(rig.ramp.RampTable[7][2], "131");
}

TEST(RampRow, BeyondTheTableIsAFailure) {
  for (const std::string& reply : {RampReply("1F", kUp + kDown), RampReply("07", kUp + kDown + " 05")}) {
    LinkRig rig;
    rig.Later(std::chrono::milliseconds(1), reply);
    EXPECT_TRUE(rig.nest.Run([&] { rig.link.RunTargetCommand("ttr 7"); }).has_value());
  }
}

struct Window {
  Integer stage;
  Integer skip;
  std::string reply;
  std::string cc2cv;     ///< text of txtCC2CVADC afterwards
  std::string shutDown;  ///< text of txtShutDownADC afterwards
  Integer stageAfter;
  Integer skipAfter;
  bool outside;
};

class ChargerWindow : public testing::TestWithParam<Window> {};

TEST_P(ChargerWindow, TestsARawValueByItsStage) {
  const Window& w = GetParam();
  LinkRig rig;
  rig.baseBand.txtCC2CVADC.SetText("old");
  rig.baseBand.txtShutDownADC.SetText("old");
  rig.state.RawAdcStage = w.stage;
  rig.state.RawAdcSkip = w.skip;
  rig.Exchange("mpr 30", w.reply);
  EXPECT_EQ(rig.baseBand.txtCC2CVADC.Text(), w.cc2cv);
  EXPECT_EQ(rig.baseBand.txtShutDownADC.Text(), w.shutDown);
  EXPECT_EQ(rig.state.RawAdcStage, w.stageAfter);
  EXPECT_EQ(rig.state.RawAdcSkip, w.skipAfter);
  EXPECT_EQ(rig.state.RawAdcOutOfWindow, w.outside ? 1 : 0);
  EXPECT_EQ(rig.loop.Now(), w.outside ? kFullWait : std::chrono::milliseconds(1)) << "outside, the wait runs out";
  EXPECT_EQ(rig.link.Status(), 0);
  EXPECT_EQ(rig.tally.silentWaits, 0);
}

INSTANTIATE_TEST_SUITE_P(
    Values, ChargerWindow,
    testing::Values(
        // 620 at 4.2 V: the first value is skipped, the second one counts.
        Window{1, 0, "02 14 00 45 00 00 00 1E 00 6C 10 00 02 00 35 02", "", "old", 1, 1, false},
        Window{1, 1, "02 14 00 45 00 00 00 1E 00 6C 10 00 02 00 35 02", "0x026C", "old", 0, 1, false},
        Window{1, 1, "02 14 00 45 00 00 00 1E 00 6B 10 00 02 00 32 02", "0x026B", "old", 0, 1, false},
        Window{1, 1, "02 14 00 45 00 00 00 1E 00 6A 10 00 02 00 33 02", "", "old", 0, 1, true},
        Window{1, 1, "02 14 00 45 00 00 00 1E 00 77 10 00 02 00 2E 02", "0x0277", "old", 0, 1, false},
        Window{1, 1, "02 14 00 45 00 00 00 1E 00 78 10 00 02 00 21 02", "", "old", 0, 1, true},
        // Only a count of just one ends the skipping.
        Window{1, 2, "02 14 00 45 00 00 00 1E 00 6C 10 00 02 00 35 02", "", "old", 1, 3, false},
        // 500 fits the other window, which is not tried in the same turn.
        Window{1, 1, "02 14 00 45 00 00 00 1E 01 74 00 01 01 2E 02", "", "old", 0, 1, true},
        Window{0, 0, "02 14 00 45 00 00 00 1E 01 69 00 01 01 33 02", "old", "0x01E9", 0, 0, false},
        Window{0, 0, "02 14 00 45 00 00 00 1E 01 68 00 01 01 32 02", "old", "", 0, 0, true},
        Window{0, 0, "02 14 00 45 00 00 00 1E 01 77 00 01 01 2D 02", "old", "0x01F7", 0, 0, false},
        Window{0, 0, "02 14 00 45 00 00 00 1E 01 78 00 01 01 22 02", "old", "", 0, 0, true}));

}  // namespace
}  // namespace orvane::test
