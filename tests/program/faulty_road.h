#pragma once

#include <string>
#include <vector>

#include "program/relay.h"

namespace orvane::test {

/// A way to one instrument.
struct RouteTo {
  int address;
  const char* name;
  /// Of the bench, where the wire leads to.
  const char* instruments;
  /// The option that leads the station to the wire, and its value ahead of the wire's place and behind.
  const char* option;
  const char* ahead;
  std::string behind;
  /// What the station calls it behind the wire's place.
  std::string calledBehind;
  Relay::As as = Relay::As::kSocket;
  /// The others have wires of their own, which stay whole: raw sockets. Always so behind `--instrument`.
  bool alone = false;

  [[nodiscard]] bool Alone() const { return alone || std::string(option) == "--instrument"; }
};

/// Where on the road the wire breaks.
enum class At { kInitialize, kReceive, kTransmit, kCharger };

enum class Ends {
  kUnharmed,      ///< as if nothing had been
  kAtOnce,        ///< ibsta &H8000, iberr 2
  kTimeOut,       ///< ibsta &HC000, iberr 6
  kTimeOutLater,  ///< the same, by the next reply that is awaited: of what is only told, nothing comes back
  kNoNumber,      ///< the reading is none
  kBadUnit,       ///< FAIL: nothing comes back that could tell that the instrument did not hear
};

struct Row {
  At at;
  Wrong wrong;
  Way way;
  const char* text;
  int nth;
  Ends ends;
  /// Of the failure's text, behind the route's name.
  const char* says;
  /// What the run comes to, none of its kind complete, where the failure of an instrument does not end it: that of
  /// the supply or the load.
  const char* verdict = "NONE";
  /// Of the bench's own, where it is not the wire that breaks.
  const char* fault = nullptr;
};

struct FaultyRoad {
  RouteTo route;
  Row row;
};

/// Takes these roads, all at a time: a road waits more than it works. On each of them the wire to the instrument
/// breaks where the row says, and what the station makes of it is held against the row. Then the wire is whole, and
/// the same station takes another unit the whole road, to the same bytes as in one process with its bench.
void TakeRoads(const std::vector<FaultyRoad>& roads);
void TakeRoads(const RouteTo& route, const std::vector<Row>& rows);

}  // namespace orvane::test
