#pragma once

#include <array>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "platform/signal.h"
#include "state/reading.h"

namespace orvane {

/// What was started: the whole run, or one of those that it is made of, by hand.
enum class RunKind { Whole, Receive, Gsm, Dcs, Transmit, Rf, Charger };
/// "whole", "receive", "GSM", "DCS", "transmit", "rf", "charger".
[[nodiscard]] std::string_view RunKindText(RunKind kind);

/// The steps of a whole run, in order.
enum class RunStep { Receive, TransmitDcs, TransmitGsm, Save, Charger };
inline constexpr std::array kRunSteps{RunStep::Receive, RunStep::TransmitDcs, RunStep::TransmitGsm, RunStep::Save,
                                      RunStep::Charger};

/// "receive", "transmitDCS", "transmitGSM", "save", "charger".
[[nodiscard]] std::string_view StepName(RunStep step);

enum class Verdict { None, Pass, Fail };
/// "NONE", "PASS", "FAIL".
[[nodiscard]] std::string_view VerdictText(Verdict verdict);

/// What is the matter with a step that is not complete: a value was measured and lies outside its limits, or
/// something was left out, failed or is not sure.
enum class FlawKind { OutOfTolerance, NotMeasured };
/// "OUT OF TOLERANCE", "NOT MEASURED".
[[nodiscard]] std::string_view FlawText(FlawKind kind);
/// What is to be done about it, in one sentence.
[[nodiscard]] std::string_view RemedyText(FlawKind kind);

/// How one step ended. A step is complete when it ran to its end and nothing in it was passed over that a
/// calibrated unit needs.
struct StepRecord {
  RunStep step;
  bool complete = false;
  bool flawed = false;
  /// Why it is not complete; empty when it is.
  std::string reason;
  /// Where it is not complete.
  FlawKind kind = FlawKind::NotMeasured;
};

/// What a verdict stands on: the steps of the run so far and how each ended. Operations of the steps write it; the
/// sequencer raises the verdict; panels and front ends read it. Outside a whole run (a band started by hand, say) it
/// takes no notes.
class RunReport {
 public:
  /// A new run begins: forgets the steps.
  void Begin();
  /// The run has ended, and is concluded without a verdict where it showed none. One that was under way around it (a
  /// bring-up in its middle starts a second one) has lost its notes, and none of its verdicts is complete.
  void End();
  /// A step begins. Until it is told otherwise it counts as left early.
  void Enter(RunStep step);
  /// The first reason why the step that is under way is not complete; later ones are added behind it. Only a value
  /// that was measured, with nothing left out for it, is out of tolerance.
  void Flaw(const std::string& reason, FlawKind kind = FlawKind::NotMeasured);
  /// The step that is under way has ended; it is complete unless it has a flaw. A step that was left early has told
  /// so as a flaw; one that a failure stopped never comes here.
  void Leave();

  [[nodiscard]] const std::vector<StepRecord>& Steps() const { return steps_; }
  [[nodiscard]] bool AllComplete() const;
  /// What is the matter with the run as a whole; no value when all steps are complete.
  [[nodiscard]] std::optional<FlawKind> Doubt() const;
  /// The readings of this whole run that lie outside their limits, each as it was read last.
  [[nodiscard]] const std::vector<Reading>& Outside() const { return outside_; }
  /// A whole run has begun and not ended.
  [[nodiscard]] bool InRun() const { return runs_ > 0; }
  [[nodiscard]] std::optional<RunStep> UnderWay() const { return underWay_; }

  /// A run of any kind begins, and is over, however it ends; runs started by a run belong to it. For these two, and
  /// for what is read, it does not matter whether the run is a whole one.
  void RunBegins(RunKind kind);
  void RunIsOver();
  void Read(const Reading& reading);
  /// `content` gives what was made; it is asked only where somebody keeps it.
  template <class Content>
  void Keep(std::string_view role, Content content) {
    if (kept.Heard()) kept.Emit({role, content()});
  }

  /// A verdict panel is shown. A run that goes on behind it may come to another one.
  void Conclude(Verdict verdict);
  [[nodiscard]] std::optional<Verdict> Concluded() const { return verdict_; }

  /// A whole run has begun, and ended.
  Signal<> began;
  Signal<> ended;
  Signal<RunStep> entered;
  Signal<const StepRecord&> left;
  Signal<Verdict> concluded;
  /// Of the outermost run. The second one comes also while an exception is on its way.
  Signal<RunKind> runBegan;
  Signal<> runIsOver;
  Signal<const Reading&> read;
  Signal<const RunDocument&> kept;
  /// Each flaw as it is told, in runs by hand too.
  Signal<const std::string&> flawed;

 private:
  StepRecord* Current();

  std::vector<StepRecord> steps_;
  std::vector<Reading> outside_;
  /// Whole runs under way, one inside the other.
  int runs_ = 0;
  /// Runs of any kind.
  int started_ = 0;
  std::optional<RunStep> underWay_;
  std::optional<Verdict> verdict_;
};

}  // namespace orvane
