#include "rfparams/rf_text_file.h"
#include "rfparams/transfer_desk.h"

namespace orvane::test {
namespace {

using ::testing::ElementsAre;
using ::testing::HasSubstr;
using ::testing::IsEmpty;
using ::testing::SizeIs;

class ParameterUpload : public TransferDesk {};

TEST_F(ParameterUpload, ReadsTheImageIn114RowsAndSavesTheRecord) {
  rf_.RFParams.rf_revision = 8240;
  rf_.RFParams.EEPROM_AFC = -1180;
  AnswerReads([](int offset) { return offset % 251; });
  panel_.lstDataReadWindow.AddItem("from before");
  rf_.recordIsWhole = true;
  UpLoad();
  EXPECT_TRUE(rf_.recordIsWhole);
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

TEST_F(ParameterUpload, ReadsBackWhatADownloadSent) {
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

TEST_F(ParameterUpload, StoresTheRowBeforeWhenAReplyDoesNotCome) {
  rig_.serial.answer = [row = 0](const SentCommand& command) mutable -> std::string {
    if (command.operation != kTableRead) return PaddedReply(command.operation, 0, command.data);
    if (++row == 3) return "";
    std::vector<std::uint8_t> data{3};
    data.insert(data.end(), 16, static_cast<std::uint8_t>(row));
    return PaddedReply(kTableRead, 0, data);
  };
  UpLoad();
  EXPECT_THAT(Entries(16, 16), ::testing::Each("02"));
  EXPECT_THAT(Entries(32, 16), ::testing::Each("02"));
  EXPECT_THAT(Entries(48, 16), ::testing::Each("04"));
  EXPECT_THAT(rig_.boxes.shown, IsEmpty());
}

TEST_F(ParameterUpload, FromASilentTargetEndsWithAnUnchangedRecord) {
  rig_.serial.answer = nullptr;
  rf_.RFParams.BAND[0].g_magic = 180;
  UpLoad();
  EXPECT_THAT(rig_.Commands(), SizeIs(116));
  EXPECT_EQ(rf_.RFParams.BAND[0].g_magic, 180);
  EXPECT_THAT(panel_.lstDataReadWindow.Items().back(), "1815\t");
  EXPECT_THAT(rig_.files.content["/home/back.epm"], HasSubstr("BAND(0).g_magic\t=\t180\r\n"));
}

TEST_F(ParameterUpload, ThatMissesARowOrAByteLeavesNoWholeRecord) {
  for (const std::size_t bytes : {0U, 1U}) {
    rf_.recordIsWhole = true;
    rig_.serial.answer = [bytes](const SentCommand& command) {
      return bytes == 0 ? std::string() : PaddedReply(command.operation, 0, std::vector<std::uint8_t>(bytes, 3));
    };
    UpLoad("/home/" + std::to_string(bytes) + ".epm");
    EXPECT_FALSE(rf_.recordIsWhole) << bytes;
  }
}

TEST_F(ParameterUpload, BarStaysFullInItsLastRow) {
  std::vector<Long> values;
  AnswerReads([](int) { return 0; });
  const auto read = rig_.serial.answer;
  rig_.serial.answer = [&](const SentCommand& command) {
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

TEST_F(ParameterUpload, AsksBeforeItWritesOverAFile) {
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

TEST_F(ParameterUpload, TheTailOfALongerOldFileFillsPositionsThatNothingConverts) {
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

TEST_F(ParameterUpload, TheFileThatIsToGoStandsUntilTheTargetIsRead) {
  AnswerReads([](int) { return 0; });
  rig_.files.content["/home/back.epm"] = "old";
  rig_.boxes.answers = {BoxButton::Yes};
  const auto read = rig_.serial.answer;
  rig_.serial.answer = [&](const SentCommand& command) {
    EXPECT_EQ(rig_.files.content["/home/back.epm"], "old");
    return read(command);
  };
  UpLoad();
  EXPECT_EQ(rig_.files.content["/home/back.epm"], ParameterFileText(rf_));
}

TEST_F(ParameterUpload, EndsBeforeItReadsWhenTheFileCannotBeOpened) {
  rig_.files.unopenable.insert("/home/back.epm");
  UpLoad();
  EXPECT_THAT(rig_.boxes.Texts(), ElementsAre("/home/back.epm: Permission denied"));
  EXPECT_EQ(rig_.boxes.shown[0].icon, BoxIcon::Exclamation);
  EXPECT_THAT(rig_.Commands(), IsEmpty());
}

TEST_F(ParameterUpload, TellsOfAFileThatCannotBeWritten) {
  rig_.files.unwritable.insert("/home/back.epm");
  AnswerReads([](int) { return 1; });
  UpLoad();
  EXPECT_THAT(rig_.boxes.Texts(), ElementsAre("/home/back.epm: No space left on device"));
  EXPECT_EQ(rf_.RFParams.BAND[0].g_magic, 0x0101) << "the record was read all the same";
}

TEST_F(ParameterUpload, RunsOutsideTestModeToo) {
  rig_.state.reply.TargetMode = "NormalMode";
  AnswerReads([](int) { return 0; });
  UpLoad();
  EXPECT_THAT(rig_.Commands(), SizeIs(116));
}

}  // namespace
}  // namespace orvane::test
