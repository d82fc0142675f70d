#include "adapters/disk_calls.h"

#include <fcntl.h>
#include <unistd.h>

#include <cstdio>

namespace orvane {

int DiskCalls::Open(const char* path, int flags, mode_t mode) { return ::open(path, flags, mode); }

ssize_t DiskCalls::ReadAt(int descriptor, void* bytes, std::size_t size, off_t offset) {
  return ::pread(descriptor, bytes, size, offset);
}

ssize_t DiskCalls::Write(int descriptor, const void* bytes, std::size_t size) {
  return ::write(descriptor, bytes, size);
}

int DiskCalls::Sync(int descriptor) { return ::fsync(descriptor); }
int DiskCalls::Close(int descriptor) { return ::close(descriptor); }
int DiskCalls::Rename(const char* from, const char* to) { return ::rename(from, to); }
int DiskCalls::Unlink(const char* path) { return ::unlink(path); }
int DiskCalls::Look(const char* path, struct stat& facts) { return ::lstat(path, &facts); }
int DiskCalls::LookAtOpen(int descriptor, struct stat& facts) { return ::fstat(descriptor, &facts); }
int DiskCalls::SetOwner(int descriptor, uid_t user, gid_t group) { return ::fchown(descriptor, user, group); }
int DiskCalls::SetMode(int descriptor, mode_t mode) { return ::fchmod(descriptor, mode); }

}  // namespace orvane
