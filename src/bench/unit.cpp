#include "bench/unit.h"

#include <algorithm>
#include <cmath>
#include <span>

#include "bench/random.h"

namespace orvane::bench {
namespace {

struct Knot {
  double dac;
  double dbm;
};

// The typical unit: many dB for one DAC step at low power, few at high power, bending into saturation.
// The station's default first values and targets lie on these curves to within some tenths of a dB.
constexpr std::array kGsmCurve = {
    Knot{0, -30},    Knot{12, -8.5},  Knot{30, 1.5},   Knot{40, 4.6},    Knot{48, 7},      Knot{51, 7.85},
    Knot{56, 9.05},  Knot{67, 11.05}, Knot{80, 13.05}, Knot{95, 15},     Knot{115, 17},    Knot{140, 19.05},
    Knot{176, 21.1}, Knot{222, 23.1}, Knot{284, 25.1}, Knot{350, 27.1},  Knot{430, 29.05}, Knot{550, 31.1},
    Knot{600, 31.8}, Knot{700, 32.9}, Knot{850, 33.8}, Knot{1023, 34.3}, Knot{1060, 34.4}};
constexpr std::array kDcsCurve = {
    Knot{0, -30},     Knot{12, -9.5},  Knot{30, -1.9},   Knot{40, 0.9},    Knot{48, 3},     Knot{52, 4},
    Knot{57, 5.1},    Knot{63, 6.2},   Knot{75, 8.15},   Knot{90, 10.15},  Knot{105, 11.9}, Knot{130, 14.1},
    Knot{162, 16.1},  Knot{205, 18.1}, Knot{258, 20.05}, Knot{330, 22.1},  Knot{400, 23.9}, Knot{500, 25.9},
    Knot{630, 27.95}, Knot{720, 29},   Knot{850, 30.2},  Knot{1023, 31.3}, Knot{1060, 31.5}};

double Secant(std::span<const Knot> curve, std::size_t i) {
  return (curve[i + 1].dbm - curve[i].dbm) / (curve[i + 1].dac - curve[i].dac);
}

// Weighted harmonic mean of the two neighbouring slopes: with it a cubic through rising knots rises
// everywhere. Source: F. N. Fritsch and J. Butland, SIAM J. Sci. Stat. Comput. 5 (1984), 300-304.
double Slope(std::span<const Knot> curve, std::size_t i) {
  if (i == 0) {
    return Secant(curve, 0);
  }
  if (i + 1 == curve.size()) {
    return Secant(curve, i - 1);
  }
  const double before = curve[i].dac - curve[i - 1].dac;
  const double behind = curve[i + 1].dac - curve[i].dac;
  const double w1 = 2 * behind + before;
  const double w2 = behind + 2 * before;
  return (w1 + w2) / (w1 / Secant(curve, i - 1) + w2 / Secant(curve, i));
}

double OnCurve(std::span<const Knot> curve, double dac) {
  dac = std::clamp(dac, curve.front().dac, curve.back().dac);
  const auto above = std::upper_bound(curve.begin() + 1, curve.end() - 1, dac,
                                      [](double value, const Knot& knot) { return value < knot.dac; });
  const auto i = static_cast<std::size_t>(above - curve.begin()) - 1;
  const double width = curve[i + 1].dac - curve[i].dac;
  const double t = (dac - curve[i].dac) / width;
  const double s = 1 - t;
  return curve[i].dbm * s * s * (1 + 2 * t) + curve[i + 1].dbm * t * t * (1 + 2 * s) +
         width * t * s * (Slope(curve, i) * s - Slope(curve, i + 1) * t);
}

}  // namespace

UnitTraits UnitOf(std::uint64_t seed) {
  constexpr std::uint64_t kTraits = 1;
  Random chance(seed, kTraits);
  UnitTraits unit{};
  for (UnitTraits::BandTraits& band : unit.band) {
    band.paGainDb = chance.Uniform(-0.5, 0.5);
    band.paDacScale = chance.Uniform(0.98, 1.02);
    band.paTiltDb = chance.Uniform(-0.25, 0.25);
    band.paBowDb = chance.Uniform(0, 0.2);
    band.rxGainDb = chance.Uniform(88.5, 92);
    band.rxTiltDb = chance.Uniform(-0.8, 0.8);
    band.rxRippleDb = chance.Uniform(0.1, 0.7);
    band.rxRipplePhase = chance.Uniform(0, 6.28);
  }
  unit.paDriftDb = chance.Uniform(0, 0.06);
  unit.adcOffsetCounts = chance.Uniform(-3, 3);
  unit.adcCountsPerVolt = chance.Uniform(151.3, 152.2);
  unit.zeroCalCounts = chance.Uniform(97, 104);
  unit.rmsPhaseDeg = chance.Uniform(1.1, 2.6);
  unit.peakPhaseDeg = unit.rmsPhaseDeg * chance.Uniform(2.4, 3.3);
  unit.bestAfc = static_cast<int>(std::lround(chance.Uniform(-1260, -1100)));
  return unit;
}

double TransmitPowerDbm(const UnitTraits& unit, int arfcn, int apcDac, double warmth) {
  const Band band = BandOf(arfcn);
  const UnitTraits::BandTraits& traits = unit.Of(band);
  const std::span<const Knot> curve = band == Band::kGsm ? std::span<const Knot>(kGsmCurve) : kDcsCurve;
  const double place = PlaceInBand(arfcn);
  return OnCurve(curve, apcDac * traits.paDacScale) + traits.paGainDb + traits.paTiltDb * place -
         traits.paBowDb * place * place - unit.paDriftDb * warmth;
}

double ReceiveGainDb(const UnitTraits& unit, int arfcn, double carrierMHz) {
  // Within the channel filter a carrier away from the middle loses a little, and not alike on both sides.
  constexpr double kHalfChannelMHz = 0.1;
  constexpr double kStopbandDb = -60;
  const UnitTraits::BandTraits& traits = unit.Of(BandOf(arfcn));
  const double offset = (carrierMHz - DownlinkMHz(arfcn)) / kHalfChannelMHz;
  if (std::abs(offset) > 1) {
    return traits.rxGainDb + kStopbandDb;
  }
  const double place = PlaceInBand(arfcn);
  const double ripple = traits.rxTiltDb * place + traits.rxRippleDb * std::sin(4 * place + traits.rxRipplePhase);
  return traits.rxGainDb + ripple - 0.3 * offset * offset + 0.1 * offset;
}

double BatteryCounts(const UnitTraits& unit, double volts) {
  // Typical board: 625 counts at 4.2 V, 496 at 3.35 V.
  constexpr double kTypicalVolts = 3.775;
  constexpr double kTypicalCounts = 560.5;
  return kTypicalCounts + (volts - kTypicalVolts) * unit.adcCountsPerVolt + unit.adcOffsetCounts;
}

}  // namespace orvane::bench
