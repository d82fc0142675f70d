#include "support/memory_files.h"

#include <algorithm>

#include "base/failure.h"

namespace orvane::test {
namespace {

class MemoryFile final : public File {
 public:
  MemoryFile(MemoryFiles& files, std::string path) : files_(files), path_(std::move(path)) {}

  std::string Read(std::uint64_t offset, std::size_t size) override {
    if (files_.unreadable.contains(path_)) throw StationFailure(path_ + ": Input/output error");
    const std::string& content = files_.content[path_];
    return offset >= content.size() ? "" : content.substr(offset, size);
  }

  void Write(std::uint64_t offset, std::string_view bytes) override {
    if (files_.unwritable.contains(path_)) throw StationFailure(path_ + ": No space left on device");
    std::string& content = files_.content[path_];
    content.resize(std::max<std::size_t>(content.size(), offset + bytes.size()), '\0');
    content.replace(offset, bytes.size(), bytes);
  }

  std::uint64_t Size() override { return files_.content[path_].size(); }

 private:
  MemoryFiles& files_;
  std::string path_;
};

}  // namespace

void MemoryFiles::Delete(const std::string& path) {
  if (undeletable.contains(path)) throw StationFailure(path + ": Permission denied");
  content.erase(path);
}

std::unique_ptr<File> MemoryFiles::OpenForReading(const std::string& path) {
  if (unopenable.contains(path)) throw StationFailure(path + ": Permission denied");
  if (!content.contains(path)) throw StationFailure(path + ": No such file or directory");
  return std::make_unique<MemoryFile>(*this, path);
}

std::unique_ptr<File> MemoryFiles::OpenForWriting(const std::string& path) {
  if (unopenable.contains(path)) throw StationFailure(path + ": Permission denied");
  content[path];
  return std::make_unique<MemoryFile>(*this, path);
}

}  // namespace orvane::test
