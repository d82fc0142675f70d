#pragma once

#include <array>

#include "txcal/step_tables.h"

namespace orvane {

/// What differs between the searches of the band runs and of the channel steps, as far as numbers go.
struct SearchNumbers {
  const StepTable* steps;
  const ToleranceTable* tolerances;
  /// Slot of the history at which writing goes back to slot 2.
  int historyWrap;
};

/// DAC values at which a search gives up moving.
inline constexpr Integer kDacLimit = 1020;

/// The search for the APC DAC value that makes the measured power equal its target, as pure numbers: powers in dBm
/// go in, DAC values come out. One object serves a whole run, since the power measured last and its tolerance are
/// where the next level starts.
class PowerSearch {
 public:
  PowerSearch(const SearchNumbers& numbers, Decimal4 measured, Decimal4 tolerance)
      : numbers_(numbers), measured_(measured), tolerance_(tolerance) {}

  /// A new target. The DAC starts one below `firstDac`: with a target above the power measured last, the first pass
  /// comes to exactly that value.
  void Begin(Decimal4 target, Integer firstDac);

  /// The power measured last lies within the tolerance of the target.
  [[nodiscard]] bool OnTarget() const { return Error().Abs() <= tolerance_; }
  /// The DAC stands at one of its limits.
  [[nodiscard]] bool AtLimit() const { return dac_ >= kDacLimit || dac_ <= 0; }

  /// Moves the DAC by the step, towards the target.
  Integer Move();
  /// Takes in what was measured at the DAC value of the last move, and looks up the next step.
  /// @throws StationFailure for a power whose distance from the target is no number of four decimals any more.
  void Take(Decimal4 measured);
  /// Sets the tolerance and ends the pass. `toleranceSetting` is what the operator set, in dB.
  void Settle(Decimal4 toleranceSetting);
  void Learn(Decimal4 measured, Decimal4 toleranceSetting) {
    Take(measured);
    Settle(toleranceSetting);
  }
  /// So many passes came near the target that another one would not come nearer.
  [[nodiscard]] bool NearEnough() const { return nearPasses_ > kNearPasses; }

  [[nodiscard]] Integer Dac() const { return dac_; }
  [[nodiscard]] Integer Step() const { return step_; }
  [[nodiscard]] Decimal4 Target() const { return target_; }
  [[nodiscard]] Decimal4 Measured() const { return measured_; }
  [[nodiscard]] Decimal4 Tolerance() const { return tolerance_; }
  [[nodiscard]] Decimal4 Error() const { return measured_ - target_; }
  [[nodiscard]] int Passes() const { return passes_; }

 private:
  static constexpr int kNearPasses = 10;
  static constexpr int kHalvingFrom = 16;

  SearchNumbers numbers_;
  Decimal4 target_;
  Decimal4 measured_;
  Decimal4 tolerance_;
  Integer dac_ = 0;
  Integer step_ = 1;
  /// DAC values of this level's passes, before a swing was averaged. Slots 0 and 1 hold 1 and 2, so that the first
  /// comparisons have something to compare with.
  std::array<int, 11> history_{};
  std::size_t historyPos_ = 2;
  int passes_ = 0;
  int nearPasses_ = 0;
};

}  // namespace orvane
