#include "state/run_report.h"

#include <algorithm>

namespace orvane {

std::string_view RunKindText(RunKind kind) {
  switch (kind) {
    case RunKind::Whole:
      return "whole";
    case RunKind::Receive:
      return "receive";
    case RunKind::Gsm:
      return "GSM";
    case RunKind::Dcs:
      return "DCS";
    case RunKind::Transmit:
      return "transmit";
    case RunKind::Rf:
      return "rf";
    case RunKind::Charger:
      return "charger";
  }
  return "";
}

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

std::string_view FlawText(FlawKind kind) {
  return kind == FlawKind::OutOfTolerance ? "OUT OF TOLERANCE" : "NOT MEASURED";
}

std::string_view RemedyText(FlawKind kind) {
  return kind == FlawKind::OutOfTolerance
             ? "Take the unit through once more. If it ends so again, the unit goes to repair."
             : "The unit is not calibrated. Mend what stands above, then take it through once more.";
}

void RunReport::Begin() {
  steps_.clear();
  outside_.clear();
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

void RunReport::RunBegins(RunKind kind) {
  if (started_++ == 0) runBegan.Emit(kind);
}

void RunReport::RunIsOver() {
  if (--started_ == 0) runIsOver.Emit();
}

void RunReport::Read(const Reading& reading) {
  read.Emit(reading);
  if (runs_ == 0) return;
  std::erase_if(outside_, [&](const Reading& each) { return each.name == reading.name; });
  if (!IsInside(reading).value_or(true)) outside_.push_back(reading);
}

void RunReport::Flaw(const std::string& reason, FlawKind kind) {
  flawed.Emit(reason);
  StepRecord* record = Current();
  if (record == nullptr) return;
  if (!record->flawed) {
    record->reason.clear();
    record->kind = kind;
  }
  if (kind == FlawKind::NotMeasured) record->kind = kind;
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

std::optional<FlawKind> RunReport::Doubt() const {
  if (AllComplete()) return std::nullopt;
  const bool measured =
      steps_.size() == kRunSteps.size() && std::all_of(steps_.begin(), steps_.end(), [](const StepRecord& step) {
        return step.complete || step.kind == FlawKind::OutOfTolerance;
      });
  return measured ? FlawKind::OutOfTolerance : FlawKind::NotMeasured;
}

void RunReport::Conclude(Verdict verdict) {
  verdict_ = verdict;
  concluded.Emit(verdict);
}

}  // namespace orvane
