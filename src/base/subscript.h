#pragma once

#include <cstdint>
#include <string>

#include "base/failure.h"

namespace orvane {

/// The element with that index. @throws StationFailure for an index out of range.
template <class Container>
[[nodiscard]] auto& At(Container& container, std::int64_t index) {
  if (index < 0 || static_cast<std::uint64_t>(index) >= container.size()) {
    throw StationFailure("Subscript out of range: " + std::to_string(index) + " is not within 0 to " +
                         std::to_string(static_cast<std::int64_t>(container.size()) - 1) + ".");
  }
  return container[static_cast<std::size_t>(index)];
}

}  // namespace orvane
