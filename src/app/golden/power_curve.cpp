#include "app/golden/power_curve.h"

#include <algorithm>
#include <limits>
#include <map>
#include <string>

#include "app/records/reading_names.h"

namespace orvane {

PowerCurve::PowerCurve(const RunRecord& run, std::string_view band) {
  constexpr std::string_view kPower = ".power";
  const std::string levels = "tx." + std::string(band) + ".level.";
  std::map<double, double> points;
  for (const RecordedReading& reading : run.readings) {
    if (!reading.name.starts_with(levels) || !reading.name.ends_with(kPower)) continue;
    const std::string dac = reading.name.substr(0, reading.name.size() - kPower.size()) + ".dac";
    if (const RecordedReading* at = ReadingOf(run, dac)) points[at->value] = reading.value;
  }
  points_.assign(points.begin(), points.end());
}

double PowerCurve::Rise(double from, double to) const { return At(to) - At(from); }

double PowerCurve::Beyond(double from, double to) const {
  if (points_.size() < 2) return std::numeric_limits<double>::infinity();
  const auto [low, high] = std::minmax(from, to);
  return std::max(points_.front().first - low, 0.0) + std::max(high - points_.back().first, 0.0);
}

double PowerCurve::Secant(std::size_t i) const {
  return (points_[i + 1].second - points_[i].second) / (points_[i + 1].first - points_[i].first);
}

/// That of the parabola through a level and its neighbours; of the first and the last one, of the line to its
/// neighbour.
double PowerCurve::Slope(std::size_t i) const {
  if (i == 0) return Secant(0);
  if (i + 1 == points_.size()) return Secant(i - 1);
  const double before = points_[i].first - points_[i - 1].first;
  const double behind = points_[i + 1].first - points_[i].first;
  return (behind * Secant(i - 1) + before * Secant(i)) / (before + behind);
}

double PowerCurve::At(double dac) const {
  const auto& [lowest, least] = points_.front();
  const auto& [highest, most] = points_.back();
  if (dac <= lowest) return least + (dac - lowest) * Secant(0);
  if (dac >= highest) return most + (dac - highest) * Secant(points_.size() - 2);
  const auto above =
      std::upper_bound(points_.begin(), points_.end(), dac,
                       [](double value, const std::pair<double, double>& point) { return value < point.first; });
  const auto i = static_cast<std::size_t>(above - points_.begin()) - 1;
  const double width = points_[i + 1].first - points_[i].first;
  const double t = (dac - points_[i].first) / width;
  const double s = 1 - t;
  return points_[i].second * s * s * (1 + 2 * t) + points_[i + 1].second * t * t * (1 + 2 * s) +
         width * t * s * (Slope(i) * s - Slope(i + 1) * t);
}

}  // namespace orvane
