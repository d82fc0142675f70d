#include <gtest/gtest.h>

#include "records/record.h"

namespace orvane::test {
namespace {

TEST(UtcTime, IsATextAndBack) {
  EXPECT_EQ(UtcText(1795316645678), "2026-11-22T03:04:05.678Z");
  EXPECT_EQ(UtcText(0), "1970-01-01T00:00:00.000Z");
  EXPECT_EQ(UtcText(-1), "1969-12-31T23:59:59.999Z");
  EXPECT_EQ(UtcOf("2026-11-22T03:04:05.678Z"), 1795316645678);
  EXPECT_EQ(UtcOf("2026-11-22T03:04"), 1795316640000);
  EXPECT_EQ(UtcOf("2026-11-22"), 1795305600000);
  EXPECT_EQ(UtcOf("2024-02-29"), 1709164800000);
}

TEST(UtcTime, IsNothingElse) {
  for (const char* const text :
       {"", "2026", "2026-13-01", "2026-02-29", "2026-11-22T24:00", "2026-11-22T03:60", "2026-11-22T03:04:60",
        "2026-11-22T03:04:05.6Z", "2026-11-22 03:04", "2026-11-22T03:04Zx", "yesterday", "-026-11-22"}) {
    EXPECT_EQ(UtcOf(text), std::nullopt) << text;
  }
}

TEST(RecordedLimits, CountAsInside) {
  RecordedReading reading{"", "tx.gsm.level.5.power", 32.3, "dBm", 31.7, 32.3, 0};
  EXPECT_EQ(reading.Inside(), true);
  reading.value = 32.31;
  EXPECT_EQ(reading.Inside(), false);
  reading.high.reset();
  EXPECT_EQ(reading.Inside(), true) << "one limit is enough";
  reading.low.reset();
  EXPECT_EQ(reading.Inside(), std::nullopt);
}

}  // namespace
}  // namespace orvane::test
