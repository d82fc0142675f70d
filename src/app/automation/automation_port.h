#pragma once

#include <cstdint>
#include <deque>
#include <functional>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "app/automation/json_rpc.h"
#include "app/automation/line_cutter.h"
#include "app/automation/request_share.h"
#include "app/automation/run_news.h"
#include "app/desk.h"
#include "app/unit_identity.h"
#include "platform/event_loop.h"
#include "platform/operator.h"
#include "platform/panel.h"
#include "state/charger_state.h"
#include "state/run_report.h"

namespace orvane {

/// What the automation port needs of a station.
struct AutomationSurface {
  EventLoop& loop;
  Desk& desk;
  OperationNest& nest;
  RunReport& report;
  InstrumentFaults& faults;
  UnitIdentity& unit;
  std::vector<Panel*> panels;
  std::function<std::optional<Json>(std::string_view name)> state;
  /// Clicks that only set a mark, and are heard however many requests wait.
  std::vector<const Control*> stops = {};
  /// The bytes of a reply are coming in, which have a few milliseconds to do so.
  std::function<bool()> replyComing = [] { return false; };
  /// Requests wait, for some seconds at the most: what they ask for could not be done now.
  std::function<bool()> held = [] { return false; };
};

/// Lets another program press the station's buttons: JSON-RPC 2.0, one object a line. A transport brings bytes in and
/// takes lines out. Requests are served one behind another by events of the loop, wherever that turns. The port lives
/// as long as the station.
///
/// A request that starts an operation sits on the stack below whatever is served meanwhile, as an operator's act
/// does, and is answered when the operation has ended. While an operation is under way the requests have their share
/// of its time and no more.
class AutomationPort {
 public:
  explicit AutomationPort(AutomationSurface surface);
  AutomationPort(const AutomationPort&) = delete;
  AutomationPort& operator=(const AutomationPort&) = delete;

  /// A client is there; `send` takes lines for it, without their ends. It is told of boxes and dialogs that lie open.
  void Connect(std::function<void(const std::string& line)> send);
  /// The client has gone. Operations that it started go on; their answers are dropped.
  void Disconnect();

  /// Bytes from the client, whose lines wait to be served. The next ones are welcome when `onRoom` says so: what the
  /// client sends ahead of that stays with it.
  void Feed(std::string_view bytes);
  std::function<void()> onRoom;
  /// Whether the client has sent its last and ends the station with it: it need not be spared then.
  std::function<bool()> clientEnds = [] { return false; };
  /// Something that the client made the station do, beside requests.
  void Charge(TimePoint cost) { share_.Charge(cost); }
  [[nodiscard]] TimePoint NextAt() const { return surface_.nest.Idle() ? TimePoint{0} : share_.NextAt(); }

  /// One line from the client, served now if its turn has come. What ends the station or stops an operation around
  /// this one flies out.
  void Receive(std::string_view line);

  /// The client ends the station by leaving. No request did, so none of those on the stack is answered.
  /// @throws StationEnded
  [[noreturn]] void EndStation();
  /// Where the record of a run is: its id, or nowhere, for that reason.
  void TellRecord(const std::string& run, const std::string& fault);
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

  void Queue(std::string_view line);
  void ServeWaiting();
  /// When what waits may be served; no value: now.
  [[nodiscard]] std::optional<TimePoint> NotBefore();
  /// Serves what waits as an event of the loop, at that time at the latest.
  void WakeAt(TimePoint when);
  void Serve(const std::string& line);
  [[nodiscard]] Json Call(const RpcRequest& request);
  [[nodiscard]] bool IsStop(const RpcRequest& request) const;
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
  void TellAct(const Panel& panel, std::string_view how) const;
  [[nodiscard]] Json Show(const Json& params);
  [[nodiscard]] Json Close(const Json& params);
  [[nodiscard]] Json State(const Json& params);
  [[nodiscard]] Json Unit(const Json& params);
  [[nodiscard]] Json Answer(const Json& params);
  [[nodiscard]] Json Subscribe(const Json& params);

  [[nodiscard]] Panel& FindPanel(std::string_view name) const;
  [[nodiscard]] Panel& PanelParam(const Json& params) const;
  [[nodiscard]] Control& ControlParam(const Json& params) const;
  void Touch(Panel& panel);
  /// Runs what may wait, inside whatever waits already. @throws RpcFailure when that is too much.
  template <class Work>
  auto Within(const Work& work);
  /// The panel as a request finds it that does not act.
  void Look(Panel& panel);

  AutomationSurface surface_;
  Operator operator_;
  RunNews news_;
  std::function<void(const std::string&)> send_;
  /// Counts the clients, so that no client gets another one's answers.
  std::uint64_t client_ = 0;
  LineCutter lines_;
  /// Lines that wait for their turn. No more bytes are taken before they are served.
  std::deque<std::string> waiting_;
  RequestShare share_;
  std::optional<TimePoint> wakeAt_;
  std::optional<TimePoint> replySince_;
  /// Requests on the stack that may wait there.
  int depth_ = 0;
  bool exitAnswered_ = false;
};

}  // namespace orvane
