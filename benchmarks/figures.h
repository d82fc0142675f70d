#pragma once

#include <algorithm>
#include <chrono>
#include <cstdio>
#include <functional>
#include <vector>

namespace orvane::test {

/// A machine that is busy elsewhere, too, is no fault of the windows: only beyond this is a limit missed for good.
constexpr double kFar = 4;

/// Figures beside their limits, a line each.
class Table {
 public:
  void Add(const char* what, double figure, const char* unit, double limit) {
    std::printf("%-44s %9.3f %-2s  %7.3f allowed%s\n", what, figure, unit, limit, figure > limit ? "  MISSED" : "");
    std::fflush(stdout);
    farOff_ = farOff_ || figure > limit * kFar;
  }
  [[nodiscard]] int Status() const { return farOff_ ? 1 : 0; }

 private:
  bool farOff_ = false;
};

inline double Milliseconds(const std::function<void()>& work) {
  const auto start = std::chrono::steady_clock::now();
  work();
  return std::chrono::duration<double, std::milli>(std::chrono::steady_clock::now() - start).count();
}

inline double Median(std::vector<double> figures) {
  const auto middle = figures.begin() + static_cast<std::ptrdiff_t>(figures.size() / 2);
  std::nth_element(figures.begin(), middle, figures.end());
  return *middle;
}

}  // namespace orvane::test
