#include "bench/wire_codec.h"

#include <algorithm>
#include <array>

namespace orvane::bench {
namespace {

constexpr std::uint8_t kSync1 = 0x02;
constexpr std::uint8_t kSync2 = 0x14;
constexpr std::uint8_t kTerminator = 0x02;
constexpr std::uint8_t kEscape = 0x10;
constexpr std::uint8_t kPad = 0x00;
constexpr std::uint8_t kPadAdds128 = 0x01;

bool NeedsEscape(std::uint8_t byte) { return byte == kTerminator || byte == kEscape; }

std::uint8_t ChecksumOf(std::uint8_t start, std::span<const std::uint8_t> bytes) {
  for (const std::uint8_t byte : bytes) {
    start = static_cast<std::uint8_t>(start ^ byte);
  }
  return start;
}

Bytes::iterator PutPadded(Bytes::iterator at, std::uint8_t value) {
  const bool high = value >= 0x80;
  const auto travels = static_cast<std::uint8_t>(high ? value - 0x80 : value);
  if (NeedsEscape(travels)) {
    *at++ = kEscape;
  }
  *at++ = high ? kPadAdds128 : kPad;
  *at++ = travels;
  return at;
}

bool IsZeroFill(std::span<const std::uint8_t> bytes) {
  constexpr std::array<std::uint8_t, kCommandFrameSize> kZeros{};
  return std::equal(bytes.begin(), bytes.end(), kZeros.begin());
}

/// Reads one frame of exactly 53 bytes that begins with its sync; whether it is sound.
bool ReadFrame(std::span<const std::uint8_t, kCommandFrameSize> frame, Command& command) {
  command.operation = frame[2];
  command.data.resize(frame.size());
  auto end = command.data.begin();
  std::size_t at = 3;
  while (at < frame.size() && frame[at] != kTerminator) {
    if (frame[at] == kEscape) {
      ++at;
      if (at == frame.size() || !NeedsEscape(frame[at])) {
        return false;
      }
    }
    *end++ = frame[at++];
  }
  if (at == frame.size() || end == command.data.begin() || !IsZeroFill(frame.subspan(at + 1))) {
    return false;
  }
  const std::uint8_t checksum = *--end;
  command.data.erase(end, command.data.end());
  return checksum == ChecksumOf(command.operation, command.data);
}

}  // namespace

void CommandReader::Feed(std::span<const std::uint8_t> bytes) {
  buffer_.erase(buffer_.begin(), buffer_.begin() + static_cast<std::ptrdiff_t>(begin_));
  begin_ = 0;
  buffer_.insert(buffer_.end(), bytes.begin(), bytes.end());
}

const Command* CommandReader::Next() {
  constexpr std::uint8_t kSync[] = {kSync1, kSync2};
  for (;;) {
    const auto from = buffer_.begin() + static_cast<std::ptrdiff_t>(begin_);
    const auto sync = std::search(from, buffer_.end(), std::begin(kSync), std::end(kSync));
    begin_ = static_cast<std::size_t>(sync - buffer_.begin());
    if (sync == buffer_.end()) {
      // A last byte that may be the first half of a sync is kept.
      if (from != buffer_.end() && buffer_.back() == kSync1) {
        --begin_;
      }
      return nullptr;
    }
    if (buffer_.size() - begin_ < kCommandFrameSize) {
      return nullptr;
    }
    if (ReadFrame(std::span(buffer_).subspan(begin_).first<kCommandFrameSize>(), command_)) {
      begin_ += kCommandFrameSize;
      return &command_;
    }
    ++begin_;
  }
}

Bytes PaddedFrame(const Reply& reply) {
  constexpr std::size_t kMostPerValue = 3;
  Bytes frame(3 + kMostPerValue * (reply.data.size() + 3));
  auto at = frame.begin();
  *at++ = kSync1;
  *at++ = kSync2;
  at = PutPadded(at, reply.operation);
  at = PutPadded(at, reply.status);
  for (const std::uint8_t byte : reply.data) {
    at = PutPadded(at, byte);
  }
  const auto start = static_cast<std::uint8_t>(reply.operation ^ reply.status);
  at = PutPadded(at, ChecksumOf(start, reply.data));
  *at++ = kTerminator;
  frame.erase(at, frame.end());
  return frame;
}

Bytes RampRowFrame(std::uint8_t operation, std::uint8_t row, std::span<const std::uint8_t> values) {
  Bytes body{kPad, operation, row};
  body.insert(body.end(), values.begin(), values.end());
  body.push_back(ChecksumOf(static_cast<std::uint8_t>(operation ^ row), values));

  // The station looks for an escape two ahead of the byte that it protects, so it goes in front of the
  // byte before that.
  constexpr std::size_t kFirstProtected = 2;
  Bytes frame{kSync1, kSync2};
  frame.reserve(2 * body.size());
  for (std::size_t i = 0; i < body.size(); ++i) {
    if (i + 1 >= kFirstProtected && i + 1 < body.size() && NeedsEscape(body[i + 1])) {
      frame.push_back(kEscape);
    }
    frame.push_back(body[i]);
  }
  frame.push_back(kTerminator);
  return frame;
}

}  // namespace orvane::bench
