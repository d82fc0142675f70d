#include <gtest/gtest.h>

#include <filesystem>
#include <map>
#include <sstream>

#include "app/json_rpc.h"
#include "program/child.h"

namespace orvane::test {
namespace {

using testing::HasSubstr;

std::vector<std::string> Orvane(const std::vector<std::string>& arguments) {
  std::vector<std::string> command{ORVANE_PROGRAM};
  command.insert(command.end(), arguments.begin(), arguments.end());
  return command;
}

Child::End RunOf(const std::vector<std::string>& arguments) { return Child(Orvane(arguments)).WaitForEnd(); }

/// The automation port of a station on the embedded bench.
class Station {
 public:
  explicit Station(const std::string& bench = "virtual")
      : child(Orvane({"--headless", "--bench", bench, "--automation", "stdio"})) {}

  void Send(int id, const std::string& method, const Json& params = Json::object()) const {
    child.Send(Json{{"jsonrpc", "2.0"}, {"id", id}, {"method", method}, {"params", params}}.dump());
  }
  /// Everything up to the answer to that request; boxes are answered with their first button.
  Json AnswerTo(int id) {
    while (const auto line = child.NextLine()) {
      const Json message = Json::parse(*line);
      if (message.contains("id") && message["id"] == id) return message;
      heard.push_back(message);
      if (message.value("method", "") == "box") {
        Send(1'000'000, "answer", {{"id", message["params"]["id"]}, {"button", message["params"]["buttons"][0]}});
      }
    }
    return Json{{"result", "the station says nothing more"}};
  }
  Json Ask(const std::string& method, const Json& params = Json::object()) {
    const int id = ++lastId_;
    Send(id, method, params);
    return AnswerTo(id);
  }
  Json Click(const std::string& control) { return Ask("click", {{"control", control}}); }
  [[nodiscard]] std::vector<Json> Heard(const std::string& method) const {
    std::vector<Json> found;
    for (const Json& message : heard) {
      if (message.value("method", "") == method) found.push_back(message["params"]);
    }
    return found;
  }

  Child child;
  std::vector<Json> heard;

 private:
  int lastId_ = 0;
};

TEST(Program, RefusesABadOptionWithOneLineAndStatus64) {
  const auto end = RunOf({"--headless", "--gpib", "usb"});
  EXPECT_EQ(end.status, 64);
  EXPECT_EQ(end.output, "");
  EXPECT_EQ(end.errors, "orvane: --gpib: \"usb\" is no route\n");
}

TEST(Program, InitializeEndsWithTheVerdictsStatus) {
  const std::map<std::string, int> rows{
      {"virtual", 0}, {"virtual:fault=pa-dead", 1}, {"virtual:fault=supply-absent", 2}};
  for (const auto& [bench, status] : rows) {
    const auto end = RunOf({"--headless", "--initialize", "--bench", bench});
    EXPECT_EQ(end.status, status) << bench << "\n" << end.output << end.errors;
  }
}

TEST(Program, SaysWhichStepWasNotCompletedAndThatNoVerdictCame) {
  EXPECT_THAT(RunOf({"--headless", "--initialize", "--bench", "virtual:fault=supply-absent"}).errors,
              HasSubstr("PASS, but not every step was completed.\ncharger: Initialize Power Supply.\n"));
  EXPECT_THAT(RunOf({"--headless", "--initialize", "--bench", "virtual:fault=silent"}).errors,
              HasSubstr("The run ended without a verdict.\n"));
}

TEST(Program, AnotherProgramPressesInitializeAndHearsTheVerdict) {
  Station station;
  for (const char* button : {"OrvaneMain.cmdInstrumentInitialize", "OrvaneMain.cmdPSInitialize",
                             "frmBaseBand.cmdLoaderInitialize", "OrvaneMain.cmdTargetInitialize"}) {
    EXPECT_EQ(station.Click(button)["result"], Json::object()) << button;
  }
  const auto verdicts = station.Heard("verdict");
  ASSERT_EQ(verdicts.size(), 1U);
  EXPECT_EQ(verdicts[0]["result"], "PASS");
  EXPECT_EQ(verdicts[0]["complete"], true);
  EXPECT_EQ(verdicts[0]["steps"].size(), 5U);
  EXPECT_TRUE(station.Heard("box").empty());

  const Json parameters = station.Ask("state", {{"name", "RFParams"}})["result"];
  EXPECT_EQ(parameters.size(), 1857U);
  EXPECT_EQ(parameters.begin().key(), "rf_revision");
  EXPECT_TRUE(parameters.begin().value().is_number_integer());
  EXPECT_EQ(station.Ask("state", {{"name", "CalFailed"}})["result"], false);
  EXPECT_EQ(station.Ask("state", {{"name", "EepromImage"}})["result"].size(), 2701U);
}

TEST(Program, AStopClickIsServedInsideTheRunAndEndsItWithoutAVerdict) {
  Station station;
  for (const char* button : {"OrvaneMain.cmdInstrumentInitialize", "OrvaneMain.cmdPSInitialize"}) {
    station.Click(button);
  }
  station.Send(500, "click", {{"control", "OrvaneMain.cmdTargetInitialize"}});
  while (station.Ask("state", {{"name", "CalMode"}})["result"] != "ALL") {
  }
  EXPECT_EQ(station.Click("frmAutoCal.cmdGSM")["error"]["code"], -32002) << "one run at a time";
  EXPECT_EQ(station.Click("frmAutoCal.cmdAutoCalStop")["result"], Json::object());
  EXPECT_TRUE(station.Heard("verdict").empty()) << "the stop was answered inside the run";
  station.AnswerTo(500);
  ASSERT_EQ(station.Heard("verdict").size(), 1U);
  EXPECT_EQ(station.Heard("verdict")[0]["result"], "NONE");
}

TEST(Program, TheEndOfTheInputEndsTheStationAtOnce) {
  Station station;
  EXPECT_TRUE(station.Ask("panels")["result"].is_array());
  station.Send(500, "click", {{"control", "OrvaneMain.cmdTargetInitialize"}});
  station.child.CloseInput();
  const auto end = station.child.WaitForEnd();
  EXPECT_EQ(end.status, 0);
  EXPECT_THAT(end.output, testing::EndsWith("{\"jsonrpc\":\"2.0\",\"method\":\"exit\",\"params\":{}}\n"));
}

TEST(Program, ExitAsksAndThenEndsTheStation) {
  Station station;
  EXPECT_EQ(station.Click("OrvaneMain.cmdExit")["result"], Json::object());
  ASSERT_EQ(station.Heard("box").size(), 1U);
  EXPECT_EQ(station.Heard("box")[0]["title"], "Exit");
  const auto end = station.child.WaitForEnd();
  EXPECT_EQ(end.status, 0);
  EXPECT_THAT(end.output, HasSubstr("\"method\":\"exit\""));
}

/// The bench on wires, and the options that lead to it.
class WiredBench {
 public:
  explicit WiredBench(const std::vector<std::string>& arguments = {}) : child_(Command(arguments)) {
    while (const auto line = child_.NextLine()) {
      std::istringstream words(*line);
      std::string what;
      words >> what;
      if (what == "ready") break;
      words >> places_[what];
    }
  }
  std::vector<std::string> Options() {
    return {"--com1",       places_["target"],
            "--instrument", "1=tcp:" + places_["testset"],
            "--instrument", "2=tcp:" + places_["supply"],
            "--instrument", "5=tcp:" + places_["load"]};
  }

 private:
  static std::vector<std::string> Command(const std::vector<std::string>& arguments) {
    std::vector<std::string> command{VIRTUAL_BENCH_PROGRAM};
    command.insert(command.end(), arguments.begin(), arguments.end());
    return command;
  }

  Child child_;
  std::map<std::string, std::string> places_;
};

Child::End InitializeOn(WiredBench& bench) {
  auto arguments = bench.Options();
  arguments.insert(arguments.end(), {"--headless", "--initialize"});
  return RunOf(arguments);
}

TEST(ProgramOnWires, CalibratesAUnitOverASerialDeviceAndSockets) {
  WiredBench bench;
  const auto end = InitializeOn(bench);
  EXPECT_EQ(end.status, 0) << end.output << end.errors;
  EXPECT_THAT(end.output, HasSubstr("PASS"));
  EXPECT_EQ(end.errors, "");
}

TEST(ProgramOnWires, ATargetUnpluggedInsideARunEndsItWithABoxThatNamesTheDevice) {
  WiredBench bench({"--fault", "unplugged@100"});
  const auto end = InitializeOn(bench);
  EXPECT_EQ(end.status, 2);
  EXPECT_THAT(end.errors, HasSubstr("ORVANE: COM1 (/dev/pts/"));
  EXPECT_THAT(end.errors, HasSubstr("The run ended without a verdict."));
}

}  // namespace
}  // namespace orvane::test
