#include "app/automation_port.h"

#include <algorithm>
#include <array>

#include "app/control_json.h"
#include "app/operator_acts.h"
#include "base/failure.h"

namespace orvane {
namespace {

using namespace std::chrono_literals;

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

AutomationPort::AutomationPort(AutomationSurface surface) : surface_(std::move(surface)), operator_(surface_.nest) {
  surface_.desk.boxOpened.Connect([this](const Desk::OpenBox& open) { TellBox(open); });
  surface_.desk.dialogOpened.Connect([this](const Desk::OpenDialog& open) { TellDialog(open); });
  surface_.nest.onFailure.emplace_back([this](const std::string& text) { Notify("failure", {{"text", text}}); });
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
  waiting_.clear();
}

void AutomationPort::Receive(std::string_view line) {
  if (line.find_first_not_of(" \t\r") == std::string_view::npos) return;
  waiting_.emplace_back(line);
  ServeWaiting();
}

void AutomationPort::ServeWaiting() {
  while (!waiting_.empty()) {
    // A box that was answered a moment ago leaves the desk when its operation goes on; what a client asks behind its
    // answer is meant for the time after that.
    if (surface_.desk.Settling()) {
      surface_.loop.PostAt(surface_.loop.Now() + 1us, [this] { ServeWaiting(); });
      return;
    }
    const std::string line = std::move(waiting_.front());
    waiting_.pop_front();
    // What flies out of here leaves nobody behind: each line that waits has posted for itself.
    Serve(line);
  }
}

void AutomationPort::Serve(const std::string& line) {
  RpcRequest request;
  const auto client = client_;
  const auto answer = [&](const std::string& answerLine) {
    if (request.wantsAnswer && client == client_ && send_) send_(answerLine);
  };
  const auto refuse = [&](RpcError error, const char* text) { answer(ErrorLine(request.id, error, text)); };
  try {
    ParseRequest(line, request);
    answer(ResultLine(request.id, Call(request)));
  } catch (const RpcFailure& failure) {
    refuse(failure.code, failure.what());
  } catch (const ControlDisabled& disabled) {
    refuse(RpcError::ControlDisabled, disabled.what());
  } catch (const StationFailure& failure) {
    refuse(RpcError::Stopped, failure.what());
  } catch (const NestStopped& stopped) {
    refuse(RpcError::Stopped, stopped.what());
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
      MethodRow{"state", &AutomationPort::State, false},   MethodRow{"answer", &AutomationPort::Answer, false},
  };
  const auto* row =
      std::find_if(kMethods.begin(), kMethods.end(), [&](const MethodRow& r) { return r.name == name; });
  return row == kMethods.end() ? nullptr : row;
}

Json AutomationPort::Call(const RpcRequest& request) {
  const MethodRow* method = FindMethod(request.method);
  if (method == nullptr) throw RpcFailure(RpcError::NoSuchMethod, "There is no method \"" + request.method + "\".");
  if (!request.params.is_object()) throw RpcFailure(RpcError::InvalidParams, "Parameters go by name, as an object.");
  if (method->acts && !surface_.desk.Clear()) throw RpcFailure(RpcError::BoxOpen, "A box or dialog is open.");
  return (this->*method->serve)(request.params);
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

void AutomationPort::TellExit() { Notify("exit", Json::object()); }

// Methods.

Json AutomationPort::Panels(const Json&) {
  Json panels = Json::array();
  for (const Panel* panel : surface_.panels) panels.push_back(PanelObject(*panel));
  return panels;
}

Json AutomationPort::Controls(const Json& params) {
  Panel& panel = PanelParam(params);
  Touch(panel);
  Json controls = Json::array();
  for (const Control* control : panel.Controls()) controls.push_back(ControlObject(*control));
  return controls;
}

Json AutomationPort::Get(const Json& params) {
  const Control& control = ControlParam(params);
  Touch(control.Owner());
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

Json AutomationPort::Show(const Json& params) {
  Panel& panel = PanelParam(params);
  ThrowIfStopped(surface_.nest.Run([&] { panel.Show(); }));
  return Json::object();
}

Json AutomationPort::Close(const Json& params) {
  Panel& panel = PanelParam(params);
  ThrowIfStopped(surface_.nest.Run([&] { panel.Close(); }));
  return Json::object();
}

Json AutomationPort::State(const Json& params) {
  const std::string name = TextParam(params, "name");
  auto value = surface_.state(name);
  if (!value) throw RpcFailure(RpcError::InvalidParams, "There is no state of the name \"" + name + "\".");
  return std::move(*value);
}

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

void AutomationPort::Touch(Panel& panel) {
  if (!panel.Created()) ThrowIfStopped(surface_.nest.Run([&] { panel.Touch(); }));
}

}  // namespace orvane
