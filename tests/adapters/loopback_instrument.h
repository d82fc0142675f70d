#pragma once

#include <arpa/inet.h>
#include <netinet/in.h>
#include <netinet/tcp.h>
#include <sys/socket.h>
#include <unistd.h>

#include <array>
#include <string>
#include <string_view>

namespace orvane::test {

/// An instrument on the loopback. Nobody needs to accept for a connection to be made and bytes to be sent, so most
/// tests need no second thread.
class Instrument {
 public:
  Instrument() : listener_(::socket(AF_INET, SOCK_STREAM, 0)) {
    sockaddr_in any{};
    any.sin_family = AF_INET;
    any.sin_addr.s_addr = htonl(INADDR_LOOPBACK);
    ::bind(listener_, reinterpret_cast<const sockaddr*>(&any), sizeof any);
    ::listen(listener_, 4);
    port_ = ntohs(Address().sin_port);
  }
  Instrument(const Instrument&) = delete;
  Instrument& operator=(const Instrument&) = delete;
  ~Instrument() {
    HangUp();
    Leave();
    for (const int waiting : waiting_) {
      if (waiting >= 0) ::close(waiting);
    }
  }

  [[nodiscard]] int Port() const { return port_; }
  [[nodiscard]] sockaddr_in Address() const {
    sockaddr_in own{};
    socklen_t size = sizeof own;
    ::getsockname(listener_, reinterpret_cast<sockaddr*>(&own), &size);
    return own;
  }
  void Accept() {
    HangUp();
    peer_ = ::accept(listener_, nullptr, nullptr);
    const int on = 1;
    ::setsockopt(peer_, IPPROTO_TCP, TCP_NODELAY, &on, sizeof on);
  }
  void Reply(std::string_view bytes) const { ::send(peer_, bytes.data(), bytes.size(), MSG_NOSIGNAL); }
  [[nodiscard]] std::string Received() const {
    std::string bytes(100000, '\0');
    const auto count = ::recv(peer_, bytes.data(), bytes.size(), 0);
    bytes.resize(count < 0 ? 0 : static_cast<std::size_t>(count));
    return bytes;
  }
  void HangUp() {
    if (peer_ >= 0) ::close(peer_);
    peer_ = -1;
  }
  /// As a host behind a wall: nobody accepts, and the queue of those who wait is full.
  void TakeNoMore() {
    ::listen(listener_, 0);
    const sockaddr_in own = Address();
    for (int& waiting : waiting_) {
      waiting = ::socket(AF_INET, SOCK_STREAM | SOCK_NONBLOCK, 0);
      ::connect(waiting, reinterpret_cast<const sockaddr*>(&own), sizeof own);
    }
  }
  void Leave() {
    if (listener_ >= 0) ::close(listener_);
    listener_ = -1;
  }

 private:
  int listener_;
  int peer_ = -1;
  std::array<int, 4> waiting_{-1, -1, -1, -1};
  int port_ = 0;
};

}  // namespace orvane::test
