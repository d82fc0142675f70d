#include "app/automation/outbox.h"

#include <fcntl.h>
#include <poll.h>
#include <sys/socket.h>
#include <sys/stat.h>
#include <unistd.h>

#include <algorithm>
#include <cerrno>
#include <chrono>
#include <climits>

namespace orvane {
namespace {

using namespace std::chrono_literals;

constexpr std::size_t kMostUnsent = std::size_t{8} << 20;
/// What the station's last words have to reach a client that is slow: without a pause, and in all.
constexpr int kFarewellPauseMs = 500;
constexpr auto kFarewell = 5s;

class Socket final : public Outlet {
 public:
  using Outlet::Outlet;
  [[nodiscard]] ssize_t Write(std::string_view bytes) override {
    return ::send(descriptor_, bytes.data(), bytes.size(), MSG_NOSIGNAL | MSG_DONTWAIT);
  }
};

/// A pipe or a terminal. Not to wait is a property of what the open file stands for, which the station shares with
/// whoever started it, so it is opened a second time for the station alone.
class Reopened final : public Outlet {
 public:
  using Outlet::Outlet;
  ~Reopened() override { ::close(descriptor_); }
  [[nodiscard]] ssize_t Write(std::string_view bytes) override {
    return ::write(descriptor_, bytes.data(), bytes.size());
  }
};

/// A file takes everything at once; so does, in pieces that are small enough, a pipe that says that it is ready.
class Asked final : public Outlet {
 public:
  using Outlet::Outlet;
  [[nodiscard]] ssize_t Write(std::string_view bytes) override {
    pollfd ready{descriptor_, POLLOUT, 0};
    if (::poll(&ready, 1, 0) == 0) {
      errno = EAGAIN;
      return -1;
    }
    return ::write(descriptor_, bytes.data(), std::min<std::size_t>(bytes.size(), PIPE_BUF));
  }
};

}  // namespace

std::unique_ptr<Outlet> SocketOutlet(int socket) { return std::make_unique<Socket>(socket); }

std::unique_ptr<Outlet> StandardOutlet() {
  struct stat facts {};
  if (::fstat(STDOUT_FILENO, &facts) == 0) {
    if (S_ISSOCK(facts.st_mode)) return SocketOutlet(STDOUT_FILENO);
    if (S_ISFIFO(facts.st_mode) || S_ISCHR(facts.st_mode)) {
      const int own = ::open("/proc/self/fd/1", O_WRONLY | O_NONBLOCK | O_CLOEXEC | O_NOCTTY);
      if (own >= 0) return std::make_unique<Reopened>(own);
    }
  }
  return std::make_unique<Asked>(STDOUT_FILENO);
}

Outbox::Outbox(std::unique_ptr<Outlet> outlet)
    : outlet_(std::move(outlet)), writable_(outlet_->Descriptor(), QSocketNotifier::Write) {
  writable_.setEnabled(false);
  QObject::connect(&writable_, &QSocketNotifier::activated, &writable_, [this] {
    (void)Flush();
    if (onTaken) onTaken();
  });
}

Outbox::Sent Outbox::Send(const std::string& line) {
  if (closed_) return Sent::Gone;
  unsent_ += line;
  unsent_ += '\n';
  if (!Flush()) return Sent::Gone;
  return Unsent() <= kMostUnsent ? Sent::Yes : Sent::TooFarBehind;
}

/// A client that is found gone here ends its input too, which is where that is told.
bool Outbox::Flush() {
  while (taken_ < unsent_.size()) {
    const auto count = outlet_->Write(std::string_view(unsent_).substr(taken_));
    if (count > 0) {
      taken_ += static_cast<std::size_t>(count);
      wasTaken_ = true;
    } else if (errno != EINTR) {
      if (errno != EAGAIN) Close();
      break;
    }
  }
  // What has gone is cut off when that moves no more than has gone.
  if (taken_ * 2 >= unsent_.size()) {
    unsent_.erase(0, taken_);
    taken_ = 0;
  }
  writable_.setEnabled(!unsent_.empty());
  return !closed_;
}

void Outbox::Close() {
  closed_ = true;
  unsent_ = {};
  taken_ = 0;
  writable_.setEnabled(false);
}

void Outbox::Farewell() {
  const auto end = std::chrono::steady_clock::now() + kFarewell;
  pollfd ready{outlet_->Descriptor(), POLLOUT, 0};
  while (!unsent_.empty() && std::chrono::steady_clock::now() < end && ::poll(&ready, 1, kFarewellPauseMs) > 0) {
    (void)Flush();
  }
}

}  // namespace orvane
