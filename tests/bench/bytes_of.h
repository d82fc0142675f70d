#pragma once

#include <cctype>
#include <cstdint>
#include <string>
#include <string_view>

#include "bench/bytes.h"

namespace orvane::bench::test {

/// Bytes as they stand in the product's documents: "02 14 20 20 02".
inline Bytes BytesOf(std::string_view hex) {
  Bytes bytes;
  for (std::size_t i = 0; i + 1 < hex.size(); ++i) {
    if (std::isxdigit(static_cast<unsigned char>(hex[i])) != 0) {
      bytes.push_back(static_cast<std::uint8_t>(std::stoi(std::string(hex.substr(i, 2)), nullptr, 16)));
      ++i;
    }
  }
  return bytes;
}

/// The same, filled with zeros to the 53 bytes of a command.
inline Bytes CommandBytes(std::string_view hex) {
  Bytes bytes = BytesOf(hex);
  bytes.resize(53);
  return bytes;
}

inline Bytes operator+(Bytes left, const Bytes& right) {
  left.insert(left.end(), right.begin(), right.end());
  return left;
}

/// Bytes the way `BytesOf` reads them, for messages a reader can hold against the documents.
inline std::string HexOf(const Bytes& bytes) {
  constexpr std::string_view kDigits = "0123456789ABCDEF";
  std::string text;
  for (const std::uint8_t byte : bytes) {
    text += text.empty() ? "" : " ";
    text += kDigits[byte >> 4];
    text += kDigits[byte & 0xF];
  }
  return text;
}

/// The values of a padded reply in order: operation, status, data, checksum. Pads are 00 or 01, so a 0x10 in a pad's
/// place is an escape.
inline Bytes Unpadded(const Bytes& reply) {
  Bytes values;
  std::size_t at = 2;
  while (at + 1 < reply.size()) {
    if (reply[at] == 0x10) {
      ++at;
    }
    values.push_back(static_cast<std::uint8_t>(reply.at(at + 1) + 0x80 * reply.at(at)));
    at += 2;
  }
  return values;
}

}  // namespace orvane::bench::test
