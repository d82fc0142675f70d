#pragma once

#include <functional>
#include <optional>
#include <string>

#include "app/safe_off/off_hand.h"
#include "app/station.h"

namespace orvane {

/// How a run has ended, as far as it says whether the bench may stay on.
struct RunEnding {
  RunKind kind = RunKind::Whole;
  Verdict verdict = Verdict::None;
  /// A failure, or the station's end, flew through it.
  bool thrown = false;
  /// By an operator.
  bool stopped = false;
  /// The unit has failed in it.
  bool failed = false;
};

/// A whole run that has come to its PASS leaves the bench on, complete or not: the bench stands as behind any other,
/// and the next unit needs it. A run by hand has no verdict to come to; it leaves the bench on when it came to its
/// end and did not fail the unit, since whoever works by hand starts the next one with the same Target.
[[nodiscard]] bool LeavesBenchOn(const RunEnding& ending);

/// Has supply and load switched off behind each run that does not leave them on, and at the station's end, and tells
/// what could not be made sure: in a box, on the status line, to whoever follows the instruments' faults, and to the
/// record. While it is under way nothing is started that needs them.
class SafeOff {
 public:
  /// All of these outlive it. `letGo`: leaves the ways to supply and load to somebody else.
  SafeOff(const StationPorts& ports, Station& station, OffHand& hand, std::function<void()> letGo);
  SafeOff(const SafeOff&) = delete;
  SafeOff& operator=(const SafeOff&) = delete;

  /// From the end of a run up to the answer.
  [[nodiscard]] bool UnderWay() const { return owed_ || asked_; }
  /// Why an operator may not press that button now; no value where he may.
  [[nodiscard]] std::optional<std::string> Refusal(const Control& pressed) const;

  /// The answer is there: what could not be made sure, empty when nothing was. Told while it is still under way.
  std::function<void(const std::string& text)> onAnswered;

  /// The station has come to its end: does it, and waits for the answer, some seconds at the most. `boxes`: somebody
  /// is there to answer one.
  void EndOfStation(bool boxes);

 private:
  void FollowPlaces();
  void FollowRuns();
  void RunIsOver();
  void Begin();
  void Take(const OffOutcome& outcome);
  void ShowBoxWhenIdle(const std::string& text);
  void ShowBox(const std::string& text);
  void TellPlaces();
  [[nodiscard]] OffPlaces Places() const;

  StationPorts ports_;
  Station& station_;
  OffHand& hand_;
  std::function<void()> letGo_;
  /// As told last: what stands on a panel may be no address for a moment.
  OffPlaces places_ = kUsualOffPlaces;

  /// Of the run that is under way.
  RunKind kind_ = RunKind::Whole;
  long stopsAskedBefore_ = 0;
  bool failedBefore_ = false;
  bool flawed_ = false;

  /// A run has ended that does not leave the bench on.
  bool owed_ = false;
  bool asked_ = false;
  bool ends_ = false;
  std::string notOff_;
};

}  // namespace orvane
