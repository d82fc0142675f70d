#include "adapters/scripted_gateway.h"

#include <netinet/in.h>
#include <netinet/tcp.h>
#include <sys/socket.h>
#include <unistd.h>

#include <array>

namespace orvane::test {
namespace {

constexpr std::uint32_t kLastFragment = 0x80000000U;

void BoundWaits(int socket) {
  const timeval patience{5, 0};
  ::setsockopt(socket, SOL_SOCKET, SO_RCVTIMEO, &patience, sizeof patience);
}

std::uint32_t WordAt(const char* place) {
  std::uint32_t word = 0;
  for (int i = 0; i < 4; ++i) word = word << 8U | static_cast<std::uint8_t>(place[i]);
  return word;
}

std::string Marked(const std::string& message) {
  return BytesOf({kLastFragment | static_cast<std::uint32_t>(message.size())}) + message;
}

}  // namespace

std::string BytesOf(const Words& words) {
  std::string bytes;
  for (const std::uint32_t word : words) {
    for (const unsigned shift : {24U, 16U, 8U, 0U}) bytes += static_cast<char>(word >> shift & 0xFFU);
  }
  return bytes;
}

bool GatewayConnection::ReceiveWhole(char* place, std::size_t count) const {
  return ::recv(socket_, place, count, MSG_WAITALL) == static_cast<ssize_t>(count);
}

std::optional<Words> GatewayConnection::NextCall() {
  std::array<char, 4> mark{};
  if (!ReceiveWhole(mark.data(), mark.size())) return std::nullopt;
  std::string message(WordAt(mark.data()) & ~kLastFragment, '\0');
  if (!ReceiveWhole(message.data(), message.size())) return std::nullopt;
  Words words;
  for (std::size_t i = 0; i + 4 <= message.size(); i += 4) words.push_back(WordAt(&message[i]));
  xid_ = words.at(0);
  return words;
}

std::string GatewayConnection::Reply(const Words& result, const std::string& data) const {
  // A reply (1), accepted (0), with an empty verifier (0, 0), done (0).
  std::string message = BytesOf({xid_, 1, 0, 0, 0, 0}) + BytesOf(result);
  if (!data.empty()) {
    message +=
        BytesOf({static_cast<std::uint32_t>(data.size())}) + data + std::string((4 - data.size() % 4) % 4, '\0');
  }
  return Marked(message);
}

std::string GatewayConnection::ReplyHeader(const Words& header) const {
  return Marked(BytesOf({xid_}) + BytesOf(header));
}

void GatewayConnection::Send(const std::string& bytes) const {
  ::send(socket_, bytes.data(), bytes.size(), MSG_NOSIGNAL);
}

void GatewayConnection::Dribble(const std::string& bytes, std::chrono::milliseconds pause) const {
  for (const char byte : bytes) {
    std::this_thread::sleep_for(pause);
    if (::send(socket_, &byte, 1, MSG_NOSIGNAL) != 1) return;
  }
}

void GatewayConnection::AwaitHangUp() const {
  std::array<char, 256> bytes{};
  while (::recv(socket_, bytes.data(), bytes.size(), 0) > 0) {
  }
}

ScriptedGateway::ScriptedGateway(std::vector<Script> scripts) : listener_(::socket(AF_INET, SOCK_STREAM, 0)) {
  sockaddr_in place{};
  place.sin_family = AF_INET;
  place.sin_addr.s_addr = htonl(INADDR_LOOPBACK);
  ::bind(listener_, reinterpret_cast<const sockaddr*>(&place), sizeof place);
  ::listen(listener_, 8);
  socklen_t size = sizeof place;
  ::getsockname(listener_, reinterpret_cast<sockaddr*>(&place), &size);
  port_ = ntohs(place.sin_port);
  BoundWaits(listener_);
  thread_ = std::thread([this, plays = std::move(scripts)] {
    for (const Script& play : plays) {
      const int peer = ::accept(listener_, nullptr, nullptr);
      if (peer < 0) return;
      const int on = 1;
      ::setsockopt(peer, IPPROTO_TCP, TCP_NODELAY, &on, sizeof on);
      BoundWaits(peer);
      GatewayConnection connection(peer);
      play(connection);
      ::close(peer);
    }
  });
}

void ScriptedGateway::Join() {
  if (thread_.joinable()) thread_.join();
  if (listener_ >= 0) ::close(listener_);
  listener_ = -1;
}

}  // namespace orvane::test
