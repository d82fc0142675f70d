#include "bench/wire_codec.h"

#include <algorithm>
#include <utility>

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

void AppendPadded(Bytes& frame, std::uint8_t value) {
  const bool high = value >= 0x80;
  const auto travels = static_cast<std::uint8_t>(high ? value - 0x80 : value);
  if (NeedsEscape(travels)) {
    frame.push_back(kEscape);
  }
  frame.push_back(high ? kPadAdds128 : kPad);
  frame.push_back(travels);
}

}  // namespace

void CommandReader::Feed(std::span<const std::uint8_t> bytes) {
  buffer_.erase(buffer_.begin(), buffer_.begin() + static_cast<std::ptrdiff_t>(begin_));
  begin_ = 0;
  buffer_.insert(buffer_.end(), bytes.begin(), bytes.end());
}

std::optional<Command> CommandReader::Next() {
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
      return std::nullopt;
    }
    if (buffer_.size() - begin_ < kCommandFrameSize) {
      return std::nullopt;
    }
    std::optional<Command> command = ReadFrame(std::span(buffer_).subspan(begin_, kCommandFrameSize));
    if (command) {
      begin_ += kCommandFrameSize;
      return command;
    }
    ++begin_;
  }
}

std::optional<Command> ReadFrame(std::span<const std::uint8_t> frame) {
  if (frame.size() != kCommandFrameSize || frame[0] != kSync1 || frame[1] != kSync2) {
    return std::nullopt;
  }
  Command command{frame[2], {}};
  command.data.reserve(kCommandFrameSize);
  std::size_t at = 3;
  while (at < frame.size() && frame[at] != kTerminator) {
    if (frame[at] == kEscape) {
      ++at;
      if (at == frame.size() || !NeedsEscape(frame[at])) {
        return std::nullopt;
      }
    }
    command.data.push_back(frame[at++]);
  }
  if (at == frame.size() || command.data.empty()) {
    return std::nullopt;
  }
  const std::span<const std::uint8_t> fill = frame.subspan(at + 1);
  if (!std::all_of(fill.begin(), fill.end(), [](std::uint8_t byte) { return byte == 0; })) {
    return std::nullopt;
  }
  const std::uint8_t checksum = command.data.back();
  command.data.pop_back();
  if (checksum != ChecksumOf(command.operation, command.data)) {
    return std::nullopt;
  }
  return command;
}

Bytes PaddedFrame(const Reply& reply) {
  Bytes frame;
  frame.reserve(3 * reply.data.size() + 12);
  frame.push_back(kSync1);
  frame.push_back(kSync2);
  AppendPadded(frame, reply.operation);
  AppendPadded(frame, reply.status);
  for (const std::uint8_t byte : reply.data) {
    AppendPadded(frame, byte);
  }
  const auto start = static_cast<std::uint8_t>(reply.operation ^ reply.status);
  AppendPadded(frame, ChecksumOf(start, reply.data));
  frame.push_back(kTerminator);
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
