#pragma once

#include <algorithm>
#include <cstddef>
#include <cstdint>
#include <string>
#include <string_view>

namespace orvane::fuzz {

/// An input taken apart from its front. What is not there any more reads as nothing.
class Portions {
 public:
  Portions(const std::uint8_t* data, std::size_t size) : rest_(data, data + size) { left_ = rest_; }

  [[nodiscard]] bool Empty() const { return left_.empty(); }
  std::uint8_t Byte() {
    if (left_.empty()) return 0;
    const auto byte = static_cast<std::uint8_t>(left_.front());
    left_.remove_prefix(1);
    return byte;
  }
  std::string_view Text(std::size_t size) {
    const std::string_view text = left_.substr(0, size);
    left_.remove_prefix(text.size());
    return text;
  }
  /// Up to the next such byte, which goes with it.
  std::string_view Until(char end) {
    const auto at = left_.find(end);
    const std::string_view text = left_.substr(0, at);
    left_.remove_prefix(at == std::string_view::npos ? left_.size() : at + 1);
    return text;
  }
  std::string_view Rest() { return Text(left_.size()); }

 private:
  std::string rest_;
  std::string_view left_;
};

}  // namespace orvane::fuzz
