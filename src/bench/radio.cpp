#include "bench/radio.h"

namespace orvane::bench {
namespace {

constexpr double kSpacingMHz = 0.2;
constexpr int kLastPrimary = 124;
constexpr int kFirstDcs = 512;
constexpr int kLastDcs = 885;
constexpr int kFirstExtended = 975;
constexpr int kLastExtended = 1023;
constexpr int kExtendedOffset = 1024;

constexpr double kLowestGsmMHz = 925.2;
constexpr double kHighestGsmMHz = 959.8;
constexpr double kLowestDcsMHz = 1805.2;
constexpr double kHighestDcsMHz = 1879.8;

}  // namespace

Band BandOf(int arfcn) { return arfcn >= kFirstDcs && arfcn <= kLastDcs ? Band::kDcs : Band::kGsm; }

double DownlinkMHz(int arfcn) {
  if (arfcn >= 0 && arfcn <= kLastPrimary) {
    return 935.0 + kSpacingMHz * arfcn;
  }
  if (arfcn >= kFirstDcs && arfcn <= kLastDcs) {
    return kLowestDcsMHz + kSpacingMHz * (arfcn - kFirstDcs);
  }
  if (arfcn >= kFirstExtended && arfcn <= kLastExtended) {
    return 935.0 + kSpacingMHz * (arfcn - kExtendedOffset);
  }
  return 0;
}

double PlaceInBand(int arfcn) {
  const double frequency = DownlinkMHz(arfcn);
  if (frequency == 0) {
    return 0;
  }
  const bool dcs = BandOf(arfcn) == Band::kDcs;
  const double lowest = dcs ? kLowestDcsMHz : kLowestGsmMHz;
  const double highest = dcs ? kHighestDcsMHz : kHighestGsmMHz;
  return 2 * (frequency - lowest) / (highest - lowest) - 1;
}

}  // namespace orvane::bench
