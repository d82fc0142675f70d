#include "adapters/disk_draft.h"

#include <fcntl.h>
#include <unistd.h>

#include <cerrno>
#include <climits>
#include <cstdlib>
#include <memory>

#include "base/failure.h"

namespace orvane {
namespace {

constexpr mode_t kModeOfNewFiles = 0666;
/// Names that killed processes have left, at the most.
constexpr int kMostNames = 10000;
/// What an old file may have behind the new content. No file of the station comes near it; a longer one is none.
constexpr std::uint64_t kLongestTail = 64 << 20;

std::string FolderWithSlash(const std::string& path) { return path.substr(0, path.rfind('/') + 1); }

}  // namespace

DiskDraft::DiskDraft(DiskCalls& calls, std::string path, OldFile old)
    : calls_(calls), path_(std::move(path)), place_(path_) {
  if (path_.empty()) FailOf(ENOENT, path_);
  static_cast<void>(SystemName(path_));
  FollowLink();
  const auto there = WhatStandsThere();
  if (there && old == OldFile::IsOverlaid) {
    old_.emplace(calls_, OpenDescriptor(calls_, place_, O_RDWR | O_NOFOLLOW), path_);
  }
  Create(there);
}

DiskDraft::~DiskDraft() {
  if (!draftName_.empty()) calls_.Unlink(draftName_.c_str());
}

void DiskDraft::FollowLink() {
  struct stat facts {};
  if (calls_.Look(place_.c_str(), facts) != 0 || !S_ISLNK(facts.st_mode)) return;
  const std::unique_ptr<char, void (*)(void*)> real(::realpath(place_.c_str(), nullptr), &std::free);
  // A link to nothing: no file is made where nobody has chosen one.
  if (real == nullptr) FailOf(errno == ENOENT ? EEXIST : errno, path_);
  place_ = real.get();
}

std::optional<struct stat> DiskDraft::WhatStandsThere() {
  struct stat facts {};
  if (calls_.Look(place_.c_str(), facts) == 0) {
    RequireRegular(facts, path_);
    return facts;
  }
  if (errno != ENOENT) FailOf(errno, path_);
  return std::nullopt;
}

// The name is short and its own: a file's name may be as long as the system allows.
void DiskDraft::Create(const std::optional<struct stat>& old) {
  const std::string head = FolderWithSlash(place_) + ".orvane-" + std::to_string(::getpid()) + "-";
  const mode_t mode = old ? old->st_mode & kModeOfNewFiles : kModeOfNewFiles;
  int descriptor = -EEXIST;
  for (int number = 1; descriptor == -EEXIST && number <= kMostNames; ++number) {
    draftName_ = head + std::to_string(number);
    descriptor = OpenDescriptor(calls_, draftName_, O_WRONLY | O_CREAT | O_EXCL, mode);
  }
  if (descriptor < 0) {
    draftName_.clear();
    const bool refused = descriptor == -EACCES || descriptor == -EPERM || descriptor == -EROFS;
    // The old file itself may well be one that can be written to.
    FailOf(-descriptor, old && refused ? path_ + " (its folder takes no new file)" : path_);
  }
  draft_.emplace(calls_, descriptor, path_);
  if (old) draft_->TakeAfter(*old);
}

std::string DiskDraft::Tail(std::uint64_t from) {
  const auto size = static_cast<std::uint64_t>(old_->Facts().st_size);
  if (size <= from) return "";
  if (size - from > kLongestTail) FailOf(EFBIG, path_);
  std::string tail = old_->ReadAt(from, static_cast<std::size_t>(size - from));
  old_->Close();
  return tail;
}

void DiskDraft::Finish(std::string_view content) {
  const std::string tail = old_ ? Tail(content.size()) : "";
  draft_->Write(content);
  std::string_view rest = tail;
  draft_->Write(rest);
  draft_->Sync();
  draft_->Close();
  // It may have been some time.
  static_cast<void>(WhatStandsThere());
  if (calls_.Rename(draftName_.c_str(), place_.c_str()) != 0) FailOf(errno, path_);
  draftName_.clear();
  SyncFolder();
}

void DiskDraft::SyncFolder() {
  const std::string folder = FolderWithSlash(place_);
  const int descriptor = OpenDescriptor(calls_, folder.empty() ? "." : folder, O_RDONLY | O_DIRECTORY);
  // A folder that may be written to and not be read cannot be asked.
  if (descriptor == -EACCES) return;
  OpenFile(calls_, descriptor, path_).Sync();
}

}  // namespace orvane
