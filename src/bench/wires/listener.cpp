#include "bench/wires/listener.h"

#include <arpa/inet.h>
#include <netinet/in.h>
#include <netinet/tcp.h>
#include <sys/socket.h>

#include <array>
#include <charconv>

#include "bench/faults.h"

namespace orvane::bench {
namespace {

sockaddr_in PlaceOf(const std::string& text) {
  const std::size_t colon = text.rfind(':');
  const std::string host = colon == std::string::npos ? "127.0.0.1" : text.substr(0, colon);
  const std::string port = colon == std::string::npos ? text : text.substr(colon + 1);
  sockaddr_in place{};
  place.sin_family = AF_INET;
  std::uint16_t number = 0;
  const auto [end, fault] = std::from_chars(port.data(), port.data() + port.size(), number);
  if (fault != std::errc{} || end != port.data() + port.size() ||
      inet_pton(AF_INET, host.c_str(), &place.sin_addr) != 1) {
    throw BenchOptionError(text + ": PORT or HOST:PORT is needed, HOST as four numbers");
  }
  place.sin_port = htons(number);
  return place;
}

std::string TextOf(const sockaddr_in& place) {
  std::array<char, INET_ADDRSTRLEN> host{};
  inet_ntop(AF_INET, &place.sin_addr, host.data(), host.size());
  return std::string(host.data()) + ":" + std::to_string(ntohs(place.sin_port));
}

// The socket interface takes every kind of address as a pointer to a common beginning.
template <class Address>
sockaddr* Generic(Address& address) {
  return reinterpret_cast<sockaddr*>(&address);
}

}  // namespace

Listener::Listener(const std::string& place)
    : socket_(socket(AF_INET, SOCK_STREAM | SOCK_CLOEXEC | SOCK_NONBLOCK, 0), "open a socket") {
  sockaddr_in where = PlaceOf(place);
  const int on = 1;
  Check(setsockopt(socket_.Get(), SOL_SOCKET, SO_REUSEADDR, &on, sizeof on), "set up a socket");
  Check(bind(socket_.Get(), Generic(where), sizeof where), ("take " + place).c_str());
  Check(listen(socket_.Get(), SOMAXCONN), ("listen on " + place).c_str());
  socklen_t size = sizeof where;
  Check(getsockname(socket_.Get(), Generic(where), &size), "name a socket");
  address_ = TextOf(where);
}

FileDescriptor Listener::Accept() const {
  const int fd = accept4(socket_.Get(), nullptr, nullptr, SOCK_CLOEXEC | SOCK_NONBLOCK);
  if (fd < 0) return {};
  const int on = 1;
  setsockopt(fd, IPPROTO_TCP, TCP_NODELAY, &on, sizeof on);
  return {fd, "accept"};
}

}  // namespace orvane::bench
