#pragma once

#include <optional>
#include <string>
#include <string_view>

#include "adapters/disk_calls.h"
#include "adapters/open_file.h"
#include "platform/files.h"

namespace orvane {

/// A file under a name of its own beside the one whose place it is to take. The new file is on the disk before it
/// takes the name, and the folder's entry behind that. It has owner and mode of the old one where they can be given;
/// a symbolic link stays, and what it points to is replaced. A process that is killed may leave the file under its
/// own name, ".orvane-PID-N", which nothing reads and no save needs.
class DiskDraft final : public Draft {
 public:
  /// @throws StationFailure when what stands there is no regular file, may not be written to though it is to shine
  /// through, or when no new file can be made beside it.
  DiskDraft(DiskCalls& calls, std::string path, OldFile old);
  ~DiskDraft() override;

  void Finish(std::string_view content) override;

 private:
  [[nodiscard]] std::optional<struct stat> WhatStandsThere();
  void FollowLink();
  void Create(const std::optional<struct stat>& old);
  /// What of the old file is longer than the new content.
  [[nodiscard]] std::string Tail(std::uint64_t from);
  void SyncFolder();

  DiskCalls& calls_;
  /// As it was asked for, and where the file really lies.
  std::string path_;
  std::string place_;
  std::string draftName_;
  std::optional<OpenFile> old_;
  std::optional<OpenFile> draft_;
};

}  // namespace orvane
