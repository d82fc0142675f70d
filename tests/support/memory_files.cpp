#include "support/memory_files.h"

#include <algorithm>

#include "base/failure.h"

namespace orvane::test {
namespace {

StationFailure NoSpace(const std::string& path) { return StationFailure(path + ": No space left on device"); }

class MemoryFile final : public File {
 public:
  MemoryFile(MemoryFiles& files, std::string path) : files_(files), path_(std::move(path)) {}

  std::string Read(std::uint64_t offset, std::size_t size) override {
    if (files_.unreadable.contains(path_)) throw StationFailure(path_ + ": Input/output error");
    const std::string& content = files_.content[path_];
    return offset >= content.size() ? "" : content.substr(offset, size);
  }

  std::uint64_t Size() override { return files_.content[path_].size(); }

 private:
  MemoryFiles& files_;
  std::string path_;
};

class MemoryLog final : public GrowingFile {
 public:
  MemoryLog(MemoryFiles& files, std::string path) : files_(files), path_(std::move(path)) {}

  void Append(std::string& bytes) override {
    if (files_.unwritable.contains(path_)) throw NoSpace(path_);
    const std::size_t taken = std::min(files_.room, bytes.size());
    files_.content[path_] += bytes.substr(0, taken);
    bytes.erase(0, taken);
    if (files_.room != std::string::npos) files_.room -= taken;
    if (!bytes.empty()) throw NoSpace(path_);
  }

 private:
  MemoryFiles& files_;
  std::string path_;
};

class MemoryDraft final : public Draft {
 public:
  MemoryDraft(MemoryFiles& files, std::string path, OldFile old) : files_(files), path_(std::move(path)), old_(old) {}

  void Finish(std::string_view content) override {
    if (files_.unwritable.contains(path_)) throw NoSpace(path_);
    std::string& file = files_.content[path_];
    const bool keepsTail = old_ == OldFile::IsOverlaid && file.size() > content.size();
    file = std::string(content) + (keepsTail ? file.substr(content.size()) : "");
  }

 private:
  MemoryFiles& files_;
  std::string path_;
  OldFile old_;
};

}  // namespace

std::unique_ptr<File> MemoryFiles::OpenForReading(const std::string& path, std::uint64_t most) {
  if (unopenable.contains(path)) throw StationFailure(path + ": Permission denied");
  if (!content.contains(path)) throw StationFailure(path + ": No such file or directory");
  if (content[path].size() > most) throw StationFailure(path + ": File too large");
  return std::make_unique<MemoryFile>(*this, path);
}

std::unique_ptr<GrowingFile> MemoryFiles::OpenForAppending(const std::string& path) {
  if (unopenable.contains(path)) throw StationFailure(path + ": Permission denied");
  content[path];
  return std::make_unique<MemoryLog>(*this, path);
}

std::unique_ptr<Draft> MemoryFiles::BeginDraft(const std::string& path, OldFile old) {
  const bool refused = old == OldFile::Goes ? irreplaceable.contains(path) : unopenable.contains(path);
  if (refused) throw StationFailure(path + ": Permission denied");
  return std::make_unique<MemoryDraft>(*this, path, old);
}

}  // namespace orvane::test
