#pragma once

#include <QString>
#include <nlohmann/json.hpp>
#include <string>

namespace orvane {

/// What is seen of one station from outside: its process and what its automation port tells.
struct StationSight {
  enum class Stands { NotStarted, Starting, Idle, InRun, Ended };

  /// As its records name it.
  QString name;
  Stands stands = Stands::NotStarted;
  /// Of the unit that is under way, or else comes next; empty where nobody knows.
  QString unit;
  /// The step that is under way: "transmitDCS".
  QString step;
  int stepsDone = 0;
  /// Of the last run: "PASS", "FAIL", "NONE"; empty before the first one and within a run.
  QString verdict;
  bool isComplete = false;
  /// Why the last run is no complete PASS.
  QString reason;
  /// A box that waits there for somebody.
  QString box;
  /// How its process ended.
  QString ending;
  /// It died within a run, whose unit is not calibrated.
  bool diedInRun = false;

  /// Since the desk was opened: units that came to a verdict, and those of them that passed with all steps complete.
  int units = 0;
  int passed = 0;

  /// Share of the units that passed; -1 before the first.
  [[nodiscard]] int YieldPercent() const;

  // What happens to it.

  void Started();
  void Connected();
  /// A notification of its automation port. One that means nothing here changes nothing.
  void Take(const std::string& method, const nlohmann::ordered_json& params);
  void EndedSo(const QString& how);
  /// The answer to the method `unit`.
  void TakeUnit(const nlohmann::ordered_json& unit);

 private:
  void TakeStep(const nlohmann::ordered_json& params);
  void TakeVerdict(const nlohmann::ordered_json& params);
};

/// A step in an operator's words: "Transmitter DCS". The name itself where it is none.
[[nodiscard]] QString StepInWords(const QString& step);
inline constexpr int kStepsOfARun = 5;

}  // namespace orvane
