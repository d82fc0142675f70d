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
  /// Bytes that the station has written.
  [[nodiscard]] std::string Received(std::size_t size) const {
    std::string bytes(size, '\0');
    const auto count = ::read(master_, bytes.data(), size);
    bytes.resize(count < 0 ? 0 : static_cast<std::size_t>(count));
    return bytes;
  }
  /// All of them that there are, within 100 ms.
  [[nodiscard]] std::string ReceivedSoFar() const {
    std::string bytes;
    for (pollfd more{master_, POLLIN, 0}; ::poll(&more, 1, 100) > 0 && (more.revents & POLLIN) != 0;) {
      bytes += Received(4096);
    }
    return bytes;
  }
  void HangUp() {
    if (master_ >= 0) ::close(master_);
    master_ = -1;
  }

 private:
  int master_ = -1;
  std::string device_;
};

}  // namespace orvane::test
