#include "base/failure.h"
#include "panel_desk.h"

namespace orvane::test {
namespace {

using namespace std::string_literals;
using ::testing::ElementsAre;
using ::testing::IsEmpty;

const std::string kBetween5And19 = "Input the number which is between 5 and 19 without blank.";
const std::string kBetween0And15 = "Input the number which is between 0 and 15 without blank.";

class SideTableGroup : public LoadedPanelDesk {};

TEST_F(SideTableGroup, OptionsSetTheRangesOfTheSpins) {
  const auto range = [](const UpDown& spin) { return std::pair(spin.Min(), spin.Max()); };
  const auto pair = [](Long min, Long max) { return std::pair(min, max); };
  panel.optinitialDCS.Select();
  panel.optPowerIndexDCS.Select();
  EXPECT_EQ(range(panel.updinitialLevel), pair(0, 15));
  EXPECT_EQ(range(panel.updinitialDAC), pair(0, 1023));
  EXPECT_EQ(range(panel.updPowerIndex), pair(0, 15));
  EXPECT_EQ(range(panel.updPowerIndexLevel), pair(0, 30));
  panel.optinitialGSM.Select();
  panel.optPowerIndexGSM.Select();
  EXPECT_EQ(range(panel.updinitialLevel), pair(5, 19));
  EXPECT_EQ(range(panel.updinitialDAC), pair(0, 1023));
  EXPECT_EQ(range(panel.updPowerIndex), pair(5, 19));
  EXPECT_EQ(range(panel.updPowerIndexLevel), pair(5, 33));
}

TEST_F(SideTableGroup, AGoodLevelShowsItsValue) {
  panel.txtinitialLevel.SetText("19");
  EXPECT_EQ(panel.txtinitialDAC.Text(), "48");
  panel.txtPowerIndex.SetText("6");
  EXPECT_EQ(panel.txtPowerIndexLevel.Text(), "31");
  panel.optinitialDCS.Select();
  panel.optPowerIndexDCS.Select();
  panel.txtinitialLevel.SetText("15");
  EXPECT_EQ(panel.txtinitialDAC.Text(), "48");
  panel.txtPowerIndex.SetText("0");
  EXPECT_EQ(panel.txtPowerIndexLevel.Text(), "29");
  EXPECT_THAT(Warnings(), IsEmpty());
}

struct BadLevel {
  bool initial;
  bool dcs;
  std::string typed;
  std::string words;
  std::string level;
  std::string value;
};

class RefusedLevel : public LoadedPanelDesk, public ::testing::WithParamInterface<BadLevel> {};

TEST_P(RefusedLevel, ShowsItsWordsAndFallsBack) {
  const BadLevel& row = GetParam();
  if (row.dcs) (row.initial ? panel.optinitialDCS : panel.optPowerIndexDCS).Select();
  TextBox& level = row.initial ? panel.txtinitialLevel : panel.txtPowerIndex;
  level.SetText("9");
  level.SetText(row.typed);
  EXPECT_THAT(Warnings(), ElementsAre(row.words));
  EXPECT_EQ(level.Text(), row.level);
  EXPECT_EQ((row.initial ? panel.txtinitialDAC : panel.txtPowerIndexLevel).Text(), row.value);
}

INSTANTIATE_TEST_SUITE_P(SideTableGroup, RefusedLevel,
                         ::testing::Values(BadLevel{true, false, "4", kBetween5And19, "5", "600"},
                                           BadLevel{true, false, "07", kBetween5And19, "5", "600"},
                                           BadLevel{true, false, "20", kBetween5And19, "5", "600"},
                                           BadLevel{true, true, "16", kBetween5And19, "0", "720"},
                                           BadLevel{true, true, "x", kBetween5And19, "0", "720"},
                                           BadLevel{false, false, "4", kBetween5And19, "5", "32"},
                                           BadLevel{false, false, " 7", kBetween5And19, "5", "32"},
                                           BadLevel{false, true, "16", kBetween0And15, "0", "29"},
                                           BadLevel{false, true, "-1", kBetween0And15, "0", "29"}));

TEST_F(SideTableGroup, AnEmptyLevelIsNotJudged) {
  panel.txtinitialLevel.SetText("");
  panel.txtPowerIndex.SetText("");
  EXPECT_THAT(Warnings(), IsEmpty());
}

TEST_F(SideTableGroup, ANegativePowerIsRefusedByItsBoxAndStaysInTheTable) {
  cal.PowerIndex[1] = "-2.5"_d4;
  panel.txtPowerIndex.SetText("6");
  EXPECT_THAT(Warnings(), ElementsAre("Input the number without blank."));
  EXPECT_EQ(panel.txtPowerIndexLevel.Text(), "13");
  EXPECT_EQ(cal.PowerIndex[1], "-2.5"_d4);
}

TEST_F(SideTableGroup, SetStoresAtTheLevelsPosition) {
  panel.txtinitialLevel.SetText("7");
  panel.txtinitialDAC.SetText("431");
  panel.cmdinitialSet.Click();
  EXPECT_EQ(cal.InitValueIndex[2], 431);
  panel.optPowerIndexDCS.Select();
  panel.txtPowerIndex.SetText("15");
  panel.txtPowerIndexLevel.SetText("2.5");
  panel.cmdPowerIndexSet.Click();
  EXPECT_EQ(cal.PowerIndex[30], "2.5"_d4);
  EXPECT_THAT(Warnings(), IsEmpty());
}

TEST_F(SideTableGroup, SetAsksForBothBoxes) {
  panel.txtinitialDAC.SetText("");
  panel.cmdinitialSet.Click();
  panel.txtinitialDAC.SetText("1");
  panel.txtinitialLevel.SetText("");
  panel.cmdinitialSet.Click();
  EXPECT_THAT(Warnings(), ElementsAre("Input Initial Value.", "Input Initial Value."));
  panel.txtPowerIndexLevel.SetText("");
  panel.cmdPowerIndexSet.Click();
  panel.txtPowerIndexLevel.SetText("1");
  panel.txtPowerIndex.SetText("");
  panel.cmdPowerIndexSet.Click();
  EXPECT_THAT(Warnings(), ElementsAre("Input Power Index.", "Input Power Index."));
  EXPECT_EQ(cal.InitValueIndex[0], 600);
  EXPECT_EQ(cal.PowerIndex[0], Decimal4(32));
}

TEST_F(SideTableGroup, SetRefusesALevelThatStayedFromDcs) {
  panel.optinitialDCS.Select();
  panel.txtinitialLevel.SetText("4");
  panel.optinitialGSM.Select();
  panel.txtinitialDAC.SetText("1");
  panel.cmdinitialSet.Click();
  EXPECT_THAT(Warnings(), ElementsAre("GSM Power Level should be equal or higher then 5."));
  EXPECT_EQ(cal.InitValueIndex[0], 600);
  EXPECT_EQ(cal.InitValueIndex[19], 330);
}

TEST_F(SideTableGroup, ALevelThatStayedFromGsmReachesBehindTheLastDcsLevel) {
  panel.txtinitialLevel.SetText("16");
  panel.optinitialDCS.Select();
  EXPECT_THROW(panel.cmdinitialSet.Click(), StationFailure);  // Position 31: that table ends at 30.
  panel.txtPowerIndex.SetText("16");
  panel.optPowerIndexDCS.Select();
  panel.txtPowerIndexLevel.SetText("1");
  panel.cmdPowerIndexSet.Click();
  EXPECT_EQ(cal.PowerIndex[31], Decimal4(1));
  panel.optPowerIndexGSM.Select();
  panel.txtPowerIndex.SetText("17");
  panel.optPowerIndexDCS.Select();
  EXPECT_THROW(panel.cmdPowerIndexSet.Click(), StationFailure);
}

TEST_F(SideTableGroup, SetFailsOnAValueThatIsNoNumber) {
  panel.txtinitialDAC.SetText("99999");
  EXPECT_THROW(panel.cmdinitialSet.Click(), StationFailure);
  panel.txtPowerIndexLevel.SetText("1/2");
  EXPECT_THROW(panel.cmdPowerIndexSet.Click(), StationFailure);
  EXPECT_EQ(cal.InitValueIndex[0], 600);
  EXPECT_EQ(cal.PowerIndex[0], Decimal4(32));
}

TEST_F(SideTableGroup, SavingTheInitialValuesAsAInitMakesTheCompanionWithTwoDots) {
  dialogs.answers = {"/d/a.init"};
  panel.cmdinitialSave.Click();
  EXPECT_EQ(dialogs.shown.at(0).dialog.title, "APCDAC First Value Save");
  EXPECT_EQ(dialogs.shown.at(0).dialog.filter, "(*.init)|*.init|All Files (*.*)|*.*;");
  EXPECT_EQ(files.content.at("/d/a.init").size(), 31U * 128);
  EXPECT_EQ(files.content.at("/d/a..xls").substr(0, 23), "InitValueIndex(0)\t600\r\n");
  EXPECT_EQ(panel.dlgInitial.initialFolder, "/d");
}

TEST_F(SideTableGroup, SavingThePowerIndexMakesItsCompanion) {
  dialogs.answers = {"/d/a.pwr"};
  panel.cmdPowerIndexSave.Click();
  EXPECT_EQ(dialogs.shown.at(0).dialog.title, "Save Ramp Power Index");
  EXPECT_EQ(dialogs.shown.at(0).dialog.filter, "(*.pwr)|*.pwr|All Files (*.*)|*.*;");
  EXPECT_EQ(files.content.at("/d/a.pwr").substr(0, 8), "\x00\xE2\x04\x00\x00\x00\x00\x00"s);
  EXPECT_EQ(files.content.at("/d/a.xls").substr(0, 17), "PowerIndex(0)\t32\r");
}

TEST_F(SideTableGroup, ANameTooShortForACompanionHasNone) {
  dialogs.answers = {"/abcdef/i"};
  panel.cmdinitialSave.Click();
  EXPECT_EQ(files.content.size(), 1U);
  EXPECT_THAT(boxes.shown, IsEmpty());
}

TEST_F(SideTableGroup, LoadingPutsTheFileInForceAndShowsIt) {
  dialogs.answers = {"a.init", "a.init"};
  panel.cmdinitialSave.Click();
  files.content.at("a.init").replace(128, 2, "\x05\x00"s);
  panel.txtinitialLevel.SetText("6");
  panel.cmdinitialLoad.Click();
  EXPECT_EQ(dialogs.shown.at(1).dialog.title, "APCDAC First Value Open");
  EXPECT_FALSE(dialogs.shown.at(1).save);
  EXPECT_EQ(cal.InitValueIndex[1], 5);
  EXPECT_EQ(panel.txtinitialDAC.Text(), "5");
}

TEST_F(SideTableGroup, LoadingWithoutALevelPutsTheFileInForceAndKeepsTheBoxes) {
  cal.InitValueIndex[0] = 7;
  dialogs.answers = {"/d/a.init", "/d/a.init"};
  panel.cmdinitialSave.Click();
  cal.InitValueIndex[0] = 600;
  panel.dlgInitial.initialFolder = "";
  panel.txtinitialLevel.SetText("");
  EXPECT_NO_THROW(panel.cmdinitialLoad.Click());
  EXPECT_EQ(cal.InitValueIndex[0], 7);
  EXPECT_EQ(panel.txtinitialDAC.Text(), "500");
  EXPECT_EQ(panel.dlgInitial.initialFolder, "/d") << "the next dialog starts there";
}

TEST_F(SideTableGroup, LoadingLeavesAGsmLevelBelowFiveAlone) {
  dialogs.answers = {"a.pwr", "a.pwr"};
  panel.cmdPowerIndexSave.Click();
  panel.optPowerIndexDCS.Select();
  panel.txtPowerIndex.SetText("4");
  panel.optPowerIndexGSM.Select();
  panel.txtPowerIndexLevel.SetText("1");
  panel.cmdPowerIndexLoad.Click();
  EXPECT_EQ(dialogs.shown.at(1).dialog.title, "Open Ramp Power Index");
  EXPECT_EQ(panel.txtPowerIndex.Text(), "4");
  EXPECT_EQ(panel.txtPowerIndexLevel.Text(), "1");
  EXPECT_THAT(boxes.shown, IsEmpty());
}

TEST_F(SideTableGroup, LoadingAFileThatCannotBeOpenedShowsTheSystemsTextAndKeepsTheTable) {
  dialogs.answers = {"none.init"};
  panel.cmdinitialLoad.Click();
  ASSERT_EQ(boxes.shown.size(), 1U);
  EXPECT_EQ(boxes.shown[0].text, "none.init: No such file or directory");
  EXPECT_EQ(boxes.shown[0].icon, BoxIcon::Exclamation);
  EXPECT_EQ(cal.InitValueIndex[0], 600);
  EXPECT_FALSE(files.Exists("none.init"));
}

TEST_F(SideTableGroup, LoadingAShortFileKeepsWhatWasReadAndShowsNothing) {
  files.content["a.init"] = "\x01\x00"s;
  dialogs.answers = {"a.init"};
  panel.cmdinitialLoad.Click();
  ASSERT_EQ(boxes.shown.size(), 1U);
  EXPECT_EQ(boxes.shown[0].icon, BoxIcon::Exclamation);
  EXPECT_EQ(cal.InitValueIndex[0], 1);
  EXPECT_EQ(cal.InitValueIndex[1], 550);
  EXPECT_EQ(panel.txtinitialDAC.Text(), "500");
}

TEST_F(SideTableGroup, CancelInADialogDoesNothing) {
  for (Button* button : {&panel.cmdinitialLoad, &panel.cmdinitialSave, &panel.cmdPowerIndexLoad,
                         &panel.cmdPowerIndexSave, &panel.cmdRxLossLoad, &panel.cmdRxLossSave}) {
    button->Click();
  }
  EXPECT_EQ(dialogs.shown.size(), 6U);
  EXPECT_THAT(boxes.shown, IsEmpty());
  EXPECT_THAT(files.content, IsEmpty());
}

TEST_F(SideTableGroup, SavingOverAFileAsksAndNoOverlaysIt) {
  files.content["a.loss"] = std::string(6 * 128, 'z');
  dialogs.answers = {"a.loss", "a.loss", "a.loss"};
  boxes.answers = {BoxButton::Cancel, BoxButton::No, BoxButton::Yes};
  panel.cmdRxLossSave.Click();  // Cancel shows the dialog again, No writes over.
  ASSERT_EQ(boxes.shown.size(), 2U);
  EXPECT_EQ(boxes.shown[0].text, "Do you want to change a current file to a.loss?");
  EXPECT_EQ(boxes.shown[0].icon, BoxIcon::Question);
  EXPECT_EQ(dialogs.shown.size(), 2U);
  EXPECT_EQ(files.content["a.loss"], std::string(5 * 128, '\0') + std::string(128, 'z'));
  panel.cmdRxLossSave.Click();  // Yes deletes it first.
  EXPECT_EQ(files.content["a.loss"], std::string(5 * 128, '\0'));
}

TEST_F(SideTableGroup, AFileThatCannotBeReplacedOrWrittenShowsTheSystemsText) {
  files.content["a.loss"] = "old";
  files.irreplaceable = {"a.loss"};
  dialogs.answers = {"a.loss", "full.pwr"};
  panel.cmdRxLossSave.Click();
  files.unwritable = {"full.pwr"};
  panel.cmdPowerIndexSave.Click();
  ASSERT_EQ(boxes.shown.size(), 3U);
  EXPECT_EQ(boxes.shown[1].icon, BoxIcon::Exclamation);
  EXPECT_EQ(boxes.shown[2].text, "full.pwr: No space left on device");
  EXPECT_EQ(files.content["a.loss"], "old");
  EXPECT_FALSE(files.Exists("full.xls"));
}

TEST_F(SideTableGroup, ACompanionThatCannotBeWrittenShowsTheSystemsText) {
  files.unwritable = {"a.xls"};
  dialogs.answers = {"a.pwr"};
  panel.cmdPowerIndexSave.Click();
  ASSERT_EQ(boxes.shown.size(), 1U);
  EXPECT_EQ(boxes.shown[0].text, "a.xls: No space left on device");
  EXPECT_EQ(files.content["a.pwr"].size(), 31U * 128);
}

TEST_F(SideTableGroup, ASoundLossFileHealsWhatTheInstalledOneDamaged) {
  state.cal.lossDamage = "Cable.loss is 0 bytes long, not 640.";
  const std::string sound = LossRecords(state.cal).replace(0, 1, "\x10");
  files.content["cut.loss"] = sound.substr(0, 4 * 128 + 8);
  files.content["zero.loss"] = std::string(640, '\0');
  files.content["a.loss"] = sound;
  dialogs.answers = {"cut.loss", "zero.loss", "a.loss"};
  for (const bool heals : {false, false, true}) {
    panel.cmdRxLossLoad.Click();
    EXPECT_EQ(state.cal.lossDamage.empty(), heals) << dialogs.shown.back().dialog.fileName;
  }
  EXPECT_THAT(boxes.shown, IsEmpty());
}

TEST_F(SideTableGroup, AFileBeyondItsBoundIsNotRead) {
  files.content["huge.loss"].resize((4 << 20) + 1);
  dialogs.answers = {"huge.loss"};
  panel.cmdRxLossLoad.Click();
  ASSERT_EQ(boxes.shown.size(), 1U);
  EXPECT_EQ(boxes.shown[0].text, "huge.loss: File too large");
}

TEST_F(SideTableGroup, LossesReachAFileOnlyAfterSet) {
  panel.txtRxCableLossGSM.SetText("-1");
  panel.txtRxCableLossDCS.SetText("-2");
  panel.txtLoss.SetText("-3");
  panel.txtDCSLoss.SetText("-4.25");
  main.txtVoltageLoss.SetText("0.02");
  dialogs.answers = {"a.loss", "b.loss"};
  panel.cmdRxLossSave.Click();
  EXPECT_EQ(dialogs.shown.at(0).dialog.title, "Loss Table Save");
  EXPECT_EQ(dialogs.shown.at(0).dialog.filter, "(*.loss)|*.loss|All Files (*.*)|*.*;");
  EXPECT_EQ(files.content["a.loss"], std::string(5 * 128, '\0'));
  panel.cmdRxLossSet.Click();
  panel.cmdRxLossSave.Click();
  EXPECT_EQ(files.content["b.loss"].substr(0, 8), "\xF0\xD8\xFF\xFF\xFF\xFF\xFF\xFF"s);
  EXPECT_EQ(files.content["b.loss"].substr(3 * 128, 8), "\xFC\x59\xFF\xFF\xFF\xFF\xFF\xFF"s);
  EXPECT_EQ(files.content["b.loss"].substr(4 * 128, 8), "\xC8\x00\x00\x00\x00\x00\x00\x00"s);
  EXPECT_FALSE(files.Exists("b.xls")) << "the loss table has no companion";
}

TEST_F(SideTableGroup, LoadedLossesAreShownInTheirBoxes) {
  for (std::size_t i = 0; i < 5; ++i) cal.LossTable[i] = Decimal4::FromRaw(-5000 - 1000 * static_cast<int>(i));
  dialogs.answers = {"a.loss", "a.loss"};
  panel.cmdRxLossSave.Click();
  cal.LossTable = {};
  panel.cmdRxLossLoad.Click();
  EXPECT_EQ(dialogs.shown.at(1).dialog.title, "Loss Table Open");
  EXPECT_EQ(cal.LossTable[4], "-0.9"_d4);
  EXPECT_EQ(panel.txtRxCableLossDCS.Text(), "-0.6");
  EXPECT_EQ(main.txtVoltageLoss.Text(), "-0.9");
}

TEST_F(SideTableGroup, LossesNeedFourBoxesAndFailOnAnEmptyFifth) {
  for (TextBox* box : {&panel.txtRxCableLossGSM, &panel.txtRxCableLossDCS, &panel.txtLoss, &panel.txtDCSLoss}) {
    const std::string text = box->Text();
    box->SetText("");
    panel.cmdRxLossSet.Click();
    EXPECT_THAT(Warnings(), ElementsAre("Run after inputing value."));
    box->SetText(text);
  }
  EXPECT_EQ(cal.LossTable[0], Decimal4());
  main.txtVoltageLoss.SetText("");
  EXPECT_THROW(panel.cmdRxLossSet.Click(), StationFailure);
  EXPECT_EQ(cal.LossTable[3], "-0.5"_d4) << "the four in front of it are stored";
}

}  // namespace
}  // namespace orvane::test
