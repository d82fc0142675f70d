#include "records/run_id.h"

#include <array>
#include <string_view>

namespace orvane {

std::string RunIdOf(std::int64_t milliseconds, std::uint64_t chance, std::uint64_t moreChance) {
  constexpr std::uint64_t kVersion = 7;
  constexpr std::uint64_t kVariant = 2;
  const std::uint64_t upper =
      (static_cast<std::uint64_t>(milliseconds) << 16U) | (kVersion << 12U) | (chance & 0xFFFU);
  const std::uint64_t lower = (kVariant << 62U) | (moreChance & 0x3FFFFFFFFFFFFFFFU);
  constexpr std::string_view kDigits = "0123456789abcdef";
  std::string id;
  for (const std::uint64_t half : {upper, lower}) {
    for (unsigned shift = 64; shift > 0; shift -= 4) id += kDigits[(half >> (shift - 4)) & 0xFU];
  }
  for (const std::size_t dash : {20U, 16U, 12U, 8U}) id.insert(dash, 1, '-');
  return id;
}

}  // namespace orvane
