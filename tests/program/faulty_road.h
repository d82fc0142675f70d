#pragma once

#include <vector>

#include "program/relay.h"

namespace orvane::test {

/// A way to the test set.
struct RouteToTestSet {
  const char* name;
  /// Of the bench, where the wire leads to.
  const char* instruments;
  /// The option that leads the station to the wire, its value ahead of the wire's place and behind.
  const char* option;
  const char* ahead;
  const char* behind;
  /// What the station calls it behind the wire's place.
  const char* calledBehind;
  Relay::As as = Relay::As::kSocket;
};

/// Where on the road the wire breaks.
enum class At { kInitialize, kReceive, kTransmit };

enum class Ends {
  kUnharmed,      ///< as if nothing had been
  kAtOnce,        ///< ibsta &H8000, iberr 2
  kTimeOut,       ///< ibsta &HC000, iberr 6
  kTimeOutLater,  ///< the same, by the next reply that is awaited: of what is only told, nothing comes back
  kNoNumber,      ///< the reading is none
  kBadUnit,       ///< FAIL: nothing comes back that could tell that the generator did not hear
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
};

/// Takes a road for each row, all at a time: a road waits more than it works. On each of them the wire to the test
/// set breaks where the row says, and what the station makes of it is held against the row. Then the wire is whole,
/// and the same station takes another unit the whole road, to the same bytes as in one process with its bench.
void TakeRoads(const RouteToTestSet& route, const std::vector<Row>& rows);

}  // namespace orvane::test
