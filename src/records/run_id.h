#pragma once

#include <cstdint>
#include <string>

namespace orvane {

/// A time-ordered UUID (version 7 of RFC 9562), in lower case: 48 bits of milliseconds since 1970 and 74 of chance.
[[nodiscard]] std::string RunIdOf(std::int64_t milliseconds, std::uint64_t chance, std::uint64_t moreChance);

}  // namespace orvane
