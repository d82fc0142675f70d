// Single requests to the automation port of the built station.

#include <gtest/gtest.h>

#include <algorithm>
#include <set>

#include "program/programs.h"

namespace orvane::test {
namespace {

/// All that a client can see: every control of every panel and the state of the link, the runs and the tables.
Json EverythingOf(Station& station) {
  Json everything;
  const Json panels = station.Panels();
  for (const Json& panel : panels) everything[std::string(panel["name"])] = station.Controls(panel);
  for (const char* name : {"TMStatus", "ReplyDone", "CalMode", "SaveMode", "PowerIndex", "RampTable", "RFParams"}) {
    everything[name] = station.State(name);
  }
  return everything;
}

struct BadLine {
  std::string line;
  int code;
};

TEST(Requests, ABadLineIsAnsweredWithItsErrorAndChangesNothing) {
  const BadLine rows[] = {
      {"garbage", -32700},
      {R"({"jsonrpc":"2.0","id":0,"method":"click")", -32700},
      {R"({"jsonrpc":"2.0","id":0,"method":"panels"} trailing)", -32700},
      {"\"\xFF\xFE\"", -32700},
      {std::string("{\"id\":0,\0}", 10), -32700},
      {std::string(100000, '['), -32700},
      {std::string(2 << 20, 'x'), -32700},
      {"null", -32600},
      {"7", -32600},
      {R"([{"jsonrpc":"2.0","id":0,"method":"panels"}])", -32600},
      {"{}", -32600},
      {R"({"id":0,"method":"panels"})", -32600},
      {R"({"jsonrpc":"1.0","id":0,"method":"panels"})", -32600},
      {R"({"jsonrpc":2.0,"id":0,"method":"panels"})", -32600},
      {R"({"jsonrpc":"2.0","id":0})", -32600},
      {R"({"jsonrpc":"2.0","id":0,"method":7})", -32600},
      {R"({"jsonrpc":"2.0","id":{},"method":"panels"})", -32600},
      {R"({"jsonrpc":"2.0","id":0,"method":"press"})", -32601},
      {R"({"jsonrpc":"2.0","id":0,"method":"Panels"})", -32601},
      {R"({"jsonrpc":"2.0","id":0,"method":""})", -32601},
      {R"({"jsonrpc":"2.0","id":0,"method":"box","params":{}})", -32601},
      {R"({"jsonrpc":"2.0","id":0,"method":"controls","params":["OrvaneMain"]})", -32602},
      {R"({"jsonrpc":"2.0","id":0,"method":"click"})", -32602},
      {R"({"jsonrpc":"2.0","id":0,"method":"click","params":{"control":7}})", -32602},
      {R"({"jsonrpc":"2.0","id":0,"method":"click","params":{"Control":"OrvaneMain.cmdExit"}})", -32602},
      {R"({"jsonrpc":"2.0","id":0,"method":"show","params":{}})", -32602},
      {R"({"jsonrpc":"2.0","id":0,"method":"state","params":{"name":"Nothing"}})", -32602},
      {R"({"jsonrpc":"2.0","id":0,"method":"set","params":{"control":"OrvaneMain.txtLoss"}})", -32001},
      {R"({"jsonrpc":"2.0","id":0,"method":"set","params":{"control":"frmAutoCal.txtLoss"}})", -32602},
      {R"({"jsonrpc":"2.0","id":0,"method":"set","params":{"control":"frmAutoCal.txtLoss","text":1}})", -32602},
      {R"({"jsonrpc":"2.0","id":0,"method":"key","params":{"control":"frmAutoCal.txtLoss","text":"\ud800"}})",
       -32700},
      {R"({"jsonrpc":"2.0","id":0,"method":"click","params":{"control":"frmNone.cmdExit"}})", -32001},
      {R"({"jsonrpc":"2.0","id":0,"method":"click","params":{"control":"OrvaneMain.cmdNone"}})", -32001},
      {R"({"jsonrpc":"2.0","id":0,"method":"click","params":{"control":"orvanemain.cmdexit"}})", -32001},
      {R"({"jsonrpc":"2.0","id":0,"method":"click","params":{"control":"cmdExit"}})", -32001},
      {R"-({"jsonrpc":"2.0","id":0,"method":"get","params":{"control":"frmRampTable.txtUP(32)"}})-", -32001},
      {R"({"jsonrpc":"2.0","id":0,"method":"controls","params":{"panel":""}})", -32001},
      {R"({"jsonrpc":"2.0","id":0,"method":"click","params":{"control":"OrvaneMain.lblTarget"}})", -32003},
      {R"({"jsonrpc":"2.0","id":0,"method":"set","params":{"control":"OrvaneMain.cmdExit","text":"x"}})", -32003},
      {R"({"jsonrpc":"2.0","id":0,"method":"set","params":{"control":"OrvaneMain.shpTargetOnOff","value":1}})",
       -32003},
      {R"({"jsonrpc":"2.0","id":0,"method":"set","params":{"control":"OrvaneMain.updAPCLoss","value":1}})", -32602},
      {R"({"jsonrpc":"2.0","id":0,"method":"set","params":{"control":"OrvaneMain.cboPort","select":"COM5"}})",
       -32602},
      {R"({"jsonrpc":"2.0","id":0,"method":"answer","params":{"id":1,"button":"OK"}})", -32004},
  };
  Station station;
  const Json before = EverythingOf(station);
  for (const BadLine& row : rows) {
    SCOPED_TRACE(row.line.substr(0, 100));
    station.Process().Send(row.line);
    const Json error = station.NextAnswerTo(0);
    EXPECT_EQ(error["error"]["code"], row.code) << error;
    EXPECT_FALSE(std::string(error["error"]["message"]).empty());
    EXPECT_TRUE(error["id"].is_null() || error["id"] == 0);
  }
  EXPECT_TRUE(station.Heard("box").empty());
  EXPECT_EQ(EverythingOf(station), before);
}

TEST(Requests, OneWithoutAnIdIsCarriedOutAndNotAnswered) {
  Station station;
  station.Process().Send(
      R"({"jsonrpc":"2.0","method":"set","params":{"control":"frmAutoCal.txtLoss","text":"-1.5"}})");
  station.Process().Send("");
  EXPECT_EQ(station.Get("frmAutoCal.txtLoss")["text"], "-1.5");
  EXPECT_EQ(station.Others(), 0U);
}

TEST(Requests, AnIdComesBackAsItWas) {
  Station station;
  for (const char* id : {"\"a text\"", "\"\"", "-7", "1.5", "null", "9007199254740993"}) {
    station.Process().Send(std::string(R"({"jsonrpc":"2.0","method":"panels","id":)") + id + "}");
    const auto line = station.Process().NextLine();
    ASSERT_TRUE(line.has_value());
    EXPECT_EQ(Json::parse(*line)["id"], Json::parse(id));
  }
}

TEST(Requests, AreRefusedWhileABoxIsOpenUnlessTheyOnlyLook) {
  Station station;
  station.answersBoxes = false;
  const int click = station.SendClick("OrvaneMain.cmdTargetReset");
  const Json box = station.Await("box");
  EXPECT_EQ(box["text"], "Port is already closed.");
  EXPECT_EQ(station.ErrorOf("click", {{"control", "OrvaneMain.cmdExit"}}), -32006);
  EXPECT_EQ(station.ErrorOf("set", {{"control", "frmAutoCal.txtLoss"}, {"text", "1"}}), -32006);
  EXPECT_EQ(station.ErrorOf("key", {{"control", "frmAutoCal.txtLoss"}, {"text", "1"}}), -32006);
  EXPECT_EQ(station.ErrorOf("show", {{"panel", "frmAutoCal"}}), -32006);
  EXPECT_EQ(station.ErrorOf("close", {{"panel", "OrvaneMain"}}), -32006);
  EXPECT_EQ(station.ErrorOf("panels"), 0);
  EXPECT_EQ(station.ErrorOf("controls", {{"panel", "frmAutoCal"}}), 0);
  EXPECT_EQ(station.ErrorOf("get", {{"control", "frmAutoCal.txtLoss"}}), 0);
  EXPECT_EQ(station.ErrorOf("state", {{"name", "CalMode"}}), 0);
  const int id = box["id"];
  EXPECT_EQ(station.ErrorOf("answer", {{"id", id + 1}, {"button", "OK"}}), -32004);
  EXPECT_EQ(station.ErrorOf("answer", {{"id", id}, {"button", "Cancel"}}), -32602);
  EXPECT_EQ(station.ErrorOf("answer", {{"id", id}, {"path", nullptr}}), -32602);
  EXPECT_EQ(station.ErrorOf("answer", {{"id", id}, {"button", "OK"}}), 0);
  EXPECT_EQ(station.ErrorOf("answer", {{"id", id}, {"button", "OK"}}), -32004) << "it has been answered";
  EXPECT_EQ(station.AnswerTo(click)["result"], Json::object());
}

TEST(Requests, ActOnControlsAsAnOperatorDoes) {
  Station station;
  // The whole text is one change, and the box's filter answers it: the object shows what stands there then.
  EXPECT_EQ(station.Set("OrvaneMain.cboPort", "text", "COM9")["result"]["text"], "COM1");
  EXPECT_EQ(station.Await("box")["text"], "Input the Item in the List.");
  EXPECT_EQ(station.Set("OrvaneMain.cboPort", "select", "COM2")["result"]["selected"], 1);
  EXPECT_EQ(station.Set("OrvaneMain.chkLNAOnOff", "checked", true)["result"]["checked"], true);
  EXPECT_EQ(station.Set("OrvaneMain.updAPCLoss", "value", -25)["result"]["value"], -25);
  EXPECT_EQ(station.Get("OrvaneMain.txtAPCLoss")["text"], "-2.5");
  EXPECT_EQ(station.Set("OrvaneMain.SSTab1", "select", "TX")["result"]["selected"], 2);
  EXPECT_EQ(station.Set("OrvaneMain.optFile", "checked", false)["error"]["code"], -32003);
  EXPECT_EQ(station.Set("OrvaneMain.optTarget", "checked", true)["result"]["checked"], true);
  EXPECT_EQ(station.Get("OrvaneMain.optFile")["checked"], false);
  const Json keys = station.Ask("key", {{"control", "OrvaneMain.txtUserCommand"}, {"text", "rfpwx\b"}});
  EXPECT_EQ(keys["result"]["text"], "rfpw");
  EXPECT_EQ(station.Ask("key", {{"control", "OrvaneMain.txtUserCommand"}, {"text", "\r"}})["result"]["text"], "");
  EXPECT_EQ(station.Get("OrvaneMain.txtResults")["text"], "Invalid Command !! rfpw\r\n");
}

TEST(Requests, ShowAndHidePanelsAndCreateThemAtTheFirstTouch) {
  Station station;
  const auto panel = [&](const std::string& name) {
    const Json panels = station.Panels();
    const auto hit =
        std::find_if(panels.begin(), panels.end(), [&](const Json& entry) { return entry["name"] == name; });
    return hit == panels.end() ? Json() : *hit;
  };
  EXPECT_EQ(panel("OrvaneMain"), Json({{"name", "OrvaneMain"},
                                       {"caption", "T9300 ORVANE 8_6_4D    English Version (030410)"},
                                       {"created", true},
                                       {"visible", true}}));
  for (const char* name : {"frmAutoCal", "frmBaseBand", "frmDownLoad", "frmMPAutoCal", "frmRampTable", "frmFail",
                           "frmFailPass", "frmAutoCalTxResult"}) {
    EXPECT_TRUE(panel(name).is_object()) << name;
  }
  EXPECT_EQ(panel("frmRampTable")["created"], false);
  EXPECT_EQ(station.Get("frmRampTable.txtUP(3)")["kind"], "text");
  EXPECT_EQ(panel("frmRampTable")["created"], true);
  EXPECT_EQ(panel("frmRampTable")["visible"], false);
  EXPECT_EQ(station.Ask("show", {{"panel", "frmRampTable"}})["result"], Json::object());
  EXPECT_EQ(panel("frmRampTable")["visible"], true);
  EXPECT_EQ(station.Ask("close", {{"panel", "frmRampTable"}})["result"], Json::object());
  EXPECT_EQ(panel("frmRampTable")["visible"], false);
  EXPECT_EQ(panel("frmRampTable")["created"], true);
}

TEST(Requests, EveryControlHasJustWhatItsKindHas) {
  const std::map<std::string, std::set<std::string>> kinds{
      {"button", {"caption"}},
      {"label", {"caption"}},
      {"frame", {"caption"}},
      {"option", {"caption", "checked"}},
      {"check", {"caption", "checked"}},
      {"text", {"text"}},
      {"combo", {"text", "items", "selected"}},
      {"list", {"items", "selected"}},
      {"tab", {"items", "selected"}},
      {"updown", {"value", "min", "max", "step"}},
      {"progress", {"value", "min", "max"}},
      {"lamp", {}},
      {"image", {}},
  };
  Station station;
  std::set<std::string> met;
  std::set<std::string> names;
  const Json panels = station.Panels();
  for (const Json& panel : panels) {
    const Json controls = station.Controls(panel);
    for (const Json& control : controls) {
      SCOPED_TRACE(control.dump());
      std::set<std::string> members;
      for (const auto& [name, value] : control.items()) members.insert(name);
      std::set<std::string> expected{"name", "kind", "enabled", "visible", "foreColor", "backColor"};
      ASSERT_TRUE(kinds.contains(control["kind"]));
      expected.insert(kinds.at(control["kind"]).begin(), kinds.at(control["kind"]).end());
      EXPECT_EQ(members, expected);
      EXPECT_TRUE(control["foreColor"].is_number_unsigned() && control["backColor"].is_number_unsigned());
      EXPECT_THAT(std::string(control["name"]), testing::StartsWith(std::string(panel["name"]) + "."));
      EXPECT_TRUE(names.insert(control["name"]).second) << "two of that name";
      met.insert(control["kind"]);
    }
  }
  EXPECT_EQ(met.size(), kinds.size()) << testing::PrintToString(met);
}

TEST(Requests, EveryStateOfTheGuideHasItsForm) {
  const std::map<std::string, std::vector<std::string>> names{
      {"boolean",
       {"ReplyDone", "ReplyHandled", "PlainReplyMode", "LogOffState", "SerialPortState", "TestSetReady",
        "CalStopRequested", "CalFailed", "GsmCalDone", "DcsCalDone", "SpareCalDone", "CalSaveFileOk", "PSReady",
        "LoaderReady", "BatCalShowDone"}},
      {"number",
       {"ReplySpin",
        "SyncDelay",
        "AdcEnableValue",
        "ConvertedAdcValue",
        "CurrentTestModeValue",
        "RawAdcValue",
        "RawAdcStage",
        "RawAdcSkip",
        "RawAdcOutOfWindow",
        "LogFileNumber",
        "SerialPortNumber",
        "SerialInBuffer",
        "SerialOutBuffer",
        "SerialInputLength",
        "GpibBoardNumber",
        "GpibPrimaryAddress",
        "GpibSecondaryAddress",
        "GpibReadSize",
        "RFParamCount",
        "ibsta",
        "iberr"}},
      {"string", {"TMStatus",        "ReplyOperation",  "ReplyItem",     "ReplyBuffer",
                  "TargetMode",      "CommEventText",   "CommErrorText", "PowerMeasureTimes10",
                  "LogFileName",     "SerialBaud",      "SerialParity",  "SerialDataBits",
                  "SerialStopBits",  "TargetName",      "TestSetKind",   "TestSetEventText",
                  "RampStorageMode", "CalMode",         "SaveMode",      "CalSaveFileName",
                  "CC2CVADCSaved",   "ShutDownADCSaved"}},
      {"array",
       {"ReplyBytes", "RFParamText", "EepromImage", "RampTable", "PowerIndex", "InitValueIndex", "LossTable",
        "APCDACPatternTable", "FrameData"}},
      {"object", {"RFParams"}},
  };
  Station station;
  for (const auto& [form, group] : names) {
    for (const std::string& name : group) EXPECT_EQ(station.State(name).type_name(), form) << name;
  }
}

}  // namespace
}  // namespace orvane::test
