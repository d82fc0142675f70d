#include "app/surroundings.h"

#include <gtest/gtest.h>

#include "app/command_line.h"

namespace orvane {
namespace {

Surroundings Of(std::vector<const char*> words) {
  words.insert(words.begin(), "orvane");
  const auto parsed = ParseCommandLine(static_cast<int>(words.size()), words.data());
  return SurroundingsOf(std::get<Options>(parsed));
}

TEST(Surroundings, AVirtualBenchIsNamedByItsUnitAndItsFaults) {
  EXPECT_TRUE(Of({"--bench", "virtual"}).isVirtual);
  EXPECT_EQ(Of({"--bench", "virtual"}).Details("COM1"), "seed 1");
  EXPECT_EQ(Of({"--bench", "virtual:seed=7,fault=battery"}).Details("COM1"), "seed 7, fault battery");
  EXPECT_EQ(Of({"--bench", "virtual:seed=7,fault=pa-weak,fault=late@30"}).Details("COM3"),
            "seed 7, faults pa-weak, late@30");
}

TEST(Surroundings, ARealBenchIsNamedByTheDeviceThatStandsForThePortAndByItsRoutes) {
  const Surroundings bench = Of({"--com2", "/dev/ttyUSB3", "--instrument", "1=tcp:bench7:5025"});
  EXPECT_FALSE(bench.isVirtual);
  EXPECT_EQ(bench.Details("COM1"), "COM1 /dev/ttyS0, GPIB native, 1 by tcp:bench7:5025");
  EXPECT_EQ(bench.Details("COM2"), "COM2 /dev/ttyUSB3, GPIB native, 1 by tcp:bench7:5025");
}

TEST(Surroundings, APortThatIsNoneHasNoDevice) { EXPECT_EQ(Of({}).Details("LPT1"), "GPIB native"); }

}  // namespace
}  // namespace orvane
