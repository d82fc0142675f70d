#include <netdb.h>
#include <netinet/in.h>
#include <netinet/tcp.h>
#include <poll.h>
#include <sys/socket.h>

#include <cerrno>
#include <cstring>
#include <memory>

#include "adapters/gpib/byte_stream.h"
#include "adapters/gpib/route_session.h"

namespace orvane {
namespace {

using namespace std::chrono_literals;

/// An instrument on the network of a bench that has not answered by then is not there.
constexpr auto kConnectLimit = 3s;

/// A question to the resolver, which a name server that is away can keep for minutes.
class Lookup {
 public:
  Lookup(std::string host, int port) : host_(std::move(host)), service_(std::to_string(port)) {
    hints_.ai_socktype = SOCK_STREAM;
    request_.ar_name = host_.c_str();
    request_.ar_service = service_.c_str();
    request_.ar_request = &hints_;
  }
  Lookup(const Lookup&) = delete;
  Lookup& operator=(const Lookup&) = delete;
  ~Lookup() {
    if (request_.ar_result != nullptr) ::freeaddrinfo(request_.ar_result);
  }

  /// EAI_INPROGRESS when the deadline passed first.
  int Await(const Deadline& deadline) {
    if (IsNumber()) return 0;
    gaicb* request = &request_;
    if (const int refused = ::getaddrinfo_a(GAI_NOWAIT, &request, 1, nullptr); refused != 0) return refused;
    while (::gai_error(&request_) == EAI_INPROGRESS && !deadline.Passed()) {
      const auto nap = deadline.UntilGlance();
      const timespec span{nap / 1s, (nap % 1s).count()};
      if (::gai_suspend(&request, 1, &span) == EAI_AGAIN) deadline.Glance();
    }
    return ::gai_error(&request_);
  }
  /// Whether the resolver lets go of the question.
  bool Cancel() { return ::gai_cancel(&request_) != EAI_NOTCANCELED; }
  [[nodiscard]] const addrinfo* Addresses() const { return request_.ar_result; }

 private:
  /// A host given as a number is no question to a name server.
  bool IsNumber() {
    addrinfo number = hints_;
    number.ai_flags = AI_NUMERICHOST;
    return ::getaddrinfo(host_.c_str(), service_.c_str(), &number, &request_.ar_result) == 0;
  }

  std::string host_;
  std::string service_;
  addrinfo hints_{};
  gaicb request_{};
};

std::unique_ptr<Lookup> AddressesOf(const std::string& host, int port, const Deadline& deadline) {
  auto lookup = std::make_unique<Lookup>(host, port);
  const int fault = lookup->Await(deadline);
  if (fault == 0) return lookup;
  if (fault != EAI_INPROGRESS) FailAbsent(std::string("unknown host, ") + ::gai_strerror(fault) + ".");
  // A question that the resolver works at is the resolver's until it ends.
  if (!lookup->Cancel()) (void)lookup.release();
  FailAbsent("no name server told the host's address within " + deadline.Text() + ".");
}

/// @return 0, or what kept it from being made; EINPROGRESS when the deadline passed first.
int Connect(int descriptor, const addrinfo& address, const Deadline& deadline) {
  if (::connect(descriptor, address.ai_addr, address.ai_addrlen) == 0) return 0;
  if (errno != EINPROGRESS) return errno;
  pollfd ready{descriptor, POLLOUT, 0};
  while (deadline.Poll(ready) <= 0) {
    if (deadline.Passed()) return EINPROGRESS;
  }
  int error = 0;
  socklen_t size = sizeof error;
  ::getsockopt(descriptor, SOL_SOCKET, SO_ERROR, &error, &size);
  return error;
}

}  // namespace

ByteStream ConnectToOneOf(const addrinfo* addresses, const Deadline& deadline, const std::string& peer) {
  int count = 0;
  for (const addrinfo* address = addresses; address != nullptr; address = address->ai_next) ++count;
  std::string why;
  for (const addrinfo* address = addresses; address != nullptr; address = address->ai_next, --count) {
    const int descriptor = ::socket(address->ai_family, SOCK_STREAM | SOCK_NONBLOCK | SOCK_CLOEXEC, 0);
    const int fault = descriptor < 0 ? errno : 0;
    ByteStream stream(descriptor, peer);
    // An address that is never heard of must not have the time of those behind it.
    const int error = fault != 0 ? fault : Connect(descriptor, *address, deadline.Within(deadline.Left() / count));
    if (error == 0) {
      // Lines are short and each awaits its reply: none may wait for company.
      const int on = 1;
      ::setsockopt(descriptor, IPPROTO_TCP, TCP_NODELAY, &on, sizeof on);
      return stream;
    }
    why = error == EINPROGRESS ? " within " + deadline.Text() : std::string(": ") + std::strerror(error);
  }
  FailAbsent("no connection" + why + ".");
}

ByteStream ConnectTcp(const std::string& host, int port, const Deadline& deadline, const std::string& peer) {
  const Deadline limit = deadline.Within(kConnectLimit);
  const auto lookup = AddressesOf(host, port, limit);
  return ConnectToOneOf(lookup->Addresses(), limit, peer);
}

}  // namespace orvane
