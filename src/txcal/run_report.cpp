#include "txcal/run_report.h"

#include <algorithm>

namespace orvane {

std::string_view StepName(RunStep step) {
  switch (step) {
    case RunStep::Receive:
      return "receive";
    case RunStep::TransmitDcs:
      return "transmitDCS";
    case RunStep::TransmitGsm:
      return "transmitGSM";
    case RunStep::Save:
      return "save";
    case RunStep::Charger:
      return "charger";
  }
  return "";
}

std::string_view VerdictText(Verdict verdict) {
  switch (verdict) {
    case Verdict::None:
      return "NONE";
    case Verdict::Pass:
      return "PASS";
    case Verdict::Fail:
      return "FAIL";
  }
  return "";
}

void RunReport::Begin() {
  steps_.clear();
  underWay_.reset();
  verdict_.reset();
  ++runs_;
  began.Emit();
}

void RunReport::End() {
  if (!verdict_) Conclude(Verdict::None);
  underWay_.reset();
  if (--runs_ > 0) {
    steps_.clear();
    verdict_.reset();
  }
  ended.Emit();
}

StepRecord* RunReport::Current() { return underWay_ && !steps_.empty() ? &steps_.back() : nullptr; }

void RunReport::Enter(RunStep step) {
  if (runs_ == 0) return;
  steps_.push_back({step, false, false, "The step did not end."});
  underWay_ = step;
  entered.Emit(step);
}

void RunReport::Flaw(const std::string& reason) {
  StepRecord* record = Current();
  if (record == nullptr) return;
  if (!record->flawed) record->reason.clear();
  record->flawed = true;
  if (!record->reason.empty()) record->reason += " ";
  record->reason += reason;
}

void RunReport::Leave() {
  StepRecord* record = Current();
  if (record == nullptr) return;
  record->complete = !record->flawed;
  if (record->complete) record->reason.clear();
  underWay_.reset();
  left.Emit(*record);
}

bool RunReport::AllComplete() const {
  return steps_.size() == kRunSteps.size() &&
         std::all_of(steps_.begin(), steps_.end(), [](const StepRecord& step) { return step.complete; });
}

void RunReport::Conclude(Verdict verdict) {
  verdict_ = verdict;
  concluded.Emit(verdict);
}

}  // namespace orvane
