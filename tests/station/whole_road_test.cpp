#include <gmock/gmock.h>
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

TEST(WholeRoad, WithoutAnInstalledDataFileNoPassIsComplete) {
  for (const char* missing : {"TI532.epm", "RampTable.dat", "Cable.loss"}) {
    VirtualStation station(bench::BenchOptions{}, {{missing, std::nullopt}});
    station.TakeTargetThrough();
    EXPECT_FALSE(station.Concluded() == Verdict::Pass && station.State().report.AllComplete()) << missing;
  }
  VirtualStation station(bench::BenchOptions{}, {{"Cable.loss", std::nullopt}});
  station.TakeTargetThrough();
  EXPECT_EQ(station.Concluded(), Verdict::Pass);
  EXPECT_THAT(station.Steps(), testing::HasSubstr("save: The RF parameters stand on no whole parameter file"));
}

}  // namespace
}  // namespace orvane::test
