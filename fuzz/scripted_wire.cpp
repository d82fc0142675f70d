#include "scripted_wire.h"

#include <algorithm>
#include <limits>
#include <utility>

#include "adapters/gpib/byte_stream.h"
#include "adapters/gpib/route_session.h"

namespace orvane {

fuzz::ScriptedWire& fuzz::Wire() {
  static ScriptedWire wire;
  return wire;
}

void fuzz::ScriptedWire::Say(std::string_view bytes, TimePoint after, std::size_t pieceSize) {
  const std::size_t size = pieceSize == 0 ? std::max<std::size_t>(bytes.size(), 1) : pieceSize;
  for (std::size_t at = 0; at < bytes.size(); at += size) {
    coming.push_back({now + after, std::string(bytes.substr(at, size))});
  }
}

using fuzz::Wire;
using namespace std::chrono_literals;

// Deadlines of the wire's clock.

namespace {

std::chrono::steady_clock::time_point Moment() { return std::chrono::steady_clock::time_point(Wire().now); }

}  // namespace

std::string SpanText(TimePoint span) { return std::to_string(span / 1us) + " us"; }

Deadline::Deadline(TimePoint span, const LongWaits* waits)
    : span_(span), at_(Moment() + std::max<TimePoint>(span, 1ms)), waits_(waits) {}

Deadline Deadline::LaterBy(TimePoint moment) const {
  Deadline later = *this;
  later.at_ += moment;
  return later;
}

TimePoint Deadline::Left() const { return std::max<TimePoint>(at_ - Moment(), 0ms); }

int Deadline::LeftMs() const {
  constexpr std::chrono::milliseconds kLongest(std::numeric_limits<int>::max());
  return static_cast<int>(std::min(std::chrono::ceil<std::chrono::milliseconds>(Left()), kLongest).count());
}

// Streams to the wire.

ByteStream::ByteStream(int descriptor, std::string peer) : descriptor_(descriptor), peer_(std::move(peer)) {}

ByteStream::ByteStream(ByteStream&& other) noexcept
    : descriptor_(std::exchange(other.descriptor_, -1)), peer_(std::move(other.peer_)) {}

ByteStream& ByteStream::operator=(ByteStream&& other) noexcept {
  std::swap(descriptor_, other.descriptor_);
  std::swap(peer_, other.peer_);
  return *this;
}

void ByteStream::Close() { descriptor_ = -1; }
void ByteStream::Drop() { Close(); }

void ByteStream::Send(std::string_view bytes, const Deadline&) { Wire().onSent(bytes); }

bool ByteStream::Receive(std::string& reply, const Deadline& deadline) {
  auto& wire = Wire();
  if (wire.coming.empty() || wire.coming.front().at >= wire.now + deadline.Left()) {
    wire.now += deadline.Left();
    return false;
  }
  const auto piece = std::move(wire.coming.front());
  wire.coming.pop_front();
  wire.now = std::max(wire.now, piece.at);
  if (piece.end) FailAbsent(peer_ + " closed the connection.");
  reply += piece.bytes;
  return true;
}

void ByteStream::ReceiveArrived(std::string& bytes) {
  // In any number of pieces: what is there when a system is asked comes as one.
  constexpr std::size_t kMost = 64UL * 1024;
  auto& wire = Wire();
  while (bytes.size() < kMost && !wire.coming.empty() && wire.coming.front().at <= wire.now) {
    const auto piece = std::move(wire.coming.front());
    wire.coming.pop_front();
    if (piece.end) FailAbsent(peer_ + " closed the connection.");
    bytes += piece.bytes;
  }
}

ByteStream ConnectTcp(const std::string&, int, const Deadline&, const std::string& peer) {
  auto& wire = Wire();
  const bool again = wire.connections++ > 0;
  std::erase_if(wire.coming, [&](const auto& piece) { return again && (piece.end || !wire.keepsOld); });
  return {0, peer};
}

}  // namespace orvane
