#pragma once

#include <array>
#include <string>

#include "platform/event_loop.h"
#include "platform/signal.h"
#include "state/run_report.h"

namespace orvane {

/// How far each step of the whole run under way has come, or of the last one, and how long each took. It looks on and
/// never acts, and lives as long as the report.
class StepClock {
 public:
  enum class State { Waiting, UnderWay, Complete, Incomplete };
  struct Step {
    State state = State::Waiting;
    TimePoint began{};
    /// Once it has ended.
    TimePoint took{};
    std::string reason{};
  };

  StepClock(const EventLoop& loop, RunReport& report);
  StepClock(const StepClock&) = delete;
  StepClock& operator=(const StepClock&) = delete;

  [[nodiscard]] const Step& Of(RunStep step) const { return steps_.at(static_cast<std::size_t>(step)); }
  /// Up to now for a step that is under way.
  [[nodiscard]] TimePoint Took(RunStep step) const;

  /// A step has begun or ended.
  Signal<> changed;

 private:
  Step& At(RunStep step) { return steps_.at(static_cast<std::size_t>(step)); }
  void EndWhatIsOpen();

  const EventLoop& loop_;
  std::array<Step, kRunSteps.size()> steps_{};
};

}  // namespace orvane
