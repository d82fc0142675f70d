// What a client is told of a run as it goes, because it asked for it.

#include "app/port_rig.h"

namespace orvane::test {
namespace {

const Reading kPower{"tx.gsm.level.5.power", 32.0015, "dBm", 31.8, 32.2};

/// A whole run with a reading in its first step, and one ahead of it.
void TakeThrough(
    RunReport& report, const std::function<void()>& inTheMiddle = [] {}) {
  report.Begin();
  report.Read({"battery.full", 611, "count"});
  report.Enter(RunStep::TransmitGsm);
  report.Read(kPower);
  inTheMiddle();
  report.Leave();
  report.Enter(RunStep::Save);
  report.Flaw("No file was written.");
  report.Leave();
  report.Conclude(Verdict::Pass);
  report.End();
}

TEST_F(Port, TellsNothingOfARunThatNobodyAskedFor) {
  TakeThrough(report_);
  EXPECT_TRUE(Notifications("step").empty());
  EXPECT_TRUE(Notifications("reading").empty());
  EXPECT_EQ(Notifications("verdict").size(), 1U);
}

TEST_F(Port, TellsTheStepsToWhoAskedForThem) {
  EXPECT_EQ(Ask("subscribe", {{"topics", {"step"}}})["result"], Json::parse(R"({"topics":["step"]})"));
  TakeThrough(report_);
  const auto steps = Notifications("step");
  ASSERT_EQ(steps.size(), 4U);
  EXPECT_EQ(steps[0], Json::parse(R"({"name":"transmitGSM","state":"began","reason":""})"));
  EXPECT_EQ(steps[1], Json::parse(R"({"name":"transmitGSM","state":"complete","reason":""})"));
  EXPECT_EQ(steps[2], Json::parse(R"({"name":"save","state":"began","reason":""})"));
  EXPECT_EQ(steps[3], Json::parse(R"({"name":"save","state":"incomplete","reason":"No file was written."})"));
  EXPECT_TRUE(Notifications("reading").empty());
}

TEST_F(Port, TellsTheReadingsAsTheyWereReadToWhoAskedForThem) {
  Ask("subscribe", {{"topics", {"reading"}}});
  TakeThrough(report_);
  const auto readings = Notifications("reading");
  ASSERT_EQ(readings.size(), 2U);
  EXPECT_EQ(
      readings[0].dump(),
      R"({"name":"battery.full","value":611.0,"unit":"count","low":null,"high":null,"inside":null,"step":null})");
  EXPECT_EQ(readings[1].dump(),
            R"({"name":"tx.gsm.level.5.power","value":32.0015,"unit":"dBm","low":31.8,"high":32.2,"inside":true,)"
            R"("step":"transmitGSM"})");
  EXPECT_TRUE(Notifications("step").empty());
}

TEST_F(Port, AReadingIsInsideUpToItsLimitsWhicheverItHas) {
  struct Row {
    std::optional<double> low;
    std::optional<double> high;
    double value;
    bool inside;
  };
  Ask("subscribe", {{"topics", {"reading"}}});
  for (const Row& row : {Row{1, 2, 1, true}, Row{1, 2, 2, true}, Row{1, 2, 0.9, false}, Row{1, 2, 2.1, false},
                         Row{{}, 5, -9, true}, Row{{}, 5, 5.01, false}, Row{1, {}, 9, true}, Row{1, {}, 0, false}}) {
    report_.Read({"tx.gsm.phase.rms", row.value, "degree", row.low, row.high});
    EXPECT_EQ(Notifications("reading").back()["inside"], row.inside) << row.value;
  }
}

TEST_F(Port, AStepThatNothingEndedIsIncompleteAheadOfTheVerdict) {
  Ask("subscribe", {{"topics", {"step"}}});
  report_.Begin();
  report_.Enter(RunStep::Receive);
  report_.End();
  const auto steps = Notifications("step");
  ASSERT_EQ(steps.size(), 2U);
  EXPECT_EQ(steps[1], Json::parse(R"({"name":"receive","state":"incomplete","reason":"The step did not end."})"));
  ASSERT_GE(sent_.size(), 2U);
  EXPECT_EQ(sent_.back()["method"], "verdict");
  EXPECT_EQ(sent_[sent_.size() - 2]["method"], "step");
}

TEST_F(Port, AStepThatAnotherRunTookTheNotesOfIsOverToo) {
  Ask("subscribe", {{"topics", {"step"}}});
  report_.Begin();
  report_.Enter(RunStep::Receive);
  TakeThrough(report_);
  report_.Leave();
  report_.End();
  std::vector<std::string> told;
  for (const Json& step : Notifications("step"))
    told.push_back(std::string(step["name"]) + " " + std::string(step["state"]));
  EXPECT_EQ(told, (std::vector<std::string>{"receive began", "receive incomplete", "transmitGSM began",
                                            "transmitGSM complete", "save began", "save incomplete"}));
}

TEST_F(Port, SubscribesFromNowOnInPlaceOfBeforeAndUntilAnEmptyList) {
  TakeThrough(report_, [this] { Ask("subscribe", {{"topics", {"reading", "step", "reading"}}}); });
  EXPECT_TRUE(Notifications("reading").empty()) << "it was read ahead of that";
  EXPECT_EQ(Notifications("step").size(), 3U);
  EXPECT_EQ(AnswerTo(lastId_)["result"], Json::parse(R"({"topics":["reading","step"]})"));

  EXPECT_EQ(Ask("subscribe", {{"topics", {"reading"}}})["result"], Json::parse(R"({"topics":["reading"]})"));
  TakeThrough(report_);
  EXPECT_EQ(Notifications("step").size(), 3U);
  EXPECT_EQ(Notifications("reading").size(), 2U);

  EXPECT_EQ(Ask("subscribe", {{"topics", Json::array()}})["result"], Json::parse(R"({"topics":[]})"));
  TakeThrough(report_);
  EXPECT_EQ(Notifications("reading").size(), 2U);
}

TEST_F(Port, ASubscriptionEndsWithItsClient) {
  Ask("subscribe", {{"topics", {"step", "reading"}}});
  port_.Disconnect();
  TakeThrough(report_);
  Connect();
  sent_.clear();
  TakeThrough(report_);
  EXPECT_TRUE(Notifications("step").empty());
  EXPECT_TRUE(Notifications("reading").empty());
  EXPECT_EQ(Notifications("verdict").size(), 1U);
}

TEST_F(Port, RefusesWhatIsNoListOfTopicsAndKeepsWhatHolds) {
  Ask("subscribe", {{"topics", {"reading"}}});
  for (const char* params : {R"({})", R"({"topics":"step"})", R"({"topics":null})", R"({"topics":{"step":true}})",
                             R"({"topics":["step","pass"]})", R"({"topics":["Step"]})", R"({"topics":[""]})",
                             R"({"topics":[7]})", R"({"topics":[["step"]]})", R"({"topics":["step",null]})"}) {
    EXPECT_EQ(ErrorOf("subscribe", Json::parse(params)), -32602) << params;
  }
  report_.Read(kPower);
  EXPECT_EQ(Notifications("reading").size(), 1U);
  EXPECT_TRUE(Notifications("step").empty());
}

TEST_F(Port, SubscribesWhileABoxIsOpen) {
  AskLater(1ms, 7, "subscribe", {{"topics", {"step"}}});
  AskLater(2ms, 8, "answer", {{"id", 1}, {"button", "OK"}});
  desk_.Warning("Battery Calibration ERROR.");
  EXPECT_EQ(AnswerTo(7)["result"], Json::parse(R"({"topics":["step"]})"));
}

}  // namespace
}  // namespace orvane::test
