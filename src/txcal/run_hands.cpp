#include "txcal/run_hands.h"

#include <algorithm>
#include <utility>

namespace orvane {

RunHands::RunHands(const RunInputSources& sources, RunReport& report, std::function<long()> messages)
    : sources_(sources), report_(report), messages_(std::move(messages)) {
  report.began.Connect([this] { Forget(); });
  report.ended.Connect([this] { Forget(); });
}

/// What was changed in one run is nothing to the next one.
void RunHands::Forget() {
  changed_.clear();
  messageSent_ = false;
}

void RunHands::ActBegins() {
  acts_.push_back(report_.InRun() ? std::optional(Before{RunInputsOf(sources_), messages_()}) : std::nullopt);
}

void RunHands::ActEnds() {
  if (acts_.back() && report_.InRun()) Note(*acts_.back());
  acts_.pop_back();
}

void RunHands::Note(const Before& before) {
  const std::vector<RunInput> now = RunInputsOf(sources_);
  for (std::size_t i = 0; i < now.size(); ++i) {
    if (now[i].setByStep && !(report_.UnderWay() && now[i].ReadBy(*report_.UnderWay()))) continue;
    const bool known = std::any_of(changed_.begin(), changed_.end(), [&](const RunInput& input) {
      return input.name == now[i].name && input.control == now[i].control;
    });
    if (!known && now[i].value != before.inputs[i].value) changed_.push_back(now[i]);
  }
  messageSent_ = messageSent_ || messages_() != before.messages;
}

void RunHands::TellChanges(RunStep step) {
  for (const RunInput& input : changed_) {
    if (!input.ReadBy(step)) continue;
    report_.Flaw(input.name + " was changed by hand during the run.");
  }
  if (std::exchange(messageSent_, false)) {
    report_.Flaw("The Target or an instrument was given a command by hand during the run.");
  }
}

}  // namespace orvane
