#pragma once

#include <fcntl.h>
#include <poll.h>
#include <pty.h>
#include <termios.h>
#include <unistd.h>

#include <string>
#include <string_view>

namespace orvane::test {

/// A pseudo-terminal: the test holds the master's side, the station opens the device.
class Pty {
 public:
  Pty() {
    char name[128] = {};
    int device = -1;
    if (::openpty(&master_, &device, name, nullptr, nullptr) != 0) return;
    termios raw{};
    ::tcgetattr(device, &raw);
    ::cfmakeraw(&raw);
    ::tcsetattr(device, TCSANOW, &raw);
    ::close(device);
    device_ = name;
  }
  ~Pty() { HangUp(); }

  [[nodiscard]] const std::string& Device() const { return device_; }
  [[nodiscard]] int Master() const { return master_; }
  [[nodiscard]] bool Send(std::string_view bytes) const {
    return ::write(master_, bytes.data(), bytes.size()) == static_cast<ssize_t>(bytes.size());
  }
  /// Bytes that the station has written: so many, for which it waits 5 s, and what else is there by then.
  [[nodiscard]] std::string Received(std::size_t expected) const {
    constexpr int kPatienceMs = 5000;
    std::string bytes;
    while (TakeSome(bytes, bytes.size() < expected ? kPatienceMs : 0)) {
    }
    return bytes;
  }
  /// All of them that there are, until nothing comes for 100 ms.
  [[nodiscard]] std::string ReceivedSoFar() const {
    std::string bytes;
    while (TakeSome(bytes, 100)) {
    }
    return bytes;
  }
  void HangUp() {
    if (master_ >= 0) ::close(master_);
    master_ = -1;
  }

 private:
  /// @return false when nothing came in time.
  bool TakeSome(std::string& bytes, int withinMs) const {
    pollfd more{master_, POLLIN, 0};
    if (::poll(&more, 1, withinMs) <= 0 || (more.revents & POLLIN) == 0) return false;
    char piece[4096];
    const auto count = ::read(master_, piece, sizeof piece);
    if (count > 0) bytes.append(piece, static_cast<std::size_t>(count));
    return count > 0;
  }

  int master_ = -1;
  std::string device_;
};

}  // namespace orvane::test
