#pragma once

#include <unistd.h>

#include <cerrno>
#include <system_error>
#include <utility>

namespace orvane::bench {

/// An open file of the system, closed with its owner.
class FileDescriptor {
 public:
  FileDescriptor() = default;
  /// @throws std::system_error, saying what was tried, when the call that gave `fd` failed.
  FileDescriptor(int fd, const char* tried) : fd_(fd) {
    if (fd < 0) throw std::system_error(errno, std::generic_category(), tried);
  }
  FileDescriptor(FileDescriptor&& other) noexcept : fd_(std::exchange(other.fd_, -1)) {}
  FileDescriptor& operator=(FileDescriptor&& other) noexcept {
    Close();
    fd_ = std::exchange(other.fd_, -1);
    return *this;
  }
  FileDescriptor(const FileDescriptor&) = delete;
  FileDescriptor& operator=(const FileDescriptor&) = delete;
  ~FileDescriptor() { Close(); }

  [[nodiscard]] int Get() const { return fd_; }
  [[nodiscard]] bool Open() const { return fd_ >= 0; }
  void Close() {
    if (fd_ >= 0) ::close(std::exchange(fd_, -1));
  }

 private:
  int fd_ = -1;
};

/// @throws std::system_error when a call of the system failed.
inline void Check(int result, const char* tried) {
  if (result < 0) throw std::system_error(errno, std::generic_category(), tried);
}

}  // namespace orvane::bench
