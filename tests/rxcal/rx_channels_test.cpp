#include "state/rx_channels.h"

namespace orvane {
namespace {

TEST(DownlinkFrequency, StepsBy200KiloHertzInEachBand) {
  const struct {
    int channel;
    const char* megahertz;
  } rows[] = {{0, "935"},      {40, "943"},     {62, "947.4"},  {124, "959.8"}, {512, "1805.2"},
              {700, "1842.8"}, {885, "1879.8"}, {975, "925.2"}, {999, "930"},   {1023, "934.8"}};
  for (const auto& row : rows) {
    ASSERT_TRUE(DownlinkFrequencyMHz(row.channel).has_value()) << row.channel;
    EXPECT_EQ(DownlinkFrequencyMHz(row.channel)->Text(), row.megahertz) << row.channel;
  }
}

TEST(DownlinkFrequency, IsNotThereOutsideTheBands) {
  for (const int channel : {-1, 125, 300, 511, 886, 974, 1024, 32767}) {
    EXPECT_FALSE(DownlinkFrequencyMHz(channel).has_value()) << channel;
  }
}

}  // namespace
}  // namespace orvane
