#include "app/automation/automation_port.h"

#include <algorithm>
#include <array>

#include "app/automation/control_json.h"
#include "app/automation/operator_acts.h"
#include "app/automation/unit_json.h"
#include "base/counted.h"
#include "base/failure.h"

namespace orvane {
namespace {

using namespace std::chrono_literals;

/// So many requests may wait inside one another: the stack has an end. Each takes a few kilobytes of it, several
/// times that under the sanitizers.
constexpr int kMostWithin = 64;
/// What a turn of the loop costs beside the bytes that it brings.
constexpr TimePoint kTurn = 30us;
/// No reply comes in for longer.
constexpr TimePoint kReplySpan = 100ms;

std::string_view IconText(BoxIcon icon) {
  switch (icon) {
    case BoxIcon::None:
      return "none";
    case BoxIcon::Stop:
      return "stop";
    case BoxIcon::Information:
      return "information";
    case BoxIcon::Exclamation:
      return "exclamation";
    case BoxIcon::Question:
      return "question";
  }
  return "";
}

}  // namespace

AutomationPort::AutomationPort(AutomationSurface surface)
    : surface_(std::move(surface)),
      operator_(surface_.nest),
      news_(surface_.report, [this](std::string_view topic, const Json& params) { Notify(topic, params); }),
      share_(surface_.loop) {
  surface_.desk.boxOpened.Connect([this](const Desk::OpenBox& open) { TellBox(open); });
  surface_.desk.dialogOpened.Connect([this](const Desk::OpenDialog& open) { TellDialog(open); });
  surface_.nest.onFailure.emplace_back([this](const std::string& text) { Notify("failure", {{"text", text}}); });
  surface_.faults.told.Connect([this](const GpibFault& fault) {
    Notify("instrument", {{"address", fault.address}, {"route", fault.route}, {"text", fault.text}});
  });
  surface_.report.concluded.Connect([this](Verdict verdict) { TellVerdict(verdict); });
}

void AutomationPort::Connect(std::function<void(const std::string&)> send) {
  ++client_;
  send_ = std::move(send);
  for (const auto& open : surface_.desk.OpenBoxes()) TellBox(open);
  for (const auto& open : surface_.desk.OpenDialogs()) TellDialog(open);
}

void AutomationPort::Disconnect() {
  ++client_;
  send_ = nullptr;
  news_.Forget();
  waiting_.clear();
  lines_ = {};
}

void AutomationPort::Queue(std::string_view line) {
  if (line.find_first_not_of(" \t\r") == std::string_view::npos || !send_) return;
  waiting_.emplace_back(line);
}

void AutomationPort::Feed(std::string_view bytes) {
  share_.Begin();
  lines_.Feed(bytes, [this](const std::string& line) { Queue(line); });
  share_.End();
  share_.Charge(kTurn);
  WakeAt(surface_.loop.Now());
}

void AutomationPort::Receive(std::string_view line) {
  Queue(line);
  ServeWaiting();
}

void AutomationPort::WakeAt(TimePoint when) {
  if (wakeAt_ && *wakeAt_ <= when) return;
  wakeAt_ = when;
  surface_.loop.PostAt(when, [this, when] {
    if (wakeAt_ == when) wakeAt_.reset();
    ServeWaiting();
  });
}

std::optional<TimePoint> AutomationPort::NotBefore() {
  const TimePoint now = surface_.loop.Now();
  // A box that was answered a moment ago leaves the desk when its operation goes on; what a client asks behind its
  // answer is meant for the time after that.
  if (surface_.desk.Settling()) return now + 1us;
  if (surface_.held() && !clientEnds()) return now + 5ms;
  if (surface_.nest.Idle()) {
    share_.Forget();
    return std::nullopt;
  }
  if (!surface_.replyComing()) {
    replySince_.reset();
  } else if (now - replySince_.value_or(now) < kReplySpan) {
    replySince_ = replySince_.value_or(now);
    return now + 1ms;
  }
  return share_.NextAt() > now && !clientEnds() ? std::optional(share_.NextAt()) : std::nullopt;
}

void AutomationPort::ServeWaiting() {
  // Whatever was being served has ended, or waits with this event inside its wait.
  share_.End();
  while (true) {
    if (const auto later = NotBefore()) return WakeAt(*later);
    if (waiting_.empty()) break;
    const std::string line = std::move(waiting_.front());
    waiting_.pop_front();
    // For the rest, should this one wait, or something fly out of it.
    if (!waiting_.empty()) WakeAt(surface_.loop.Now());
    if (!surface_.nest.Idle()) share_.Begin();
    Serve(line);
    share_.End();
  }
  if (onRoom) onRoom();
}

void AutomationPort::Serve(const std::string& line) {
  RpcRequest request;
  const auto client = client_;
  const auto answer = [&](const std::string& answerLine) {
    if (request.wantsAnswer && client == client_ && send_) send_(answerLine);
  };
  const auto refuse = [&](RpcError error, std::string_view text) { answer(ErrorLine(request.id, error, text)); };
  try {
    ParseRequest(line, request);
    answer(ResultLine(request.id, Call(request)));
  } catch (const RpcFailure& failure) {
    refuse(failure.code, failure.Text());
  } catch (const ControlDisabled& disabled) {
    refuse(RpcError::ControlDisabled, disabled.what());
  } catch (const StationFailure& failure) {
    refuse(RpcError::Stopped, failure.Text());
  } catch (const NestStopped& stopped) {
    refuse(RpcError::Stopped, stopped.Text());
    throw;
  } catch (const StationEnded&) {
    // The act that ended the station did its work; the operations that it stands in never end.
    if (!std::exchange(exitAnswered_, true)) answer(ResultLine(request.id, Json::object()));
    throw;
  }
}

const AutomationPort::MethodRow* AutomationPort::FindMethod(std::string_view name) {
  static constexpr std::array kMethods{
      MethodRow{"panels", &AutomationPort::Panels, false}, MethodRow{"controls", &AutomationPort::Controls, false},
      MethodRow{"get", &AutomationPort::Get, false},       MethodRow{"set", &AutomationPort::Set, true},
      MethodRow{"key", &AutomationPort::Key, true},        MethodRow{"click", &AutomationPort::Click, true},
      MethodRow{"show", &AutomationPort::Show, true},      MethodRow{"close", &AutomationPort::Close, true},
      MethodRow{"state", &AutomationPort::State, false},   MethodRow{"unit", &AutomationPort::Unit, false},
      MethodRow{"answer", &AutomationPort::Answer, false}, MethodRow{"subscribe", &AutomationPort::Subscribe, false},
  };
  const auto* row =
      std::find_if(kMethods.begin(), kMethods.end(), [&](const MethodRow& r) { return r.name == name; });
  return row == kMethods.end() ? nullptr : row;
}

template <class Work>
auto AutomationPort::Within(const Work& work) {
  if (depth_ >= kMostWithin) {
    throw RpcFailure(RpcError::TooManyWait, "Too many requests wait inside one another.");
  }
  const Counted inside(depth_);
  // The first turn of the loop inside it tells that it waits.
  WakeAt(surface_.loop.Now());
  return work();
}

Json AutomationPort::Call(const RpcRequest& request) {
  const MethodRow* method = FindMethod(request.method);
  if (method == nullptr) throw RpcFailure(RpcError::NoSuchMethod, "There is no method \"" + request.method + "\".");
  if (!request.params.is_object()) throw RpcFailure(RpcError::InvalidParams, "Parameters go by name, as an object.");
  if (!method->acts) return (this->*method->serve)(request.params);
  if (!surface_.desk.Clear()) throw RpcFailure(RpcError::BoxOpen, "A box or dialog is open.");
  if (IsStop(request)) return Click(request.params);
  return Within([&] { return (this->*method->serve)(request.params); });
}

bool AutomationPort::IsStop(const RpcRequest& request) const {
  if (request.method != "click") return false;
  const Control* control = &ControlParam(request.params);
  return std::find(surface_.stops.begin(), surface_.stops.end(), control) != surface_.stops.end();
}

// Notifications.

void AutomationPort::Notify(std::string_view method, const Json& params) {
  if (send_) send_(NotificationLine(method, params));
}

void AutomationPort::TellBox(const Desk::OpenBox& open) {
  Json buttons = Json::array();
  for (const BoxButton button : open.box.buttons) buttons.push_back(ButtonText(button));
  Notify("box", {{"id", open.id},
                 {"text", open.box.text},
                 {"title", open.box.title},
                 {"icon", IconText(open.box.icon)},
                 {"buttons", buttons}});
}

void AutomationPort::TellDialog(const Desk::OpenDialog& open) {
  Notify("fileDialog", {{"id", open.id},
                        {"mode", open.mode == Desk::Mode::Open ? "open" : "save"},
                        {"title", open.dialog.title},
                        {"filter", open.dialog.filter},
                        {"defaultExtension", open.dialog.defaultExtension},
                        {"initialFolder", open.dialog.initialFolder}});
}

void AutomationPort::TellVerdict(Verdict verdict) {
  Json steps = Json::array();
  for (const StepRecord& step : surface_.report.Steps()) {
    steps.push_back({{"name", StepName(step.step)}, {"complete", step.complete}, {"reason", step.reason}});
  }
  Notify("verdict",
         {{"result", VerdictText(verdict)}, {"complete", surface_.report.AllComplete()}, {"steps", steps}});
}

void AutomationPort::EndStation() {
  exitAnswered_ = true;
  throw StationEnded();
}

void AutomationPort::TellRecord(const std::string& run, const std::string& fault) {
  Notify("record", run.empty() ? Json{{"run", nullptr}, {"fault", fault}} : Json{{"run", run}});
}

void AutomationPort::TellExit() { Notify("exit", Json::object()); }

// Methods.

Json AutomationPort::Panels(const Json&) {
  Json panels = Json::array();
  for (const Panel* panel : surface_.panels) panels.push_back(PanelObject(*panel));
  return panels;
}

Json AutomationPort::Controls(const Json& params) {
  Panel& panel = PanelParam(params);
  Look(panel);
  Json controls = Json::array();
  for (const Control* control : panel.Controls()) controls.push_back(ControlObject(*control));
  return controls;
}

Json AutomationPort::Get(const Json& params) {
  const Control& control = ControlParam(params);
  Look(control.Owner());
  return ControlObject(control);
}

Json AutomationPort::Set(const Json& params) {
  Control& control = ControlParam(params);
  const Act act = PrepareSet(operator_, control, params);
  Touch(control.Owner());
  act();
  return ControlObject(control);
}

Json AutomationPort::Key(const Json& params) {
  Control& control = ControlParam(params);
  const Act act = PrepareKeys(operator_, control, params);
  Touch(control.Owner());
  act();
  return ControlObject(control);
}

Json AutomationPort::Click(const Json& params) {
  Control& control = ControlParam(params);
  const Act act = PrepareClick(operator_, control);
  Touch(control.Owner());
  act();
  return Json::object();
}

void AutomationPort::TellAct(const Panel& panel, std::string_view how) const {
  if (surface_.nest.onAct) surface_.nest.onAct(panel.Name(), how, {});
}

Json AutomationPort::Show(const Json& params) {
  Panel& panel = PanelParam(params);
  TellAct(panel, "show");
  ThrowIfStopped(surface_.nest.Run([&] { panel.Show(); }));
  return Json::object();
}

Json AutomationPort::Close(const Json& params) {
  Panel& panel = PanelParam(params);
  TellAct(panel, "close");
  ThrowIfStopped(surface_.nest.Run([&] { panel.Close(); }));
  return Json::object();
}

Json AutomationPort::State(const Json& params) {
  const std::string name = TextParam(params, "name");
  auto value = surface_.state(name);
  if (!value) throw RpcFailure(RpcError::InvalidParams, "There is no state of the name \"" + name + "\".");
  return std::move(*value);
}

Json AutomationPort::Unit(const Json& params) {
  const UnitChange change = UnitChangeOf(params);
  if (surface_.unit.InRun()) throw RpcFailure(RpcError::ControlDisabled, "A run is under way.");
  try {
    surface_.unit.Change(change);
  } catch (const UnitFault& fault) {
    throw RpcFailure(RpcError::InvalidParams, std::string(fault.what()) + ".");
  }
  return UnitObject(surface_.unit.Texts());
}

Json AutomationPort::Subscribe(const Json& params) { return news_.Subscribe(params); }

Json AutomationPort::Answer(const Json& params) {
  const auto id = IntegerParam(params, "id");
  if (params.contains("button") == params.contains("path")) {
    throw RpcFailure(RpcError::InvalidParams, "Either \"button\" or \"path\" answers.");
  }
  const auto given = [&] {
    if (params.contains("button")) return surface_.desk.Press(id, TextParam(params, "button"));
    if (params.at("path").is_null()) return surface_.desk.Choose(id, std::nullopt);
    return surface_.desk.Choose(id, TextParam(params, "path"));
  }();
  const std::string which = " under the id " + std::to_string(id) + ".";
  switch (given) {
    case Desk::Answered::Yes:
      return Json::object();
    case Desk::Answered::NoSuchId:
      throw RpcFailure(RpcError::NothingOpen, "Nothing is open" + which);
    case Desk::Answered::DoesNotFit:
      throw RpcFailure(RpcError::InvalidParams, "That is no answer to what is open" + which);
  }
  return {};
}

// What a request names.

Panel& AutomationPort::FindPanel(std::string_view name) const {
  const auto hit = std::find_if(surface_.panels.begin(), surface_.panels.end(),
                                [&](const Panel* panel) { return panel->Name() == name; });
  if (hit == surface_.panels.end()) {
    throw RpcFailure(RpcError::NoSuchControl, "There is no panel \"" + std::string(name) + "\".");
  }
  return **hit;
}

Panel& AutomationPort::PanelParam(const Json& params) const { return FindPanel(TextParam(params, "panel")); }

Control& AutomationPort::ControlParam(const Json& params) const {
  const std::string name = TextParam(params, "control");
  const auto dot = std::min(name.find('.'), name.size());
  const Panel& panel = FindPanel(std::string_view(name).substr(0, dot));
  Control* control = dot < name.size() ? panel.Find(std::string_view(name).substr(dot + 1)) : nullptr;
  if (control == nullptr) throw RpcFailure(RpcError::NoSuchControl, "There is no control \"" + name + "\".");
  return *control;
}

/// Only a panel that is not there yet can wait, in its load.
void AutomationPort::Look(Panel& panel) {
  if (!panel.Created()) Within([&] { Touch(panel); });
}

void AutomationPort::Touch(Panel& panel) {
  if (!panel.Created()) ThrowIfStopped(surface_.nest.Run([&] { panel.Touch(); }));
}

}  // namespace orvane
