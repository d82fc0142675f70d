#include "base/subscript.h"

#include <string>

#include "base/failure.h"

namespace orvane {

void FailOutOfRange(std::int64_t index, std::size_t size) {
  throw StationFailure("Subscript out of range: " + std::to_string(index) + " is not within 0 to " +
                       std::to_string(static_cast<std::int64_t>(size) - 1) + ".");
}

}  // namespace orvane
