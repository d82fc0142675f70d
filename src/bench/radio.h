#pragma once

namespace orvane::bench {

enum class Band { kGsm, kDcs };

/// Channels 512..885 are DCS 1800; all others are taken as GSM 900.
/// Source: 3GPP TS 45.005, section 2.
[[nodiscard]] Band BandOf(int arfcn);

/// Downlink carrier of a channel in MHz; 0 for a channel of neither band (125..511, 886..974, above 1023).
[[nodiscard]] double DownlinkMHz(int arfcn);

/// Place of a channel within its band's carriers, from -1 (lowest) over 0 (middle) to +1 (highest).
[[nodiscard]] double PlaceInBand(int arfcn);

/// What the Target radiates: carrier, power at its antenna connector, and the quality of its modulation.
struct Burst {
  int arfcn = 0;
  double powerDbm = 0;
  double rmsPhaseDeg = 0;
  double peakPhaseDeg = 0;
  double frequencyErrorHz = 0;
};

/// What arrives at the Target's antenna connector.
struct Downlink {
  double frequencyMHz = 0;  ///< 0: no carrier
  double levelDbm = -200;
};

}  // namespace orvane::bench
