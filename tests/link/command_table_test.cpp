#include "base/failure.h"
#include "link/link_rig.h"

namespace orvane::test {
namespace {

struct Line {
  std::string line;
  std::string body;  ///< behind the sync bytes, up to the terminator
};

class CommandTable : public testing::TestWithParam<Line> {};

TEST_P(CommandTable, SendsTheseBytes) {
  LinkRig rig;
  EXPECT_EQ(rig.BodyOf(GetParam().line), GetParam().body) << GetParam().line;
}

const std::string kThirtyZeros =
    " 00 00 00 00 00 00 00 00 00 00 00 00 00 00 00 00 00 00 00 00 00 00 00 00 00 00 00 00 00 00";

INSTANTIATE_TEST_SUITE_P(Words, CommandTable,
                         testing::Values(Line{"ti", "20 20 02"}, Line{"tms 0", "21 00 00 21 02"},
                                         Line{"tms 1", "21 01 00 20 02"}, Line{"rfe 0", "23 00 00 23 02"},
                                         Line{"sr 1 0x11", "24 01 00 11 00 34 02"},
                                         Line{"sr 2 500", "24 10 02 00 F4 01 D3 02"},
                                         Line{"scw 1 0x1234", "25 01 00 00 00 34 12 00 00 10 02 02"},
                                         Line{"rfpw 1 62", "30 01 00 3E 00 0F 02"}, Line{"rfpr 10", "31 0A 00 3B 02"},
                                         Line{"rxpw 1 40", "34 01 00 28 00 1D 02"}, Line{"rxpr 1", "35 01 00 34 02"},
                                         Line{"txpw 4 450", "36 04 00 C2 01 F1 02"}, Line{"txpr 4", "37 04 00 33 02"},
                                         Line{"ttw 3 1 5", "38 03 01 05" + kThirtyZeros + " 3F 02"},
                                         Line{"ttr 7", "39 07 3E 02"}, Line{"mpw 19 1", "44 13 00 01 00 56 02"},
                                         Line{"mpr 127", "45 7F 00 3A 02"}, Line{"spw 1 0", "50 01 00 00 00 51 02"},
                                         Line{"spr 5", "51 05 00 54 02"}, Line{"stw 3 0x1F 7", "52 03 1F 07 49 02"},
                                         Line{"str 3", "53 03 50 02"}, Line{"se 1", "54 01 00 55 02"}));

INSTANTIATE_TEST_SUITE_P(
    LongForms, CommandTable,
    testing::Values(Line{"tm_init", "20 20 02"}, Line{"tm_mode_set 1", "21 01 00 20 02"},
                    Line{"rf_enable 0", "23 00 00 23 02"}, Line{"stats_read 1 17", "24 01 00 11 00 34 02"},
                    Line{"stats_config_write 1 0x1234", "25 01 00 00 00 34 12 00 00 10 02 02"},
                    // Two words bear this long form; the first one takes it.
                    Line{"rf_param_write 1 62", "30 01 00 3E 00 0F 02"}, Line{"rf_param_read 10", "31 0A 00 3B 02"},
                    Line{"rx_param_read 1", "35 01 00 34 02"}, Line{"tx_param_write 4 450", "36 04 00 C2 01 F1 02"},
                    Line{"tx_param_read 4", "37 04 00 33 02"},
                    Line{"tx_template_write 3 1 5", "38 03 01 05" + kThirtyZeros + " 3F 02"},
                    Line{"tx_template_read 7", "39 07 3E 02"}, Line{"misc_param_write 19 1", "44 13 00 01 00 56 02"},
                    Line{"misc_param_read 127", "45 7F 00 3A 02"},
                    Line{"special_param_write 1 0", "50 01 00 00 00 51 02"},
                    Line{"special_param_read 5", "51 05 00 54 02"},
                    Line{"special_table_write 3 0x1F 7", "52 03 1F 07 49 02"},
                    Line{"special_table_read 3", "53 03 50 02"}, Line{"special_enable 1", "54 01 00 55 02"}));

INSTANTIATE_TEST_SUITE_P(
    NumberForms, CommandTable,
    testing::Values(Line{"sr 1 0x10", "24 01 00 10 10 00 35 02"}, Line{"sr 1 &H10", "24 01 00 10 10 00 35 02"},
                    Line{"sr 1 16", "24 01 00 10 10 00 35 02"},
                    // The first two characters are dropped whatever they are.
                    Line{"sr 1 1x10", "24 01 00 10 10 00 35 02"},
                    Line{"sr 1 \xEF\xBC\x90x10", "24 01 00 10 10 00 35 02"},
                    Line{"sr 1 0xFFFF", "24 01 00 FF FF 25 02"}, Line{"rfpw 1 -1", "30 01 00 FF FF 31 02"},
                    Line{"rfpw 9 -1180", "30 09 00 64 FB A6 02"}, Line{"rfpw 1 255", "30 01 00 FF 00 CE 02"},
                    Line{"rfpw 1 975", "30 01 00 CF 03 FD 02"}, Line{"rxpw 1 -1", "34 01 00 FF FF 35 02"},
                    Line{"rxpw 1 -256", "34 01 00 00 FF CA 02"}, Line{"txpw 4 255", "36 04 00 FF 00 CD 02"},
                    Line{"mpw 1 300", "44 01 00 2C 01 68 02"},
                    // The smallest value of two bytes.
                    Line{"txpw 4 256", "36 04 00 00 01 33 02"}, Line{"mpw 1 256", "44 01 00 00 01 44 02"},
                    Line{"spw 256 0", "50 00 01 00 00 51 02"}, Line{"se 256", "54 00 01 55 02"},
                    Line{"ttr 0x1F", "39 1F 26 02"}, Line{"spw 300 0xABCD", "50 2C 01 CD AB 1B 02"},
                    Line{"se 300", "54 2C 01 79 02"}, Line{"rfe 2.5", "23 10 02 00 21 02"}));

INSTANTIATE_TEST_SUITE_P(Tables, CommandTable,
                         testing::Values(Line{"stw 10 1", "52 0A 01 59 02"}, Line{"stw 20 1", "52 14 01 47 02"},
                                         Line{"stw 100 0x026C 498 0 -1 0x1234",
                                              "52 64 6C 10 02 F2 01 00 00 FF FF 34 12 8D 02"},
                                         // Digits are taken by their places: the fifth and sixth of "&H270" are "0".
                                         Line{"stw 100 0x270 0 0 0 0", "52 64 00 27 00 00 00 00 00 00 00 00 11 02"},
                                         Line{"stw 100 0x00270 0 0 0 0", "52 64 27 00 00 00 00 00 00 00 00 00 11 02"},
                                         Line{"stw 100 0 0 0 0 0 77", "52 64 00 00 00 00 00 00 00 00 00 00 36 02"},
                                         Line{"stw 4 1 2", "52 52 02"}, Line{"stw 0x64 1", "52 52 02"}));

INSTANTIATE_TEST_SUITE_P(NoRow, CommandTable,
                         testing::Values(Line{"", "00 00 02"}, Line{"TI", "00 00 02"},
                                         Line{"cw 0 29 0x0000", "00 00 02"},
                                         Line{"rx_param_write 1 40", "00 00 02"}));

void ExpectFailure(const std::string& line) {
  LinkRig rig;
  rig.main.txtUserCommand.SetText(line);
  EXPECT_THROW(rig.link.CommandInterpreter(), StationFailure) << line;
  EXPECT_TRUE(rig.serial.writes.empty()) << line;
}

TEST(CommandNumbers, ThatAreNoneSendNothing) {
  for (const char* line : {"rfe 0x1", "rfe 0X1", "sr 1 10x5", "rfpw 1 32768", "ttr b", "stw 100 0x27 0 0 0 0",
                           "sr 1 0X10", "mpr &Hz1", "tms 40000"}) {
    ExpectFailure(line);
  }
}

TEST(CommandNumbers, AreRewrittenFromHexadecimalOnlyWhereTheCommandKnowsIt) {
  for (const char* line :
       {"tms 0x1",    "sr 0x1 1",  "scw 0x1 1",  "rfpw 0x1 1", "rfpw 1 0x1", "rfpr 0x1",  "rxpw 0x1 1",
        "rxpw 1 0x1", "rxpr 0x1",  "txpw 0x1 1", "txpw 1 0x1", "txpr 0x1",   "ttw 0x3 1", "ttw 3 0x1",
        "mpw 0x1 1",  "mpw 1 0x1", "mpr 0x1",    "spw 0x1 1",  "spr 0x1",    "str 0x3",   "se 0x1"}) {
    ExpectFailure(line);
  }
}

TEST(CommandNumbers, OfItemsAreSingleBytes) {
  for (const char* line : {"rfe 300", "sr 300 1", "scw 300 1", "rfpw 300 1", "rfpr 300", "rxpw 300 1", "rxpr 300",
                           "txpw 300 1", "txpr 300", "ttw 300 1", "ttr 300", "mpw 300 1", "mpr 300", "spr 300",
                           "str 300", "stw 3 300", "spr -1", "spw -1 0"}) {
    ExpectFailure(line);
  }
}

TEST(CommandNumbers, ThatAreNoBytesSendNothing) {
  for (const char* line :
       {"txpw 4 -1", "mpw 1 -1", "rxpw 1 256", "rxpw 1 -300", "tms 300", "se -1", "ttw 3 256", "sr 1 65536"}) {
    ExpectFailure(line);
  }
}

TEST(CommandNumbers, BehindTheThirtySecondOfATemplateAreReadAndDropped) {
  LinkRig rig;
  std::string line = "ttw 3";
  for (int i = 0; i < 32; ++i) line += " 1";
  const std::string body = rig.BodyOf(line);
  EXPECT_EQ(rig.BodyOf(line + " 16"), body) << "not even escaped behind the data";
  ExpectFailure(line + " zebra5");
}

}  // namespace
}  // namespace orvane::test
