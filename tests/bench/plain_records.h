#pragma once

#include <cstdint>
#include <string>
#include <string_view>
#include <vector>

namespace orvane::bench::test {

/// What the bytes of a connection hold, and whether it can go on.
struct Records {
  std::vector<std::string> messages;
  bool spoilt = false;
  bool operator==(const Records&) const = default;
};

/// Record marking worked out another way: on all the bytes at once, from the layout as it stands in the standard.
inline Records PlainRecords(std::string_view bytes, std::size_t longest) {
  Records records;
  std::string message;
  while (bytes.size() >= 4) {
    const auto byte = [&](std::size_t i) { return static_cast<std::uint64_t>(static_cast<unsigned char>(bytes[i])); };
    const bool last = byte(0) >= 128;
    const std::uint64_t size = (byte(0) % 128 * 256 * 256 * 256) + (byte(1) * 256 * 256) + (byte(2) * 256) + byte(3);
    if (message.size() + size > longest) {
      records.spoilt = true;
      break;
    }
    if (bytes.size() < 4 + size) break;
    message += bytes.substr(4, size);
    bytes.remove_prefix(4 + size);
    if (last) {
      records.messages.push_back(message);
      message.clear();
    }
  }
  return records;
}

}  // namespace orvane::bench::test
