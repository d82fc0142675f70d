#include "adapters/open_file.h"

#include <fcntl.h>
#include <sys/stat.h>

#include <cerrno>
#include <cstring>
#include <utility>

#include "base/failure.h"

namespace orvane {

void FailOf(int error, const std::string& path) {
  throw StationFailure(std::string(std::strerror(error)) + ": " + path);
}

void RequireRegular(const struct stat& facts, const std::string& path) {
  if (S_ISDIR(facts.st_mode)) FailOf(EISDIR, path);
  if (!S_ISREG(facts.st_mode)) throw StationFailure("Not a regular file: " + path);
}

const char* SystemName(const std::string& path) {
  if (path.find('\0') != std::string::npos) FailOf(EINVAL, path.substr(0, path.find('\0')));
  return path.c_str();
}

int OpenDescriptor(DiskCalls& calls, const std::string& name, int flags, mode_t mode) {
  for (;;) {
    const int descriptor = calls.Open(name.c_str(), flags | O_CLOEXEC | O_NOCTTY, mode);
    if (descriptor >= 0) return descriptor;
    if (errno != EINTR) return -errno;
  }
}

OpenFile::OpenFile(DiskCalls& calls, int descriptor, std::string path)
    : calls_(calls), path_(std::move(path)), descriptor_(descriptor) {
  if (descriptor_ < 0) Fail(-descriptor_);
}

OpenFile::~OpenFile() {
  if (descriptor_ >= 0) calls_.Close(descriptor_);
}

struct stat OpenFile::Facts() {
  struct stat facts {};
  if (calls_.LookAtOpen(descriptor_, facts) != 0) Fail(errno);
  return facts;
}

std::string OpenFile::ReadAt(std::uint64_t offset, std::size_t size) {
  std::string bytes(size, '\0');
  std::size_t done = 0;
  while (done < size) {
    const auto count =
        calls_.ReadAt(descriptor_, bytes.data() + done, size - done, static_cast<off_t>(offset + done));
    if (count < 0 && errno == EINTR) continue;
    if (count < 0) Fail(errno);
    if (count == 0) break;
    done += static_cast<std::size_t>(count);
  }
  bytes.resize(done);
  return bytes;
}

void OpenFile::Write(std::string_view& bytes) {
  while (!bytes.empty()) {
    const auto count = calls_.Write(descriptor_, bytes.data(), bytes.size());
    if (count < 0 && errno == EINTR) continue;
    if (count <= 0) Fail(count < 0 ? errno : EIO);
    bytes.remove_prefix(static_cast<std::size_t>(count));
  }
}

void OpenFile::Sync() {
  while (calls_.Sync(descriptor_) != 0) {
    if (errno == EINVAL || errno == ENOTSUP) return;
    if (errno != EINTR) Fail(errno);
  }
}

void OpenFile::Close() {
  // Closed it is, whatever the call says.
  if (calls_.Close(std::exchange(descriptor_, -1)) != 0 && errno != EINTR) Fail(errno);
}

void OpenFile::TakeAfter(const struct stat& other) {
  constexpr mode_t kRights = 0777;
  constexpr mode_t kRightsOfItsOwner = 07777;
  const bool owned = calls_.SetOwner(descriptor_, other.st_uid, other.st_gid) == 0;
  // What a file may do in the name of its owner, it may not in another's.
  static_cast<void>(calls_.SetMode(descriptor_, other.st_mode & (owned ? kRightsOfItsOwner : kRights)));
}

}  // namespace orvane
