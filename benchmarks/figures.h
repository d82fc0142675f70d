#pragma once

#include <time.h>

#include <algorithm>
#include <chrono>
#include <cstdio>
#include <functional>
#include <vector>

namespace orvane::test {

/// What lies at that part of the figures, 0.5 for their median. There must be some.
inline double Quantile(std::vector<double> figures, double part) {
  const auto at = figures.begin() + static_cast<std::ptrdiff_t>(part * static_cast<double>(figures.size() - 1));
  std::nth_element(figures.begin(), at, figures.end());
  return *at;
}
inline double Median(const std::vector<double>& figures) { return Quantile(figures, 0.5); }

/// One thing beside another, as ratios of what was taken by turns; and the other beside itself, which is what the
/// machine makes of no difference at all.
struct Comparison {
  std::vector<double> ratios;
  std::vector<double> control;
};

/// So many turns of the other thing, the one, and the other again: whatever else the machine does meets both.
inline Comparison ByTurns(int turns, const std::function<double()>& one, const std::function<double()>& other) {
  Comparison comparison;
  for (int turn = 0; turn < turns; ++turn) {
    const double before = other();
    const double figure = one();
    const double behind = other();
    comparison.ratios.push_back(figure / ((before + behind) / 2));
    comparison.control.push_back(behind / before);
  }
  return comparison;
}

/// Figures beside their limits, a line each.
class Table {
 public:
  void Add(const char* what, double figure, const char* unit, double limit) {
    Missed(figure > limit);
    std::printf("%-48s %9.3f %-2s  %7.3f allowed%s\n", what, figure, unit, limit, figure > limit ? "  MISSED" : "");
    std::fflush(stdout);
  }
  void Add(const char* what, const Comparison& comparison, double limit) {
    Add(what, Median(comparison.ratios), "", limit);
    std::printf("    in %zu turns from %.3f to %.3f; the same beside itself %.3f, from %.3f to %.3f\n",
                comparison.ratios.size(), Quantile(comparison.ratios, 0), Quantile(comparison.ratios, 1),
                Median(comparison.control), Quantile(comparison.control, 0), Quantile(comparison.control, 1));
    std::fflush(stdout);
  }
  void Missed(bool missed = true) { missed_ = missed_ || missed; }
  [[nodiscard]] int Status() const { return missed_ ? 1 : 0; }

 private:
  bool missed_ = false;
};

inline double Milliseconds(const std::function<void()>& work) {
  const auto start = std::chrono::steady_clock::now();
  work();
  return std::chrono::duration<double, std::milli>(std::chrono::steady_clock::now() - start).count();
}

/// Of the processor, taken by this process.
inline double ProcessorSeconds() {
  timespec time{};
  ::clock_gettime(CLOCK_PROCESS_CPUTIME_ID, &time);
  return static_cast<double>(time.tv_sec) + static_cast<double>(time.tv_nsec) * 1e-9;
}
inline double ProcessorMilliseconds(const std::function<void()>& work) {
  const double start = ProcessorSeconds();
  work();
  return 1e3 * (ProcessorSeconds() - start);
}

}  // namespace orvane::test
