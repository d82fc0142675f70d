#pragma once

#include <array>
#include <optional>

#include "base/decimal4.h"
#include "base/numbers.h"

namespace orvane {

/// The channels of a receive run in measuring order: three GSM, seven DCS, two EGSM.
using RxChannels = std::array<Integer, 12>;

/// Where each band begins in it.
inline constexpr std::size_t kFirstGsm = 0;
inline constexpr std::size_t kFirstDcs = 3;
inline constexpr std::size_t kFirstEgsm = 10;

/// Downlink carrier of a channel, in MHz with four decimals.
/// Channels 0..124 and 975..1023 are GSM 900, 512..885 DCS 1800; no value for any other.
/// Source: 3GPP TS 45.005, section 2.
[[nodiscard]] std::optional<Decimal4> DownlinkFrequencyMHz(int arfcn);

/// Whether the cable loss of the DCS band counts for the channel.
[[nodiscard]] constexpr bool IsDcsChannel(int arfcn) { return arfcn >= 512 && arfcn <= 885; }

}  // namespace orvane
