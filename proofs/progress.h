#pragma once

#include <cstdint>
#include <filesystem>
#include <map>
#include <set>
#include <string>
#include <vector>

#include "workers.h"

namespace orvane::proofs {

/// How far a proof has come, as it is kept between two calls: lines "next N", "figure NAME N" and "found N TEXT".
struct Progress {
  std::uint64_t next = 0;
  std::map<std::string, long> figures;
  std::map<std::uint64_t, std::vector<std::string>> found;

  /// A file that is not there is a proof that has not begun.
  void Read(const std::filesystem::path& file);
  void Write(const std::filesystem::path& file) const;
};

/// What a worker tells of a case: "figure NUMBER NAME COUNT", "found NUMBER TEXT" and "done NUMBER", a line each.
[[nodiscard]] std::string Told(std::uint64_t number, const Outcome& outcome);

/// Keeps the progress while cases end in any order.
class Ledger {
 public:
  explicit Ledger(Progress& kept) : kept_(kept), begin_(kept.next), next_(kept.next) {}

  /// One line of what a worker tells.
  void Take(const std::string& line);
  void Found(std::uint64_t number, const std::string& text) { fresh_[number].push_back(text); }
  void Done(std::uint64_t number);

  /// All cases below it are done.
  [[nodiscard]] std::uint64_t Next() const { return next_; }
  [[nodiscard]] std::vector<std::uint64_t> WithFindings() const;
  [[nodiscard]] Progress Now() const;

 private:
  Progress& kept_;
  std::uint64_t begin_;
  std::uint64_t next_;
  std::map<std::uint64_t, std::vector<std::string>> fresh_;
  std::set<std::uint64_t> done_;
};

}  // namespace orvane::proofs
