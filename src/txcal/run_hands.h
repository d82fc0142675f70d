#pragma once

#include <functional>
#include <optional>
#include <string>
#include <vector>

#include "txcal/run_inputs.h"

namespace orvane {

/// What an operator's hands change while a whole run is under way, whether at a window or through the automation
/// port: it keeps its effect, and each step that reads it is told. What an act sets going counts with it: a file that
/// it loads, a table that it fills, a twin on another panel. A change that is taken back was one all the same.
class RunHands {
 public:
  /// `messages`: how many messages have gone to the Target and to the instruments so far.
  RunHands(const RunInputSources& sources, RunReport& report, std::function<long()> messages);

  /// Around each act of an operator; acts may stand one inside the other.
  void ActBegins();
  void ActEnds();

  /// Behind a step's work, while it is still under way: flaws it for each change of a setting that it reads.
  void TellChanges(RunStep step);

 private:
  struct Before {
    std::vector<RunInput> inputs;
    long messages;
  };
  void Forget();
  void Note(const Before& before);

  RunInputSources sources_;
  RunReport& report_;
  std::function<long()> messages_;
  /// One for each act on the stack; no value for one that began outside of a run.
  std::vector<std::optional<Before>> acts_;
  std::vector<RunInput> changed_;
  /// The Target or an instrument was given a message by hand, in the step that is under way.
  bool messageSent_ = false;
};

}  // namespace orvane
