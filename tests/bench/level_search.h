#pragma once

#include <array>
#include <cmath>
#include <functional>
#include <vector>

#include "bench/radio.h"

/// A line's power calibration in its plainest form: step tables, tolerances and the two ways out of a swing.
/// It holds the bench's physics against the levels that a calibration has to reach.
namespace orvane::bench::test {

struct Level {
  int number;
  double targetDbm;
  int firstDac;
};

inline constexpr std::array<Level, 15> kGsmLevels{{{19, 7, 48},
                                                   {18, 8, 51},
                                                   {17, 9, 56},
                                                   {16, 11, 67},
                                                   {15, 13, 80},
                                                   {14, 15, 95},
                                                   {13, 17, 115},
                                                   {12, 19, 140},
                                                   {11, 21, 176},
                                                   {10, 23, 222},
                                                   {9, 25, 284},
                                                   {8, 27, 350},
                                                   {7, 29, 430},
                                                   {6, 31, 550},
                                                   {5, 32, 600}}};
inline constexpr std::array<Level, 16> kDcsLevels{{{15, 3, 48},
                                                   {14, 4, 52},
                                                   {13, 5, 57},
                                                   {12, 6, 63},
                                                   {11, 8, 75},
                                                   {10, 10, 90},
                                                   {9, 12, 105},
                                                   {8, 14, 130},
                                                   {7, 16, 162},
                                                   {6, 18, 205},
                                                   {5, 20, 258},
                                                   {4, 22, 330},
                                                   {3, 24, 400},
                                                   {2, 26, 500},
                                                   {1, 28, 630},
                                                   {0, 29, 720}}};

inline constexpr std::array kErrorRows{0.1, 0.15, 0.2, 0.25, 0.3, 0.4, 0.5, 0.7, 1.0, 1.5, 2.0};
inline constexpr std::array kGsmColumns{9.0, 15.0, 19.0, 23.0, 27.0, 30.0, 38.0};
inline constexpr std::array kDcsColumns{4.0, 8.0, 12.0, 16.0, 20.0, 24.0, 35.0};
inline constexpr int kGsmSteps[11][7] = {
    {1, 1, 2, 2, 4, 4, 5},      {1, 1, 2, 2, 6, 10, 12},     {1, 1, 2, 4, 8, 12, 16},      {1, 1, 5, 5, 10, 16, 20},
    {1, 2, 6, 7, 12, 20, 26},   {1, 3, 8, 9, 15, 24, 30},    {1, 4, 10, 12, 18, 32, 38},   {2, 5, 12, 16, 24, 40, 50},
    {3, 7, 14, 22, 32, 52, 80}, {4, 10, 18, 35, 45, 70, 90}, {6, 11, 24, 40, 70, 100, 120}};
inline constexpr int kDcsSteps[11][7] = {
    {1, 1, 1, 1, 1, 2, 5},    {1, 1, 1, 1, 2, 3, 10},     {1, 1, 1, 2, 2, 4, 12},     {1, 1, 2, 2, 4, 7, 15},
    {1, 1, 2, 3, 5, 10, 20},  {1, 2, 2, 4, 10, 16, 24},   {1, 2, 3, 5, 12, 21, 34},   {1, 2, 3, 6, 14, 30, 56},
    {2, 3, 4, 8, 20, 45, 80}, {3, 4, 6, 12, 28, 60, 100}, {4, 6, 10, 18, 40, 90, 130}};
inline constexpr std::array kChannelErrors{0.03, 0.05, 0.1, 0.15, 0.2, 0.25, 0.3, 0.4, 0.5, 0.7, 1.0, 1.5, 2.0};
inline constexpr std::array kChannelSteps{1, 2, 3, 4, 5, 7, 10, 15, 20, 30, 40, 50, 60};

enum class StepTable { kGsm, kDcs, kChannel };

inline int NextStep(StepTable table, double measured, double error, int step) {
  const double size = std::abs(error);
  if (table == StepTable::kChannel) {
    if (measured < 24 || measured >= 35) {
      return step;
    }
    for (std::size_t row = kChannelErrors.size(); row-- > 0;) {
      if (size >= kChannelErrors[row]) {
        return kChannelSteps[row];
      }
    }
    return step;
  }
  const auto& columns = table == StepTable::kGsm ? kGsmColumns : kDcsColumns;
  const auto& steps = table == StepTable::kGsm ? kGsmSteps : kDcsSteps;
  std::size_t column = 0;
  while (column < columns.size() && measured >= columns[column]) {
    ++column;
  }
  if (column == columns.size()) {
    return step;
  }
  for (std::size_t row = kErrorRows.size(); row-- > 0;) {
    if (size >= kErrorRows[row]) {
      return steps[row][column];
    }
  }
  return step;
}

inline double Tolerance(Band band, double measured) {
  if (measured <= 8) {
    return 0.2;
  }
  if (measured <= 14) {
    return 0.15;
  }
  return measured <= (band == Band::kGsm ? 31 : 28) ? 0.1 : 0.05;
}

struct Search {
  Band band;
  StepTable table;
  double measured;   ///< in: what was read last; out: the accepted reading
  double tolerance;  ///< in and out
  int dac = 0;
  int passes = 0;

  void Run(const Level& level, const std::function<double(int)>& measure) {
    const int wrap = table == StepTable::kGsm ? 11 : 10;
    int history[11] = {1, 2};
    int position = 2;
    int step = 1;
    int nearPasses = 0;
    passes = 0;
    dac = level.firstDac - 1;
    while (std::abs(measured - level.targetDbm) > tolerance && dac < 1020 && dac > 0 && nearPasses <= 10) {
      dac += measured - level.targetDbm >= 0 ? -step : step;
      history[position] = dac;
      if (dac == history[position - 2]) {
        dac = static_cast<int>(std::nearbyint((history[position] + history[position - 1]) / 2.0));
      }
      position = position + 1 == wrap ? 2 : position + 1;
      dac = std::min(std::max(dac, 0), 1020);
      measured = measure(dac);
      const double error = measured - level.targetDbm;
      step = NextStep(table, measured, error, step);
      tolerance = Tolerance(band, measured);
      nearPasses += std::abs(error) < 0.5 ? 1 : 0;
      if (++passes >= 16) {
        step = std::max(1, static_cast<int>(std::nearbyint(step / 2.0)));
      }
    }
  }
};

}  // namespace orvane::bench::test
