#include "adapters/disk_files.h"

#include <fcntl.h>
#include <sys/stat.h>

#include <cerrno>

#include "adapters/disk_draft.h"
#include "adapters/open_file.h"

namespace orvane {
namespace {

class DiskFile final : public File {
 public:
  DiskFile(DiskCalls& calls, int descriptor, const std::string& path, std::uint64_t most)
      : open_(calls, descriptor, path) {
    const struct stat facts = open_.Facts();
    RequireRegular(facts, path);
    size_ = static_cast<std::uint64_t>(facts.st_size);
    if (size_ > most) FailOf(EFBIG, path);
  }

  [[nodiscard]] std::string Read(std::uint64_t offset, std::size_t size) override {
    return open_.ReadAt(offset, size);
  }
  [[nodiscard]] std::uint64_t Size() override { return size_; }

 private:
  OpenFile open_;
  std::uint64_t size_ = 0;
};

class DiskLog final : public GrowingFile {
 public:
  DiskLog(DiskCalls& calls, int descriptor, const std::string& path) : open_(calls, descriptor, path) {
    RequireRegular(open_.Facts(), path);
  }

  void Append(std::string& bytes) override {
    struct Progress {
      ~Progress() { bytes.erase(0, bytes.size() - rest.size()); }
      std::string& bytes;
      std::string_view rest;
    } progress{bytes, bytes};
    open_.Write(progress.rest);
  }

 private:
  OpenFile open_;
};

/// The name of a regular file, or of nothing. A device may well do something for being opened.
std::string NameToOpen(const std::string& path) {
  struct stat facts {};
  if (::stat(SystemName(path), &facts) == 0) RequireRegular(facts, path);
  return path;
}

}  // namespace

bool DiskFiles::Exists(const std::string& path) {
  struct stat facts {};
  return path.find('\0') == std::string::npos && ::stat(path.c_str(), &facts) == 0;
}

// Opened without blocking: what became a named pipe meanwhile must not hang the station.
std::unique_ptr<File> DiskFiles::OpenForReading(const std::string& path, std::uint64_t most) {
  const int descriptor = OpenDescriptor(*calls_, NameToOpen(path), O_RDONLY | O_NONBLOCK);
  return std::make_unique<DiskFile>(*calls_, descriptor, path, most);
}

std::unique_ptr<GrowingFile> DiskFiles::OpenForAppending(const std::string& path) {
  constexpr mode_t kMode = 0666;
  constexpr int kFlags = O_WRONLY | O_APPEND | O_CREAT | O_NONBLOCK;
  const int descriptor = OpenDescriptor(*calls_, NameToOpen(path), kFlags, kMode);
  return std::make_unique<DiskLog>(*calls_, descriptor, path);
}

std::unique_ptr<Draft> DiskFiles::BeginDraft(const std::string& path, OldFile old) {
  return std::make_unique<DiskDraft>(*calls_, path, old);
}

}  // namespace orvane
