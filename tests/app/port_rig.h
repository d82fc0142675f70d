#pragma once

#include <gtest/gtest.h>

#include <functional>
#include <optional>
#include <string>
#include <vector>

#include "app/automation/automation_port.h"
#include "platform/controls.h"
#include "platform/virtual_event_loop.h"

namespace orvane::test {

using namespace std::chrono_literals;

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
  Button cmdStop{*this, "cmdStop", "Stop"};
};

/// A port with one client, on a station of two panels.
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
  InstrumentFaults faults_;
  UnitIdentity unit_;
  FrmTest panel_;
  Panel other_{"frmOther", "Other"};
  int loads_ = 0;
  std::function<void()> operation_ = [] {};
  std::vector<Json> sent_;
  std::function<void(const Json&)> whenSent_;
  int lastId_ = 1000;
  /// How long a look at the state blocks the station.
  TimePoint stateCost_{0};
  bool replyComing_ = false;
  AutomationPort port_{{loop_,
                        desk_,
                        nest_,
                        report_,
                        faults_,
                        unit_,
                        {&panel_, &other_},
                        [this](std::string_view name) {
                          loop_.Block(stateCost_);
                          return name == "TMStatus" ? std::optional<Json>("&H00") : std::nullopt;
                        },
                        {&panel_.cmdStop},
                        [this] { return replyComing_; }}};
};

struct PortErrorCase {
  const char* method;
  const char* params;
  int code;
};

}  // namespace orvane::test
