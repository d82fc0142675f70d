#pragma once

#include <cstdint>

namespace orvane::bench {

/// One repeatable source of chance. Every noise of the bench has a stream of its own, so that one more
/// reading of one instrument never shifts what another one reads.
/// The generator is SplitMix64: small, and the same on every machine (the standard distributions are not).
class Random {
 public:
  Random(std::uint64_t seed, std::uint64_t stream) : state_(seed * 0x9E3779B97F4A7C15u + stream) { Next(); }

  /// A value in [low, high).
  double Uniform(double low, double high) {
    return low + (high - low) * static_cast<double>(Next() >> 11) * 0x1.0p-53;
  }

  /// A bell-shaped value that never leaves [-limit, limit]: instruments have no infinite tails.
  double Bell(double limit) {
    return (Uniform(-limit, limit) + Uniform(-limit, limit) + Uniform(-limit, limit)) / 3.0;
  }

 private:
  std::uint64_t Next() {
    state_ += 0x9E3779B97F4A7C15u;
    std::uint64_t z = state_;
    z = (z ^ (z >> 30)) * 0xBF58476D1CE4E5B9u;
    z = (z ^ (z >> 27)) * 0x94D049BB133111EBu;
    return z ^ (z >> 31);
  }

  std::uint64_t state_;
};

}  // namespace orvane::bench
