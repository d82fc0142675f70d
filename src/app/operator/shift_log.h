#pragma once

#include <cstdint>
#include <optional>
#include <string>
#include <vector>

namespace orvane {

/// What a whole run has come to, as the shift counts it.
enum class UnitOutcome { Pass, NotComplete, Fail, NoVerdict };

/// A unit that was taken through a whole run.
struct ShiftUnit {
  /// Of its record; empty where none is kept.
  std::string run{};
  std::string serial{};
  UnitOutcome outcome = UnitOutcome::NoVerdict;
  double seconds = 0;
  /// Milliseconds since 1970, UTC.
  std::int64_t beganMs = 0;
};

/// The units of the shift that is under way.
class ShiftLog {
 public:
  /// From then on, in milliseconds since 1970; what began before is forgotten.
  void BeginAt(std::int64_t beganMs);
  /// In any order; a run that is there already, and one from before the shift, are left out.
  void Put(const ShiftUnit& unit);

  /// Units that came to a verdict; one that was run again counts once, one without a serial number by itself.
  [[nodiscard]] int Units() const;
  /// Of these the share that passed complete in its first run that had a verdict, from 0 to 1; no value without any.
  [[nodiscard]] std::optional<double> FirstPassYield() const;
  /// The mean run that came to a verdict, in seconds; no value without any.
  [[nodiscard]] std::optional<double> SecondsAUnit() const;
  /// The newest first, those without a verdict too.
  [[nodiscard]] std::vector<ShiftUnit> Last(std::size_t most) const;

 private:
  /// The first run with a verdict of each unit.
  [[nodiscard]] std::vector<const ShiftUnit*> FirstRuns() const;

  std::int64_t beganMs_ = 0;
  /// The oldest first.
  std::vector<ShiftUnit> units_;
};

/// When the shift began that is under way then.
/// @param starts minutes of the day, in order; none: midnight
/// @param nowMs milliseconds since 1970; the day is this machine's
[[nodiscard]] std::int64_t ShiftBegin(const std::vector<int>& starts, std::int64_t nowMs);

}  // namespace orvane
