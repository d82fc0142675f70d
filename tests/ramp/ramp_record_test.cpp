#include "ramp/ramp_record.h"

#include <gtest/gtest.h>

#include "base/failure.h"
#include "ramp_tables.h"

namespace orvane::test {
namespace {

TEST(RampRecord, FirstFifteenTablesAreTheFirstBandsAndTheOthersTheSeconds) {
  RFParameter record;
  CopyRampTablesToRFParams(CountingTables(), record);

  struct Place {
    std::size_t band, table;
    Integer firstUp, firstDown;
  };
  for (const Place& at : {Place{0, 0, 0, 16}, Place{0, 14, 14, 30}, Place{1, 0, 15, 31}, Place{1, 15, 30, 14}}) {
    SCOPED_TRACE("BAND " + std::to_string(at.band) + " table " + std::to_string(at.table));
    EXPECT_EQ(record.BAND[at.band].ramp_tables[at.table].ramp_up[0], at.firstUp);
    EXPECT_EQ(record.BAND[at.band].ramp_tables[at.table].ramp_down[0], at.firstDown);
  }
  EXPECT_EQ(record.BAND[0].ramp_tables[0].ramp_up[15], 15);
  EXPECT_EQ(record.BAND[0].ramp_tables[0].ramp_down[15], 31);
}

TEST(RampRecord, NeverTouchesTheSixteenthTableOfTheFirstBandNorTheSpareElements) {
  RFParameter record;
  CopyRampTablesToRFParams(CountingTables(), record);
  for (const Integer value : record.BAND[0].ramp_tables[15].ramp_up) EXPECT_EQ(value, 0);
  for (const Integer value : record.BAND[0].ramp_tables[15].ramp_down) EXPECT_EQ(value, 0);
  for (const auto& band : record.BAND) {
    for (const auto& table : band.ramp_tables) {
      EXPECT_EQ(table.ramp_up[16], 0);
      EXPECT_EQ(table.ramp_down[16], 0);
    }
    EXPECT_EQ(band.ramp_tables[16].ramp_up[1], 0);
  }
}

TEST(RampRecord, StopsAtATextThatIsNoNumber) {
  RampState state = CountingTables();
  state.RampTable[2][5] = "x";
  RFParameter record;
  EXPECT_THROW(CopyRampTablesToRFParams(state, record), StationFailure);
  EXPECT_EQ(record.BAND[0].ramp_tables[2].ramp_up[4], 6);
  EXPECT_EQ(record.BAND[0].ramp_tables[2].ramp_up[5], 0);
  EXPECT_EQ(record.BAND[0].ramp_tables[2].ramp_up[6], 0);
  EXPECT_EQ(record.BAND[0].ramp_tables[3].ramp_up[0], 0);
}

}  // namespace
}  // namespace orvane::test
