// An operator's acts, from another program.

#include "app/port_rig.h"
#include "base/failure.h"

namespace orvane::test {
namespace {

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

TEST_F(Port, RefusesActsThatDoNotFitAndChangesNothing) {
  const PortErrorCase rows[] = {
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
      {"set", R"({"control":"frmTest.chkLNA","checked":null})", -32602},
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
  for (const PortErrorCase& row : rows) {
    EXPECT_EQ(ErrorOf(row.method, Json::parse(row.params)), row.code) << row.method << row.params;
  }
  EXPECT_EQ(Ask("controls", {{"panel", "frmTest"}})["result"], before);
}

struct Disabled : Port {
  void ExpectEveryActRefused();
};

void Disabled::ExpectEveryActRefused() {
  const PortErrorCase rows[] = {
      {"set", R"({"control":"frmTest.txtLoss","text":"1"})", -32002},
      {"set", R"({"control":"frmTest.cboPort","text":"COM2"})", -32002},
      {"set", R"({"control":"frmTest.cboPort","select":"COM2"})", -32002},
      {"set", R"({"control":"frmTest.cboPort","select":"COM9"})", -32002},
      {"set", R"({"control":"frmTest.list","select":"row"})", -32002},
      {"set", R"({"control":"frmTest.optDCS","checked":true})", -32002},
      {"set", R"({"control":"frmTest.chkLNA","checked":true})", -32002},
      {"set", R"({"control":"frmTest.optGSM","checked":true})", -32002},
      {"set", R"({"control":"frmTest.upd","value":-1})", -32002},
      {"set", R"({"control":"frmTest.upd","value":1})", -32002},
      {"set", R"({"control":"frmTest.tab","select":"RX"})", -32002},
      {"set", R"({"control":"frmTest.tab","select":"none"})", -32002},
      {"key", R"({"control":"frmTest.txtLoss","text":"1"})", -32002},
      {"key", R"({"control":"frmTest.txtLoss","text":""})", -32002},
      {"key", R"({"control":"frmTest.cboPort","text":"1"})", -32002},
      {"click", R"({"control":"frmTest.cmdRun"})", -32002},
      {"click", R"({"control":"frmTest.txtLoss"})", -32002},
      {"click", R"({"control":"frmTest.cboPort"})", -32002},
      {"click", R"({"control":"frmTest.optDCS"})", -32002},
      {"click", R"({"control":"frmTest.chkLNA"})", -32002},
  };
  for (const PortErrorCase& row : rows) {
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

TEST_F(Port, KeysOfAComboBoxAreTypedIntoIt) {
  std::string typed;
  panel_.cboPort.onChange = [&] { typed += panel_.cboPort.Text() + " "; };
  EXPECT_EQ(Ask("key", {{"control", "frmTest.cboPort"}, {"text", "\b4\r"}})["result"]["text"], "COM4");
  EXPECT_EQ(typed, "COM COM4 ");
}

TEST_F(Port, PicksTheRowOfAList) {
  panel_.list.AddItem("GSM");
  panel_.list.AddItem("DCS");
  EXPECT_EQ(Ask("set", {{"control", "frmTest.list"}, {"select", "DCS"}})["result"]["selected"], 1);
  EXPECT_EQ(panel_.list.Selected(), 1);
  EXPECT_EQ(ErrorOf("set", {{"control", "frmTest.list"}, {"select", "PCS"}}), -32602);
}

TEST_F(Port, ClicksTextAndComboBoxesAsAMouseDoes) {
  std::string clicks;
  panel_.txtLoss.onClick = [&] { clicks += "text "; };
  panel_.cboPort.onClick = [&] { clicks += "combo "; };
  EXPECT_EQ(Ask("click", {{"control", "frmTest.txtLoss"}})["result"], Json::object());
  EXPECT_EQ(Ask("click", {{"control", "frmTest.cboPort"}})["result"], Json::object());
  EXPECT_EQ(clicks, "text combo ");
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

TEST_F(Port, AStoppedActOfAnyKindIsAnsweredWithItsFailure) {
  const auto fail = [] { throw StationFailure("Overflow."); };
  for (auto* event :
       {&panel_.txtLoss.onChange, &panel_.cboPort.onChange, &panel_.cboPort.onClick, &panel_.optDCS.onClick,
        &panel_.chkLNA.onClick, &panel_.upd.onChange, &panel_.onClose, &other_.onLoad}) {
    *event = fail;
  }
  desk_.boxOpened.Connect(
      [this](const Desk::OpenBox& open) { loop_.Post([this, id = open.id] { desk_.Press(id, "OK"); }); });
  const std::pair<const char*, const char*> rows[] = {
      {"set", R"({"control":"frmTest.txtLoss","text":"1"})"},
      {"key", R"({"control":"frmTest.txtLoss","text":"2"})"},
      {"set", R"({"control":"frmTest.cboPort","text":"COM9"})"},
      {"key", R"({"control":"frmTest.cboPort","text":"9"})"},
      {"set", R"({"control":"frmTest.cboPort","select":"COM2"})"},
      {"click", R"({"control":"frmTest.cboPort"})"},
      {"set", R"({"control":"frmTest.optDCS","checked":true})"},
      {"set", R"({"control":"frmTest.chkLNA","checked":true})"},
      {"click", R"({"control":"frmTest.chkLNA"})"},
      {"set", R"({"control":"frmTest.upd","value":-7})"},
      {"close", R"({"panel":"frmTest"})"},
      {"show", R"({"panel":"frmOther"})"},
  };
  for (const auto& [method, params] : rows) {
    EXPECT_EQ(Ask(method, Json::parse(params))["error"], Json::parse(R"({"code":-32005,"message":"Overflow."})"))
        << method << params;
  }
  EXPECT_EQ(Notifications("failure").size(), std::size(rows));
}

TEST_F(Port, WhatIsShownAndClosedIsToldAsAnAct) {
  std::vector<std::string> acts;
  nest_.onAct = [&](const std::string& where, std::string_view how, std::string_view /*value*/) {
    acts.push_back(where + " " + std::string(how));
  };
  Ask("show", {{"panel", "frmTest"}});
  Ask("close", {{"panel", "frmTest"}});
  EXPECT_THAT(acts, testing::ElementsAre("frmTest show", "frmTest close"));
}

}  // namespace
}  // namespace orvane::test
