#pragma once

#include <cstdint>
#include <filesystem>
#include <functional>
#include <map>
#include <string>
#include <vector>

namespace orvane::proofs {

/// What one case came to: figures to add up, by name, and what was found.
struct Outcome {
  std::map<std::string, long> figures;
  std::vector<std::string> findings;
};

/// A proof in numbered cases, each of which stands for itself.
struct Proof {
  std::string name;
  std::uint64_t first = 0;
  std::uint64_t end = UINT64_MAX;  ///< behind the last case
  std::function<Outcome(std::uint64_t number)> run;
  /// How one case is seen again: a command line.
  std::function<std::string(std::uint64_t number)> again;
};

struct Effort {
  double minutes = 5;
  unsigned jobs = 2;
  std::filesystem::path state;
};

/// Works on a proof where the last call stopped, in processes of its own, so that a case that ends its process or
/// never ends is a finding like any other. Cases that had findings are looked at first: what does not show any more
/// is struck off. The last line on standard output has the figures.
/// @return 0, or 1 when there are findings.
[[nodiscard]] int Work(const Proof& proof, const Effort& effort);

}  // namespace orvane::proofs
