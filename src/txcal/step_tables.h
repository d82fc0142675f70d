#pragma once

#include <array>
#include <cstdint>
#include <span>

#include "base/decimal4.h"
#include "base/numbers.h"

namespace orvane {

/// One row of a step table: it serves errors from `errorFrom` up to the next row's.
struct StepRow {
  Decimal4 errorFrom;
  std::array<Integer, 7> steps;
};

/// How far the search moves the APC DAC next: the Target's power curve in another form, many dB a DAC step at low
/// power, few at high power. Columns go by the power measured in dBm, rows by the absolute error in dB; a span
/// includes its lower end and not its upper one. Outside all of them the step is kept.
struct StepTable {
  Decimal4 measuredFrom;
  std::span<const Decimal4> columnEnds;
  std::span<const StepRow> rows;
};

/// The step after a pass that came in with `step`.
[[nodiscard]] constexpr Integer NextStep(const StepTable& table, Decimal4 measured, Decimal4 absoluteError,
                                         Integer step) {
  if (measured < table.measuredFrom) return step;
  std::size_t column = 0;
  while (column < table.columnEnds.size() && measured >= table.columnEnds[column]) ++column;
  if (column == table.columnEnds.size()) return step;
  for (const StepRow& row : table.rows) {
    if (absoluteError < row.errorFrom) break;
    step = row.steps[column];
  }
  return step;
}

/// No power that a number can hold is below this one: the first column is open downwards.
inline constexpr Decimal4 kAnyPower = Decimal4::FromRaw(INT64_MIN);

inline constexpr std::array<Decimal4, 7> kGsmColumnEnds{9, 15, 19, 23, 27, 30, 38};
inline constexpr std::array kGsmStepRows{
    StepRow{"0.1"_d4, {1, 1, 2, 2, 4, 4, 5}},       StepRow{"0.15"_d4, {1, 1, 2, 2, 6, 10, 12}},
    StepRow{"0.2"_d4, {1, 1, 2, 4, 8, 12, 16}},     StepRow{"0.25"_d4, {1, 1, 5, 5, 10, 16, 20}},
    StepRow{"0.3"_d4, {1, 2, 6, 7, 12, 20, 26}},    StepRow{"0.4"_d4, {1, 3, 8, 9, 15, 24, 30}},
    StepRow{"0.5"_d4, {1, 4, 10, 12, 18, 32, 38}},  StepRow{"0.7"_d4, {2, 5, 12, 16, 24, 40, 50}},
    StepRow{"1"_d4, {3, 7, 14, 22, 32, 52, 80}},    StepRow{"1.5"_d4, {4, 10, 18, 35, 45, 70, 90}},
    StepRow{"2"_d4, {6, 11, 24, 40, 70, 100, 120}},
};
inline constexpr StepTable kGsmSteps{kAnyPower, kGsmColumnEnds, kGsmStepRows};

inline constexpr std::array<Decimal4, 7> kDcsColumnEnds{4, 8, 12, 16, 20, 24, 35};
inline constexpr std::array kDcsStepRows{
    StepRow{"0.1"_d4, {1, 1, 1, 1, 1, 2, 5}},     StepRow{"0.15"_d4, {1, 1, 1, 1, 2, 3, 10}},
    StepRow{"0.2"_d4, {1, 1, 1, 2, 2, 4, 12}},    StepRow{"0.25"_d4, {1, 1, 2, 2, 4, 7, 15}},
    StepRow{"0.3"_d4, {1, 1, 2, 3, 5, 10, 20}},   StepRow{"0.4"_d4, {1, 2, 2, 4, 10, 16, 24}},
    StepRow{"0.5"_d4, {1, 2, 3, 5, 12, 21, 34}},  StepRow{"0.7"_d4, {1, 2, 3, 6, 14, 30, 56}},
    StepRow{"1"_d4, {2, 3, 4, 8, 20, 45, 80}},    StepRow{"1.5"_d4, {3, 4, 6, 12, 28, 60, 100}},
    StepRow{"2"_d4, {4, 6, 10, 18, 40, 90, 130}},
};
inline constexpr StepTable kDcsSteps{kAnyPower, kDcsColumnEnds, kDcsStepRows};

/// Of the channel search, which works at the strongest level alone: one column, for both bands.
inline constexpr std::array<Decimal4, 1> kChannelColumnEnds{35};
inline constexpr std::array kChannelStepRows{
    StepRow{"0.03"_d4, {1}}, StepRow{"0.05"_d4, {2}}, StepRow{"0.1"_d4, {3}},  StepRow{"0.15"_d4, {4}},
    StepRow{"0.2"_d4, {5}},  StepRow{"0.25"_d4, {7}}, StepRow{"0.3"_d4, {10}}, StepRow{"0.4"_d4, {15}},
    StepRow{"0.5"_d4, {20}}, StepRow{"0.7"_d4, {30}}, StepRow{"1"_d4, {40}},   StepRow{"1.5"_d4, {50}},
    StepRow{"2"_d4, {60}},
};
inline constexpr StepTable kChannelSteps{24, kChannelColumnEnds, kChannelStepRows};

/// Every step moves the DAC, and rows and columns ascend.
[[nodiscard]] constexpr bool IsSound(const StepTable& table) {
  for (std::size_t c = 1; c < table.columnEnds.size(); ++c) {
    if (table.columnEnds[c] <= table.columnEnds[c - 1]) return false;
  }
  for (std::size_t r = 0; r < table.rows.size(); ++r) {
    if (r > 0 && table.rows[r].errorFrom <= table.rows[r - 1].errorFrom) return false;
    for (std::size_t c = 0; c < table.columnEnds.size(); ++c) {
      if (table.rows[r].steps[c] <= 0) return false;
    }
  }
  return true;
}
static_assert(IsSound(kGsmSteps) && IsSound(kDcsSteps) && IsSound(kChannelSteps));

/// The accepted error by the power measured, up to `measuredUpTo` with that value included.
struct ToleranceRow {
  Decimal4 measuredUpTo;
  Decimal4 tolerance;
};
using ToleranceTable = std::array<ToleranceRow, 3>;
inline constexpr ToleranceTable kGsmTolerances{{{8, "0.2"_d4}, {14, "0.15"_d4}, {31, "0.1"_d4}}};
inline constexpr ToleranceTable kDcsTolerances{{{8, "0.2"_d4}, {14, "0.15"_d4}, {28, "0.1"_d4}}};
inline constexpr Decimal4 kStrongestTolerance = "0.05"_d4;

/// A setting of 0.2 dB or more is the tolerance; a smaller one is only a switch, and the table decides.
[[nodiscard]] constexpr Decimal4 ToleranceFor(const ToleranceTable& table, Decimal4 setting, Decimal4 measured) {
  if (setting >= "0.2"_d4) return setting;
  for (const ToleranceRow& row : table) {
    if (measured <= row.measuredUpTo) return row.tolerance;
  }
  return kStrongestTolerance;
}

}  // namespace orvane
