#include "state/rx_channels.h"

namespace orvane {

std::optional<Decimal4> DownlinkFrequencyMHz(int arfcn) {
  constexpr Decimal4 kSpacing = "0.2"_d4;
  if (arfcn >= 0 && arfcn <= 124) return Decimal4(arfcn) * kSpacing + 935;
  if (IsDcsChannel(arfcn)) return Decimal4(arfcn - 511) * kSpacing + 1805;
  if (arfcn >= 975 && arfcn <= 1023) return Decimal4(arfcn - 1024) * kSpacing + 935;
  return std::nullopt;
}

}  // namespace orvane
