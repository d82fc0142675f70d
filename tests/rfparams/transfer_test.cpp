#include "rfparams/transfer.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "base/text.h"
#include "rfparams/rf_text_file.h"
#include "support/rig.h"

namespace orvane {
namespace {

using ::testing::ElementsAre;
using ::testing::HasSubstr;
using ::testing::IsEmpty;
using ::testing::SizeIs;

constexpr std::uint8_t kTableRead = 83;
constexpr std::uint8_t kTableWrite = 82;

/// A complete parameter file whose values are their positions, modulo 200.
std::string CompleteFile() {
  std::string text = "rf_revision\t=\tRF_SL2\r\n";
  for (int p = 1; p < 1857; ++p) text += "x = " + std::to_string(p % 200) + "\r\n";
  return text;
}

class ParameterTransferTest : public testing::Test {
 protected:
  ParameterTransferTest() {
    transfer_.Connect();
    rig_.OpenPort();
    rig_.panels.downLoad.Show();
    rig_.files.content["/home/unit.epm"] = CompleteFile();
    rig_.state.reply.TMStatus.clear();
  }

  void DownLoad(const std::string& path = "/home/unit.epm") {
    rig_.dialogs.answers.emplace_back(path);
    ASSERT_EQ(rig_.op.Click(panel_.cmdEepromDownLoad), std::nullopt);
  }
  void UpLoad(const std::string& path = "/home/back.epm") {
    rig_.dialogs.answers.emplace_back(path);
    ASSERT_EQ(rig_.op.Click(panel_.cmdUpLoad), std::nullopt);
  }
  /// A Target whose EEPROM can be read: byte `offset` is `byteAt(offset)`.
  void AnswerReads(std::function<int(int offset)> byteAt) {
    rig_.serial.answer = [byteAt, row = 0](const test::SentCommand& command) mutable {
      if (command.operation != kTableRead) return test::PaddedReply(command.operation, 0, command.data);
      std::vector<std::uint8_t> data{3};
      for (int j = 0; j < 16 && row * 16 + j < 1816; ++j)
        data.push_back(static_cast<std::uint8_t>(byteAt(row * 16 + j)));
      ++row;
      return test::PaddedReply(kTableRead, 0, data);
    };
  }
  std::vector<std::string> Entries(std::size_t first, std::size_t count) {
    const auto begin = rig_.state.rf.EepromImage.begin() + static_cast<std::ptrdiff_t>(first);
    return {begin, begin + static_cast<std::ptrdiff_t>(count)};
  }

  test::Rig rig_;
  FrmDownLoad& panel_ = rig_.panels.downLoad;
  RFState& rf_ = rig_.state.rf;
  ParameterTransfer transfer_{rig_.panels.downLoad, rig_.panels.autoCal, rig_.state.rf, rig_.state.reply, rig_.link,
                              rig_.state.report,    rig_.boxes,          rig_.dialogs,  rig_.files};
};

TEST_F(ParameterTransferTest, DownloadSendsTheWholeImageIn57ChunksAndCommitsIt) {
  DownLoad();
  const auto commands = rig_.Commands();
  ASSERT_THAT(commands, SizeIs(2 + 57 + 1));
  EXPECT_EQ(commands[0], "spw 5 0");
  EXPECT_EQ(commands[1], "spw 1 0");
  // g_magic 177, lna_att 178 and so on, as two bytes each; agc_calib at 10 and 14.
  EXPECT_EQ(commands[2],
            "stw 3 0xB1,0x00,0xB2,0x00,0xB3,0x00,0xB4,0x00,0xB5,0x00,0xB6,0x00,0xB7,0x00,0xB8,0x00,"
            "0xB9,0x00,0xBA,0x00,0xBB,0x00,0xBC,0x00,0xBD,0x00,0xBE,0x00,0xBF,0x00,0xC0,0x00,");
  EXPECT_THAT(commands[57], testing::StartsWith("stw 3 "));
  // 24 bytes: the second band's high temperatures 46 to 55, tx_High_Power_Volt_Cal 56, two zeros.
  EXPECT_EQ(commands[58],
            "stw 3 0x2E,0x00,0x2F,0x00,0x30,0x00,0x31,0x00,0x32,0x00,0x33,0x00,"
            "0x34,0x00,0x35,0x00,0x36,0x00,0x37,0x00,0x38,0x00,0x00,0x00,");
  EXPECT_EQ(commands[59], "se 1");
  EXPECT_THAT(rig_.boxes.Texts(), ElementsAre("Download is completed."));
  EXPECT_EQ(rig_.boxes.shown[0].title, "Alarm");
  EXPECT_EQ(rig_.boxes.shown[0].icon, BoxIcon::Information);
}

TEST_F(ParameterTransferTest, DownloadListsTheImageBeforeAByteMoves) {
  std::size_t listed = 0;
  rig_.serial.answer = [&](const test::SentCommand& command) {
    // "spw 5 0" goes out ahead of the list, "spw 1 0" behind it.
    if (rig_.Commands().size() == 2) listed = panel_.lstDataReadWindow.Items().size();
    return test::PaddedReply(command.operation, 0, command.data);
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

TEST_F(ParameterTransferTest, DownloadToRamLeavesOutTheCommit) {
  panel_.optDownloadRAM.Select();
  DownLoad();
  EXPECT_THAT(rig_.Commands(), SizeIs(2 + 57));
  EXPECT_THAT(rig_.boxes.Texts(), ElementsAre("Download is completed."));
}

TEST_F(ParameterTransferTest, FileLoadTouchesNeitherTheTargetNorTheListBeyondClearingIt) {
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

TEST_F(ParameterTransferTest, OutsideTestModeADownloadIsAFileLoad) {
  rig_.state.reply.TargetMode = "NormalMode";
  DownLoad();
  EXPECT_THAT(rig_.Commands(), IsEmpty());
  EXPECT_THAT(panel_.lstDataReadWindow.Items(), IsEmpty());
  EXPECT_THAT(rig_.boxes.shown, IsEmpty());
  EXPECT_EQ(rf_.RFParams.rf_revision, 4096);
}

TEST_F(ParameterTransferTest, PartialDownloadToRamSendsNothingAndReportsTheLastStatus) {
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

TEST_F(ParameterTransferTest, PartialDownloadToFlashSendsTheCommitAlone) {
  panel_.optPartialDownload.Select();
  DownLoad();
  EXPECT_THAT(rig_.Commands(), ElementsAre("se 1"));
}

TEST_F(ParameterTransferTest, AFailureInTheMiddleIsForgottenByTheNextGoodReply) {
  rig_.serial.answer = [n = 0](const test::SentCommand& command) mutable {
    return test::PaddedReply(command.operation, ++n == 10 ? 5 : 0, command.data);
  };
  DownLoad();
  EXPECT_THAT(rig_.Commands(), SizeIs(60));
  EXPECT_THAT(rig_.boxes.Texts(), ElementsAre("Download is completed."));
}

TEST_F(ParameterTransferTest, AFailureOfTheLastCommandIsToldAndChangesNothing) {
  rig_.serial.answer = [](const test::SentCommand& command) {
    return test::PaddedReply(command.operation, command.operation == 84 ? 1 : 0, command.data);
  };
  DownLoad();
  EXPECT_THAT(rig_.boxes.Texts(), ElementsAre("Download is not completed. Try to Download again."));
  EXPECT_EQ(rf_.RFParams.rf_revision, 4096);
  EXPECT_EQ(rf_.EepromImage[0], "B1");
}

TEST_F(ParameterTransferTest, ABadValueStopsTheConversionAndNothingElse) {
  rf_.RFParams.il2agc_max[52] = 55;
  rig_.files.content["/home/bad.epm"] = ReplaceAll(CompleteFile(), "x = 178\r\n", "x = 1e9\r\n");
  DownLoad("/home/bad.epm");
  EXPECT_EQ(rf_.RFParams.il2agc_pwr[51], 56);
  EXPECT_EQ(rf_.RFParams.il2agc_max[52], 55) << "the first bad value is that of row 52";
  EXPECT_EQ(rf_.RFParams.il2agc_av[52], 0);
  EXPECT_THAT(rig_.boxes.Texts(), ElementsAre("Download is completed."));
}

TEST_F(ParameterTransferTest, AFileThatCannotBeReadEndsTheDownload) {
  rf_.RFParams.rf_revision = 7;
  DownLoad("/home/none.epm");
  EXPECT_THAT(rig_.boxes.Texts(), ElementsAre("/home/none.epm: No such file or directory"));
  EXPECT_EQ(rig_.boxes.shown[0].icon, BoxIcon::Exclamation);
  EXPECT_EQ(rf_.RFParams.rf_revision, 7);
  EXPECT_THAT(rig_.Commands(), IsEmpty());
  EXPECT_FALSE(rig_.files.Exists("/home/none.epm"));
}

TEST_F(ParameterTransferTest, CancelEndsEitherWaySilently) {
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

TEST_F(ParameterTransferTest, ATitleOnceSetStays) {
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

TEST_F(ParameterTransferTest, ChunksHold32BytesAndTheLastOneTheRest) {
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

TEST_F(ParameterTransferTest, AnEntryGoesOutAsItsLastTwoDigits) {
  rf_.EepromImage = {"5", "FFF6", "12C", "0A", "00"};
  rig_.Act([&] { transfer_.TMEEPROMDataWrite(0, 4); });
  EXPECT_THAT(rig_.Commands(), ElementsAre("stw 3 0x05,0xF6,0x2C,0x0A,0x00,"));
  EXPECT_THAT(rig_.serial.commands.back().data, ElementsAre(3, 0x05, 0xF6, 0x2C, 0x0A, 0x00));
}

TEST_F(ParameterTransferTest, BarsShowForAsLongAsADownloadLasts) {
  const ProgressBar& bar = panel_.prgDownload;
  const ProgressBar& other = rig_.panels.autoCal.prgAutoCalDownload;
  EXPECT_FALSE(bar.Visible());
  std::vector<Long> values;
  rig_.serial.answer = [&](const test::SentCommand& command) {
    EXPECT_EQ(bar.Visible(), command.operation == kTableWrite);
    if (command.operation == kTableWrite) {
      EXPECT_TRUE(other.Visible());
      EXPECT_EQ(bar.Max(), 57);
      EXPECT_EQ(other.Max(), 57);
      EXPECT_EQ(other.Value(), bar.Value());
      values.push_back(bar.Value());
    }
    return test::PaddedReply(command.operation, 0, command.data);
  };
  DownLoad();
  ASSERT_THAT(values, SizeIs(57));
  for (std::size_t i = 0; i < values.size(); ++i) EXPECT_EQ(values[i], static_cast<Long>(i));
  EXPECT_EQ(bar.Value(), 57);
  EXPECT_FALSE(bar.Visible());
  EXPECT_FALSE(other.Visible());
}

TEST_F(ParameterTransferTest, AChunkThatNoFrameTakesIsLeftOutAndTold) {
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

TEST_F(ParameterTransferTest, ACommandThatCannotBeSentIsTold) {
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

TEST_F(ParameterTransferTest, OffsetsBeyondTheImageArePassedOver) {
  rf_.EepromImage.assign(2701, "00");
  EXPECT_EQ(rig_.Act([&] { transfer_.TMDownLoadProcedure(2690, 2710); }), std::nullopt);
  EXPECT_THAT(panel_.lstDataReadWindow.Items(), SizeIs(1 + 11));
  EXPECT_THAT(rig_.Commands(), ElementsAre("spw 1 0"));
  EXPECT_FALSE(panel_.prgDownload.Visible());
}

TEST_F(ParameterTransferTest, AnEntryThatWasNeverFilledIsNotSentAsZero) {
  rf_.EepromImage.assign(2701, "00");
  rf_.EepromImage[3] = "";
  EXPECT_EQ(rig_.Act([&] { transfer_.TMDownLoadProcedure(0, 7); }), std::nullopt);
  ASSERT_THAT(rig_.serial.commands, SizeIs(1)) << "spw alone";
}

TEST_F(ParameterTransferTest, AFailureInAnEventDuringAChunkStopsTheDownloadForGood) {
  rig_.serial.answer = [n = 0](const test::SentCommand& command) mutable {
    return ++n == 5 ? std::string(300, 'x') : test::PaddedReply(command.operation, 0, command.data);
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

TEST_F(ParameterTransferTest, UploadReadsTheImageIn114RowsAndSavesTheRecord) {
  rf_.RFParams.rf_revision = 8240;
  rf_.RFParams.EEPROM_AFC = -1180;
  AnswerReads([](int offset) { return offset % 251; });
  panel_.lstDataReadWindow.AddItem("from before");
  UpLoad();
  const auto commands = rig_.Commands();
  ASSERT_THAT(commands, SizeIs(2 + 114));
  EXPECT_EQ(commands[0], "spw 5 0");
  EXPECT_EQ(commands[1], "spw 1 0");
  for (std::size_t i = 2; i < commands.size(); ++i) EXPECT_EQ(commands[i], "str 3");
  EXPECT_THAT(Entries(0, 4), ElementsAre("00", "01", "02", "03"));
  EXPECT_THAT(Entries(1812, 5), ElementsAre("37", "38", "39", "3A", ""));
  EXPECT_THAT(rig_.boxes.shown, IsEmpty());

  const auto& items = panel_.lstDataReadWindow.Items();
  ASSERT_THAT(items, SizeIs(1817));
  EXPECT_EQ(items[0], "Address\tData");
  EXPECT_EQ(items[1], "0\t00");
  EXPECT_EQ(items[1816], "1815\t3A");

  EXPECT_EQ(rf_.RFParams.BAND[0].g_magic, 0x0100);
  EXPECT_EQ(rf_.RFParams.rf_revision, 8240);
  EXPECT_EQ(rf_.RFParams.EEPROM_AFC, -1180);
  RFState saved;
  EXPECT_EQ(ReadParameterLines(rig_.files.content["/home/back.epm"], saved), 1857);
  EXPECT_EQ(saved.RFParamText[0], "RF_PASCAL_20");
  EXPECT_EQ(saved.RFParamText[372], "-1180");
  EXPECT_EQ(saved.RFParamText[377], "256");
  EXPECT_EQ(rig_.files.content["/home/back.epm"], ParameterFileText(rf_));
}

TEST_F(ParameterTransferTest, UploadReadsBackWhatADownloadSent) {
  DownLoad();
  std::vector<std::uint8_t> sent;
  for (const auto& command : rig_.serial.commands) {
    if (command.operation == kTableWrite) sent.insert(sent.end(), command.data.begin() + 1, command.data.end());
  }
  ASSERT_THAT(sent, SizeIs(1816));
  AnswerReads([&](int offset) { return sent[static_cast<std::size_t>(offset)]; });
  UpLoad();
  rig_.panels.downLoad.optDownloadFileLoad.Select();
  const std::string saved = rig_.files.content["/home/back.epm"];
  DownLoad();
  RFParamsToDataConvert(rf_);
  EXPECT_EQ(ParameterFileText(rf_), saved);
}

TEST_F(ParameterTransferTest, UploadStoresTheRowBeforeWhenAReplyDoesNotCome) {
  rig_.serial.answer = [row = 0](const test::SentCommand& command) mutable -> std::string {
    if (command.operation != kTableRead) return test::PaddedReply(command.operation, 0, command.data);
    if (++row == 3) return "";
    std::vector<std::uint8_t> data{3};
    data.insert(data.end(), 16, static_cast<std::uint8_t>(row));
    return test::PaddedReply(kTableRead, 0, data);
  };
  UpLoad();
  EXPECT_THAT(Entries(16, 16), testing::Each("02"));
  EXPECT_THAT(Entries(32, 16), testing::Each("02"));
  EXPECT_THAT(Entries(48, 16), testing::Each("04"));
  EXPECT_THAT(rig_.boxes.shown, IsEmpty());
}

TEST_F(ParameterTransferTest, UploadFromASilentTargetEndsWithAnUnchangedRecord) {
  rig_.serial.answer = nullptr;
  rf_.RFParams.BAND[0].g_magic = 180;
  UpLoad();
  EXPECT_THAT(rig_.Commands(), SizeIs(116));
  EXPECT_EQ(rf_.RFParams.BAND[0].g_magic, 180);
  EXPECT_THAT(panel_.lstDataReadWindow.Items().back(), "1815\t");
  EXPECT_THAT(rig_.files.content["/home/back.epm"], HasSubstr("BAND(0).g_magic\t=\t180\r\n"));
}

TEST_F(ParameterTransferTest, UploadBarStaysFullInItsLastRow) {
  std::vector<Long> values;
  AnswerReads([](int) { return 0; });
  const auto read = rig_.serial.answer;
  rig_.serial.answer = [&](const test::SentCommand& command) {
    EXPECT_EQ(panel_.prgDownload.Visible(), command.operation == kTableRead);
    if (command.operation == kTableRead) values.push_back(panel_.prgDownload.Value());
    return read(command);
  };
  UpLoad();
  EXPECT_EQ(panel_.prgDownload.Max(), 113);
  EXPECT_EQ(values[113], 113);
  EXPECT_EQ(panel_.prgDownload.Value(), 113);
  EXPECT_FALSE(panel_.prgDownload.Visible());
  EXPECT_FALSE(rig_.panels.autoCal.Created());
}

TEST_F(ParameterTransferTest, UploadAsksBeforeItWritesOverAFile) {
  AnswerReads([](int) { return 0; });
  const std::string older(100000, 'o');
  struct Case {
    std::vector<BoxButton> answers;
    bool keepsTail;
    std::size_t dialogs;
  };
  const std::vector<Case> cases{
      {{BoxButton::Yes}, false, 1},
      {{BoxButton::No}, true, 1},
      {{BoxButton::Cancel, BoxButton::Yes}, false, 2},
  };
  for (const Case& c : cases) {
    rig_.files.content["/home/back.epm"] = older;
    rig_.dialogs.shown.clear();
    rig_.boxes.shown.clear();
    rig_.boxes.answers = {c.answers.begin(), c.answers.end()};
    rig_.dialogs.answers.assign(c.dialogs - 1, "/home/back.epm");
    UpLoad();
    const std::string& content = rig_.files.content["/home/back.epm"];
    const std::string text = ParameterFileText(rf_);
    EXPECT_EQ(content.substr(0, text.size()), text);
    EXPECT_EQ(content.substr(text.size()), c.keepsTail ? older.substr(text.size()) : "");
    EXPECT_THAT(rig_.dialogs.shown, SizeIs(c.dialogs));
    ASSERT_THAT(rig_.boxes.shown, SizeIs(c.answers.size()));
    const Box& box = rig_.boxes.shown[0];
    EXPECT_EQ(box.text, "Do you want to change a current file to /home/back.epm?");
    EXPECT_EQ(box.icon, BoxIcon::Question);
    EXPECT_THAT(box.buttons, ElementsAre(BoxButton::Yes, BoxButton::No, BoxButton::Cancel));
  }
}

TEST_F(ParameterTransferTest, TheTailOfALongerOldFileFillsPositionsThatNothingConverts) {
  AnswerReads([](int) { return 0; });
  UpLoad();
  rig_.files.content["/home/back.epm"] = std::string(100000, '\n') + "x = 7\r\ny = no number\r\n";
  rig_.boxes.answers = {BoxButton::No};
  UpLoad();
  panel_.optDownloadFileLoad.Select();
  DownLoad("/home/back.epm");
  EXPECT_EQ(rf_.RFParamCount, 1859);
  EXPECT_EQ(rf_.RFParamText[1857], "7");
  EXPECT_EQ(rf_.RFParamText[1858], "no");
  EXPECT_EQ(rf_.RFParamText[1856], "0") << "the last position that is converted";
}

TEST_F(ParameterTransferTest, UploadEndsBeforeItReadsWhenTheFileCannotBeOpened) {
  rig_.files.unopenable.insert("/home/back.epm");
  UpLoad();
  EXPECT_THAT(rig_.boxes.Texts(), ElementsAre("/home/back.epm: Permission denied"));
  EXPECT_EQ(rig_.boxes.shown[0].icon, BoxIcon::Exclamation);
  EXPECT_THAT(rig_.Commands(), IsEmpty());
}

TEST_F(ParameterTransferTest, UploadTellsOfAFileThatCannotBeWritten) {
  rig_.files.unwritable.insert("/home/back.epm");
  AnswerReads([](int) { return 1; });
  UpLoad();
  EXPECT_THAT(rig_.boxes.Texts(), ElementsAre("/home/back.epm: No space left on device"));
  EXPECT_EQ(rf_.RFParams.BAND[0].g_magic, 0x0101) << "the record was read all the same";
}

TEST_F(ParameterTransferTest, UploadRunsOutsideTestModeToo) {
  rig_.state.reply.TargetMode = "NormalMode";
  AnswerReads([](int) { return 0; });
  UpLoad();
  EXPECT_THAT(rig_.Commands(), SizeIs(116));
}

TEST_F(ParameterTransferTest, TheDownloadModeOpensAndClosesTheChargerOption) {
  EXPECT_TRUE(panel_.optFullDownload.Selected());
  EXPECT_TRUE(panel_.optDownloadFlash.Selected());
  EXPECT_FALSE(panel_.fraBBOption.Enabled());
  rig_.op.Select(panel_.optPartialDownload);
  EXPECT_TRUE(panel_.fraBBOption.Enabled());
  rig_.op.Select(panel_.optFullDownload);
  EXPECT_FALSE(panel_.fraBBOption.Enabled());
}

TEST_F(ParameterTransferTest, ButtonsWithoutActionDoNothing) {
  rig_.op.Click(panel_.cmdse);
  transfer_.EEPROMDataWrite(0, 31);
  EXPECT_THAT(rig_.Commands(), IsEmpty());
  EXPECT_THAT(rig_.boxes.shown, IsEmpty());
}

}  // namespace
}  // namespace orvane
