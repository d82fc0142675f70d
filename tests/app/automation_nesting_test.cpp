// Requests inside operations, boxes that lie open, failures, and clients that come and go.

#include "app/port_rig.h"
#include "base/failure.h"

namespace orvane::test {
namespace {

TEST_F(Port, AClickIsAnsweredWhenItsOperationHasEndedAndOthersMeanwhile) {
  operation_ = [&] { WaitFor(10ms); };
  AskLater(5ms, 2, "get", {{"control", "frmTest.txtLoss"}});
  Ask("click", {{"control", "frmTest.cmdRun"}});
  ASSERT_EQ(sent_.size(), 2U);
  EXPECT_EQ(sent_[0]["id"], 2);
  EXPECT_EQ(sent_[1]["result"], Json::object());
  EXPECT_EQ(loop_.Now(), 10ms);
}

TEST_F(Port, AStopClickIsServedInsideARunsWait) {
  bool stop = false;
  panel_.chkLNA.onClick = [&] { stop = true; };
  operation_ = [&] {
    while (!stop) WaitFor(1ms);
  };
  AskLater(20ms, 2, "click", {{"control", "frmTest.chkLNA"}});
  EXPECT_EQ(Ask("click", {{"control", "frmTest.cmdRun"}})["result"], Json::object());
  EXPECT_EQ(sent_[0]["id"], 2);
}

TEST_F(Port, ABoxIsModalForActsAndNotForReads) {
  operation_ = [&] { EXPECT_EQ(desk_.AskOverwrite("Sure?"), BoxButton::Cancel); };
  whenSent_ = [&](const Json& message) {
    if (!message.contains("method") || message["method"] != "box") return;
    loop_.Post([&] {
      EXPECT_EQ(ErrorOf("set", {{"control", "frmTest.txtLoss"}, {"text", "9"}}), -32006);
      EXPECT_EQ(ErrorOf("key", {{"control", "frmTest.txtLoss"}, {"text", "9"}}), -32006);
      EXPECT_EQ(ErrorOf("click", {{"control", "frmTest.chkLNA"}}), -32006);
      EXPECT_EQ(ErrorOf("show", {{"panel", "frmOther"}}), -32006);
      EXPECT_EQ(ErrorOf("close", {{"panel", "frmTest"}}), -32006);
      EXPECT_EQ(ErrorOf("get", {{"control", "frmTest.txtLoss"}}), 0);
      EXPECT_EQ(ErrorOf("controls", {{"panel", "frmOther"}}), 0);
      EXPECT_EQ(ErrorOf("panels"), 0);
      EXPECT_EQ(ErrorOf("state", {{"name", "TMStatus"}}), 0);
      EXPECT_EQ(ErrorOf("answer", {{"id", 1}, {"button", "OK"}}), -32602);
      EXPECT_EQ(ErrorOf("answer", {{"id", 1}, {"path", "a"}}), -32602);
      EXPECT_EQ(ErrorOf("answer", {{"id", 2}, {"button", "Yes"}}), -32004);
      EXPECT_EQ(ErrorOf("answer", {{"id", 1}, {"button", "Cancel"}}), 0);
    });
  };
  EXPECT_EQ(ErrorOf("click", {{"control", "frmTest.cmdRun"}}), 0);
  EXPECT_EQ(Notifications("box").at(0), Json::parse(R"({"id":1,"text":"Sure?","title":"ORVANE","icon":"question",
                            "buttons":["Yes","No","Cancel"]})"));
  EXPECT_EQ(panel_.txtLoss.Text(), "0.5");
}

TEST_F(Port, WhatAClientSendsBehindItsAnswerIsServedWhenTheBoxHasGone) {
  std::string order;
  operation_ = [&] {
    desk_.Alarm("Done.");
    order += "goes on ";
  };
  panel_.chkLNA.onClick = [&] { order += "click"; };
  loop_.PostAt(1ms, [&] {
    port_.Receive(RequestLine(1, "answer", {{"id", 1}, {"button", "OK"}}));
    port_.Receive(RequestLine(2, "click", {{"control", "frmTest.chkLNA"}}));
  });
  Ask("click", {{"control", "frmTest.cmdRun"}});
  loop_.RunDry();
  EXPECT_EQ(order, "goes on click");
  EXPECT_EQ(AnswerTo(2)["result"], Json::object());
}

TEST_F(Port, AFileDialogIsAnsweredWithAPathOrCancelled) {
  FileDialog dialog{"RF Parameters Save", "epm|*.epm", "epm", "", "/data"};
  std::vector<std::optional<std::string>> paths;
  operation_ = [&] {
    paths.push_back(desk_.ShowSave(dialog));
    paths.push_back(desk_.ShowOpen(dialog));
  };
  AskLater(1ms, 1, "answer", {{"id", 1}, {"path", "unit7"}});
  AskLater(2ms, 2, "answer", {{"id", 2}, {"path", nullptr}});
  Ask("click", {{"control", "frmTest.cmdRun"}});
  EXPECT_EQ(paths, (std::vector<std::optional<std::string>>{"/work/unit7.epm", std::nullopt}));
  const auto told = Notifications("fileDialog");
  EXPECT_EQ(told.at(0), Json::parse(R"({"id":1,"mode":"save","title":"RF Parameters Save","filter":"epm|*.epm",
                                        "defaultExtension":"epm","initialFolder":"/data"})"));
  EXPECT_EQ(told.at(1)["mode"], "open");
}

TEST_F(Port, AStoppedOperationIsToldItsBoxShownAndItsClickAnsweredWithTheFailure) {
  operation_ = [] { throw StationFailure("Overflow."); };
  AskLater(1ms, 1, "answer", {{"id", 1}, {"button", "OK"}});
  const Json answer = Ask("click", {{"control", "frmTest.cmdRun"}});
  EXPECT_EQ(answer["error"], Json::parse(R"({"code":-32005,"message":"Overflow."})"));
  ASSERT_EQ(sent_.size(), 4U);
  EXPECT_EQ(sent_[0]["method"], "failure");
  EXPECT_EQ(sent_[0]["params"]["text"], "Overflow.");
  EXPECT_EQ(sent_[1]["method"], "box");
  EXPECT_EQ(sent_[1]["params"]["icon"], "stop");
  EXPECT_EQ(sent_[2]["id"], 1);
}

TEST_F(Port, AFailureInANestedClickEndsTheOuterOneTooAndBothAreAnsweredWithIt) {
  bool wentOn = false;
  operation_ = [&] {
    WaitFor(10ms);
    wentOn = true;
  };
  panel_.chkLNA.onClick = [] { throw StationFailure("Subscript out of range."); };
  AskLater(5ms, 2, "click", {{"control", "frmTest.chkLNA"}});
  AskLater(6ms, 3, "answer", {{"id", 1}, {"button", "OK"}});
  const Json outer = Ask("click", {{"control", "frmTest.cmdRun"}});
  EXPECT_FALSE(wentOn);
  EXPECT_EQ(AnswerTo(2)["error"]["code"], -32005);
  EXPECT_EQ(outer["error"]["code"], -32005);
  EXPECT_EQ(outer["error"]["message"], "Subscript out of range.");
  EXPECT_EQ(Notifications("failure").size(), 1U);
  EXPECT_EQ(Notifications("box").size(), 1U);
}

TEST_F(Port, TellsTheVerdictWithItsSteps) {
  report_.Begin();
  report_.Enter(RunStep::Receive);
  report_.Leave();
  report_.Enter(RunStep::TransmitDcs);
  report_.Flaw("Level 3 was left out.");
  report_.Leave();
  report_.Conclude(Verdict::Pass);
  EXPECT_EQ(Notifications("verdict").at(0), Json::parse(R"({"result":"PASS","complete":false,"steps":[
    {"name":"receive","complete":true,"reason":""},
    {"name":"transmitDCS","complete":false,"reason":"Level 3 was left out."}]})"));
}

TEST_F(Port, TellsWhichInstrumentFailedAheadOfItsBox) {
  operation_ = [&] {
    faults_.Tell({5, "tcp:bench:5025", "Instrument at address 5, route tcp:bench:5025: it has gone."});
    desk_.Alarm("Unable to open device");
  };
  AskLater(1ms, 1, "answer", {{"id", 1}, {"button", "OK"}});
  Ask("click", {{"control", "frmTest.cmdRun"}});
  ASSERT_EQ(sent_.size(), 4U);
  EXPECT_EQ(sent_[0]["method"], "instrument");
  EXPECT_EQ(sent_[0]["params"], Json::parse(R"({"address":5,"route":"tcp:bench:5025",
      "text":"Instrument at address 5, route tcp:bench:5025: it has gone."})"));
  EXPECT_EQ(sent_[1]["method"], "box");
}

TEST_F(Port, TheEndOfTheStationAnswersTheActThatEndedItAndNoOther) {
  operation_ = [&] { WaitFor(10ms); };
  panel_.chkLNA.onClick = [] { throw StationEnded(); };
  AskLater(5ms, 2, "click", {{"control", "frmTest.chkLNA"}});
  EXPECT_THROW(Ask("click", {{"control", "frmTest.cmdRun"}}), StationEnded);
  port_.TellExit();
  ASSERT_EQ(sent_.size(), 2U);
  EXPECT_EQ(sent_[0]["id"], 2);
  EXPECT_EQ(sent_[1], Json::parse(R"({"jsonrpc":"2.0","method":"exit","params":{}})"));
}

TEST_F(Port, WhatAClientAskedBehindItsAnswerGoesWithIt) {
  bool clicked = false;
  operation_ = [&] { desk_.Alarm("Done."); };
  panel_.chkLNA.onClick = [&] { clicked = true; };
  loop_.PostAt(1ms, [&] {
    port_.Receive(RequestLine(1, "answer", {{"id", 1}, {"button", "OK"}}));
    port_.Receive(RequestLine(2, "click", {{"control", "frmTest.chkLNA"}}));
    port_.Disconnect();
  });
  port_.Receive(RequestLine(3, "click", {{"control", "frmTest.cmdRun"}}));
  loop_.RunDry();
  EXPECT_FALSE(clicked);
}

TEST_F(Port, AFailureDoesNotHoldUpWhatWasAskedBehindIt) {
  operation_ = [&] {
    desk_.Alarm("Done.");
    WaitFor(10ms);
  };
  panel_.chkLNA.onClick = [] { throw StationFailure("Overflow."); };
  loop_.PostAt(1ms, [&] {
    port_.Receive(RequestLine(1, "answer", {{"id", 1}, {"button", "OK"}}));
    port_.Receive(RequestLine(2, "click", {{"control", "frmTest.chkLNA"}}));
    port_.Receive(RequestLine(3, "get", {{"control", "frmTest.txtLoss"}}));
  });
  // Begun and answered at a window, so that no other request wakes the port.
  loop_.PostAt(20ms, [&] { desk_.Press(2, "OK"); });
  EXPECT_EQ(Operator(nest_).Click(panel_.cmdRun), "Overflow.");
  loop_.RunDry();
  EXPECT_EQ(AnswerTo(2)["error"]["code"], -32005);
  EXPECT_EQ(AnswerTo(3)["result"]["text"], "0.5");
}

TEST_F(Port, ANewClientHearsOfAnOpenDialog) {
  FileDialog dialog{"RF Parameters Save", "epm|*.epm", "epm", "", "/data"};
  std::optional<std::string> path = "none";
  operation_ = [&] { path = desk_.ShowOpen(dialog); };
  loop_.PostAt(1ms, [&] {
    port_.Disconnect();
    sent_.clear();
    Connect();
    ASSERT_EQ(Notifications("fileDialog").size(), 1U);
    EXPECT_EQ(ErrorOf("answer", {{"id", 1}, {"path", nullptr}}), 0);
  });
  port_.Receive(RequestLine(1, "click", {{"control", "frmTest.cmdRun"}}));
  EXPECT_EQ(path, std::nullopt);
}

TEST_F(Port, ANewClientHearsOfOpenBoxesAndGetsNoAnswersOfTheOldOne) {
  operation_ = [&] { desk_.Alarm("Select Port"); };
  loop_.PostAt(1ms, [&] {
    port_.Disconnect();
    sent_.clear();
    Connect();
    ASSERT_EQ(Notifications("box").size(), 1U);
    EXPECT_EQ(ErrorOf("answer", {{"id", 1}, {"button", "OK"}}), 0);
    sent_.clear();
  });
  port_.Receive(RequestLine(1, "click", {{"control", "frmTest.cmdRun"}}));
  EXPECT_TRUE(sent_.empty());
}

}  // namespace
}  // namespace orvane::test
