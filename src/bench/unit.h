#pragma once

#include <array>
#include <cstdint>

#include "bench/radio.h"

namespace orvane::bench {

/// How one handset differs from the typical one. All good units stay inside what the station can calibrate.
struct UnitTraits {
  struct BandTraits {
    double paGainDb;    ///< against the typical curve, all levels alike
    double paDacScale;  ///< the power control DAC's own gain
    double paTiltDb;    ///< half the difference between the band's ends
    double paBowDb;     ///< how much less the band's ends give than its middle
    double rxGainDb;    ///< power report = level + AGC + this, in the middle of the band
    double rxTiltDb;
    double rxRippleDb;
    double rxRipplePhase;
  };
  std::array<BandTraits, 2> band;  ///< by Band
  double paDriftDb;                ///< lost when the transmitter is warm
  double adcOffsetCounts;
  double adcCountsPerVolt;
  double zeroCalCounts;
  double rmsPhaseDeg;
  double peakPhaseDeg;
  int bestAfc;  ///< AFC word that puts the carrier on its nominal frequency

  [[nodiscard]] const BandTraits& Of(Band which) const { return band[static_cast<std::size_t>(which)]; }
};

/// The unit of a seed, always the same one.
[[nodiscard]] UnitTraits UnitOf(std::uint64_t seed);

/// Power at the antenna connector, in dBm. `apcDac` 0..1023; `warmth` 0 (cold) to 1.
[[nodiscard]] double TransmitPowerDbm(const UnitTraits& unit, int arfcn, int apcDac, double warmth);

/// Gain of the receive path on the tuned channel for a carrier, in dB: what a power report adds to level and AGC.
[[nodiscard]] double ReceiveGainDb(const UnitTraits& unit, int arfcn, double carrierMHz);

/// Counts of the battery ADC, before noise.
[[nodiscard]] double BatteryCounts(const UnitTraits& unit, double volts);

}  // namespace orvane::bench
