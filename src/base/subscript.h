#pragma once

#include <cstddef>
#include <cstdint>

namespace orvane {

[[noreturn]] void FailOutOfRange(std::int64_t index, std::size_t size);

/// The element with that index. @throws StationFailure for an index out of range.
template <class Container>
[[nodiscard]] auto& At(Container& container, std::int64_t index) {
  if (index < 0 || static_cast<std::uint64_t>(index) >= container.size()) {
    FailOutOfRange(index, container.size());
  }
  return container[static_cast<std::size_t>(index)];
}

}  // namespace orvane
