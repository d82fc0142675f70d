#pragma once

#include <cstddef>
#include <string>
#include <vector>

#include "app/records/doors.h"
#include "app/records/orders.h"

namespace orvane {

struct ReplayTally {
  std::size_t same = 0;
  std::size_t different = 0;
  /// Those without a trace, and those whose replay ended before it came to an answer.
  std::size_t failed = 0;
};

/// Runs these records again, `order.jobs` at a time in processes of their own, and tells on `doors.out` what came of
/// them, in their order: of all that were named, of those that are not the same where all of the store were meant.
/// @throws StoreFault when one job is enough and the store fails it.
[[nodiscard]] ReplayTally ReplayAll(const std::vector<std::string>& ids, const ReplayOrder& order,
                                    const std::string& storeName, RecordsDoors& doors);

}  // namespace orvane
