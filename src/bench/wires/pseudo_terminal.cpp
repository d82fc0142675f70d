#include "bench/wires/pseudo_terminal.h"

#include <unistd.h>

#include <algorithm>
#include <array>

namespace orvane::bench {
PseudoTerminal::PseudoTerminal(Reactor& reactor, TargetLine& target) : reactor_(reactor), target_(target) {
  reactor_.WhenReadable(pair_.Get(), [this] { Arrived(); });
  if (target_.Unplugged()) Unplug();
}

PseudoTerminal::~PseudoTerminal() { Unplug(); }

void PseudoTerminal::Arrived() {
  std::array<std::uint8_t, 4096> buffer{};
  const ssize_t count = read(pair_.Get(), buffer.data(), buffer.size());
  if (count <= 0) return;
  // The bytes came at once; on a line their last one would come only now.
  outgoingFree_ = std::max(outgoingFree_, Reactor::Now()) + kByteTime * count;
  const Bytes bytes(buffer.begin(), buffer.begin() + count);
  reactor_.At(outgoingFree_, [this, bytes, arrives = outgoingFree_] { Carry(bytes, arrives); });
}

void PseudoTerminal::Carry(const Bytes& bytes, Reactor::Time commandEnd) {
  for (const Transmission& reply : target_.Receive(bytes)) Send(reply, commandEnd);
  if (target_.Unplugged()) Unplug();
}

/// Whole, at the time of its last byte: a line never pauses inside a reply, and this program on a busy computer
/// would.
void PseudoTerminal::Send(const Transmission& reply, Reactor::Time commandEnd) {
  incomingFree_ = std::max(incomingFree_, commandEnd + reply.delay) + kByteTime * reply.bytes.size();
  reactor_.At(incomingFree_, [this, bytes = reply.bytes] { Write(bytes); });
}

/// As on a line, bytes that find no room are lost.
void PseudoTerminal::Write(const Bytes& reply) {
  if (pair_.Open()) {
    [[maybe_unused]] const ssize_t written = write(pair_.Get(), reply.data(), reply.size());
  }
}

void PseudoTerminal::Unplug() {
  if (!pair_.Open()) return;
  reactor_.Forget(pair_.Get());
  pair_.Close();
}

}  // namespace orvane::bench
