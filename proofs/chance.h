#pragma once

#include <cstddef>
#include <cstdint>

#include "bench/random.h"

namespace orvane::proofs {

/// Everything that is left to chance in one case comes from here, and so from the case's seed.
class Chance {
 public:
  explicit Chance(std::uint64_t seed) : random_(Mixed(seed), kStream) {}

  /// 0 to `count` - 1.
  std::size_t Of(std::size_t count) {
    return static_cast<std::size_t>(random_.Uniform(0, static_cast<double>(count)));
  }
  int Between(int least, int most) {
    return least + static_cast<int>(Of(static_cast<std::size_t>(most - least + 1)));
  }
  bool In(int hundredths) { return Between(1, 100) <= hundredths; }
  template <class List>
  const auto& From(const List& list) {
    return list[Of(list.size())];
  }

 private:
  /// Neighbouring seeds give no neighbouring sequences. The finalizer of MurmurHash3.
  static constexpr std::uint64_t Mixed(std::uint64_t seed) {
    seed = (seed ^ seed >> 33) * 0xFF51AFD7ED558CCDU;
    seed = (seed ^ seed >> 33) * 0xC4CEB9FE1A85EC53U;
    return seed ^ seed >> 33;
  }

  static constexpr std::uint64_t kStream = 99;
  bench::Random random_;
};

}  // namespace orvane::proofs
