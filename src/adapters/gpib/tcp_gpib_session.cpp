#include "adapters/gpib/tcp_gpib_session.h"

#include <netdb.h>
#include <netinet/in.h>
#include <netinet/tcp.h>
#include <poll.h>
#include <sys/socket.h>
#include <unistd.h>

#include <algorithm>
#include <array>
#include <cerrno>
#include <chrono>
#include <cstring>
#include <limits>
#include <memory>

namespace orvane {
namespace {

using Clock = std::chrono::steady_clock;
using namespace std::chrono_literals;

/// An instrument on the network of a bench that has not answered by then is not there.
constexpr auto kConnectTimeOut = 3s;

struct AddressListDeleter {
  void operator()(addrinfo* list) const { ::freeaddrinfo(list); }
};
using AddressList = std::unique_ptr<addrinfo, AddressListDeleter>;

/// "10 s", "300 ms", "10 us".
std::string SpanText(TimePoint span) {
  if (span >= 1s) return std::to_string(span / 1s) + " s";
  if (span >= 1ms) return std::to_string(span / 1ms) + " ms";
  return std::to_string(span / 1us) + " us";
}

bool IsWouldBlock(int error) { return error == EAGAIN || error == EWOULDBLOCK || error == EINTR; }

}  // namespace

class TcpGpibSession::Deadline {
 public:
  explicit Deadline(TimePoint span) : span_(span), at_(Clock::now() + span) {}
  [[nodiscard]] std::string Text() const { return SpanText(span_); }
  /// For poll(2): milliseconds, rounded up; never negative.
  [[nodiscard]] int LeftMs() const {
    const auto left = std::chrono::ceil<std::chrono::milliseconds>(at_ - Clock::now()).count();
    return static_cast<int>(std::clamp<decltype(left)>(left, 0, std::numeric_limits<int>::max()));
  }

 private:
  TimePoint span_;
  Clock::time_point at_;
};

TcpGpibSession::TcpGpibSession(int primary, std::string host, int port)
    : name_("Instrument at address " + std::to_string(primary) + ", route tcp:" + host + ":" + std::to_string(port)),
      host_(std::move(host)),
      service_(std::to_string(port)) {}

void TcpGpibSession::Disconnect() {
  if (socket_ >= 0) ::close(socket_);
  socket_ = -1;
  pending_.clear();
}

void TcpGpibSession::FailAbsent(const std::string& what) {
  Disconnect();
  ended_ = what;
  throw GpibAbsent(name_ + ": " + what);
}

void TcpGpibSession::FailTimeOut(const std::string& what) {
  Disconnect();
  ended_ = what;
  throw GpibTimeOut(name_ + ": " + what);
}

void TcpGpibSession::Connect() {
  if (socket_ >= 0) return;
  if (!ended_.empty()) {
    throw GpibAbsent(name_ + ": the connection has ended (" + ended_ + ") Initialize the instrument again.");
  }
  addrinfo wanted{};
  wanted.ai_socktype = SOCK_STREAM;
  addrinfo* found = nullptr;
  const int unknown = ::getaddrinfo(host_.c_str(), service_.c_str(), &wanted, &found);
  if (unknown != 0) FailAbsent(std::string("unknown host, ") + ::gai_strerror(unknown) + ".");
  const AddressList addresses(found);

  std::string why;
  for (const addrinfo* address = addresses.get(); address != nullptr; address = address->ai_next) {
    socket_ = ::socket(address->ai_family, SOCK_STREAM | SOCK_NONBLOCK | SOCK_CLOEXEC, 0);
    if (socket_ < 0) FailAbsent(std::string(std::strerror(errno)) + ".");
    int error = ::connect(socket_, address->ai_addr, address->ai_addrlen) == 0 ? 0 : errno;
    if (error == EINPROGRESS) {
      pollfd ready{socket_, POLLOUT, 0};
      socklen_t size = sizeof error;
      const int events = ::poll(&ready, 1, static_cast<int>(std::chrono::milliseconds(kConnectTimeOut).count()));
      if (events <= 0) {
        error = ETIMEDOUT;
      } else {
        ::getsockopt(socket_, SOL_SOCKET, SO_ERROR, &error, &size);
      }
    }
    if (error == 0) {
      // Lines are short and each awaits its reply: none may wait for company.
      const int on = 1;
      ::setsockopt(socket_, IPPROTO_TCP, TCP_NODELAY, &on, sizeof on);
      return;
    }
    why = std::strerror(error);
    Disconnect();
  }
  FailAbsent("no connection: " + why + ".");
}

void TcpGpibSession::AwaitReady(short event, const Deadline& deadline, const std::string& inVain) {
  while (true) {
    pollfd ready{socket_, event, 0};
    const int events = ::poll(&ready, 1, deadline.LeftMs());
    if (events > 0) return;
    if (events < 0 && errno != EINTR) FailAbsent(std::string(std::strerror(errno)) + ".");
    if (deadline.LeftMs() == 0) FailTimeOut(inVain + " within " + deadline.Text() + ".");
  }
}

void TcpGpibSession::RefuseIfClosed() {
  char next = 0;
  const auto count = ::recv(socket_, &next, 1, MSG_PEEK | MSG_DONTWAIT);
  if (count == 0) FailAbsent("the instrument closed the connection.");
  if (count < 0 && !IsWouldBlock(errno)) FailAbsent(std::string(std::strerror(errno)) + ".");
}

void TcpGpibSession::Write(std::string_view text, TimePoint timeOut) {
  Connect();
  RefuseIfClosed();
  const Deadline deadline(timeOut);
  const std::string message = std::string(text) + "\n";
  for (std::string_view rest = message; !rest.empty();) {
    const auto count = ::send(socket_, rest.data(), rest.size(), MSG_NOSIGNAL);
    if (count >= 0) {
      rest.remove_prefix(static_cast<std::size_t>(count));
    } else if (IsWouldBlock(errno)) {
      AwaitReady(POLLOUT, deadline, "the instrument took no bytes");
    } else {
      FailAbsent(std::string(std::strerror(errno)) + ".");
    }
  }
}

std::string TcpGpibSession::Read(std::size_t size, TimePoint timeOut) {
  Connect();
  const Deadline deadline(timeOut);
  while (true) {
    const auto lineEnd = pending_.find('\n');
    const std::size_t ready = lineEnd == std::string::npos ? pending_.size() : lineEnd + 1;
    if (lineEnd != std::string::npos || ready >= size) {
      std::string reply = pending_.substr(0, std::min(ready, size));
      pending_.erase(0, reply.size());
      return reply;
    }
    AwaitReady(POLLIN, deadline, pending_.empty() ? "no reply" : "no line end behind the reply's first bytes");
    std::array<char, 4096> bytes{};
    const auto count = ::recv(socket_, bytes.data(), bytes.size(), 0);
    if (count > 0) {
      pending_.append(bytes.data(), static_cast<std::size_t>(count));
    } else if (count == 0) {
      FailAbsent(pending_.empty() ? "the instrument closed the connection."
                                  : "the instrument closed the connection in the middle of its reply.");
    } else if (!IsWouldBlock(errno)) {
      FailAbsent(std::string(std::strerror(errno)) + ".");
    }
  }
}

}  // namespace orvane
