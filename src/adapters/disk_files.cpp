#include "adapters/disk_files.h"

#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>

#include <cerrno>
#include <cstring>

#include "base/failure.h"

namespace orvane {
namespace {

[[noreturn]] void Fail(int error, const std::string& path) {
  throw StationFailure(std::string(std::strerror(error)) + ": " + path);
}

const char* SystemName(const std::string& path) {
  if (path.find('\0') != std::string::npos) Fail(EINVAL, path.substr(0, path.find('\0')));
  return path.c_str();
}

class DiskFile final : public File {
 public:
  enum class Origin { Found, Created };
  DiskFile(int descriptor, std::string path, Origin origin)
      : descriptor_(descriptor), path_(std::move(path)), origin_(origin) {
    struct stat facts {};
    if (::fstat(descriptor_, &facts) == 0 && S_ISDIR(facts.st_mode)) {
      ::close(descriptor_);
      Fail(EISDIR, path_);
    }
  }
  ~DiskFile() override { ::close(descriptor_); }

  [[nodiscard]] std::string Read(std::uint64_t offset, std::size_t size) override {
    std::string bytes(size, '\0');
    std::size_t done = 0;
    while (done < size) {
      const auto count = ::pread(descriptor_, bytes.data() + done, size - done, static_cast<off_t>(offset + done));
      if (count < 0 && errno == EINTR) continue;
      if (count < 0) Fail(errno, path_);
      if (count == 0) break;
      done += static_cast<std::size_t>(count);
    }
    bytes.resize(done);
    return bytes;
  }

  void Write(std::uint64_t offset, std::string_view bytes) override {
    while (!bytes.empty()) {
      const auto count = ::pwrite(descriptor_, bytes.data(), bytes.size(), static_cast<off_t>(offset));
      if (count < 0 && errno == EINTR) continue;
      if (count <= 0) FailWriting(count < 0 ? errno : EIO);
      offset += static_cast<std::uint64_t>(count);
      bytes.remove_prefix(static_cast<std::size_t>(count));
    }
  }

  [[nodiscard]] std::uint64_t Size() override {
    struct stat facts {};
    if (::fstat(descriptor_, &facts) != 0) Fail(errno, path_);
    return static_cast<std::uint64_t>(facts.st_size);
  }

 private:
  [[noreturn]] void FailWriting(int error) {
    if (origin_ == Origin::Created) ::unlink(path_.c_str());
    Fail(error, path_);
  }

  int descriptor_;
  std::string path_;
  Origin origin_;
};

}  // namespace

bool DiskFiles::Exists(const std::string& path) {
  struct stat facts {};
  if (::stat(SystemName(path), &facts) == 0) return true;
  if (errno != ENOENT && errno != ENOTDIR) Fail(errno, path);
  return false;
}

void DiskFiles::Delete(const std::string& path) {
  if (::unlink(SystemName(path)) != 0) Fail(errno, path);
}

std::unique_ptr<File> DiskFiles::OpenForReading(const std::string& path) {
  // Not blocking: a named pipe without a writer must not hang the station.
  const int descriptor = ::open(SystemName(path), O_RDONLY | O_CLOEXEC | O_NONBLOCK);
  if (descriptor < 0) Fail(errno, path);
  return std::make_unique<DiskFile>(descriptor, path, DiskFile::Origin::Found);
}

std::unique_ptr<File> DiskFiles::OpenForWriting(const std::string& path) {
  constexpr mode_t kMode = 0666;
  const int found = ::open(SystemName(path), O_RDWR | O_CLOEXEC);
  if (found >= 0) return std::make_unique<DiskFile>(found, path, DiskFile::Origin::Found);
  if (errno != ENOENT) Fail(errno, path);
  const int created = ::open(path.c_str(), O_RDWR | O_CREAT | O_EXCL | O_CLOEXEC, kMode);
  if (created < 0) Fail(errno, path);
  return std::make_unique<DiskFile>(created, path, DiskFile::Origin::Created);
}

}  // namespace orvane
