#pragma once

#include <cstdint>
#include <string>
#include <string_view>
#include <vector>

#include "bench/faults.h"
#include "wire_damage.h"
#include "workers.h"

namespace orvane::proofs {

/// What a good road says and hears, by which a fault can be set on every place of it.
struct RoadMeasure {
  std::vector<std::string> commands;
  unsigned testSetLines = 0;
  unsigned testSetQueries = 0;
  unsigned testSetReadings = 0;
  unsigned supplyLines = 0;
  std::uint64_t bytesToTarget = 0;
  std::uint64_t bytesToStation = 0;
};
[[nodiscard]] RoadMeasure MeasureRoad();

/// One place of the road and what strikes there.
struct Cell {
  std::string fault;             ///< of the bench, or none
  std::optional<Damage> damage;  ///< of the line
};

/// "late@30/100", "in:1204:flipped:64"
[[nodiscard]] std::string TextOf(const Cell& cell);
/// @throws bench::BenchOptionError
[[nodiscard]] Cell CellOf(std::string_view text);

/// All cells: the named faults, then the bytes of the replies, then those of the commands; within each of the three
/// in an order that leaps, so that a part of it is spread over the road.
class Cells {
 public:
  explicit Cells(const RoadMeasure& road);
  [[nodiscard]] std::uint64_t Count() const { return faults_.size() + replyBytes_ + commandBytes_; }
  [[nodiscard]] Cell At(std::uint64_t number) const;

 private:
  std::vector<std::string> faults_;
  std::uint64_t replyBytes_;
  std::uint64_t commandBytes_;
};

/// Takes a unit through a road on which the cell strikes, and then the next good unit on the same station.
[[nodiscard]] Outcome RunCell(const Cell& cell);

}  // namespace orvane::proofs
