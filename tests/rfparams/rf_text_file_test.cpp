#include "rfparams/rf_text_file.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "base/failure.h"
#include "platform/files.h"
#include "rfparams/record_by_position.h"
#include "rfparams/rf_type.h"

namespace orvane {
namespace {

using ::testing::Each;
using ::testing::ElementsAre;
using ::testing::SizeIs;

/// A complete set of texts: each value is its own position; the type has its name.
void FillWithPositions(RFState& rf) {
  rf.RFParamText[0] = "RF_GAIA_20A";
  for (std::size_t p = 1; p < 1857; ++p) rf.RFParamText[p] = std::to_string(p);
}

std::vector<std::string> FirstTexts(const RFState& rf, std::size_t count) {
  return {rf.RFParamText.begin(), rf.RFParamText.begin() + static_cast<std::ptrdiff_t>(count)};
}

TEST(ParameterLabel, IsWhatTheFileSaysAtEveryPosition) {
  std::map<int, std::string> expected{
      {0, "rf_revision"}, {373, "psi_sta_inv"}, {374, "psi_st"}, {375, "psi_st_32"}, {376, "psi_st_inv"}};
  RFParameter record;
  test::VisitByPosition(record,
                        [&](int position, const std::string& label, Integer&) { expected[position] = label; });
  ASSERT_THAT(expected, SizeIs(1857));
  for (const auto& [position, label] : expected) EXPECT_EQ(ParameterLabel(position), label) << position;
}

TEST(ParameterLabel, KeepsItsOddities) {
  EXPECT_EQ(ParameterLabel(1179), "BAND(1).tx_Level(0).ramp_index(5)");
  EXPECT_EQ(ParameterLabel(438), "BAND(0).tx_Level(0).apc (5)");
  EXPECT_EQ(ParameterLabel(519), "BAND(0).chan_cal(0).arfcn_limit (0)");
  EXPECT_EQ(ParameterLabel(582), "BAND(0).chan_cal(3).chan_cal(7)");
  EXPECT_EQ(ParameterLabel(1834), "BAND(1).ramp_tables(15).ramp_down(15)");
  EXPECT_THROW((void)ParameterLabel(1857), StationFailure);
  EXPECT_THROW((void)ParameterLabel(-1), StationFailure);
}

TEST(FileToRFParamsConvert, PutsEveryTextIntoItsField) {
  RFState rf;
  FillWithPositions(rf);
  rf.RFParamText[373] = "-2147483648";
  rf.RFParamText[374] = "2147483647";
  rf.RFParamText[375] = "&H12345678";
  rf.RFParamText[376] = "-1";
  FileToRFParamsConvert(rf);
  EXPECT_EQ(rf.RFParams.rf_revision, 8193);
  EXPECT_EQ(rf.RFParams.rf_reserved_word, 32);
  EXPECT_EQ(rf.RFParams.psi_sta_inv, -2147483647 - 1);
  EXPECT_EQ(rf.RFParams.psi_st, 2147483647);
  EXPECT_EQ(rf.RFParams.psi_st_32, 0x12345678);
  EXPECT_EQ(rf.RFParams.psi_st_inv, -1);
  test::VisitByPosition(rf.RFParams,
                        [](int position, const std::string& label, Integer& v) { EXPECT_EQ(v, position) << label; });
  EXPECT_THAT(test::SpareValues(rf.RFParams), Each(0));
}

TEST(FileToRFParamsConvert, TakesDecimalAndHexadecimalTexts) {
  const std::vector<std::pair<std::string, Integer>> forms{
      {"-1", -1}, {"&HFF", 255}, {"&HFFF6", -10}, {"2.5", 2}, {"3.5", 4}, {"-32768", -32768}, {"1e2", 100},
  };
  for (const auto& [text, value] : forms) {
    RFState rf;
    FillWithPositions(rf);
    rf.RFParamText[377] = text;
    FileToRFParamsConvert(rf);
    EXPECT_EQ(rf.RFParams.BAND[0].g_magic, value) << text;
  }
}

TEST(FileToRFParamsConvert, StopsAtTheFirstBadTextAndKeepsTheRestAsItWas) {
  for (const std::string bad : {"", "x", "32768", "1 2", "&H"}) {
    RFState rf;
    FillWithPositions(rf);
    rf.RFParams.BAND[0].lna_att = -7;
    rf.RFParams.BAND[1].g_magic = -8;
    rf.RFParamText[378] = bad;
    EXPECT_THROW(FileToRFParamsConvert(rf), StationFailure) << bad;
    EXPECT_EQ(rf.RFParams.BAND[0].g_magic, 377) << bad;
    EXPECT_EQ(rf.RFParams.BAND[0].lna_att, -7) << bad;
    EXPECT_EQ(rf.RFParams.BAND[1].g_magic, -8) << bad;
  }
}

TEST(FileToRFParamsConvert, SaysWhetherTheRecordStandsOnAWholeFile) {
  RFState rf;
  EXPECT_FALSE(rf.recordIsWhole);
  FillWithPositions(rf);
  const std::string whole = ParameterFileText(rf);
  ReadParameterLines(whole, rf);
  FileToRFParamsConvert(rf);
  EXPECT_TRUE(rf.recordIsWhole);

  ReadParameterLines(whole.substr(0, whole.rfind("BAND(1)")), rf);
  FileToRFParamsConvert(rf);
  EXPECT_FALSE(rf.recordIsWhole) << "its last value is another file's";

  ReadParameterLines(whole, rf);
  FileToRFParamsConvert(rf);
  EXPECT_TRUE(rf.recordIsWhole);
  rf.RFParamText[1856] = "x";
  EXPECT_THROW(FileToRFParamsConvert(rf), StationFailure);
  EXPECT_FALSE(rf.recordIsWhole);
}

TEST(FileToRFParamsConvert, TakesTheThreeAgcColumnsRowByRow) {
  RFState rf;
  FillWithPositions(rf);
  rf.RFParamText[126 + 3] = "bad";
  EXPECT_THROW(FileToRFParamsConvert(rf), StationFailure);
  EXPECT_EQ(rf.RFParams.il2agc_av[2], 247 + 2) << "row 2 was whole";
  EXPECT_EQ(rf.RFParams.il2agc_pwr[3], 5 + 3) << "the power stands ahead of the maximum";
  EXPECT_EQ(rf.RFParams.il2agc_av[3], 0);
  EXPECT_EQ(rf.RFParams.il2agc_pwr[4], 0);
}

TEST(FileToRFParamsConvert, SetsTheReservedWordEvenWhenItStopsRightAfterTheType) {
  RFState rf;
  rf.RFParamText[0] = "RF_SL2";
  EXPECT_THROW(FileToRFParamsConvert(rf), StationFailure);
  EXPECT_EQ(rf.RFParams.rf_revision, 4096);
  EXPECT_EQ(rf.RFParams.rf_reserved_word, 32);
  RFState none;
  EXPECT_THROW(FileToRFParamsConvert(none), StationFailure);
  EXPECT_EQ(none.RFParams.rf_reserved_word, 0);
}

TEST(RFType, HasACodeForEachNameAndBack) {
  const std::vector<std::pair<std::string, Integer>> types{
      {"RF_PASCAL_20", 8240}, {"RF_ATLAS_20B", 8224}, {"RF_GAIA_20B", 8194}, {"RF_GAIA_20A", 8193},
      {"RF_GAIA_20X", 8192},  {"RF_SL2", 4096},       {"RF_IGNORE", 0},
  };
  for (const auto& [name, code] : types) {
    EXPECT_EQ(RFTypeCode(name), code);
    EXPECT_EQ(RFTypeName(code), name);
  }
  EXPECT_EQ(RFTypeName(8241), std::nullopt);
}

TEST(RFType, ReadsAnyOtherTextAsHexadecimalBehindTwoCharacters) {
  EXPECT_EQ(RFTypeCode("0x2031"), 8241);
  EXPECT_EQ(RFTypeCode("0x1234"), 4660);
  EXPECT_EQ(RFTypeCode("8240"), 64);
  EXPECT_EQ(RFTypeCode("0xFFFF"), -1);
  for (const std::string text : {"", "0x", "rf_sl2", "RF_SL2 ", "0x12345"}) {
    EXPECT_THROW((void)RFTypeCode(text), StationFailure) << text;
  }
}

TEST(RFType, WithoutANameComesOutAsItCameIn) {
  RFState rf;
  FillWithPositions(rf);
  rf.RFParamText[0] = "0x1234";
  FileToRFParamsConvert(rf);
  RFParamsToDataConvert(rf);
  EXPECT_EQ(rf.RFParams.rf_revision, 4660);
  EXPECT_EQ(rf.RFParamText[0], "0x1234");
  rf.RFParams.rf_revision = 0;
  RFParamsToDataConvert(rf);
  EXPECT_EQ(rf.RFParamText[0], "RF_IGNORE");
}

TEST(RFParamsToDataConvert, WritesPlainDecimalNumbers) {
  RFState rf;
  test::VisitByPosition(rf.RFParams, [](int position, const std::string&, Integer& v) {
    v = static_cast<Integer>(position % 2 != 0 ? -position : position);
  });
  rf.RFParams.psi_st = -2147483647 - 1;
  RFParamsToDataConvert(rf);
  EXPECT_EQ(rf.RFParamText[0], "RF_IGNORE");
  EXPECT_EQ(rf.RFParamText[374], "-2147483648");
  test::VisitByPosition(rf.RFParams, [&](int position, const std::string& label, Integer& v) {
    EXPECT_EQ(rf.RFParamText[static_cast<std::size_t>(position)], std::to_string(v)) << label;
  });
  EXPECT_EQ(rf.RFParamText[1857], "");
}

TEST(ParameterFileText, IsLabelTabEqualsTabValuePerLine) {
  RFState rf;
  FillWithPositions(rf);
  rf.RFParamText[438] = "-600";
  const std::string text = ParameterFileText(rf);
  EXPECT_EQ(text.substr(0, 50), "rf_revision\t=\tRF_GAIA_20A\r\nlow_agc_noise_thr\t=\t1\r\n");
  EXPECT_NE(text.find("\r\nBAND(0).tx_Level(0).apc (5)\t=\t-600\r\nBAND(0).tx_Level(0).ramp_index(5)\t=\t439\r\n"),
            std::string::npos);
  EXPECT_THAT(LinesOf(text), SizeIs(1857));
  const std::string last = "BAND(1).tx_High_Power_Volt_Cal\t=\t1856\r\n";
  EXPECT_EQ(text.substr(text.size() - last.size()), last);
}

TEST(ParameterFileText, WritesATypeFromAnEightBitFileAsTheSameBytes) {
  RFState rf;
  FillWithPositions(rf);
  rf.RFParamText[0] = "\xC3\xA9";
  EXPECT_EQ(ParameterFileText(rf).substr(0, 17), "rf_revision\t=\t\xE9\r\n");
}

TEST(ParameterFile, ComesBackWholeFromASaveAndALoad) {
  RFState saved;
  FillWithPositions(saved);
  saved.RFParamText[1100] = "-32768";
  FileToRFParamsConvert(saved);
  RFParamsToDataConvert(saved);
  const std::string text = ParameterFileText(saved);
  RFState loaded;
  EXPECT_EQ(ReadParameterLines(text, loaded), 1857);
  FileToRFParamsConvert(loaded);
  RFParamsToDataConvert(loaded);
  EXPECT_EQ(ParameterFileText(loaded), text);
  EXPECT_EQ(loaded.RFParams.BAND[1].tx.Temp[0].temperature, 1835);
}

TEST(ParameterFile, LoadsByOrderWhateverTheLabelsSay) {
  RFState saved;
  FillWithPositions(saved);
  std::string wrong;
  for (std::size_t p = 0; p < 1857; ++p) wrong += "any label, with blanks = " + saved.RFParamText[p] + "\n";
  RFState loaded;
  ReadParameterLines(wrong, loaded);
  EXPECT_EQ(loaded.RFParamText, saved.RFParamText);
}

struct ReadCase {
  const char* why;
  std::string content;
  std::vector<std::string> texts;
  int count;
};

TEST(ReadParameterLines, FilesTheWordBehindEqualsByItsPlace) {
  const std::vector<ReadCase> cases{
      {"tabs and blanks both separate", "a\t=\t1\r\nb  =  2  \r\n \t c\t = 3 rest = 4\r\n", {"1", "2", "3"}, 3},
      {"line feeds alone, last line without an end", "a = 1\nb = 2", {"1", "2"}, 2},
      {"empty lines use up no position", "\r\na = 1\r\n\r\nb = 2\r\n", {"1", "2"}, 2},
      {"a line of blanks is not empty", "a = 1\n \nb = 2\n", {"1", "old", "2"}, 3},
      {"a slash anywhere makes a comment", "/ x\na = 1\nb = 2 / two\nc = 3\n", {"1", "3"}, 2},
      {"without an equals the old text stays", "a = 1\nlow_agc=5\nc = 3\n", {"1", "old", "3"}, 3},
      {"an equals at the end stores the empty text", "a =\nb = 2\n", {"", "2"}, 2},
      {"a label may hold blanks", "a b c d = 7\n", {"7"}, 1},
      {"the value of a second equals is not looked at", "= = 7\n", {"="}, 1},
      {"an equals within a word is part of it", "a=b = 7\nx =5 = 8\n=\t9\n", {"7", "8", "9"}, 3},
      {"a value in an 8-bit file is one character a byte", "a = \xE9\n", {"\xC3\xA9"}, 1},
      {"a carriage return inside is a character like any other", "a = 1\r2\n", {"1\r2"}, 1},
  };
  for (const ReadCase& c : cases) {
    RFState rf;
    for (std::string& text : rf.RFParamText) text = "old";
    EXPECT_EQ(ReadParameterLines(c.content, rf), c.count) << c.why;
    EXPECT_EQ(rf.RFParamCount, c.count) << c.why;
    EXPECT_EQ(FirstTexts(rf, c.texts.size()), c.texts) << c.why;
    EXPECT_EQ(rf.RFParamText[c.texts.size()], "old") << c.why;
  }
}

TEST(ReadParameterLines, OfAShortFilePatchesTheHeadOfTheOneBefore) {
  RFState rf;
  FillWithPositions(rf);
  EXPECT_EQ(ReadParameterLines("a = RF_SL2\nb = -4\n", rf), 2);
  FileToRFParamsConvert(rf);
  EXPECT_EQ(rf.RFParams.rf_revision, 4096);
  EXPECT_EQ(rf.RFParams.low_agc_noise_thr, -4);
  EXPECT_EQ(rf.RFParams.high_agc_sat_thr, 2);
}

TEST(ReadParameterLines, BringsEveryLaterValueForwardWhenALineIsACommentNow) {
  RFState saved;
  FillWithPositions(saved);
  std::string text = ParameterFileText(saved);
  text.insert(text.find("\r\nBAND(0).lna_att"), " / why");
  RFState loaded;
  EXPECT_EQ(ReadParameterLines(text, loaded), 1856);
  EXPECT_EQ(loaded.RFParamText[376], "376");
  EXPECT_EQ(loaded.RFParamText[377], "378");
  EXPECT_EQ(loaded.RFParamText[1855], "1856");
}

TEST(ReadParameterLines, LeavesNothingBeyondTheLastPosition) {
  RFState rf;
  std::string text;
  for (int p = 0; p < 2705; ++p) text += "a = " + std::to_string(p) + "\n";
  EXPECT_EQ(ReadParameterLines(text, rf), 2705);
  EXPECT_EQ(rf.RFParamText.back(), "2700");
  EXPECT_THAT(rf.RFParamText, SizeIs(2701));
}

}  // namespace
}  // namespace orvane
