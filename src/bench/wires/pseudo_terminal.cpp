#include "bench/wires/pseudo_terminal.h"

#include <fcntl.h>
#include <termios.h>

#include <algorithm>
#include <array>
#include <cstdlib>

namespace orvane::bench {
namespace {

void MakeRaw(int fd) {
  termios settings{};
  Check(tcgetattr(fd, &settings), "read the settings of a pseudo-terminal");
  cfmakeraw(&settings);
  cfsetspeed(&settings, B115200);
  Check(tcsetattr(fd, TCSANOW, &settings), "set up a pseudo-terminal");
}

}  // namespace

PseudoTerminal::PseudoTerminal(Reactor& reactor, TargetLine& target)
    : reactor_(reactor),
      target_(target),
      master_(posix_openpt(O_RDWR | O_NOCTTY | O_CLOEXEC), "open a pseudo-terminal") {
  Check(grantpt(master_.Get()), "grant a pseudo-terminal");
  Check(unlockpt(master_.Get()), "unlock a pseudo-terminal");
  std::array<char, 128> name{};
  Check(ptsname_r(master_.Get(), name.data(), name.size()) == 0 ? 0 : -1, "name a pseudo-terminal");
  path_ = name.data();
  ownEnd_ = FileDescriptor(open(path_.c_str(), O_RDWR | O_NOCTTY | O_CLOEXEC), "open a pseudo-terminal's device");
  MakeRaw(ownEnd_.Get());
  Check(fcntl(master_.Get(), F_SETFL, O_NONBLOCK), "set up a pseudo-terminal");
  reactor_.WhenReadable(master_.Get(), [this] { Arrived(); });
  if (target_.Unplugged()) Unplug();
}

PseudoTerminal::~PseudoTerminal() { Unplug(); }

void PseudoTerminal::Arrived() {
  std::array<std::uint8_t, 4096> buffer{};
  const ssize_t count = read(master_.Get(), buffer.data(), buffer.size());
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
  if (master_.Open()) {
    [[maybe_unused]] const ssize_t written = write(master_.Get(), reply.data(), reply.size());
  }
}

void PseudoTerminal::Unplug() {
  if (!master_.Open()) return;
  reactor_.Forget(master_.Get());
  ownEnd_.Close();
  master_.Close();
}

}  // namespace orvane::bench
