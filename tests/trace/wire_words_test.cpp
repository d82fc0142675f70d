#include "app/trace/wire_words.h"

#include "link/link_rig.h"

namespace orvane::test {
namespace {

TEST(CommandWords, AreTheLineThatTheCommandComesFrom) {
  LinkRig rig;
  for (const char* line :
       {"ti", "tms 1", "sr 1 2", "scw 16 10", "rfpw 1 62", "rfpw 9 -300", "rxpw 1 -60", "txpw 4 723", "txpw 9 2",
        "rfpr 16", "mpr 30", "stw 3 1 2 16 255", "str 100", "se 1", "ttr 30"}) {
    EXPECT_THAT(CommandWords(Bytes(rig.BodyOf(line))), testing::StartsWith(std::string(line) + " (")) << line;
  }
}

TEST(CommandWords, EndInTheLongForm) {
  EXPECT_EQ(CommandWords(Bytes("30 01 00 3E 00 0F 02 00 00")), "rfpw 1 62 (rf_param_write)");
}

TEST(CommandWords, OfAnOperationThatIsNoneAreItsNumberAndWhatItBears) {
  EXPECT_EQ(CommandWords(Bytes("00 00 02 00")), "operation 0");
  EXPECT_EQ(CommandWords(Bytes("07 03 04 02")), "operation 7 3");
  EXPECT_EQ(CommandWords(""), "");
}

struct ReplyRow {
  const char* bytes;
  const char* words;
};

TEST(ReplyWords, AreStatusAndData) {
  for (const auto& [bytes, words] : {
           ReplyRow{"02 14 00 20 00 00 00 20 02", "ti: status 0"},
           ReplyRow{"02 14 00 20 00 05 00 25 02", "ti: status 5"},
           ReplyRow{"02 14 00 31 00 00 00 01 00 3E 00 00 00 0E 02", "rfpr: status 0, item 1, value 62"},
           ReplyRow{"55 55 02 14 00 20 00 00 00 20 02 77", "ti: status 0"},
           ReplyRow{"02 14 00 39 07 00 03 05 3A 02", "ttr: status 0, item 7, bytes 0 3 5"},
           ReplyRow{"02 14 00 20 02", "ti:"},
           ReplyRow{"02 14 02", "a frame too short to hold anything"},
           ReplyRow{"02 14 00 20 00 00", ""},
           ReplyRow{"", ""},
       }) {
    EXPECT_EQ(ReplyWords(Bytes(bytes)), words) << bytes;
  }
}

}  // namespace
}  // namespace orvane::test
