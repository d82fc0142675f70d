#include "program/relay_sockets.h"

#include <arpa/inet.h>
#include <fcntl.h>
#include <netinet/in.h>
#include <netinet/tcp.h>
#include <poll.h>
#include <sys/socket.h>
#include <unistd.h>

#include <array>
#include <atomic>
#include <cerrno>
#include <cstdint>
#include <utility>

#include "program/programs.h"

namespace orvane::test {
namespace {

using bench::Check;
using bench::FileDescriptor;

constexpr int kLongestSendMs = 1000;
/// Little is on its way to somebody who takes no bytes.
constexpr int kReceiveBuffer = 4096;

sockaddr_in AddressOf(const std::string& place) {
  const auto colon = place.rfind(':');
  sockaddr_in address{};
  address.sin_family = AF_INET;
  address.sin_port = htons(static_cast<std::uint16_t>(std::stoi(place.substr(colon + 1))));
  ::inet_pton(AF_INET, place.substr(0, colon).c_str(), &address.sin_addr);
  return address;
}

}  // namespace

FileDescriptor Ready(FileDescriptor socket) {
  const int on = 1;
  ::setsockopt(socket.Get(), IPPROTO_TCP, TCP_NODELAY, &on, sizeof on);
  Check(::fcntl(socket.Get(), F_SETFL, O_NONBLOCK), "set up a socket");
  return socket;
}

FileDescriptor ConnectionTo(const std::string& place) {
  FileDescriptor socket(::socket(AF_INET, SOCK_STREAM | SOCK_CLOEXEC, 0), "open a socket");
  const sockaddr_in address = AddressOf(place);
  if (::connect(socket.Get(), reinterpret_cast<const sockaddr*>(&address), sizeof address) != 0) return {};
  return Ready(std::move(socket));
}

std::string NextPlace() {
  constexpr int kFirstPort = 20000;
  static std::atomic<int> taken = 0;
  return OwnLoopbackAddress() + ":" + std::to_string(kFirstPort + taken++);
}

FileDescriptor ListenerAt(const std::string& place) {
  FileDescriptor socket(::socket(AF_INET, SOCK_STREAM | SOCK_CLOEXEC | SOCK_NONBLOCK, 0), "open a socket");
  const int on = 1;
  ::setsockopt(socket.Get(), SOL_SOCKET, SO_REUSEADDR, &on, sizeof on);
  ::setsockopt(socket.Get(), SOL_SOCKET, SO_RCVBUF, &kReceiveBuffer, sizeof kReceiveBuffer);
  const sockaddr_in address = AddressOf(place);
  Check(::bind(socket.Get(), reinterpret_cast<const sockaddr*>(&address), sizeof address), "take a place");
  Check(::listen(socket.Get(), SOMAXCONN), "listen");
  return socket;
}

std::optional<std::string> BytesFrom(int end) {
  std::array<char, 65536> bytes;
  const auto count = ::read(end, bytes.data(), bytes.size());
  if (count > 0) return std::string(bytes.data(), static_cast<std::size_t>(count));
  if (count < 0 && (errno == EAGAIN || errno == EINTR)) return std::string();
  return std::nullopt;
}

void SendAll(int end, std::string_view bytes) {
  while (!bytes.empty()) {
    const auto count = ::write(end, bytes.data(), bytes.size());
    if (count > 0) {
      bytes.remove_prefix(static_cast<std::size_t>(count));
      continue;
    }
    pollfd ready{end, POLLOUT, 0};
    if (errno != EAGAIN || ::poll(&ready, 1, kLongestSendMs) <= 0) return;
  }
}

}  // namespace orvane::test
