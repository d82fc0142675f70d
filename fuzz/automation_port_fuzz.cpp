// Lines from a client of the automation port, a millisecond apart, at a panel with a control of each kind. Each
// request that wants an answer gets just one, with its id; all that is sent is JSON; boxes that a click opens are off
// the desk when all is over; and of a run the client is told what the last sound `subscribe` asked for.

#include <map>
#include <set>

#include "app/automation/automation_port.h"
#include "platform/controls.h"
#include "platform/virtual_event_loop.h"
#include "portion.h"
#include "require.h"

namespace {

using namespace orvane;
using namespace std::chrono_literals;
using fuzz::Require;

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
  TabControl tab{*this, "tab", {"SYSTEM", "RX"}};
  Label lbl{*this, "lbl", "Loss"};
};

/// A station of one panel whose button asks something, in a box and in a dialog in turn.
class Station {
 public:
  Station() {
    panel_.cmdOff.SetEnabled(false);
    panel_.cmdRun.onClick = [this] { Ask(); };
    port_.Connect([this](const std::string& line) { Hear(line); });
  }

  void Serve(fuzz::Portions& input) {
    for (TimePoint at = 1ms; !input.Empty(); at += 1ms) {
      const std::string line(input.Until('\n'));
      NoteWish(line);
      loop_.PostAt(at, [this, line] { port_.Receive(line); });
    }
    loop_.PostAt(10s, [this] { ClearDesk(); });
    loop_.RunDry();
    Require(desk_.Clear(), "something lies on the desk for good");
    Require(answers_ == wishes_, "a request is answered twice, or never");
  }

 private:
  void Ask() {
    report_.Read({"tx.gsm.level.5.power", 31.9, "dBm", 31.8, 32.2});
    if (++asked_ % 2 == 0) {
      FileDialog dialog;
      (void)desk_.ShowOpen(dialog);
    } else {
      (void)desk_.Show({"Are you ready?", "Test", BoxIcon::Question, {BoxButton::Yes, BoxButton::No}});
    }
  }

  /// What lies open for nobody would keep its operation for good.
  void ClearDesk() {
    if (desk_.Clear()) return;
    for (const auto& open : std::list(desk_.OpenBoxes())) (void)desk_.Press(open.id, "Yes");
    for (const auto& open : std::list(desk_.OpenDialogs())) (void)desk_.Choose(open.id, std::nullopt);
    loop_.PostAt(loop_.Now() + 1ms, [this] { ClearDesk(); });
  }

  void NoteWish(const std::string& line) {
    if (line.find_first_not_of(" \t\r") == std::string::npos) return;
    RpcRequest request;
    (void)fuzz::Done<RpcFailure>([&] { ParseRequest(line, request); });
    silent_ = silent_ || !request.wantsAnswer;
    if (request.wantsAnswer) ++wishes_[request.id.dump(-1, ' ', false, Json::error_handler_t::replace)];
  }

  void Hear(const std::string& line) {
    Require(line.find('\n') == std::string::npos, "more than one line");
    const Json message = Json::parse(line, nullptr, false);
    Require(message.is_object() && message.value("jsonrpc", "") == "2.0", "something is sent that is no message");
    const bool answers = message.contains("id");
    Require(answers == (message.contains("result") != message.contains("error")),
            "neither result nor error, or both");
    Require(answers != (message.contains("method") && message.contains("params")), "neither answer nor notification");
    if (answers) ++answers_[message["id"].dump()];
    if (answers && message.contains("result") && message["result"].contains("topics")) {
      topics_ = message["result"]["topics"].get<std::set<std::string>>();
    }
    const std::string method = message.value("method", "");
    // A `subscribe` without an id holds and is answered with nothing.
    if (method == "reading") Require(topics_.contains(method) || silent_, "a reading is told that nobody asked for");
  }

  VirtualEventLoop loop_;
  Desk desk_{loop_, "/work"};
  OperationNest nest_{desk_};
  RunReport report_;
  InstrumentFaults faults_;
  UnitIdentity unit_;
  FrmTest panel_;
  int asked_ = 0;
  /// Of the last answer to `subscribe`.
  std::set<std::string> topics_;
  /// A request came that wants no answer.
  bool silent_ = false;
  std::map<std::string, int> wishes_;
  std::map<std::string, int> answers_;
  AutomationPort port_{{loop_, desk_, nest_, report_, faults_, unit_, {&panel_}, [](std::string_view name) {
                          return name == "TMStatus" ? std::optional<Json>("&H00") : std::nullopt;
                        }}};
};

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
  fuzz::Portions input(data, size);
  Station station;
  station.Serve(input);
  return 0;
}
