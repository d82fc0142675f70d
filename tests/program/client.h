#pragma once

#include <map>
#include <string>
#include <vector>

#include "app/automation/json_rpc.h"
#include "program/line.h"

namespace orvane::test {

/// The automation port as another program meets it.
class Client {
 public:
  explicit Client(Line& line) : line_(line) {}

  /// Whether a box is answered with its first button as soon as it is heard.
  bool answersBoxes = true;

  /// Asks and does not wait. @return the request's id.
  int Send(const std::string& method, const Json& params = Json::object());
  /// Everything up to the answer to that request, which is a whole message. @throws when none comes.
  Json AnswerTo(int id);
  /// The next answer under that id, 0 for one to a line that had none, not told before.
  Json NextAnswerTo(int id);
  /// How many answers were heard that no request of this client asked for.
  [[nodiscard]] std::size_t Others() const { return answers_.count(0); }
  Json Ask(const std::string& method, const Json& params = Json::object()) { return AnswerTo(Send(method, params)); }
  /// The code of the error that answers, 0 for none.
  int ErrorOf(const std::string& method, const Json& params = Json::object());

  Json Click(const std::string& control) { return Ask("click", {{"control", control}}); }
  int SendClick(const std::string& control) { return Send("click", {{"control", control}}); }
  Json Get(const std::string& control) { return Ask("get", {{"control", control}})["result"]; }
  Json Set(const std::string& control, const std::string& how, const Json& value) {
    return Ask("set", {{"control", control}, {how, value}});
  }
  Json Panels() { return Ask("panels")["result"]; }
  Json Controls(const Json& panel) { return Ask("controls", {{"panel", panel["name"]}})["result"]; }
  Json State(const std::string& name) { return Ask("state", {{"name", name}})["result"]; }
  /// Asks until the state has the value.
  void AwaitState(const std::string& name, const Json& value);
  /// The three Initialize buttons of the instruments, as an operator presses them before the first Target.
  void InitializeInstruments();

  /// Parameters of the next notification of that method which nobody has awaited yet.
  Json Await(const std::string& method);
  /// Parameters of all notifications of that method up to now.
  [[nodiscard]] const std::vector<Json>& Heard(const std::string& method) { return heard_[method]; }

 private:
  void Hear();

  Line& line_;
  int lastId_ = 0;
  std::map<int, Json> answers_;
  std::map<std::string, std::vector<Json>> heard_;
  std::map<std::string, std::size_t> awaited_;
};

}  // namespace orvane::test
