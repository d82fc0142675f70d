#pragma once

#include <cstddef>
#include <string>
#include <string_view>

namespace orvane {

/// The largest content that is kept, and the most that is made of compressed bytes.
inline constexpr std::size_t kLargestContent = 256 << 20;

/// SHA-256, its 32 bytes.
[[nodiscard]] std::string DigestOf(std::string_view content);
/// The same as 64 lower-case hexadecimal digits.
[[nodiscard]] std::string DigestTextOf(std::string_view content);

/// One frame of Zstandard (RFC 8878), which tells the content's size. @throws DamagedRecord for too large a content.
[[nodiscard]] std::string Compressed(std::string_view content);
/// @throws DamagedRecord for anything that Compressed does not make.
[[nodiscard]] std::string Decompressed(std::string_view frame);

}  // namespace orvane
