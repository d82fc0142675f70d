#include "app/automation_port.h"

#include <gtest/gtest.h>

#include "base/failure.h"
#include "platform/virtual_event_loop.h"

namespace orvane {
namespace {

using namespace std::chrono_literals;
using testing::HasSubstr;

/// A panel with a control of each kind that can be acted on.
struct FrmTest : Panel {
  FrmTest() : Panel("frmTest", "Test") {}
  Button cmdRun{*this, "cmdRun", "Run"};
  Button cmdOff{*this, "cmdOff", "Off"};
  TextBox txtLoss{*this, "txtLoss", "0.5"};
  TextBox txtUP{*this, "txtUP(3)", "7"};
  ComboBox cboPort{*this, "cboPort", "COM1", {"COM1", "COM2"}};
  ListBox list{*this, "list"};
  OptionGroup band;
  OptionButton optGSM{*this, "optGSM", "GSM", band, OptionButton::Start::Selected};
  OptionButton optDCS{*this, "optDCS", "DCS", band};
  CheckBox chkLNA{*this, "chkLNA", "LNA"};
  UpDown upd{*this, "upd", nullptr, -200, 0, -5};
  Lamp shp{*this, "shp"};
  ProgressBar prg{*this, "prg"};
  TabControl tab{*this, "tab", {"SYSTEM", "RX"}};
  Label lbl{*this, "lbl", "Loss"};
};

class Port : public testing::Test {
 protected:
  Port() {
    panel_.cmdOff.SetEnabled(false);
    panel_.onLoad = [this] { ++loads_; };
    panel_.cmdRun.onClick = [this] { operation_(); };
    Connect();
  }

  void Connect() {
    port_.Connect([this](const std::string& line) {
      EXPECT_EQ(line.find('\n'), std::string::npos);
      sent_.push_back(Json::parse(line));
      EXPECT_EQ(sent_.back().at("jsonrpc"), "2.0");
      if (whenSent_) whenSent_(sent_.back());
    });
  }

  /// Sends a request with the next id and gives its answer.
  Json Ask(const std::string& method, const Json& params = Json::object()) {
    const int id = ++lastId_;
    port_.Receive(RequestLine(id, method, params));
    return AnswerTo(id);
  }
  static std::string RequestLine(int id, const std::string& method, const Json& params = Json::object()) {
    return Json{{"jsonrpc", "2.0"}, {"id", id}, {"method", method}, {"params", params}}.dump();
  }
  Json AnswerTo(int id) const {
    for (const Json& message : sent_) {
      if (message.contains("id") && message["id"] == id) return message;
    }
    return Json{{"result", "no answer"}};
  }
  int ErrorOf(const std::string& method, const Json& params = Json::object()) {
    const Json answer = Ask(method, params);
    return answer.contains("error") ? answer["error"]["code"].get<int>() : 0;
  }
  std::vector<Json> Notifications(const std::string& method) const {
    std::vector<Json> found;
    for (const Json& message : sent_) {
      if (message.contains("method") && message["method"] == method) found.push_back(message["params"]);
    }
    return found;
  }
  /// Sends a request from the loop, at a time from now.
  void AskLater(TimePoint after, int id, const std::string& method, const Json& params = Json::object()) {
    loop_.PostAt(loop_.Now() + after, [=, this] { port_.Receive(RequestLine(id, method, params)); });
  }
  void WaitFor(TimePoint span) {
    const TimePoint until = loop_.Now() + span;
    while (loop_.Now() < until) loop_.Yield(until);
  }

  VirtualEventLoop loop_;
  Desk desk_{loop_, "/work"};
  OperationNest nest_{desk_};
  RunReport report_;
  FrmTest panel_;
  Panel other_{"frmOther", "Other"};
  int loads_ = 0;
  std::function<void()> operation_ = [] {};
  std::vector<Json> sent_;
  std::function<void(const Json&)> whenSent_;
  int lastId_ = 1000;
  AutomationPort port_{{loop_, desk_, nest_, report_, {&panel_, &other_}, [](std::string_view name) {
                          return name == "TMStatus" ? std::optional<Json>("&H00") : std::nullopt;
                        }}};
};

struct BadLine {
  const char* line;
  int code;
  Json id;
};

TEST_F(Port, RefusesWhatIsNoRequest) {
  const BadLine rows[] = {
      {"{", -32700, nullptr},
      {"\"\xFF\"", -32700, nullptr},
      {"17", -32600, nullptr},
      {"[]", -32600, nullptr},
      {R"([{"jsonrpc":"2.0","id":1,"method":"panels"}])", -32600, nullptr},
      {R"({"id":3,"method":"panels"})", -32600, 3},
      {R"({"jsonrpc":"1.0","id":3,"method":"panels"})", -32600, 3},
      {R"({"jsonrpc":"2.0","id":3})", -32600, 3},
      {R"({"jsonrpc":"2.0","id":3,"method":7})", -32600, 3},
      {R"({"jsonrpc":"2.0","id":{},"method":"panels"})", -32600, nullptr},
      {R"({"jsonrpc":"2.0","method":7})", -32600, nullptr},
      {R"({"jsonrpc":"2.0","id":"a","method":"press"})", -32601, "a"},
      {R"({"jsonrpc":"2.0","id":null,"method":"press"})", -32601, nullptr},
      {R"({"jsonrpc":"2.0","id":3,"method":"get","params":["frmTest.txtLoss"]})", -32602, 3},
      {R"({"jsonrpc":"2.0","id":3,"method":"get"})", -32602, 3},
      {R"({"jsonrpc":"2.0","id":3,"method":"get","params":{"control":7}})", -32602, 3},
  };
  for (const BadLine& row : rows) {
    sent_.clear();
    port_.Receive(row.line);
    ASSERT_EQ(sent_.size(), 1U) << row.line;
    EXPECT_EQ(sent_[0]["error"]["code"], row.code) << row.line;
    EXPECT_EQ(sent_[0]["id"], row.id) << row.line;
  }
  EXPECT_EQ(Ask("state", {{"name", "TMStatus"}})["result"], "&H00") << "and the port lives on";
}

TEST_F(Port, ANestOfAnyDepthIsABadParameterAndNotTheStationsEnd) {
  constexpr std::size_t kDepth = 400'000;
  const std::string nest = std::string(kDepth, '[') + std::string(kDepth, ']');
  const std::pair<std::string, int> rows[] = {
      {R"({"jsonrpc":"2.0","id":3,"method":"get","params":{"control":)" + nest + "}}", -32602},
      {R"({"jsonrpc":"2.0","id":3,"method":"get","params":)" + nest + "}", -32602},
      {R"({"jsonrpc":)" + nest + R"(,"id":3,"method":"get"})", -32600},
      {R"({"jsonrpc":"2.0","id":3,"method":)" + nest + "}", -32600},
      {R"({"jsonrpc":"2.0","id":)" + nest + R"(,"method":"get"})", -32600},
      {nest, -32600},
  };
  for (const auto& [line, code] : rows) {
    sent_.clear();
    port_.Receive(line);
    ASSERT_EQ(sent_.size(), 1U) << line.substr(0, 60);
    EXPECT_EQ(sent_[0]["error"]["code"], code) << line.substr(0, 60);
  }
}

TEST_F(Port, CarriesOutARequestWithoutAnIdAndDoesNotAnswerIt) {
  bool clicked = false;
  operation_ = [&] { clicked = true; };
  port_.Receive(R"({"jsonrpc":"2.0","method":"click","params":{"control":"frmTest.cmdRun"}})");
  EXPECT_TRUE(clicked);
  EXPECT_TRUE(sent_.empty());
}

TEST_F(Port, PassesOverBlankLines) {
  port_.Receive("");
  port_.Receive(" \r");
  EXPECT_TRUE(sent_.empty());
}

TEST_F(Port, ListsPanelsCreatedOrNot) {
  EXPECT_EQ(Ask("panels")["result"], Json::parse(R"([
    {"name":"frmTest","caption":"Test","created":false,"visible":false},
    {"name":"frmOther","caption":"Other","created":false,"visible":false}])"));
  EXPECT_EQ(loads_, 0);
}

TEST_F(Port, TouchesThePanelOfAControlOnce) {
  Ask("get", {{"control", "frmTest.txtLoss"}});
  Ask("controls", {{"panel", "frmTest"}});
  EXPECT_EQ(loads_, 1);
  EXPECT_FALSE(panel_.Visible());
}

TEST_F(Port, ABadRequestCreatesNoPanel) {
  EXPECT_EQ(ErrorOf("set", {{"control", "frmTest.cmdRun"}, {"text", "x"}}), -32003);
  EXPECT_EQ(ErrorOf("set", {{"control", "frmTest.txtLoss"}}), -32602);
  EXPECT_EQ(ErrorOf("key", {{"control", "frmTest.txtLoss"}}), -32602);
  EXPECT_EQ(ErrorOf("click", {{"control", "frmTest.lbl"}}), -32003);
  EXPECT_FALSE(panel_.Created());
}

TEST_F(Port, AFailureOfThePanelsLoadIsTheRequests) {
  panel_.onLoad = [] { throw StationFailure("Type mismatch."); };
  AskLater(1ms, 5, "answer", {{"id", 1}, {"button", "OK"}});
  const Json answer = Ask("get", {{"control", "frmTest.txtLoss"}});
  EXPECT_EQ(answer["error"]["code"], -32005);
  EXPECT_EQ(answer["error"]["message"], "Type mismatch.");
}

TEST_F(Port, ShowsWhatAControlOfEachKindHas) {
  panel_.list.AddItem("row");
  panel_.shp.SetBackColor(kGreen);
  const auto controls = Ask("controls", {{"panel", "frmTest"}})["result"];
  const Json expected = Json::parse(R"-([
    {"name":"frmTest.cmdRun","kind":"button","enabled":true,"visible":true,"caption":"Run"},
    {"name":"frmTest.cmdOff","kind":"button","enabled":false,"visible":true,"caption":"Off"},
    {"name":"frmTest.txtLoss","kind":"text","enabled":true,"visible":true,"text":"0.5"},
    {"name":"frmTest.txtUP(3)","kind":"text","enabled":true,"visible":true,"text":"7"},
    {"name":"frmTest.cboPort","kind":"combo","enabled":true,"visible":true,"text":"COM1",
     "items":["COM1","COM2"],"selected":0},
    {"name":"frmTest.list","kind":"list","enabled":true,"visible":true,"items":["row"],"selected":-1},
    {"name":"frmTest.optGSM","kind":"option","enabled":true,"visible":true,"caption":"GSM","checked":true},
    {"name":"frmTest.optDCS","kind":"option","enabled":true,"visible":true,"caption":"DCS","checked":false},
    {"name":"frmTest.chkLNA","kind":"check","enabled":true,"visible":true,"caption":"LNA","checked":false},
    {"name":"frmTest.upd","kind":"updown","enabled":true,"visible":true,"value":-5,"min":-200,"max":0,"step":1},
    {"name":"frmTest.shp","kind":"lamp","enabled":true,"visible":true},
    {"name":"frmTest.prg","kind":"progress","enabled":true,"visible":true,"value":0,"min":0,"max":100},
    {"name":"frmTest.tab","kind":"tab","enabled":true,"visible":true,"items":["SYSTEM","RX"],"selected":0},
    {"name":"frmTest.lbl","kind":"label","enabled":true,"visible":true,"caption":"Loss"}])-");
  ASSERT_EQ(controls.size(), expected.size());
  for (std::size_t i = 0; i < expected.size(); ++i) {
    for (const auto& [key, value] : expected[i].items()) EXPECT_EQ(controls[i].value(key, Json()), value) << key;
    EXPECT_TRUE(controls[i].contains("foreColor") && controls[i].contains("backColor"));
    EXPECT_EQ(controls[i].size(), expected[i].size() + 2) << controls[i];
  }
  EXPECT_EQ(controls[10]["backColor"], 0x0000FF00);
  EXPECT_EQ(controls[0]["backColor"], 2147483663U);
}

TEST_F(Port, SetActsAsAnOperatorsHand) {
  std::string events;
  panel_.txtLoss.onChange = [&] { events += "change:" + panel_.txtLoss.Text() + " "; };
  panel_.cboPort.onChange = [&] { events += "typed:" + panel_.cboPort.Text() + " "; };
  panel_.cboPort.onClick = [&] { events += "picked:" + panel_.cboPort.Text() + " "; };
  panel_.optDCS.onClick = [&] { events += "dcs "; };
  panel_.chkLNA.onClick = [&] { events += "lna "; };
  panel_.upd.onChange = [&] { events += "upd "; };
  EXPECT_EQ(Ask("set", {{"control", "frmTest.txtLoss"}, {"text", "-12.5"}})["result"]["text"], "-12.5");
  EXPECT_EQ(Ask("set", {{"control", "frmTest.cboPort"}, {"select", "COM2"}})["result"]["selected"], 1);
  EXPECT_EQ(Ask("set", {{"control", "frmTest.cboPort"}, {"text", "COM9"}})["result"]["selected"], -1);
  EXPECT_EQ(Ask("set", {{"control", "frmTest.optDCS"}, {"checked", true}})["result"]["checked"], true);
  Ask("set", {{"control", "frmTest.optDCS"}, {"checked", true}});
  EXPECT_FALSE(panel_.optGSM.Selected());
  EXPECT_EQ(ErrorOf("set", {{"control", "frmTest.optGSM"}, {"checked", false}}), 0) << "it is clear already";
  EXPECT_EQ(Ask("set", {{"control", "frmTest.chkLNA"}, {"checked", true}})["result"]["checked"], true);
  Ask("set", {{"control", "frmTest.chkLNA"}, {"checked", true}});
  EXPECT_EQ(Ask("set", {{"control", "frmTest.upd"}, {"value", -200}})["result"]["value"], -200);
  EXPECT_EQ(Ask("set", {{"control", "frmTest.tab"}, {"select", "RX"}})["result"]["selected"], 1);
  EXPECT_EQ(events, "change:-12.5 picked:COM2 typed:COM9 dcs lna upd ");
}

struct ErrorCase {
  const char* method;
  const char* params;
  int code;
};

TEST_F(Port, RefusesActsThatDoNotFitAndChangesNothing) {
  const ErrorCase rows[] = {
      {"get", R"({"control":"frmTest.none"})", -32001},
      {"get", R"({"control":"frmNone.cmdRun"})", -32001},
      {"get", R"({"control":"frmTest"})", -32001},
      {"get", R"({"control":""})", -32001},
      {"get", R"-({"control":"frmTest.txtUP(4)"})-", -32001},
      {"controls", R"({"panel":"frmNone"})", -32001},
      {"show", R"({"panel":"frmNone"})", -32001},
      {"close", R"({"panel":"frmNone"})", -32001},
      {"click", R"({"control":"frmTest.cmdOff"})", -32002},
      {"set", R"({"control":"frmTest.cmdRun","text":"x"})", -32003},
      {"set", R"({"control":"frmTest.txtLoss","select":"x"})", -32003},
      {"set", R"({"control":"frmTest.txtLoss","checked":true})", -32003},
      {"set", R"({"control":"frmTest.txtLoss","value":1})", -32003},
      {"set", R"({"control":"frmTest.prg","value":1})", -32003},
      {"set", R"({"control":"frmTest.optGSM","checked":false})", -32003},
      {"key", R"({"control":"frmTest.cmdRun","text":"x"})", -32003},
      {"click", R"({"control":"frmTest.lbl"})", -32003},
      {"click", R"({"control":"frmTest.upd"})", -32003},
      {"set", R"({"control":"frmTest.cboPort","select":"COM9"})", -32602},
      {"set", R"({"control":"frmTest.upd","value":1})", -32602},
      {"set", R"({"control":"frmTest.upd","value":-201})", -32602},
      {"set", R"({"control":"frmTest.upd","value":-9223372036854775808})", -32602},
      {"set", R"({"control":"frmTest.upd","value":18446744073709551615})", -32602},
      {"set", R"({"control":"frmTest.upd","value":-1.5})", -32602},
      {"set", R"({"control":"frmTest.upd","value":"-1"})", -32602},
      {"set", R"({"control":"frmTest.chkLNA","checked":1})", -32602},
      {"set", R"({"control":"frmTest.txtLoss","text":7})", -32602},
      {"set", R"({"control":"frmTest.txtLoss"})", -32602},
      {"set", R"({"control":"frmTest.txtLoss","text":"1","value":1})", -32602},
      {"key", R"({"control":"frmTest.txtLoss"})", -32602},
      {"state", R"({"name":"Nothing"})", -32602},
      {"state", R"({})", -32602},
      {"answer", R"({"id":1,"button":"OK"})", -32004},
      {"answer", R"({"id":1,"path":null})", -32004},
      {"answer", R"({"id":1})", -32602},
      {"answer", R"({"button":"OK"})", -32602},
      {"answer", R"({"id":1,"button":"OK","path":null})", -32602},
      {"answer", R"({"id":"1","button":"OK"})", -32602},
  };
  panel_.Touch();
  const Json before = Ask("controls", {{"panel", "frmTest"}})["result"];
  for (const ErrorCase& row : rows) {
    EXPECT_EQ(ErrorOf(row.method, Json::parse(row.params)), row.code) << row.method << row.params;
  }
  EXPECT_EQ(Ask("controls", {{"panel", "frmTest"}})["result"], before);
}

struct Disabled : Port {
  void ExpectEveryActRefused();
};

void Disabled::ExpectEveryActRefused() {
  const ErrorCase rows[] = {
      {"set", R"({"control":"frmTest.txtLoss","text":"1"})", -32002},
      {"set", R"({"control":"frmTest.cboPort","select":"COM2"})", -32002},
      {"set", R"({"control":"frmTest.optDCS","checked":true})", -32002},
      {"set", R"({"control":"frmTest.chkLNA","checked":true})", -32002},
      {"set", R"({"control":"frmTest.upd","value":-1})", -32002},
      {"set", R"({"control":"frmTest.tab","select":"RX"})", -32002},
      {"key", R"({"control":"frmTest.txtLoss","text":"1"})", -32002},
      {"click", R"({"control":"frmTest.cmdRun"})", -32002},
      {"click", R"({"control":"frmTest.optDCS"})", -32002},
  };
  for (const ErrorCase& row : rows) {
    EXPECT_EQ(ErrorOf(row.method, Json::parse(row.params)), row.code) << row.method << row.params;
  }
  EXPECT_EQ(Ask("get", {{"control", "frmTest.txtLoss"}})["result"]["enabled"], false);
}

TEST_F(Disabled, AControlRefusesEveryAct) {
  for (Control* control : panel_.Controls()) control->SetEnabled(false);
  ExpectEveryActRefused();
}

TEST_F(Disabled, AFrameMakesWhatItHoldsRefuseEveryAct) {
  Panel around{"frmAround", ""};
  Frame frame{around, "fra", ""};
  for (Control* control : panel_.Controls()) frame.Hold({control});
  EXPECT_EQ(Ask("get", {{"control", "frmTest.txtLoss"}})["result"]["enabled"], true);
  frame.SetEnabled(false);
  ExpectEveryActRefused();
}

TEST_F(Port, KeysArePressedOneByOne) {
  std::string keys;
  int changes = 0;
  panel_.txtLoss.onKeyPress = [&](char32_t key) { keys += std::to_string(static_cast<int>(key)) + " "; };
  panel_.txtLoss.onChange = [&] { ++changes; };
  Ask("key", {{"control", "frmTest.txtLoss"}, {"text", "\b7ㅁ\r"}});
  EXPECT_EQ(keys, "8 55 12609 13 ");
  EXPECT_EQ(panel_.txtLoss.Text(), "0.7ㅁ");
  EXPECT_EQ(changes, 3);
}

TEST_F(Port, ClicksOptionsAndCheckBoxesAsAMouseDoes) {
  Ask("click", {{"control", "frmTest.optDCS"}});
  EXPECT_TRUE(panel_.optDCS.Selected());
  Ask("click", {{"control", "frmTest.chkLNA"}});
  EXPECT_TRUE(panel_.chkLNA.Checked());
  Ask("click", {{"control", "frmTest.chkLNA"}});
  EXPECT_FALSE(panel_.chkLNA.Checked());
}

TEST_F(Port, ShowsAndClosesPanels) {
  EXPECT_EQ(Ask("show", {{"panel", "frmTest"}})["result"], Json::object());
  EXPECT_TRUE(panel_.Visible());
  EXPECT_EQ(loads_, 1);
  Ask("close", {{"panel", "frmTest"}});
  EXPECT_FALSE(panel_.Visible());
}

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
}  // namespace orvane
