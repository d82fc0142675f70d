#include "app/operator/step_clock.h"

namespace orvane {

StepClock::StepClock(const EventLoop& loop, RunReport& report) : loop_(loop) {
  report.began.Connect([this] {
    steps_ = {};
    changed.Emit();
  });
  report.entered.Connect([this](RunStep step) {
    At(step) = {State::UnderWay, loop_.Now()};
    changed.Emit();
  });
  report.left.Connect([this](const StepRecord& record) {
    Step& step = At(record.step);
    step.took = loop_.Now() - step.began;
    step.state = record.complete ? State::Complete : State::Incomplete;
    step.reason = record.reason;
    changed.Emit();
  });
  report.ended.Connect([this] { EndWhatIsOpen(); });
}

/// A step that a failure stopped is never left.
void StepClock::EndWhatIsOpen() {
  for (Step& step : steps_) {
    if (step.state != State::UnderWay) continue;
    step.state = State::Incomplete;
    step.took = loop_.Now() - step.began;
  }
  changed.Emit();
}

TimePoint StepClock::Took(RunStep step) const {
  const Step& of = Of(step);
  return of.state == State::UnderWay ? loop_.Now() - of.began : of.took;
}

}  // namespace orvane
