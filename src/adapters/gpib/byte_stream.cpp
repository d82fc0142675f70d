#include "adapters/gpib/byte_stream.h"

#include <netinet/in.h>
#include <netinet/tcp.h>
#include <poll.h>
#include <sys/socket.h>
#include <sys/stat.h>
#include <termios.h>
#include <unistd.h>

#include <array>
#include <cerrno>
#include <cstring>
#include <utility>

#include "adapters/gpib/route_session.h"

namespace orvane {
namespace {

bool IsSocket(int descriptor) {
  struct stat status {};
  return ::fstat(descriptor, &status) == 0 && S_ISSOCK(status.st_mode);
}

bool IsWouldBlock(int error) { return error == EAGAIN || error == EWOULDBLOCK || error == EINTR; }

}  // namespace

ByteStream::ByteStream(int descriptor, std::string peer)
    : descriptor_(descriptor), socket_(IsSocket(descriptor)), peer_(std::move(peer)) {}

ByteStream::ByteStream(ByteStream&& other) noexcept
    : descriptor_(std::exchange(other.descriptor_, -1)), socket_(other.socket_), peer_(std::move(other.peer_)) {}

ByteStream& ByteStream::operator=(ByteStream&& other) noexcept {
  std::swap(descriptor_, other.descriptor_);
  std::swap(socket_, other.socket_);
  std::swap(peer_, other.peer_);
  return *this;
}

void ByteStream::Close() {
  if (descriptor_ >= 0) ::close(std::exchange(descriptor_, -1));
}

void ByteStream::Drop() {
  if (IsOpen() && !socket_) ::tcflush(descriptor_, TCOFLUSH);
  Close();
}

void ByteStream::FailGone(int error, bool insideReply) const {
  const std::string where = insideReply ? " in the middle of its reply" : "";
  if (!socket_)
    FailAbsent(error == 0 || error == EIO || error == ENXIO || error == ENODEV
                   ? "the device is gone" + where + ". Is it unplugged?"
                   : std::string(std::strerror(error)) + ".");
  if (error == 0 || error == ECONNRESET || error == EPIPE) FailAbsent(peer_ + " closed the connection" + where + ".");
  FailAbsent(std::string(std::strerror(error)) + ".");
}

bool ByteStream::AwaitReady(short event, const Deadline& deadline) {
  while (!deadline.Passed()) {
    pollfd ready{descriptor_, event, 0};
    const int events = deadline.Poll(ready);
    if (events > 0) return true;
    if (events < 0 && errno != EINTR) FailAbsent(std::string(std::strerror(errno)) + ".");
  }
  return false;
}

void ByteStream::Send(std::string_view bytes, const Deadline& deadline) {
  while (!bytes.empty()) {
    const auto count = socket_ ? ::send(descriptor_, bytes.data(), bytes.size(), MSG_NOSIGNAL)
                               : ::write(descriptor_, bytes.data(), bytes.size());
    if (count >= 0) {
      bytes.remove_prefix(static_cast<std::size_t>(count));
    } else if (!IsWouldBlock(errno)) {
      FailGone(errno, false);
    } else if (!AwaitReady(POLLOUT, deadline)) {
      FailTimeOut(peer_ + " took no bytes within " + deadline.Text() + ".");
    }
  }
}

ByteStream::Found ByteStream::Take(std::string& reply) {
  std::array<char, 4096> bytes;
  const auto count = ::read(descriptor_, bytes.data(), bytes.size());
  if (count > 0) {
    reply.append(bytes.data(), static_cast<std::size_t>(count));
    return Found::kBytes;
  }
  if (count < 0 && IsWouldBlock(errno)) return Found::kNothing;
  FailGone(count == 0 ? 0 : errno, !reply.empty());
}

bool ByteStream::Receive(std::string& reply, const Deadline& deadline) {
  // Many an instrument holds the second piece of what it sends back until the first is acknowledged, which the system
  // takes 40 ms for unless it is told each time.
  const int on = 1;
  if (socket_) ::setsockopt(descriptor_, IPPROTO_TCP, TCP_QUICKACK, &on, sizeof on);
  while (AwaitReady(POLLIN, deadline)) {
    if (Take(reply) == Found::kBytes) return true;
  }
  return false;
}

void ByteStream::ReceiveArrived(std::string& bytes) {
  // A peer that never pauses must not keep the station here.
  constexpr int kMostChunks = 16;
  for (int chunk = 0; chunk < kMostChunks && Take(bytes) == Found::kBytes; ++chunk) {
  }
}

}  // namespace orvane
