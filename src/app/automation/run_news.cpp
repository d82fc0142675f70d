#include "app/automation/run_news.h"

#include <algorithm>
#include <array>
#include <utility>

namespace orvane {
namespace {

constexpr std::string_view kStep = "step";
constexpr std::string_view kReading = "reading";
constexpr std::array kTopics{kStep, kReading};

Json NumberOrNull(const std::optional<double>& value) { return value ? Json(*value) : Json(); }

Json StepNote(RunStep step, std::string_view state, const std::string& reason = "") {
  return {{"name", StepName(step)}, {"state", state}, {"reason", reason}};
}

}  // namespace

RunNews::RunNews(RunReport& report, Tell tell) : report_(report), tell_(std::move(tell)) {
  report.entered.Connect([this](RunStep step) { Entered(step); });
  report.left.Connect([this](const StepRecord& step) { Left(step); });
  // A run that ends within a step comes to no verdict; where one stood already, it only ends.
  report.concluded.Connect([this](Verdict verdict) {
    if (verdict == Verdict::None) EndOpenStep();
  });
  report.ended.Connect([this] { EndOpenStep(); });
  report.read.Connect([this](const Reading& reading) { Read(reading); });
}

Json RunNews::Subscribe(const Json& params) {
  const auto list = params.find("topics");
  if (list == params.end() || !list->is_array()) {
    throw RpcFailure(RpcError::InvalidParams, "\"topics\" must be a list of topics.");
  }
  std::vector<std::string> topics;
  for (const Json& each : *list) {
    const auto topic = each.is_string() ? each.get<std::string>() : "";
    if (std::find(kTopics.begin(), kTopics.end(), topic) == kTopics.end()) {
      throw RpcFailure(RpcError::InvalidParams,
                       "There is no topic " + (topic.empty() ? "like that" : "\"" + topic + "\"") + ".");
    }
    if (std::find(topics.begin(), topics.end(), topic) == topics.end()) topics.push_back(topic);
  }
  topics_ = std::move(topics);
  return {{"topics", topics_}};
}

bool RunNews::Wanted(std::string_view topic) const {
  return std::find(topics_.begin(), topics_.end(), topic) != topics_.end();
}

void RunNews::Entered(RunStep step) {
  // A bring-up in mid-run starts a second run inside the first one's step, which loses its notes.
  EndOpenStep();
  open_ = step;
  if (Wanted(kStep)) tell_(kStep, StepNote(step, "began"));
}

void RunNews::Left(const StepRecord& step) {
  open_.reset();
  if (Wanted(kStep)) tell_(kStep, StepNote(step.step, step.complete ? "complete" : "incomplete", step.reason));
}

void RunNews::EndOpenStep() {
  if (!open_) return;
  const RunStep step = *std::exchange(open_, std::nullopt);
  if (!Wanted(kStep)) return;
  const auto& steps = report_.Steps();
  const bool isNoted = report_.UnderWay() == step && !steps.empty();
  tell_(kStep, StepNote(step, "incomplete", isNoted ? steps.back().reason : "The step did not end."));
}

void RunNews::Read(const Reading& reading) {
  if (!Wanted(kReading)) return;
  const auto inside = IsInside(reading);
  const auto step = report_.UnderWay();
  tell_(kReading, {{"name", reading.name},
                   {"value", reading.value},
                   {"unit", reading.unit},
                   {"low", NumberOrNull(reading.low)},
                   {"high", NumberOrNull(reading.high)},
                   {"inside", inside ? Json(*inside) : Json()},
                   {"step", step ? Json(StepName(*step)) : Json()}});
}

}  // namespace orvane
