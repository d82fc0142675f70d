// What is a request, and what it tells of panels and controls.

#include "app/port_rig.h"
#include "base/failure.h"

namespace orvane::test {
namespace {

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
    {"name":"frmTest.lbl","kind":"label","enabled":true,"visible":true,"caption":"Loss"},
    {"name":"frmTest.cmdStop","kind":"button","enabled":true,"visible":true,"caption":"Stop"}])-");
  ASSERT_EQ(controls.size(), expected.size());
  for (std::size_t i = 0; i < expected.size(); ++i) {
    for (const auto& [key, value] : expected[i].items()) EXPECT_EQ(controls[i].value(key, Json()), value) << key;
    EXPECT_TRUE(controls[i].contains("foreColor") && controls[i].contains("backColor"));
    EXPECT_EQ(controls[i].size(), expected[i].size() + 2) << controls[i];
  }
  EXPECT_EQ(controls[10]["backColor"], 0x0000FF00);
  EXPECT_EQ(controls[0]["backColor"], 2147483663U);
}

TEST_F(Port, WhatIsNoUtf8IsReplacedInAnAnswer) {
  panel_.txtLoss.SetText("a\xFF");
  EXPECT_EQ(Ask("get", {{"control", "frmTest.txtLoss"}})["result"]["text"], "a\uFFFD");
}

}  // namespace
}  // namespace orvane::test
