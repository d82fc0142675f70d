#include "app/operator/shift_log.h"

#include <QDateTime>
#include <algorithm>
#include <set>

namespace orvane {

void ShiftLog::BeginAt(std::int64_t beganMs) {
  beganMs_ = beganMs;
  std::erase_if(units_, [beganMs](const ShiftUnit& unit) { return unit.beganMs < beganMs; });
}

void ShiftLog::Put(const ShiftUnit& unit) {
  if (unit.beganMs < beganMs_) return;
  const auto isIt = [&unit](const ShiftUnit& other) { return !unit.run.empty() && other.run == unit.run; };
  if (std::any_of(units_.begin(), units_.end(), isIt)) return;
  const auto behind = std::upper_bound(units_.begin(), units_.end(), unit.beganMs,
                                       [](std::int64_t began, const ShiftUnit& at) { return began < at.beganMs; });
  units_.insert(behind, unit);
}

std::vector<const ShiftUnit*> ShiftLog::FirstRuns() const {
  std::set<std::string> seen;
  std::vector<const ShiftUnit*> first;
  for (const ShiftUnit& unit : units_) {
    if (unit.outcome == UnitOutcome::NoVerdict) continue;
    if (!unit.serial.empty() && !seen.insert(unit.serial).second) continue;
    first.push_back(&unit);
  }
  return first;
}

int ShiftLog::Units() const { return static_cast<int>(FirstRuns().size()); }

std::optional<double> ShiftLog::FirstPassYield() const {
  const auto first = FirstRuns();
  if (first.empty()) return std::nullopt;
  const auto passed =
      std::count_if(first.begin(), first.end(), [](const auto* unit) { return unit->outcome == UnitOutcome::Pass; });
  return static_cast<double>(passed) / static_cast<double>(first.size());
}

std::optional<double> ShiftLog::SecondsAUnit() const {
  double sum = 0;
  int runs = 0;
  for (const ShiftUnit& unit : units_) {
    if (unit.outcome == UnitOutcome::NoVerdict) continue;
    sum += unit.seconds;
    ++runs;
  }
  return runs == 0 ? std::nullopt : std::optional(sum / runs);
}

std::vector<ShiftUnit> ShiftLog::Last(std::size_t most) const {
  std::vector<ShiftUnit> last(units_.rbegin(), units_.rend());
  if (last.size() > most) last.resize(most);
  return last;
}

std::int64_t ShiftBegin(const std::vector<int>& starts, std::int64_t nowMs) {
  const QDateTime now = QDateTime::fromMSecsSinceEpoch(nowMs);
  const int minute = now.time().hour() * 60 + now.time().minute();
  const auto at = [](const QDate& day, int minutes) {
    return QDateTime(day, QTime(minutes / 60, minutes % 60)).toMSecsSinceEpoch();
  };
  if (starts.empty()) return at(now.date(), 0);
  const auto behind = std::upper_bound(starts.begin(), starts.end(), minute);
  if (behind == starts.begin()) return at(now.date().addDays(-1), starts.back());
  return at(now.date(), *std::prev(behind));
}

}  // namespace orvane
