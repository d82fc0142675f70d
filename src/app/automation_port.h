#pragma once

#include <cstdint>
#include <deque>
#include <functional>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "app/desk.h"
#include "app/json_rpc.h"
#include "platform/event_loop.h"
#include "platform/operator.h"
#include "platform/panel.h"
#include "txcal/run_report.h"

namespace orvane {

/// What the automation port needs of a station.
struct AutomationSurface {
  EventLoop& loop;
  Desk& desk;
  OperationNest& nest;
  RunReport& report;
  std::vector<Panel*> panels;
  std::function<std::optional<Json>(std::string_view name)> state;
};

/// Lets another program press the station's buttons: JSON-RPC 2.0, one object a line. A transport brings lines in
/// from the event loop, wherever that turns, and takes lines out. The port lives as long as the station.
///
/// A request that starts an operation sits on the stack below whatever is served meanwhile, as an operator's act
/// does, and is answered when the operation has ended.
class AutomationPort {
 public:
  explicit AutomationPort(AutomationSurface surface);
  AutomationPort(const AutomationPort&) = delete;
  AutomationPort& operator=(const AutomationPort&) = delete;

  /// A client is there; `send` takes lines for it, without their ends. It is told of boxes and dialogs that lie open.
  void Connect(std::function<void(const std::string& line)> send);
  /// The client has gone. Operations that it started go on; their answers are dropped.
  void Disconnect();

  /// One line from the client. What ends the station or stops an operation around this one flies out.
  void Receive(std::string_view line);

  /// The client ends the station by leaving. No request did, so none of those on the stack is answered.
  /// @throws StationEnded
  [[noreturn]] void EndStation();
  /// The station ends.
  void TellExit();

 private:
  using Method = Json (AutomationPort::*)(const Json& params);
  struct MethodRow {
    std::string_view name;
    Method serve;
    /// It acts on the station: refused while a box or dialog is open.
    bool acts;
  };
  static const MethodRow* FindMethod(std::string_view name);

  void ServeWaiting();
  void Serve(const std::string& line);
  [[nodiscard]] Json Call(const RpcRequest& request);
  void Notify(std::string_view method, const Json& params);
  void TellBox(const Desk::OpenBox& open);
  void TellDialog(const Desk::OpenDialog& open);
  void TellVerdict(Verdict verdict);

  [[nodiscard]] Json Panels(const Json& params);
  [[nodiscard]] Json Controls(const Json& params);
  [[nodiscard]] Json Get(const Json& params);
  [[nodiscard]] Json Set(const Json& params);
  [[nodiscard]] Json Key(const Json& params);
  [[nodiscard]] Json Click(const Json& params);
  [[nodiscard]] Json Show(const Json& params);
  [[nodiscard]] Json Close(const Json& params);
  [[nodiscard]] Json State(const Json& params);
  [[nodiscard]] Json Answer(const Json& params);

  [[nodiscard]] Panel& FindPanel(std::string_view name) const;
  [[nodiscard]] Panel& PanelParam(const Json& params) const;
  [[nodiscard]] Control& ControlParam(const Json& params) const;
  void Touch(Panel& panel);

  AutomationSurface surface_;
  Operator operator_;
  std::function<void(const std::string&)> send_;
  /// Counts the clients, so that no client gets another one's answers.
  std::uint64_t client_ = 0;
  /// Lines that wait until an answered box is off the desk.
  std::deque<std::string> waiting_;
  bool exitAnswered_ = false;
};

}  // namespace orvane
