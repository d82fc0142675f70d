#include "txcal/power_search.h"

#include <algorithm>

namespace orvane {
namespace {

/// Half of a whole number, to the nearest, a half to the even neighbour.
int HalfOf(int number) {
  const int below = number >> 1;
  return (number & 1) == 0 ? below : below + (below & 1);
}

}  // namespace

void PowerSearch::Begin(Decimal4 target, Integer firstDac) {
  target_ = target;
  step_ = 1;
  dac_ = CheckedInteger(firstDac - 1);
  passes_ = 0;
  nearPasses_ = 0;
  history_[0] = 1;
  history_[1] = 2;
  historyPos_ = 2;
}

Integer PowerSearch::Move() {
  int dac = Error() >= 0 ? dac_ - step_ : dac_ + step_;
  history_[historyPos_] = dac;
  // The same value as two passes ago: the search swings between two values.
  if (dac == history_[historyPos_ - 2]) dac = HalfOf(dac + history_[historyPos_ - 1]);
  if (++historyPos_ == static_cast<std::size_t>(numbers_.historyWrap)) historyPos_ = 2;
  dac_ = static_cast<Integer>(std::clamp<int>(dac, 0, kDacLimit));
  return dac_;
}

void PowerSearch::Take(Decimal4 measured) {
  measured_ = measured;
  step_ = NextStep(*numbers_.steps, measured, Error().Abs(), step_);
}

void PowerSearch::Settle(Decimal4 toleranceSetting) {
  tolerance_ = ToleranceFor(*numbers_.tolerances, toleranceSetting, measured_);
  if (Error().Abs() < "0.5"_d4) ++nearPasses_;
  if (++passes_ >= kHalvingFrom) step_ = static_cast<Integer>(std::max(1, HalfOf(step_)));
}

}  // namespace orvane
