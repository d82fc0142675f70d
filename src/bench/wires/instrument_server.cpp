#include "bench/wires/instrument_server.h"

#include <arpa/inet.h>
#include <netinet/in.h>
#include <netinet/tcp.h>
#include <sys/socket.h>

#include <array>
#include <charconv>

namespace orvane::bench {
namespace {

constexpr std::size_t kLongestLine = 65536;

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

InstrumentServer::InstrumentServer(Reactor& reactor, InstrumentLine& instrument, const std::string& place)
    : reactor_(reactor),
      instrument_(instrument),
      listener_(socket(AF_INET, SOCK_STREAM | SOCK_CLOEXEC | SOCK_NONBLOCK, 0), "open a socket") {
  sockaddr_in where = PlaceOf(place);
  const int on = 1;
  Check(setsockopt(listener_.Get(), SOL_SOCKET, SO_REUSEADDR, &on, sizeof on), "set up a socket");
  Check(bind(listener_.Get(), Generic(where), sizeof where), ("take " + place).c_str());
  Check(listen(listener_.Get(), SOMAXCONN), ("listen on " + place).c_str());
  socklen_t size = sizeof where;
  Check(getsockname(listener_.Get(), Generic(where), &size), "name a socket");
  address_ = TextOf(where);
  reactor_.WhenReadable(listener_.Get(), [this] { Accept(); });
  if (instrument_.Absent()) Vanish();
}

InstrumentServer::~InstrumentServer() { Vanish(); }

void InstrumentServer::Accept() {
  const int fd = accept4(listener_.Get(), nullptr, nullptr, SOCK_CLOEXEC | SOCK_NONBLOCK);
  if (fd < 0) return;
  const int on = 1;
  setsockopt(fd, IPPROTO_TCP, TCP_NODELAY, &on, sizeof on);
  clients_[fd].socket = FileDescriptor(fd, "accept");
  reactor_.WhenReadable(fd, [this, fd] { Read(fd); });
}

void InstrumentServer::Read(int fd) {
  std::array<char, 4096> buffer{};
  const ssize_t count = read(fd, buffer.data(), buffer.size());
  if (count < 0 && (errno == EAGAIN || errno == EINTR)) return;
  Client& client = clients_.at(fd);
  if (count > 0) client.pending.append(buffer.data(), static_cast<std::size_t>(count));
  if (count <= 0 || !Serve(client) || client.pending.size() > kLongestLine) Drop(fd);
  if (instrument_.Absent()) Vanish();
}

/// @return false when the client has to go: it does not read, or the instrument is gone.
bool InstrumentServer::Serve(Client& client) {
  for (;;) {
    const std::size_t end = client.pending.find('\n');
    if (end == std::string::npos) return true;
    const std::string line = client.pending.substr(0, end);
    client.pending.erase(0, end + 1);
    if (!instrument_.Take(line)) return false;
    const std::string reply = instrument_.TakeReply().value_or("");
    const ssize_t sent = send(client.socket.Get(), reply.data(), reply.size(), MSG_NOSIGNAL);
    if (sent != static_cast<ssize_t>(reply.size())) return false;
  }
}

void InstrumentServer::Drop(int fd) {
  reactor_.Forget(fd);
  clients_.erase(fd);
}

void InstrumentServer::Vanish() {
  while (!clients_.empty()) Drop(clients_.begin()->first);
  if (!listener_.Open()) return;
  reactor_.Forget(listener_.Get());
  listener_.Close();
}

}  // namespace orvane::bench
