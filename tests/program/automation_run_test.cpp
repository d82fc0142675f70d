// Runs that another program starts, follows, stops and ends.

#include <gtest/gtest.h>

#include <algorithm>

#include "program/programs.h"

namespace orvane::test {
namespace {

constexpr int kGreen = 0x0000FF00;
constexpr int kRed = 0x000000FF;
constexpr std::uint32_t kButtonFace = 0x8000000F;

std::vector<std::string> NamesOf(const Json& steps) {
  std::vector<std::string> names;
  for (const Json& step : steps) names.push_back(step["name"]);
  return names;
}

bool IsShown(Station& station, const std::string& name) {
  const Json panels = station.Panels();
  const auto hit =
      std::find_if(panels.begin(), panels.end(), [&](const Json& panel) { return panel["name"] == name; });
  return hit != panels.end() && (*hit)["visible"];
}

/// A run that has come to its first measurements.
int StartRun(Station& station) {
  station.InitializeInstruments();
  const int run = station.SendClick("OrvaneMain.cmdTargetInitialize");
  station.AwaitState("CalMode", "ALL");
  return run;
}

TEST(AutomatedRun, TakesAGoodUnitToItsVerdict) {
  Station station;
  station.InitializeInstruments();
  EXPECT_EQ(station.Click("OrvaneMain.cmdTargetInitialize")["result"], Json::object());
  ASSERT_EQ(station.Heard("verdict").size(), 1U);
  const Json verdict = station.Await("verdict");
  EXPECT_EQ(verdict["result"], "PASS");
  EXPECT_EQ(verdict["complete"], true);
  ASSERT_EQ(NamesOf(verdict["steps"]),
            (std::vector<std::string>{"receive", "transmitDCS", "transmitGSM", "save", "charger"}));
  for (const Json& step : verdict["steps"]) EXPECT_EQ(step["complete"], true) << step;
  EXPECT_TRUE(station.Heard("box").empty());

  EXPECT_EQ(station.State("CalMode"), "END");
  EXPECT_EQ(station.State("CalFailed"), false);
  EXPECT_EQ(station.State("RFParams").size(), 1857U);
  EXPECT_EQ(station.State("SerialPortState"), false) << "the Target was let go";
  EXPECT_EQ(station.Get("OrvaneMain.shpTargetOnOff")["backColor"], kRed);
  EXPECT_EQ(station.Get("OrvaneMain.shpInstrumentOnOff")["backColor"], kGreen);
  EXPECT_TRUE(IsShown(station, "frmFailPass"));
}

TEST(AutomatedRun, ABoxWaitsForItsAnswerAndTheVerdictComesBehindIt) {
  Station station({"--bench", "virtual:fault=battery"});
  station.answersBoxes = false;
  station.InitializeInstruments();
  const int run = station.SendClick("OrvaneMain.cmdTargetInitialize");
  const Json box = station.Await("box");
  EXPECT_EQ(box["text"], "Battery Calibration ERROR.");
  EXPECT_EQ(box["title"], "Warning");
  EXPECT_EQ(box["icon"], "stop");
  EXPECT_EQ(box["buttons"], Json({"OK"}));
  EXPECT_EQ(station.State("CalFailed"), true);
  EXPECT_TRUE(station.Heard("verdict").empty());
  EXPECT_EQ(station.ErrorOf("answer", {{"id", box["id"]}, {"button", "OK"}}), 0);
  EXPECT_EQ(station.AnswerTo(run)["result"], Json::object());
  const Json verdict = station.Await("verdict");
  EXPECT_EQ(verdict["result"], "FAIL");
  EXPECT_EQ(verdict["complete"], false);
  EXPECT_EQ(verdict["steps"][4]["complete"], false);
  EXPECT_THAT(std::string(verdict["steps"][4]["reason"]), testing::HasSubstr("Battery Calibration ERROR."));
}

TEST(AutomatedRun, AStopClickEndsItWithoutAVerdictPanel) {
  Station station;
  const int run = StartRun(station);
  EXPECT_EQ(station.Click("frmAutoCal.cmdAutoCalStop")["result"], Json::object());
  EXPECT_EQ(station.State("CalMode"), "Stop");
  EXPECT_EQ(station.State("CalStopRequested"), true);
  EXPECT_TRUE(station.Heard("verdict").empty()) << "the stop is served inside the run";

  EXPECT_EQ(station.AnswerTo(run)["result"], Json::object());
  ASSERT_EQ(station.Heard("verdict").size(), 1U);
  EXPECT_EQ(station.Await("verdict")["result"], "NONE");
  EXPECT_EQ(station.Get("frmAutoCal.cmdAutoCalStop")["backColor"], kRed);
  for (const char* verdictPanel : {"frmFail", "frmFailPass"}) EXPECT_FALSE(IsShown(station, verdictPanel));
  EXPECT_EQ(station.State("SerialPortState"), true) << "nobody let the Target go";

  station.Click("frmAutoCal.cmdAutoCalStop");
  EXPECT_EQ(station.Get("frmAutoCal.cmdAutoCalStop")["backColor"], kButtonFace) << "a second click withdraws it";
}

TEST(AutomatedRun, AStoppedOneLeavesTheTargetToTheTabsRxAndTx) {
  Station station;
  const int run = StartRun(station);
  station.Click("frmAutoCal.cmdAutoCalStop");
  station.AnswerTo(run);

  station.Set("OrvaneMain.txtAGCPM", "text", "");
  EXPECT_EQ(station.Click("OrvaneMain.cmdPMStart")["result"], Json::object());
  EXPECT_NE(station.Get("OrvaneMain.txtAGCPM")["text"], "");
  EXPECT_EQ(station.Set("OrvaneMain.txtTxLevelIndex", "text", "7")["result"]["text"], "7");
  EXPECT_EQ(station.Set("OrvaneMain.optTxLevelDCS", "checked", true)["result"]["checked"], true);
  for (const char* caption : {"Stop", "Test"}) {
    station.Click("OrvaneMain.cmdULTest");
    EXPECT_EQ(station.Get("OrvaneMain.cmdULTest")["caption"], caption);
    EXPECT_EQ(station.State("TMStatus"), "&H00");
  }
  EXPECT_TRUE(station.Heard("box").empty());
}

TEST(AutomatedRun, ASecondOneIsRefusedWhileItRunsAndAcceptedAfterwards) {
  Station station;
  const int run = StartRun(station);
  for (const char* start :
       {"frmAutoCal.cmdAllCalStart", "frmAutoCal.Command1", "frmAutoCal.cmdTxAllCal", "frmAutoCal.cmdGSM",
        "frmAutoCal.cmdDCS", "frmMPAutoCal.cmdMPRxAllAutoCal", "frmBaseBand.cmdChargerAutoCal"}) {
    EXPECT_EQ(station.ErrorOf("click", {{"control", start}}), -32002) << start;
    EXPECT_EQ(station.Get(start)["enabled"], false) << start;
  }
  EXPECT_EQ(station.Click("OrvaneMain.cmdTargetInitialize")["result"], Json::object());
  ASSERT_EQ(station.Heard("box").size(), 1U);
  EXPECT_EQ(station.Heard("box")[0]["text"], "Port is already Open.");
  station.Click("frmAutoCal.cmdAutoCalStop");
  station.AnswerTo(run);

  station.Click("OrvaneMain.cmdTargetReset");
  EXPECT_EQ(station.Click("OrvaneMain.cmdTargetInitialize")["result"], Json::object());
  ASSERT_EQ(station.Heard("verdict").size(), 2U);
  EXPECT_EQ(station.Heard("verdict")[1]["result"], "PASS");
}

TEST(AutomatedRun, AFailureInsideItEndsTheWholeClickAndTheNextOneRuns) {
  Station station;
  const int run = StartRun(station);
  // The run's next pace has no count.
  EXPECT_EQ(station.Set("OrvaneMain.txtSyncDelay", "text", "")["result"]["text"], "");
  const Json error = station.AnswerTo(run)["error"];
  EXPECT_EQ(error["code"], -32005);
  ASSERT_EQ(station.Heard("failure").size(), 1U);
  EXPECT_EQ(station.Heard("failure")[0]["text"], error["message"]);
  ASSERT_EQ(station.Heard("box").size(), 1U);
  EXPECT_EQ(station.Heard("box")[0]["text"], error["message"]);
  EXPECT_EQ(station.Heard("box")[0]["title"], "ORVANE");
  EXPECT_EQ(station.Heard("box")[0]["icon"], "stop");
  EXPECT_EQ(station.Await("verdict")["result"], "NONE");

  station.Set("OrvaneMain.txtSyncDelay", "text", "20000");
  station.Click("OrvaneMain.cmdTargetReset");
  station.Click("OrvaneMain.cmdTargetInitialize");
  EXPECT_EQ(station.Await("verdict")["result"], "PASS");
}

TEST(AutomatedRun, IsNotDisturbedByAClientThatAsksALot) {
  Station station;
  const int run = StartRun(station);
  for (int i = 0; i < 100; ++i) station.Send("state", {{"name", i % 20 == 0 ? "RFParams" : "CalMode"}});
  EXPECT_EQ(station.AnswerTo(run)["result"], Json::object());
  const Json verdict = station.Await("verdict");
  EXPECT_EQ(verdict["result"], "PASS");
  EXPECT_EQ(verdict["complete"], true) << verdict;
}

TEST(AutomatedRun, TheEndOfTheInputEndsTheStationWhateverItDoes) {
  struct Row {
    const char* what;
    std::function<void(Station&)> bring;
  };
  const Row rows[] = {
      {"idle", [](Station& station) { station.Ask("panels"); }},
      {"at the start", [](Station&) {}},
      {"in a run", [](Station& station) { StartRun(station); }},
      {"with a box open",
       [](Station& station) {
         station.answersBoxes = false;
         station.SendClick("OrvaneMain.cmdTargetReset");
         EXPECT_EQ(station.Await("box")["text"], "Port is already closed.");
       }},
      {"with a file dialog open",
       [](Station& station) {
         station.SendClick("OrvaneMain.cmdLogOn");
         station.Await("fileDialog");
       }},
  };
  for (const Row& row : rows) {
    SCOPED_TRACE(row.what);
    Station station;
    row.bring(station);
    station.Process().CloseInput();
    const auto end = station.Process().WaitForEnd();
    EXPECT_EQ(end.status, 0);
    EXPECT_THAT(end.output, testing::EndsWith("{\"jsonrpc\":\"2.0\",\"method\":\"exit\",\"params\":{}}\n"));
    EXPECT_THAT(end.output, testing::Not(testing::HasSubstr("\"id\""))) << "no operation has ended";
    EXPECT_THAT(end.output, testing::Not(testing::HasSubstr("PASS")));
    EXPECT_EQ(end.errors, "");
  }
}

TEST(AutomatedRun, ExitAsksAndEndsTheStationFromWithinTheRun) {
  Station station;
  station.answersBoxes = false;
  StartRun(station);
  const int cancelled = station.SendClick("OrvaneMain.cmdExit");
  const Json question = station.Await("box");
  EXPECT_EQ(question["text"], "Do you want to finish ORVANE?");
  EXPECT_EQ(question["title"], "Exit");
  EXPECT_EQ(question["icon"], "exclamation");
  EXPECT_EQ(question["buttons"], Json({"OK", "Cancel"}));
  station.Ask("answer", {{"id", question["id"]}, {"button", "Cancel"}});
  EXPECT_EQ(station.AnswerTo(cancelled)["result"], Json::object()) << "the run goes on";

  const int ended = station.Send("close", {{"panel", "OrvaneMain"}});
  station.Ask("answer", {{"id", station.Await("box")["id"]}, {"button", "OK"}});
  EXPECT_EQ(station.AnswerTo(ended)["result"], Json::object());
  EXPECT_EQ(station.Await("exit"), Json::object());
  const auto end = station.Process().WaitForEnd();
  EXPECT_EQ(end.status, 0);
  EXPECT_EQ(end.output, "") << "nothing behind the exit";
}

TEST(AutomatedRun, InitializeUnderAutomationTellsTheVerdictThenExitAndEndsWithItsStatus) {
  Station station({"--bench", "virtual:fault=pa-dead", "--initialize"});
  EXPECT_EQ(station.Await("verdict")["result"], "FAIL");
  station.Await("exit");
  EXPECT_EQ(station.Process().WaitForEnd().status, 1);
}

}  // namespace
}  // namespace orvane::test
