#include "program/client.h"

#include <chrono>
#include <stdexcept>

namespace orvane::test {
namespace {

using namespace std::chrono_literals;

constexpr auto kLimit = 120s;

}  // namespace

int Client::Send(const std::string& method, const Json& params) {
  const int id = ++lastId_;
  line_.Send(Json{{"jsonrpc", "2.0"}, {"id", id}, {"method", method}, {"params", params}}.dump());
  return id;
}

Json Client::AnswerTo(int id) {
  while (!answers_.contains(id)) Hear();
  return answers_.at(id);
}

Json Client::NextAnswerTo(int id) {
  answers_.erase(id);
  return AnswerTo(id);
}

int Client::ErrorOf(const std::string& method, const Json& params) {
  const Json answer = Ask(method, params);
  return answer.contains("error") ? answer["error"]["code"].get<int>() : 0;
}

void Client::AwaitState(const std::string& name, const Json& value) {
  const auto deadline = std::chrono::steady_clock::now() + kLimit;
  while (State(name) != value) {
    if (std::chrono::steady_clock::now() > deadline) throw std::runtime_error(name + " never is " + value.dump());
  }
}

void Client::InitializeInstruments() {
  for (const char* button :
       {"OrvaneMain.cmdInstrumentInitialize", "OrvaneMain.cmdPSInitialize", "frmBaseBand.cmdLoaderInitialize"}) {
    const Json answer = Click(button);
    if (!answer.contains("result")) throw std::runtime_error(std::string(button) + ": " + answer.dump());
  }
}

Json Client::Await(const std::string& method) {
  const std::size_t next = awaited_[method]++;
  while (heard_[method].size() <= next) Hear();
  return heard_[method][next];
}

void Client::Hear() {
  const auto line = line_.NextLine();
  if (!line) throw std::runtime_error("the station says nothing more");
  const Json message = Json::parse(*line);
  if (message.value("jsonrpc", "") != "2.0") throw std::runtime_error("no message: " + *line);
  if (message.contains("id")) {
    // Answers to lines that are no requests have an id of null.
    answers_[message["id"].is_number() ? message["id"].get<int>() : 0] = message;
    return;
  }
  const std::string method = message["method"];
  heard_[method].push_back(message["params"]);
  if (method == "box" && answersBoxes) {
    Send("answer", {{"id", message["params"]["id"]}, {"button", message["params"]["buttons"][0]}});
  }
}

}  // namespace orvane::test
