#pragma once

#include <cstdint>
#include <optional>
#include <string>
#include <string_view>

namespace orvane::bench {

/// Record marking (RFC 5531, section 11): messages out of the bytes of a connection, in whatever pieces they come.
class RecordReader {
 public:
  /// @param longest bytes of a message
  explicit RecordReader(std::size_t longest) : longest_(longest) {}

  void Feed(std::string_view bytes);
  /// The next message that is whole.
  [[nodiscard]] std::optional<std::string> Next();
  /// A message was longer than it may be, or more than that is left to read: no more comes of this connection.
  [[nodiscard]] bool Spoilt() const;

 private:
  [[nodiscard]] std::uint32_t Mark() const;

  std::size_t longest_;
  std::string bytes_;
  std::size_t begin_ = 0;  ///< of what has not been understood yet
  std::string message_;    ///< fragments
  bool tooLong_ = false;
};

}  // namespace orvane::bench
