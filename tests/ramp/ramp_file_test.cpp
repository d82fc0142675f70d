#include "ramp/ramp_file.h"

#include <gtest/gtest.h>

#include "base/failure.h"
#include "ramp_tables.h"
#include "support/memory_files.h"

namespace orvane::test {
namespace {

using namespace std::string_literals;

class RampFile : public ::testing::Test {
 protected:
  void Write(const RampState& state) { files.content["a.dat"] = RampRecords(state); }
  void Read(RampState& state) { ReadRampRecords(*files.OpenForReading("a.dat", kLargestRecordFile), state); }
  std::string& Content() { return files.content["a.dat"]; }

  MemoryFiles files;
};

TEST_F(RampFile, HoldsEachValueBehindItsLengthAtItsOwnRecord) {
  RampState state;
  state.RampTable[0][0] = "17";
  state.RampTable[0][16] = "9";
  state.RampTable[1][0] = "0";
  state.RampTable[30][31] = "31";
  Write(state);

  EXPECT_EQ(Content().size(), kRampFileSize);
  EXPECT_EQ(Content().substr(0, 4),
            "\x02\x00"s
            "17");
  EXPECT_EQ(Content().substr(128, 2), "\x00\x00"s);  // Record 2: an empty text.
  EXPECT_EQ(Content().substr(16 * 128, 3),
            "\x01\x00"s
            "9");  // Record 17 is the first down value of table 0.
  EXPECT_EQ(Content().substr(32 * 128, 3),
            "\x01\x00"s
            "0");  // Record 33 is the first up value of table 1.
  EXPECT_EQ(Content().substr(991 * 128, 4),
            "\x02\x00"s
            "31");  // Record 992 is the last.
}

TEST_F(RampFile, SavedAndLoadedAgainIsTheSameInAllValues) {
  const RampState saved = CountingTables();
  Write(saved);
  RampState loaded;
  Read(loaded);
  EXPECT_EQ(loaded.RampTable, saved.RampTable);
}

TEST_F(RampFile, KeepsATextThatIsNoNumber) {
  RampState state = CountingTables();
  state.RampTable[3][4] = " 7,x\xC3\xA9";  // The last character is one byte, 0xE9, in the file.
  Write(state);
  EXPECT_EQ(Content().substr((32 * 3 + 4) * 128, 7), "\x05\x00 7,x\xE9"s);
  RampState loaded;
  Read(loaded);
  EXPECT_EQ(loaded.RampTable[3][4], " 7,x\xC3\xA9");
}

TEST_F(RampFile, LeavesValuesBehindAShortFileAsTheyWere) {
  Write(CountingTables());
  Content().resize(33 * 128 + 2);  // Record 34 has its length and no text.
  RampState state;
  state.RampTable[1][1] = "kept";
  state.RampTable[30][31] = "kept too";
  Read(state);
  EXPECT_EQ(state.RampTable[1][0], "1");
  EXPECT_EQ(state.RampTable[1][1], "kept");
  EXPECT_EQ(state.RampTable[30][31], "kept too");
}

TEST_F(RampFile, PassesOverARecordThatSaysItIsLongerThanARecord) {
  Write(CountingTables());
  Content().replace(128, 2, "\x7F\x00"s);      // 127 bytes do not fit behind the length.
  Content().replace(2 * 128, 2, "\x01\x01"s);  // 257 neither.
  RampState state;
  state.RampTable[0][1] = "kept";
  state.RampTable[0][2] = "kept";
  Read(state);
  EXPECT_EQ(state.RampTable[0][1], "kept");
  EXPECT_EQ(state.RampTable[0][2], "kept");
  EXPECT_EQ(state.RampTable[0][3], "3");
}

TEST_F(RampFile, TakesATextThatFillsItsRecord) {
  RampState state;
  state.RampTable[0][0] = std::string(126, '1');
  Write(state);
  RampState loaded;
  Read(loaded);
  EXPECT_EQ(loaded.RampTable[0][0], std::string(126, '1'));
}

TEST_F(RampFile, RefusesToWriteATextThatIsLongerThanARecord) {
  RampState state;
  state.RampTable[0][0] = std::string(127, '1');
  EXPECT_THROW(Write(state), StationFailure);
}

TEST(RampSideFile, WritesATextFromAnEightBitFileAsTheSameBytes) {
  RampState state;
  state.RampTable[0][0] = "\xC3\xA9";
  EXPECT_EQ(RampSideText(state).substr(0, 21), "RampIndex = 0\r\nUP\t\xE9\t\t");
}

TEST(RampSideFile, GivesEachTableThreeLines) {
  const std::string text = RampSideText(CountingTables());
  EXPECT_EQ(text.substr(0, text.find("RampIndex = 1\r\n")),
            "RampIndex = 0\r\n"
            "UP\t0\t1\t2\t3\t4\t5\t6\t7\t8\t9\t10\t11\t12\t13\t14\t15\r\n"
            "DOWN\t16\t17\t18\t19\t20\t21\t22\t23\t24\t25\t26\t27\t28\t29\t30\t31\r\n");
  EXPECT_EQ(text.substr(text.find("RampIndex = 30\r\n")),
            "RampIndex = 30\r\n"
            "UP\t30\t31\t0\t1\t2\t3\t4\t5\t6\t7\t8\t9\t10\t11\t12\t13\r\n"
            "DOWN\t14\t15\t16\t17\t18\t19\t20\t21\t22\t23\t24\t25\t26\t27\t28\t29\r\n");
}

}  // namespace
}  // namespace orvane::test
