// The instruments of virtual-bench behind its `++` adapters, on TCP and on a serial device.

#include <gtest/gtest.h>
#include <sys/stat.h>

#include <optional>

#include "program/whole_road.h"

namespace orvane::test {
namespace {

using testing::ContainsRegex;
using testing::HasSubstr;

Arguments Behind(const WiredBench& bench, const std::string& adapter) {
  return {"--com1", bench.Place("target"), "--gpib", "prologix:" + bench.Place(adapter)};
}

TEST(AdapterRoute, TakesAUnitThroughTheWholeRoadAsTheEmbeddedBenchDoes) {
  ExpectTheRoadOfTheEmbeddedBench("11", {[](const WiredBench& bench) { return Behind(bench, "adapter"); },
                                         [](const WiredBench& bench) { return Behind(bench, "adapter-tty"); }});
}

TEST(AdapterRoute, AFaultOfTheUnitIsItsVerdict) {
  const WiredBench bench({"--fault", "battery"});
  Arguments arguments = Behind(bench, "adapter");
  arguments.emplace_back("--initialize");
  const auto end = RunOrvane(arguments);
  EXPECT_EQ(end.status, 1) << end.output;
  EXPECT_EQ(end.errors, "Warning: Battery Calibration ERROR. -> OK\n");
}

/// What stands for the adapter, and what Initialize says to it.
struct NoAdapter {
  std::string route;
  const char* why;
};

TEST(AdapterRoute, WithNoAdapterAtItsEndSaysSoAndEndsWithoutAVerdictToStandOn) {
  const WiredBench bench;
  const NoAdapter rows[] = {
      {OwnLoopbackAddress() + ":1", "no connection: Connection refused."},
      {"/dev/no-such-adapter", "there is no such device."},
      {"/dev/null", "the device is no serial line."},
  };
  for (const NoAdapter& row : rows) {
    SCOPED_TRACE(row.route);
    const auto ends = InitializeOnEach({{"--com1", bench.Place("target"), "--gpib", "prologix:" + row.route}});
    ExpectNoInstruments(ends[0], "prologix:" + row.route + ": " + row.why + " / ibsta = &H8000, iberr = 2 -> OK\n");
  }
}

TEST(AdapterRoute, AnInstrumentThatFallsSilentIsATimeOutAndLeavesTheOthersAlone) {
  const WiredBench bench({"--fault", "supply-silent"});
  Station station(Behind(bench, "adapter"));
  station.Set("frmBaseBand.cboPSTimeOut", "select", "300ms");
  EXPECT_EQ(station.Click("OrvaneMain.cmdPSInitialize")["result"], Json::object());
  EXPECT_EQ(station.Await("box")["text"], "Unable to open device\ribsta = &HC000\riberr = 6");
  EXPECT_EQ(station.Click("OrvaneMain.cmdInstrumentInitialize")["result"], Json::object());
  EXPECT_EQ(station.Click("frmBaseBand.cmdLoaderInitialize")["result"], Json::object());
  EXPECT_EQ(station.State("TestSetReady"), true);
  EXPECT_EQ(station.State("LoaderReady"), true);
}

TEST(AdapterRoute, WithoutPermissionForTheDeviceIsToldWithTheGroupThatHasIt) {
  const WiredBench bench;
  constexpr mode_t kGroupAlone = 0060;
  ASSERT_EQ(::chmod(bench.Place("adapter-tty").c_str(), kGroupAlone), 0);
  Arguments arguments = Behind(bench, "adapter-tty");
  arguments.emplace_back("--initialize");
  Child station(Orvane(arguments), {"/", true});
  const auto end = station.WaitForEnd();
  if (end.status == 127) GTEST_SKIP() << "an ordinary user cannot reach the program";
  EXPECT_THAT(end.errors, ContainsRegex("Instrument at address 1, route prologix:" + bench.Place("adapter-tty") +
                                        ": permission denied. Is the user in the group \"[a-z]+\"\\?"));
}

TEST(AdapterRoute, OneStationHoldsTheDevice) {
  const WiredBench bench;
  Station first(Behind(bench, "adapter-tty"));
  EXPECT_EQ(first.Click("OrvaneMain.cmdInstrumentInitialize")["result"], Json::object());
  Station second(Behind(bench, "adapter-tty"));
  EXPECT_EQ(second.Click("OrvaneMain.cmdInstrumentInitialize")["error"]["code"], -32005);
  EXPECT_THAT(std::string(second.Await("failure")["text"]),
              ContainsRegex(": the device is in use by another program: orvane \\(process [0-9]+\\)\\."));
}

class AdapterBack : public testing::TestWithParam<const char*> {};
INSTANTIATE_TEST_SUITE_P(Wires, AdapterBack, testing::Values("adapter", "adapter-tty"));

TEST_P(AdapterBack, IsTakenUpWithoutARestart) {
  const TempFolder folder;
  const std::string host = OwnLoopbackAddress();
  const std::string which = GetParam();
  std::optional<WiredBench> bench(
      Arguments{"--target", folder / "target", "--adapter", host + ":0", "--adapter-tty", folder / "adapter"});
  const std::string socket = bench->Place("adapter");
  const std::string place = which == "adapter" ? socket : folder / "adapter";
  Station station({"--com1", folder / "target", "--gpib", "prologix:" + place});
  ExpectRunEndsWithItsBench(station, *bench, "CalMode", "ALL");
  EXPECT_EQ(station.Click("OrvaneMain.cmdInstrumentInitialize")["error"]["code"], -32005);

  bench.emplace(Arguments{"--target", folder / "target", "--adapter", socket, "--adapter-tty", folder / "adapter"});
  ExpectWholeRun(station);
}

}  // namespace
}  // namespace orvane::test
