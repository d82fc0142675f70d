#include "app/automation_transport.h"

#include <poll.h>
#include <sys/socket.h>
#include <sys/stat.h>
#include <sys/un.h>
#include <unistd.h>

#include <algorithm>
#include <array>
#include <cerrno>
#include <cstring>
#include <optional>

namespace orvane {
namespace {

/// A client that is so many bytes behind has gone for the station: some hundred answers of the longest kind.
constexpr std::size_t kMostUnsent = std::size_t{8} << 20;
/// What the station's last words have to reach a client that is slow.
constexpr int kFarewellMs = 500;

/// Whoever reads the standard output sets its pace; when nobody does any more, the end of the input tells.
void WriteToStandardOutput(std::string_view bytes) {
  while (!bytes.empty()) {
    const auto count = ::write(STDOUT_FILENO, bytes.data(), bytes.size());
    if (count > 0) {
      bytes.remove_prefix(static_cast<std::size_t>(count));
    } else if (errno == EAGAIN) {
      pollfd ready{STDOUT_FILENO, POLLOUT, 0};
      ::poll(&ready, 1, -1);
    } else if (errno != EINTR) {
      return;
    }
  }
}

/// Sends what the socket takes just now and cuts it off. @return false when the other side has gone.
bool SendSome(int socket, std::string& bytes) {
  std::string_view rest = bytes;
  bool there = true;
  while (!rest.empty()) {
    const auto count = ::send(socket, rest.data(), rest.size(), MSG_NOSIGNAL);
    if (count > 0) {
      rest.remove_prefix(static_cast<std::size_t>(count));
    } else if (errno != EINTR) {
      there = errno == EAGAIN;
      break;
    }
  }
  bytes.erase(0, bytes.size() - rest.size());
  return there;
}

/// What is there to read; no value at the end of the input. Only for descriptors that are readable.
std::optional<std::string> ReadWhatIsThere(int descriptor) {
  std::array<char, 65536> bytes;
  const auto count = ::read(descriptor, bytes.data(), bytes.size());
  if (count < 0 && (errno == EINTR || errno == EAGAIN)) return std::string();
  if (count <= 0) return std::nullopt;
  return std::string(bytes.data(), static_cast<std::size_t>(count));
}

}  // namespace

void LineCutter::Feed(std::string_view bytes, const std::function<void(const std::string&)>& take) {
  while (!bytes.empty()) {
    const auto end = bytes.find('\n');
    line_.append(bytes.substr(0, std::min(end, kLongest - line_.size())));
    if (end == std::string_view::npos) return;
    take(line_);
    line_.clear();
    bytes.remove_prefix(end + 1);
  }
}

StdioTransport::StdioTransport(EventLoop& loop, AutomationPort& port)
    : loop_(loop), port_(port), readable_(STDIN_FILENO, QSocketNotifier::Read) {
  QObject::connect(&readable_, &QSocketNotifier::activated, &readable_, [this] { ReadSome(); });
  port_.Connect([](const std::string& line) { WriteToStandardOutput(line + "\n"); });
}

void StdioTransport::ReadSome() {
  const auto bytes = ReadWhatIsThere(STDIN_FILENO);
  if (!bytes) {
    readable_.setEnabled(false);
    loop_.Post([this] { port_.EndStation(); });
    return;
  }
  lines_.Feed(*bytes, [this](const std::string& line) { loop_.Post([this, line] { port_.Receive(line); }); });
}

struct UnixSocketTransport::Client {
  explicit Client(int descriptor)
      : socket(descriptor),
        readable(descriptor, QSocketNotifier::Read),
        writable(descriptor, QSocketNotifier::Write) {
    writable.setEnabled(false);
    QObject::connect(&writable, &QSocketNotifier::activated, &writable, [this] { (void)Flush(); });
  }
  Client(const Client&) = delete;
  Client& operator=(const Client&) = delete;
  ~Client() {
    readable.setEnabled(false);
    writable.setEnabled(false);
    ::close(socket);
  }

  /// Never waits: what the client does not take now goes out when it does. @return false when it has gone, or has
  /// fallen too far behind.
  [[nodiscard]] bool Send(const std::string& line) {
    unsent += line;
    unsent += '\n';
    return Flush() && unsent.size() <= kMostUnsent;
  }
  /// A client that is found gone here ends its input too, which is where that is told.
  bool Flush() {
    const bool there = SendSome(socket, unsent);
    writable.setEnabled(there && !unsent.empty());
    return there;
  }
  /// The station ends: a last moment for what is unsent.
  void Farewell() {
    pollfd ready{socket, POLLOUT, 0};
    if (!unsent.empty() && ::poll(&ready, 1, kFarewellMs) > 0) (void)Flush();
  }

  int socket;
  QSocketNotifier readable;
  QSocketNotifier writable;
  std::string unsent;
  LineCutter lines;
};

namespace {

sockaddr_un AddressOf(const std::string& path) {
  sockaddr_un address{};
  address.sun_family = AF_UNIX;
  if (path.empty() || path.size() >= sizeof address.sun_path) throw SocketFailure("the path is empty or too long");
  std::memcpy(address.sun_path, path.data(), path.size());
  return address;
}

/// Clears away the file of a station that was killed. @throws SocketFailure when somebody listens there.
void ClearAbandoned(const std::string& path) {
  const sockaddr_un address = AddressOf(path);
  struct stat facts {};
  if (::lstat(path.c_str(), &facts) != 0 || !S_ISSOCK(facts.st_mode)) return;
  const int probe = ::socket(AF_UNIX, SOCK_STREAM | SOCK_CLOEXEC | SOCK_NONBLOCK, 0);
  const auto* where = reinterpret_cast<const sockaddr*>(&address);
  const bool abandoned = ::connect(probe, where, sizeof address) != 0 && errno == ECONNREFUSED;
  ::close(probe);
  if (!abandoned) throw SocketFailure("another program listens there");
  ::unlink(path.c_str());
}

/// A listening socket whose file the owner alone may use. The file comes to its place when the socket listens
/// already, so that whoever sees it can connect.
int ListenAt(const std::string& path) {
  const std::string fresh = path + "~";
  const sockaddr_un address = AddressOf(fresh);
  const int listener = ::socket(AF_UNIX, SOCK_STREAM | SOCK_CLOEXEC | SOCK_NONBLOCK, 0);
  ::unlink(fresh.c_str());
  const mode_t old = ::umask(S_IXUSR | S_IRWXG | S_IRWXO);
  const bool listens = ::bind(listener, reinterpret_cast<const sockaddr*>(&address), sizeof address) == 0 &&
                       ::listen(listener, 1) == 0 && ::link(fresh.c_str(), path.c_str()) == 0;
  const int error = errno;
  ::umask(old);
  ::unlink(fresh.c_str());
  if (listens) return listener;
  ::close(listener);
  throw SocketFailure(std::strerror(error));
}

}  // namespace

ListeningSocket::ListeningSocket(std::string path) : path_(std::move(path)) {
  ClearAbandoned(path_);
  descriptor_ = ListenAt(path_);
}

ListeningSocket::~ListeningSocket() {
  ::close(descriptor_);
  ::unlink(path_.c_str());
}

UnixSocketTransport::UnixSocketTransport(EventLoop& loop, AutomationPort& port,
                                         std::unique_ptr<ListeningSocket> listener)
    : loop_(loop),
      port_(port),
      listener_(std::move(listener)),
      connecting_(listener_->Descriptor(), QSocketNotifier::Read) {
  QObject::connect(&connecting_, &QSocketNotifier::activated, &connecting_, [this] { Accept(); });
}

UnixSocketTransport::~UnixSocketTransport() {
  if (client_) {
    port_.Disconnect();
    client_->Farewell();
  }
  connecting_.setEnabled(false);
}

void UnixSocketTransport::Accept() {
  const int socket = ::accept4(listener_->Descriptor(), nullptr, nullptr, SOCK_CLOEXEC | SOCK_NONBLOCK);
  if (socket < 0) return;
  connecting_.setEnabled(false);
  client_ = std::make_shared<Client>(socket);
  QObject::connect(&client_->readable, &QSocketNotifier::activated, &client_->readable, [this] { ReadSome(); });
  loop_.Post([this, held = std::weak_ptr(client_)] {
    port_.Connect([this, held](const std::string& line) {
      const auto client = held.lock();
      if (client && !client->Send(line)) PostHangUp(client);
    });
  });
}

void UnixSocketTransport::ReadSome() {
  const auto bytes = ReadWhatIsThere(client_->socket);
  if (!bytes) {
    PostHangUp(client_);
    return;
  }
  client_->lines.Feed(*bytes, [this](const std::string& line) {
    loop_.Post([this, line, held = std::weak_ptr(client_)] {
      if (held.lock() == client_) port_.Receive(line);
    });
  });
}

void UnixSocketTransport::PostHangUp(const std::shared_ptr<Client>& client) {
  client->readable.setEnabled(false);
  loop_.Post([this, gone = std::weak_ptr(client)] {
    if (gone.expired() || gone.lock() != client_) return;
    port_.Disconnect();
    client_.reset();
    connecting_.setEnabled(true);
  });
}

}  // namespace orvane
