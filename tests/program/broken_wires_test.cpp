// What happens when the wires to the bench are not there, break inside a run, and are whole again.

#include <gtest/gtest.h>
#include <sys/stat.h>

#include <map>
#include <optional>

#include "program/whole_road.h"

namespace orvane::test {
namespace {

using testing::ContainsRegex;
using testing::HasSubstr;
using testing::MatchesRegex;

Arguments With(Arguments arguments, const Arguments& more) {
  arguments.insert(arguments.end(), more.begin(), more.end());
  return arguments;
}

TEST(BrokenWires, ABenchThatLosesItsPowerInsideARunEndsItWithABoxThatNamesDeviceAndCause) {
  for (const char* step : {"receive ...", "transmitDCS ...", "transmitGSM ..."}) {
    SCOPED_TRACE(step);
    WiredBench bench;
    Child station(Orvane(With({"--initialize"}, bench.Options())));
    ASSERT_TRUE(station.Says(step));
    bench.Kill();
    const auto end = station.WaitForEnd();
    EXPECT_EQ(end.status, 2);
    EXPECT_THAT(end.errors,
                ContainsRegex("ORVANE: (COM1 \\(/dev/pts/[0-9]+\\): the device is gone|"
                              "Instrument at address 1, route tcp:[0-9.:]+: the instrument closed the connection)"));
    EXPECT_THAT(end.errors, ContainsRegex("The run ended without a verdict.\n.*: The step did not end.\n"));
  }
}

TEST(BrokenWires, ATargetUnpluggedInAnyStepEndsItWithABoxThatNamesItsDevice) {
  const std::map<std::string, std::string> rows{{"unplugged-sr@5", "receive"},
                                                {"unplugged-txpw@9", "transmitDCS"},
                                                {"unplugged-stw@10", "save"},
                                                {"unplugged-mpr@2", "charger"}};
  std::vector<std::unique_ptr<WiredBench>> benches;
  std::vector<Arguments> options;
  for (const auto& [fault, step] : rows) {
    benches.push_back(std::make_unique<WiredBench>(Arguments{"--fault", fault}));
    options.push_back(benches.back()->Options());
  }
  const auto ends = InitializeOnEach(options);
  std::size_t i = 0;
  for (const auto& [fault, step] : rows) {
    SCOPED_TRACE(fault);
    EXPECT_EQ(ends[i].status, 2);
    EXPECT_THAT(ends[i].errors, HasSubstr("ORVANE: COM1 (" + benches[i]->Place("target") + "): the device is gone."));
    EXPECT_THAT(ends[i].errors, HasSubstr("The run ended without a verdict.\n" + step + ": The step did not end.\n"));
    ++i;
  }
}

TEST(BrokenWires, ATestSetThatFallsSilentIsATimeOutOfItsRead) {
  WiredBench bench({"--fault", "testset-silent@20"});
  Station station(bench.Options());
  station.Set("OrvaneMain.cboTimeOut", "select", "300ms");
  station.InitializeInstruments();
  EXPECT_EQ(station.Click("OrvaneMain.cmdTargetInitialize")["error"]["code"], -32005);
  ASSERT_EQ(station.Heard("failure").size(), 1U);
  const std::string text = station.Heard("failure")[0]["text"];
  EXPECT_THAT(text, HasSubstr("Instrument at address 1, route tcp:" + bench.Place("testset") + ": "));
  EXPECT_THAT(text, HasSubstr("within 300 ms"));
  EXPECT_THAT(text, HasSubstr("ibsta = &HC000, iberr = 6"));
  EXPECT_EQ(station.Await("verdict")["result"], "NONE");
}

TEST(BrokenWires, AnInstrumentThatRefusesIsABoxAtItsInitialize) {
  WiredBench bench;
  const std::string nobody = "tcp:" + OwnLoopbackAddress() + ":1";
  Station station({"--com1", bench.Place("target"), "--instrument", "1=" + nobody, "--instrument", "2=" + nobody,
                   "--instrument", "5=" + nobody});
  EXPECT_EQ(station.Click("OrvaneMain.cmdInstrumentInitialize")["error"]["code"], -32005);
  EXPECT_EQ(station.Await("box")["text"], "Instrument at address 1, route " + nobody +
                                              ": no connection: Connection refused.\r\nibsta = &H8000, iberr = 2");
  EXPECT_EQ(station.State("TestSetReady"), false);
  for (const char* button : {"OrvaneMain.cmdPSInitialize", "frmBaseBand.cmdLoaderInitialize"}) {
    EXPECT_EQ(station.Click(button)["result"], Json::object()) << button;
    EXPECT_EQ(station.Await("box")["text"], "Unable to open device\ribsta = &H8000\riberr = 2") << button;
  }
  EXPECT_EQ(station.State("PSReady"), false);
  EXPECT_EQ(station.State("LoaderReady"), false);
}

/// What stands for COM1, and what Initialize of the Target says to it.
struct BadDevice {
  std::string path;
  const char* why;
};

std::string FailureAtInitialize(const std::string& device) {
  Station station({"--com1", device});
  EXPECT_EQ(station.Click("OrvaneMain.cmdTargetInitialize")["error"]["code"], -32005);
  EXPECT_EQ(station.Heard("box").size(), 1U);
  EXPECT_EQ(station.State("SerialPortState"), false);
  return station.Await("failure")["text"];
}

TEST(SerialDevice, ThatIsNoneIsNamedWithTheCause) {
  const TempFolder folder;
  Fill(folder / "file", "");
  ASSERT_EQ(::mkfifo((folder / "pipe").c_str(), 0600), 0);
  const BadDevice rows[] = {
      {folder / "missing", "there is no such device."},   {folder / "file/below", "there is no such device."},
      {folder / "file", "the device is no serial line."}, {folder / "pipe", "the device is no serial line."},
      {"/dev/null", "the device is no serial line."},     {folder / ".", "Is a directory."},
  };
  for (const BadDevice& row : rows) EXPECT_EQ(FailureAtInitialize(row.path), "COM1 (" + row.path + "): " + row.why);
}

TEST(SerialDevice, ThatAnotherStationHoldsIsInUse) {
  WiredBench bench;

  Station first(bench.Options());
  first.SendClick("OrvaneMain.cmdTargetInitialize");
  first.AwaitState("SerialPortState", true);
  EXPECT_THAT(FailureAtInitialize(bench.Place("target")),
              MatchesRegex("COM1 \\(/dev/pts/[0-9]+\\): the device is in use by another program: "
                           "orvane \\(process [0-9]+\\)\\."));
}

TEST(SerialDevice, WithoutPermissionIsToldWithWhoMayUseIt) {
  WiredBench bench;
  ASSERT_EQ(::chmod(bench.Place("target").c_str(), 0), 0);
  Child station(Orvane(With({"--initialize"}, bench.Options())), {"/", true});
  const auto end = station.WaitForEnd();
  if (end.status == 127) GTEST_SKIP() << "an ordinary user cannot reach the program";
  EXPECT_EQ(end.status, 2);
  EXPECT_THAT(end.errors,
              HasSubstr("ORVANE: COM1 (" + bench.Place("target") + "): permission denied. Only its owner "));
}

TEST(BrokenWires, ATargetUnpluggedBetweenRunsIsToldAtOnce) {
  WiredBench bench;
  Station station(bench.Options());
  station.InitializeInstruments();
  const int run = station.SendClick("OrvaneMain.cmdTargetInitialize");
  station.AwaitState("CalMode", "ALL");
  station.Click("frmAutoCal.cmdAutoCalStop");
  EXPECT_EQ(station.AnswerTo(run)["result"], Json::object());
  bench.Kill();
  EXPECT_EQ(station.Await("failure")["text"],
            "COM1 (" + bench.Place("target") + "): the device is gone. Is it unplugged?");
}

TEST(BrokenWires, ABenchThatIsBackAtItsPlacesIsTakenUpWithoutARestart) {
  const TempFolder folder;
  const std::string host = OwnLoopbackAddress();
  const Arguments firstPlaces{"--target", folder / "target", "--testset", host + ":0",
                              "--supply", host + ":0",       "--load",    host + ":0"};
  std::optional<WiredBench> bench(firstPlaces);
  const Arguments samePlaces{"--target", folder / "target",      "--testset", bench->Place("testset"),
                             "--supply", bench->Place("supply"), "--load",    bench->Place("load")};
  Station station({"--com1", folder / "target", "--instrument", "1=tcp:" + bench->Place("testset"), "--instrument",
                   "2=tcp:" + bench->Place("supply"), "--instrument", "5=tcp:" + bench->Place("load")});
  ExpectRunEndsWithItsBench(station, *bench, "DcsCalDone", true);

  bench.emplace(samePlaces);
  ExpectWholeRun(station);
}

}  // namespace
}  // namespace orvane::test
