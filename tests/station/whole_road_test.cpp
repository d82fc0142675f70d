#include <gtest/gtest.h>

#include "station/virtual_station.h"

namespace orvane::test {
namespace {

TEST(WholeRoad, EveryGoodUnitPassesWithEveryStepComplete) {
  for (std::uint64_t seed = 1; seed <= 300; ++seed) {
    VirtualStation station(seed);
    EXPECT_EQ(station.TakeTargetThrough(), std::nullopt) << "seed " << seed;
    EXPECT_EQ(station.Concluded(), Verdict::Pass) << "seed " << seed;
    EXPECT_TRUE(station.State().report.AllComplete()) << "seed " << seed << "\n" << station.Steps();
    EXPECT_EQ(station.boxes.Texts(), std::vector<std::string>{}) << "seed " << seed;
  }
}

}  // namespace
}  // namespace orvane::test
