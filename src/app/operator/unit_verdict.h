#pragma once

#include <QString>

#include "state/run_report.h"

namespace orvane {

/// A verdict as an operator acts upon it.
enum class UnitVerdict { Pass, OutOfTolerance, NotMeasured, Fail, None };

/// What the run that was concluded has come to.
[[nodiscard]] UnitVerdict VerdictOf(const RunReport& report);

/// A verdict in the language of the page.
struct VerdictWords {
  /// "PASS", "OUT OF TOLERANCE".
  QString word;
  /// One sentence.
  QString why;
  /// The same.
  QString toDo;
  /// What the steps and the readings say by themselves, in the station's own words.
  QString details;
  friend bool operator==(const VerdictWords&, const VerdictWords&) = default;
};

/// @param failure what ended the run, in the station's words; empty where nothing did
[[nodiscard]] VerdictWords WordsOf(const RunReport& report, bool isStopped, const std::string& failure);

/// "Receiver", "Transmitter GSM".
[[nodiscard]] QString NameOf(RunStep step);

}  // namespace orvane
