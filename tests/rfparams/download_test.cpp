#include "base/text.h"
#include "rfparams/transfer_desk.h"

namespace orvane::test {
namespace {

using ::testing::ElementsAre;
using ::testing::HasSubstr;
using ::testing::IsEmpty;
using ::testing::SizeIs;

class ParameterDownload : public TransferDesk {};

TEST_F(ParameterDownload, SendsTheWholeImageIn57ChunksAndCommitsIt) {
  DownLoad();
  const auto commands = rig_.Commands();
  ASSERT_THAT(commands, SizeIs(2 + 57 + 1));
  EXPECT_EQ(commands[0], "spw 5 0");
  EXPECT_EQ(commands[1], "spw 1 0");
  // g_magic 177, lna_att 178 and so on, as two bytes each; agc_calib at 10 and 14.
  EXPECT_EQ(commands[2],
            "stw 3 0xB1,0x00,0xB2,0x00,0xB3,0x00,0xB4,0x00,0xB5,0x00,0xB6,0x00,0xB7,0x00,0xB8,0x00,"
            "0xB9,0x00,0xBA,0x00,0xBB,0x00,0xBC,0x00,0xBD,0x00,0xBE,0x00,0xBF,0x00,0xC0,0x00,");
  EXPECT_THAT(commands[57], ::testing::StartsWith("stw 3 "));
  // 24 bytes: the second band's high temperatures 46 to 55, tx_High_Power_Volt_Cal 56, two zeros.
  EXPECT_EQ(commands[58],
            "stw 3 0x2E,0x00,0x2F,0x00,0x30,0x00,0x31,0x00,0x32,0x00,0x33,0x00,"
            "0x34,0x00,0x35,0x00,0x36,0x00,0x37,0x00,0x38,0x00,0x00,0x00,");
  EXPECT_EQ(commands[59], "se 1");
  EXPECT_THAT(rig_.boxes.Texts(), ElementsAre("Download is completed."));
  EXPECT_EQ(rig_.boxes.shown[0].title, "Alarm");
  EXPECT_EQ(rig_.boxes.shown[0].icon, BoxIcon::Information);
}

TEST_F(ParameterDownload, ListsTheImageBeforeAByteMoves) {
  std::size_t listed = 0;
  rig_.serial.answer = [&](const SentCommand& command) {
    // "spw 5 0" goes out ahead of the list, "spw 1 0" behind it.
    if (rig_.Commands().size() == 2) listed = panel_.lstDataReadWindow.Items().size();
    return PaddedReply(command.operation, 0, command.data);
  };
  panel_.lstDataReadWindow.AddItem("from before");
  DownLoad();
  EXPECT_EQ(listed, 1817U);
  const auto& items = panel_.lstDataReadWindow.Items();
  ASSERT_THAT(items, SizeIs(1817));
  EXPECT_EQ(items[0], "Address\tData");
  EXPECT_EQ(items[1], "0\t0xB1");
  EXPECT_EQ(items[2], "1\t0x00");
  EXPECT_EQ(items[11], "10\t0xB6");
  EXPECT_EQ(items[1816], "1815\t0x00");
}

TEST_F(ParameterDownload, ToRamLeavesOutTheCommit) {
  panel_.optDownloadRAM.Select();
  DownLoad();
  EXPECT_THAT(rig_.Commands(), SizeIs(2 + 57));
  EXPECT_THAT(rig_.boxes.Texts(), ElementsAre("Download is completed."));
}

TEST_F(ParameterDownload, FileLoadTouchesNeitherTheTargetNorTheListBeyondClearingIt) {
  panel_.optDownloadFileLoad.Select();
  panel_.lstDataReadWindow.AddItem("from before");
  DownLoad();
  EXPECT_THAT(rig_.Commands(), IsEmpty());
  EXPECT_THAT(panel_.lstDataReadWindow.Items(), IsEmpty());
  EXPECT_THAT(rig_.boxes.shown, IsEmpty());
  EXPECT_EQ(rf_.RFParams.rf_revision, 4096);
  EXPECT_EQ(rf_.RFParams.BAND[1].tx_High_Power_Volt_Cal, 56);
  EXPECT_EQ(rf_.EepromImage[0], "");
  EXPECT_EQ(panel_.downloadFileName, "/home/unit.epm");
  EXPECT_EQ(panel_.dlgDownload.initialFolder, "/home");
}

TEST_F(ParameterDownload, OutsideTestModeADownloadIsAFileLoad) {
  rig_.state.reply.TargetMode = "NormalMode";
  DownLoad();
  EXPECT_THAT(rig_.Commands(), IsEmpty());
  EXPECT_THAT(panel_.lstDataReadWindow.Items(), IsEmpty());
  EXPECT_THAT(rig_.boxes.shown, IsEmpty());
  EXPECT_EQ(rf_.RFParams.rf_revision, 4096);
}

TEST_F(ParameterDownload, PartialDownloadToRamSendsNothingAndReportsTheLastStatus) {
  panel_.optPartialDownload.Select();
  panel_.optDownloadRAM.Select();
  const std::vector<std::pair<std::string, std::string>> cases{
      {"&H00", "Download is completed."},
      {"&H05", "Download is not completed. Try to Download again."},
      {"", "Download is not completed. Try to Download again."},
  };
  for (const auto& [status, words] : cases) {
    rig_.boxes.shown.clear();
    rig_.state.reply.TMStatus = status;
    DownLoad();
    EXPECT_THAT(rig_.Commands(), IsEmpty());
    EXPECT_THAT(rig_.boxes.Texts(), ElementsAre(words)) << status;
  }
  EXPECT_EQ(rig_.boxes.shown[0].title, "Warning");
  EXPECT_EQ(rig_.boxes.shown[0].icon, BoxIcon::Stop);
  EXPECT_EQ(rf_.EepromImage[0], "B1") << "the image is made all the same";
}

TEST_F(ParameterDownload, PartialDownloadToFlashSendsTheCommitAlone) {
  panel_.optPartialDownload.Select();
  DownLoad();
  EXPECT_THAT(rig_.Commands(), ElementsAre("se 1"));
}

TEST_F(ParameterDownload, AFailureInTheMiddleIsForgottenByTheNextGoodReply) {
  rig_.serial.answer = [n = 0](const SentCommand& command) mutable {
    return PaddedReply(command.operation, ++n == 10 ? 5 : 0, command.data);
  };
  DownLoad();
  EXPECT_THAT(rig_.Commands(), SizeIs(60));
  EXPECT_THAT(rig_.boxes.Texts(), ElementsAre("Download is completed."));
}

TEST_F(ParameterDownload, AFailureOfTheLastCommandIsToldAndChangesNothing) {
  rig_.serial.answer = [](const SentCommand& command) {
    return PaddedReply(command.operation, command.operation == 84 ? 1 : 0, command.data);
  };
  DownLoad();
  EXPECT_THAT(rig_.boxes.Texts(), ElementsAre("Download is not completed. Try to Download again."));
  EXPECT_EQ(rf_.RFParams.rf_revision, 4096);
  EXPECT_EQ(rf_.EepromImage[0], "B1");
}

TEST_F(ParameterDownload, ABadValueStopsTheConversionAndNothingElse) {
  rf_.RFParams.il2agc_max[52] = 55;
  rig_.files.content["/home/bad.epm"] = ReplaceAll(CompleteFile(), "x = 178\r\n", "x = 1e9\r\n");
  DownLoad("/home/bad.epm");
  EXPECT_EQ(rf_.RFParams.il2agc_pwr[51], 56);
  EXPECT_EQ(rf_.RFParams.il2agc_max[52], 55) << "the first bad value is that of row 52";
  EXPECT_EQ(rf_.RFParams.il2agc_av[52], 0);
  EXPECT_THAT(rig_.boxes.Texts(), ElementsAre("Download is completed."));
}

TEST_F(ParameterDownload, AFileThatCannotBeReadEndsTheDownload) {
  rf_.RFParams.rf_revision = 7;
  DownLoad("/home/none.epm");
  EXPECT_THAT(rig_.boxes.Texts(), ElementsAre("/home/none.epm: No such file or directory"));
  EXPECT_EQ(rig_.boxes.shown[0].icon, BoxIcon::Exclamation);
  EXPECT_EQ(rf_.RFParams.rf_revision, 7);
  EXPECT_THAT(rig_.Commands(), IsEmpty());
  EXPECT_FALSE(rig_.files.Exists("/home/none.epm"));
}

TEST_F(ParameterDownload, CancelEndsEitherWaySilently) {
  rig_.dialogs.answers = {std::nullopt, std::nullopt};
  rig_.op.Click(panel_.cmdEepromDownLoad);
  rig_.op.Click(panel_.cmdUpLoad);
  EXPECT_THAT(rig_.Commands(), IsEmpty());
  EXPECT_THAT(rig_.boxes.shown, IsEmpty());
  ASSERT_THAT(rig_.dialogs.shown, SizeIs(2));
  const FileDialog& open = rig_.dialogs.shown[0].dialog;
  EXPECT_FALSE(rig_.dialogs.shown[0].save);
  EXPECT_EQ(open.title, "RF Parameters Download/");
  EXPECT_EQ(open.filter, "(*.epm)|*.epm|(*.txt)|*.txt|All Files(*.*)|*.*;");
  EXPECT_EQ(open.defaultExtension, "epm");
  EXPECT_TRUE(rig_.dialogs.shown[1].save);
  EXPECT_EQ(rig_.dialogs.shown[1].dialog.title, "Target RF Parameters Back Up");
}

TEST_F(ParameterDownload, ATitleOnceSetStays) {
  rig_.dialogs.answers = {std::nullopt, std::nullopt};
  rig_.op.Click(panel_.cmdUpLoad);
  rig_.op.Click(panel_.cmdEepromDownLoad);
  EXPECT_EQ(rig_.dialogs.shown[1].dialog.title, "Target RF Parameters Back Up");
}

struct ChunkCase {
  Integer first;
  Integer last;
  std::vector<std::size_t> sizes;
};

TEST_F(ParameterDownload, ChunksHold32BytesAndTheLastOneTheRest) {
  const std::vector<ChunkCase> cases{
      {0, 31, {32}}, {0, 32, {32, 1}}, {0, 0, {1}}, {5, 36, {32}}, {5, 37, {32, 1}}, {10, 80, {32, 32, 7}},
  };
  rf_.EepromImage.assign(2701, "0A");
  for (const ChunkCase& c : cases) {
    rig_.serial.commands.clear();
    rig_.Act([&] { transfer_.TMDownLoadProcedure(c.first, c.last); });
    std::vector<std::size_t> sizes;
    for (const auto& command : rig_.serial.commands) {
      if (command.operation == kTableWrite) sizes.push_back(command.data.size() - 1);
    }
    EXPECT_EQ(sizes, c.sizes) << c.first << " to " << c.last;
    EXPECT_EQ(panel_.prgDownload.Max(), static_cast<Long>(c.sizes.size()));
    EXPECT_EQ(panel_.prgDownload.Value(), static_cast<Long>(c.sizes.size()));
  }
}

TEST_F(ParameterDownload, AnEntryGoesOutAsItsLastTwoDigits) {
  rf_.EepromImage = {"5", "FFF6", "12C", "0A", "00"};
  rig_.Act([&] { transfer_.TMEEPROMDataWrite(0, 4); });
  EXPECT_THAT(rig_.Commands(), ElementsAre("stw 3 0x05,0xF6,0x2C,0x0A,0x00,"));
  EXPECT_THAT(rig_.serial.commands.back().data, ElementsAre(3, 0x05, 0xF6, 0x2C, 0x0A, 0x00));
}

TEST_F(ParameterDownload, BarsShowForAsLongAsADownloadLasts) {
  const ProgressBar& bar = panel_.prgDownload;
  const ProgressBar& other = rig_.panels.autoCal.prgAutoCalDownload;
  EXPECT_FALSE(bar.Visible());
  std::vector<Long> values;
  rig_.serial.answer = [&](const SentCommand& command) {
    EXPECT_EQ(bar.Visible(), command.operation == kTableWrite);
    if (command.operation == kTableWrite) {
      EXPECT_TRUE(other.Visible());
      EXPECT_EQ(bar.Max(), 57);
      EXPECT_EQ(other.Max(), 57);
      EXPECT_EQ(other.Value(), bar.Value());
      values.push_back(bar.Value());
    }
    return PaddedReply(command.operation, 0, command.data);
  };
  DownLoad();
  ASSERT_THAT(values, SizeIs(57));
  for (std::size_t i = 0; i < values.size(); ++i) EXPECT_EQ(values[i], static_cast<Long>(i));
  EXPECT_EQ(bar.Value(), 57);
  EXPECT_FALSE(bar.Visible());
  EXPECT_FALSE(other.Visible());
}

TEST_F(ParameterDownload, AChunkThatNoFrameTakesIsLeftOutAndTold) {
  rf_.EepromImage.assign(2701, "00");
  for (std::size_t i = 32; i < 64; ++i) rf_.EepromImage[i] = "02";
  RunReport& report = rig_.state.report;
  report.Begin();
  report.Enter(RunStep::Save);
  EXPECT_EQ(rig_.Act([&] { transfer_.TMDownLoadProcedure(0, 95); }), std::nullopt);
  report.Leave();
  ASSERT_THAT(rig_.serial.commands, SizeIs(3)) << "spw, the first chunk, the third";
  EXPECT_EQ(panel_.prgDownload.Value(), 3);
  EXPECT_FALSE(report.Steps().back().complete);
  EXPECT_THAT(report.Steps().back().reason, HasSubstr("EEPROM bytes 32 to 63 were not sent"));
}

TEST_F(ParameterDownload, ACommandThatCannotBeSentIsTold) {
  rf_.EepromImage.assign(2701, "00");
  rig_.serial.outputFailure = "The line is gone.";
  RunReport& report = rig_.state.report;
  report.Begin();
  report.Enter(RunStep::Save);
  EXPECT_EQ(rig_.Act([&] { transfer_.TMDownLoadProcedure(0, 31); }), std::nullopt);
  report.Leave();
  EXPECT_FALSE(report.Steps().back().complete);
  EXPECT_THAT(report.Steps().back().reason, HasSubstr("The command \"spw 1 0\" failed: The line is gone."));
  EXPECT_THAT(report.Steps().back().reason, HasSubstr("EEPROM bytes 0 to 31 were not sent: "));
}

TEST_F(ParameterDownload, AStopIsHeardBetweenTwoPiecesAndNothingIsCommitted) {
  rig_.serial.answer = [&, n = 0](const SentCommand& command) mutable {
    if (command.operation == kTableWrite && ++n == 3) {
      rig_.state.cal.CalStopRequested = true;
      rig_.state.cal.stopStands = true;
      ++rig_.state.cal.stopsAsked;
    }
    return PaddedReply(command.operation, 0, command.data);
  };
  DownLoad();
  EXPECT_THAT(rig_.Commands(), SizeIs(2 + 3)) << "the third piece was under way";
  EXPECT_THAT(rig_.boxes.Texts(), ElementsAre("Download is not completed. Try to Download again."));
  EXPECT_FALSE(panel_.prgDownload.Visible());
  EXPECT_FALSE(rig_.panels.autoCal.prgAutoCalDownload.Visible());
}

TEST_F(ParameterDownload, AStopThatWasLeftFromBeforeStopsNoDownload) {
  rig_.state.cal.CalStopRequested = true;
  rig_.state.cal.stopStands = true;
  rig_.state.cal.stopsAsked = 3;
  DownLoad();
  EXPECT_THAT(rig_.boxes.Texts(), ElementsAre("Download is completed."));
  EXPECT_THAT(rig_.Commands(), SizeIs(60));
}

TEST_F(ParameterDownload, ATargetThatDoesNotAnswerFivePiecesInARowEndsIt) {
  rig_.serial.answer = [](const SentCommand& command) {
    return command.operation == kTableWrite ? std::string() : PaddedReply(command.operation, 0, command.data);
  };
  rig_.dialogs.answers.emplace_back("/home/unit.epm");
  EXPECT_EQ(rig_.op.Click(panel_.cmdEepromDownLoad), "The Target does not answer.");
  EXPECT_THAT(rig_.Commands(), SizeIs(2 + 5));
  EXPECT_FALSE(panel_.prgDownload.Visible());
}

TEST_F(ParameterDownload, AReplyStartsTheCountOfSilentPiecesAnew) {
  rig_.serial.answer = [n = 0](const SentCommand& command) mutable {
    return command.operation == kTableWrite && ++n % 5 != 0 ? std::string()
                                                            : PaddedReply(command.operation, 0, command.data);
  };
  DownLoad();
  EXPECT_THAT(rig_.Commands(), SizeIs(60));
}

TEST_F(ParameterDownload, PiecesThatTheTargetMayNotHaveTakenAreToldByTheirBytes) {
  rf_.EepromImage.assign(2701, "00");
  rig_.serial.answer = [n = 0](const SentCommand& command) mutable {
    ++n;  // The first is "spw 1 0".
    return n == 3 || n == 4 ? std::string() : PaddedReply(command.operation, n == 6 ? 5 : 0, command.data);
  };
  RunReport& report = rig_.state.report;
  report.Begin();
  report.Enter(RunStep::Save);
  EXPECT_EQ(rig_.Act([&] { EXPECT_TRUE(transfer_.TMDownLoadProcedure(0, 255)); }), std::nullopt);
  report.Leave();
  EXPECT_THAT(rig_.Commands(), SizeIs(1 + 8)) << "it goes on to its end";
  EXPECT_EQ(report.Steps().back().reason,
            "EEPROM bytes 32 to 95 brought no reply: they and all behind them may be wrong. "
            "EEPROM bytes 128 to 159 were refused with status 5: they and all behind them may be wrong.");
}

TEST_F(ParameterDownload, OffsetsBeyondTheImageArePassedOver) {
  rf_.EepromImage.assign(2701, "00");
  EXPECT_EQ(rig_.Act([&] { transfer_.TMDownLoadProcedure(2690, 2710); }), std::nullopt);
  EXPECT_THAT(panel_.lstDataReadWindow.Items(), SizeIs(1 + 11));
  EXPECT_THAT(rig_.Commands(), ElementsAre("spw 1 0"));
  EXPECT_FALSE(panel_.prgDownload.Visible());
}

TEST_F(ParameterDownload, AnEntryThatWasNeverFilledIsNotSentAsZero) {
  rf_.EepromImage.assign(2701, "00");
  rf_.EepromImage[3] = "";
  EXPECT_EQ(rig_.Act([&] { transfer_.TMDownLoadProcedure(0, 7); }), std::nullopt);
  ASSERT_THAT(rig_.serial.commands, SizeIs(1)) << "spw alone";
}

TEST_F(ParameterDownload, AFailureInAnEventDuringAChunkStopsTheDownloadForGood) {
  rig_.serial.answer = [n = 0](const SentCommand& command) mutable {
    return ++n == 5 ? std::string(300, 'x') : PaddedReply(command.operation, 0, command.data);
  };
  rig_.dialogs.answers.emplace_back("/home/unit.epm");
  EXPECT_NE(rig_.op.Click(panel_.cmdEepromDownLoad), std::nullopt);
  EXPECT_THAT(rig_.serial.commands, SizeIs(5));
  EXPECT_THAT(rig_.boxes.shown, SizeIs(1));
  EXPECT_FALSE(panel_.prgDownload.Visible());
  EXPECT_FALSE(rig_.panels.autoCal.prgAutoCalDownload.Visible());
  rig_.boxes.shown.clear();
  DownLoad();
  EXPECT_THAT(rig_.boxes.Texts(), ElementsAre("Download is completed."));
}

TEST_F(ParameterDownload, TheDownloadModeOpensAndClosesTheChargerOption) {
  EXPECT_TRUE(panel_.optFullDownload.Selected());
  EXPECT_TRUE(panel_.optDownloadFlash.Selected());
  EXPECT_FALSE(panel_.fraBBOption.Enabled());
  EXPECT_THROW(rig_.op.Check(panel_.chkChargerParam, true), ControlDisabled);
  rig_.op.Select(panel_.optPartialDownload);
  EXPECT_TRUE(panel_.fraBBOption.Enabled());
  rig_.op.Check(panel_.chkChargerParam, true);
  EXPECT_TRUE(panel_.chkChargerParam.Checked());
  rig_.op.Select(panel_.optFullDownload);
  EXPECT_FALSE(panel_.fraBBOption.Enabled());
  EXPECT_THROW(rig_.op.Check(panel_.chkChargerParam, false), ControlDisabled);
}

TEST_F(ParameterDownload, ButtonsWithoutActionDoNothing) {
  rig_.op.Click(panel_.cmdse);
  transfer_.EEPROMDataWrite(0, 31);
  EXPECT_THAT(rig_.Commands(), IsEmpty());
  EXPECT_THAT(rig_.boxes.shown, IsEmpty());
}

}  // namespace
}  // namespace orvane::test
