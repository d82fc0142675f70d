#include "app/automation/automation_transport.h"

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

/// So much may lie unsent for a client without its being waited for, and so long it is waited for.
constexpr std::size_t kSomeUnsent = std::size_t{1} << 20;
constexpr TimePoint kPatience = std::chrono::seconds(1);
/// What a client costs that comes and goes.
constexpr TimePoint kWelcome = std::chrono::microseconds(200);

/// Bytes are taken in pieces that a few dozen requests fill: what is not taken yet costs nothing here.
constexpr std::size_t kPiece = 4096;

/// What is there to read; no value at the end of the input. Only for descriptors that are readable.
std::optional<std::string> ReadWhatIsThere(int descriptor) {
  std::array<char, kPiece> bytes;
  const auto count = ::read(descriptor, bytes.data(), bytes.size());
  if (count < 0 && (errno == EINTR || errno == EAGAIN)) return std::string();
  if (count <= 0) return std::nullopt;
  return std::string(bytes.data(), static_cast<std::size_t>(count));
}

}  // namespace

Intake::Intake(EventLoop& loop, int descriptor, Outbox& out, std::function<void()> onReadable)
    : loop_(loop), out_(out), readable_(descriptor, QSocketNotifier::Read) {
  readable_.setEnabled(false);
  QObject::connect(&readable_, &QSocketNotifier::activated, &readable_, std::move(onReadable));
  out_.onTaken = [this] {
    if (waits_ && out_.Unsent() <= kSomeUnsent) OpenNow();
  };
}

void Intake::Open() {
  if (out_.Unsent() <= kSomeUnsent) return OpenNow();
  if (!std::exchange(waits_, true)) OpenUnlessMoreIsTaken(++wait_);
}

void Intake::OpenNow() {
  waits_ = false;
  readable_.setEnabled(true);
}

void Intake::OpenUnlessMoreIsTaken(int wait) {
  (void)out_.WasTaken();
  loop_.PostAt(loop_.Now() + kPatience, [this, wait, here = std::weak_ptr(here_)] {
    if (here.expired() || !waits_ || wait != wait_) return;
    if (out_.WasTaken()) return OpenUnlessMoreIsTaken(wait);
    OpenNow();
  });
}

StdioTransport::StdioTransport(EventLoop& loop, AutomationPort& port, std::function<void()> onLost)
    : loop_(loop),
      port_(port),
      onLost_(std::move(onLost)),
      out_(StandardOutlet()),
      in_(loop, STDIN_FILENO, out_, [this] { ReadSome(); }) {
  port_.onRoom = [this] {
    if (!ended_) in_.Open();
  };
  port_.clientEnds = [] {
    pollfd input{STDIN_FILENO, POLLRDHUP, 0};
    return ::poll(&input, 1, 0) > 0;
  };
  port_.Connect([this](const std::string& line) { Send(line); });
  in_.Open();
}

StdioTransport::~StdioTransport() {
  port_.Disconnect();
  port_.onRoom = nullptr;
  out_.Farewell();
}

void StdioTransport::ReadSome() {
  in_.Close();
  if (const auto bytes = ReadWhatIsThere(STDIN_FILENO)) {
    port_.Feed(*bytes);
    return;
  }
  ended_ = true;
  loop_.Post([this] { port_.EndStation(); });
}

/// A client that has gone ends its input, too: that is where it is told.
void StdioTransport::Send(const std::string& line) {
  if (out_.Send(line) != Outbox::Sent::TooFarBehind) return;
  out_.Close();
  loop_.Post([this] {
    port_.Disconnect();
    onLost_();
  });
}

struct UnixSocketTransport::Client {
  Client(EventLoop& loop, int descriptor, std::function<void()> onReadable)
      : socket(descriptor), out(SocketOutlet(descriptor)), in(loop, descriptor, out, std::move(onReadable)) {}
  Client(const Client&) = delete;
  Client& operator=(const Client&) = delete;
  ~Client() {
    in.Close();
    out.Close();
    ::close(socket);
  }

  int socket;
  Outbox out;
  Intake in;
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

bool BindTo(int listener, const std::string& path) {
  const sockaddr_un address = AddressOf(path);
  return ::bind(listener, reinterpret_cast<const sockaddr*>(&address), sizeof address) == 0;
}

/// Binds to a name beside the path that nothing has. @return the name; no value, with `errno`, when none can be had.
std::optional<std::string> BindBeside(int listener, const std::string& path) {
  constexpr int kNames = 100;
  for (int i = 0; i < kNames; ++i) {
    std::string fresh = path + "~" + (i == 0 ? "" : std::to_string(i));
    if (BindTo(listener, fresh)) return fresh;
    if (errno != EADDRINUSE) break;
  }
  return std::nullopt;
}

/// A listening socket whose file the owner alone may use. The file comes to its place when the socket listens
/// already, so that whoever sees it can connect.
int ListenAt(const std::string& path) {
  const int listener = ::socket(AF_UNIX, SOCK_STREAM | SOCK_CLOEXEC | SOCK_NONBLOCK, 0);
  const mode_t old = ::umask(S_IXUSR | S_IRWXG | S_IRWXO);
  const auto fresh = BindBeside(listener, path);
  const bool listens = fresh && ::listen(listener, 1) == 0 && ::link(fresh->c_str(), path.c_str()) == 0;
  const int error = errno;
  ::umask(old);
  if (fresh) ::unlink(fresh->c_str());
  if (listens) return listener;
  ::close(listener);
  throw SocketFailure(std::strerror(error));
}

/// Which file has that name; all zeros for none.
std::pair<dev_t, ino_t> FileAt(const std::string& path) {
  struct stat facts {};
  return ::lstat(path.c_str(), &facts) == 0 ? std::pair(facts.st_dev, facts.st_ino) : std::pair<dev_t, ino_t>();
}

}  // namespace

ListeningSocket::ListeningSocket(std::string path) : path_(std::move(path)) {
  ClearAbandoned(path_);
  descriptor_ = ListenAt(path_);
  file_ = FileAt(path_);
}

ListeningSocket::~ListeningSocket() {
  ::close(descriptor_);
  // Whatever took the name meanwhile keeps it.
  if (FileAt(path_) == file_) ::unlink(path_.c_str());
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
    client_->out.Farewell();
  }
  port_.onRoom = nullptr;
  connecting_.setEnabled(false);
}

void UnixSocketTransport::Accept() {
  const int socket = ::accept4(listener_->Descriptor(), nullptr, nullptr, SOCK_CLOEXEC | SOCK_NONBLOCK);
  if (socket < 0) return;
  port_.Charge(kWelcome);
  connecting_.setEnabled(false);
  client_ = std::make_shared<Client>(loop_, socket, [this] { ReadSome(); });
  port_.onRoom = [held = std::weak_ptr(client_)] {
    if (const auto client = held.lock()) client->in.Open();
  };
  loop_.Post([this, held = std::weak_ptr(client_)] {
    port_.Connect([this, held](const std::string& line) {
      const auto client = held.lock();
      if (client && client->out.Send(line) != Outbox::Sent::Yes) PostHangUp(client);
    });
    if (const auto client = held.lock()) client->in.Open();
  });
}

void UnixSocketTransport::ReadSome() {
  client_->in.Close();
  if (const auto bytes = ReadWhatIsThere(client_->socket)) {
    port_.Feed(*bytes);
  } else {
    PostHangUp(client_);
  }
}

void UnixSocketTransport::PostHangUp(const std::shared_ptr<Client>& client) {
  client->in.Close();
  loop_.Post([this, gone = std::weak_ptr(client)] {
    if (gone.expired() || gone.lock() != client_) return;
    port_.Disconnect();
    port_.onRoom = nullptr;
    client_.reset();
    loop_.PostAt(port_.NextAt(), [this] { connecting_.setEnabled(true); });
  });
}

}  // namespace orvane
