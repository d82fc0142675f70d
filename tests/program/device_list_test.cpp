// `orvane --list`: what is there, before anything is run.

#include <gtest/gtest.h>
#include <sys/stat.h>

#include <chrono>

#include "program/wired_bench.h"

namespace orvane::test {
namespace {

using testing::ContainsRegex;
using testing::HasSubstr;
using testing::Not;

std::string ListOf(const Arguments& arguments, int status = 0) {
  Arguments all{"--list"};
  all.insert(all.end(), arguments.begin(), arguments.end());
  const auto end = RunOrvane(all);
  EXPECT_EQ(end.status, status);
  EXPECT_EQ(end.errors, "");
  return end.output;
}

TEST(DeviceList, TellsWhoAnswersOnTheNativeRouteAndAsksOnlyWhomTheStationWouldSpeakTo) {
  const WiredBench bench;
  const TempFolder folder;
  const Variable library("LD_LIBRARY_PATH", GPIB_STAND_IN_FOLDER);
  const Variable instruments("GPIB_STAND_IN",
                             "1=" + bench.Place("testset") + " 5=" + bench.Place("load") + " 9=echo");
  const Variable journal("GPIB_STAND_IN_JOURNAL", folder / "calls");
  const std::string supply = "tcp:" + bench.Place("supply");
  const std::string list = ListOf({"--instrument", "2=" + supply});
  EXPECT_THAT(list, ContainsRegex("  Instrument at address 1, route native: [A-Z].*,.*,.*,.*\n"));
  EXPECT_THAT(list, ContainsRegex("  Instrument at address 2, route " + supply + ": [A-Z].*,.*,.*,.*\n"));
  EXPECT_THAT(list, ContainsRegex("  Instrument at address 5, route native: [A-Z].*,.*,.*,.*\n"));
  EXPECT_THAT(list, HasSubstr("  Instrument at address 9, route native: listens, and was not asked\n"));

  const std::string calls = ContentOf(folder / "calls");
  EXPECT_THAT(calls, HasSubstr("ibwrt 1 *IDN?\nibrd 1 200\nibloc 1\nibonl 1 0\n"));
  EXPECT_THAT(calls, Not(HasSubstr("ibwrt 2")));
  EXPECT_THAT(calls, Not(HasSubstr("ibwrt 9")));
}

TEST(DeviceList, AsksTheUsualAddressesBehindAGatewayAndBehindAnAdapter) {
  const WiredBench bench;
  for (const std::string& bus : {"vxi11:" + bench.Place("vxi11"), "prologix:" + bench.Place("adapter"),
                                 "prologix:" + bench.Place("adapter-tty")}) {
    const std::string list = ListOf({"--gpib", bus});
    for (const char* address : {"1", "2", "5"}) {
      EXPECT_THAT(list, ContainsRegex(std::string("  Instrument at address ") + address + ", route " + bus +
                                      ": [A-Z].*,.*,.*,.*\n"));
    }
  }
}

TEST(DeviceList, TellsWhatItTriedWhenNothingAnswers) {
  const TempFolder folder;
  Fill(folder / "libgpib.so.0", "");
  const Variable library("LD_LIBRARY_PATH", folder.Path().string());
  const std::string nobody = "tcp:" + OwnLoopbackAddress() + ":1";
  const std::string list = ListOf({"--instrument", "2=" + nobody}, 1);
  EXPECT_THAT(list,
              HasSubstr("  Instrument at address 2, route " + nobody + ": no connection: Connection refused.\n"));
  EXPECT_THAT(list, HasSubstr("  Route native: the system's GPIB library cannot be loaded: "));

  const Variable standIn("LD_LIBRARY_PATH", GPIB_STAND_IN_FOLDER);
  EXPECT_THAT(ListOf({}), HasSubstr("  Route native: nobody listens at the addresses 0 to 30.\n"));
}

TEST(DeviceList, TakesSecondsAlsoWhenEveryInstrumentIsSilent) {
  const WiredBench bench({"--fault", "testset-silent", "--fault", "supply-silent", "--fault", "load-silent"});
  const auto start = std::chrono::steady_clock::now();
  const std::string list = ListOf({"--instrument", "1=tcp:" + bench.Place("testset"), "--instrument",
                                   "2=tcp:" + bench.Place("supply"), "--instrument", "5=tcp:" + bench.Place("load")},
                                  1);
  EXPECT_LT(std::chrono::steady_clock::now() - start, std::chrono::seconds(20));
  for (const char* address : {"1", "2", "5"}) {
    EXPECT_THAT(list, ContainsRegex(std::string("  Instrument at address ") + address +
                                    ", route tcp:[0-9.:]+: no reply within 1 s.\n"));
  }
  EXPECT_THAT(list, Not(HasSubstr("native")));
}

TEST(DeviceList, ForProgramsIsOneObject) {
  const WiredBench bench;
  const TempFolder folder;
  Fill(folder / "libgpib.so.0", "");
  const Variable library("LD_LIBRARY_PATH", folder.Path().string());
  const std::string testSet = "tcp:" + bench.Place("testset");
  const std::string nobody = "tcp:" + OwnLoopbackAddress() + ":1";
  const Json list = Json::parse(ListOf(
      {"--json", "--com2", folder / "none", "--instrument", "1=" + testSet, "--instrument", "2=" + nobody}, 1));
  EXPECT_TRUE(list["serial"].is_array());
  EXPECT_EQ(list["lines"][1],
            (Json{{"port", "COM2"}, {"device", folder / "none"}, {"state", "there is no such device"}}));
  const Json& instruments = list["instruments"];
  ASSERT_EQ(instruments.size(), 3U);
  EXPECT_EQ(instruments[0]["address"], 1);
  EXPECT_EQ(instruments[0]["route"], testSet);
  EXPECT_THAT(instruments[0]["answer"].get<std::string>(), ContainsRegex(".+,.+,.+,.+"));
  EXPECT_TRUE(instruments[0]["fault"].is_null());
  EXPECT_EQ(instruments[1]["address"], 2);
  EXPECT_TRUE(instruments[1]["answer"].is_null());
  EXPECT_THAT(instruments[1]["fault"].get<std::string>(), HasSubstr("Connection refused"));
  EXPECT_TRUE(instruments[2]["address"].is_null()) << "of the route";
  EXPECT_EQ(instruments[2]["route"], "native");

  const auto alone = RunOrvane({"--json"});
  EXPECT_EQ(alone.status, 64);
  EXPECT_EQ(alone.errors, "orvane: --json requires --list\n");
}

TEST(DeviceList, TellsWhichOfTheTargetsLinesCanBeOpened) {
  WiredBench bench;
  const std::string target = bench.Place("target");
  const Arguments devices{"--com1", target, "--com2", "/nonexistent", "--com3", "/dev/null"};
  const std::string list = ListOf(devices);
  EXPECT_THAT(list, HasSubstr("  COM1 (" + target + "): free\n"));
  EXPECT_THAT(list, HasSubstr("  COM2 (/nonexistent): there is no such device\n"));
  EXPECT_THAT(list, HasSubstr("  COM3 (/dev/null): no serial line\n"));

  Station station({"--com1", target});
  // A run that waits for the operator: no instrument is initialized.
  station.answersBoxes = false;
  station.SendClick("OrvaneMain.cmdTargetInitialize");
  EXPECT_THAT(std::string(station.Await("box")["text"]), HasSubstr("Initialize"));
  EXPECT_THAT(ListOf(devices), ContainsRegex("  COM1 \\(" + target + "\\): in use by orvane \\(process [0-9]+\\)\n"));
}

TEST(DeviceList, HintsAtTheGroupWhenPermissionIsMissing) {
  const WiredBench bench;
  const std::string target = bench.Place("target");
  constexpr mode_t kGroupAlone = 0060;
  ASSERT_EQ(::chmod(target.c_str(), kGroupAlone), 0);
  const auto end = Child(Orvane({"--list", "--com1", target}), {"/", true}).WaitForEnd();
  EXPECT_EQ(end.status, 0) << end.errors;
  EXPECT_THAT(end.output, ContainsRegex("  COM1 \\(" + target +
                                        "\\): permission denied. Is the user in the group \"[a-z]+\"\\?\n"));
}

}  // namespace
}  // namespace orvane::test
