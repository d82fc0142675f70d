#pragma once

#include <sys/stat.h>
#include <sys/types.h>

#include <cstddef>

namespace orvane {

/// The system's calls for files, each as its manual page says, `errno` included. What is derived from it can count
/// them, fail them or end the process at one.
class DiskCalls {
 public:
  DiskCalls() = default;
  DiskCalls(const DiskCalls&) = delete;
  DiskCalls& operator=(const DiskCalls&) = delete;
  virtual ~DiskCalls() = default;

  [[nodiscard]] virtual int Open(const char* path, int flags, mode_t mode);
  [[nodiscard]] virtual ssize_t ReadAt(int descriptor, void* bytes, std::size_t size, off_t offset);
  [[nodiscard]] virtual ssize_t Write(int descriptor, const void* bytes, std::size_t size);
  [[nodiscard]] virtual int Sync(int descriptor);
  virtual int Close(int descriptor);
  [[nodiscard]] virtual int Rename(const char* from, const char* to);
  virtual int Unlink(const char* path);
  /// Of the path itself: a link is not followed.
  [[nodiscard]] virtual int Look(const char* path, struct stat& facts);
  [[nodiscard]] virtual int LookAtOpen(int descriptor, struct stat& facts);
  [[nodiscard]] virtual int SetOwner(int descriptor, uid_t user, gid_t group);
  [[nodiscard]] virtual int SetMode(int descriptor, mode_t mode);
};

}  // namespace orvane
