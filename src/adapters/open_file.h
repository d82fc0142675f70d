#pragma once

#include <cstdint>
#include <string>
#include <string_view>

#include "adapters/disk_calls.h"

namespace orvane {

/// @throws StationFailure "No space left on device: /home/op/unit7.epm".
[[noreturn]] void FailOf(int error, const std::string& path);
/// @throws StationFailure for what is no regular file.
void RequireRegular(const struct stat& facts, const std::string& path);

/// The name as the system takes it. @throws StationFailure for one with a zero in it.
[[nodiscard]] const char* SystemName(const std::string& path);

/// A descriptor, or the negative `errno`.
[[nodiscard]] int OpenDescriptor(DiskCalls& calls, const std::string& name, int flags, mode_t mode = 0);

/// One open descriptor, closed when destroyed. Failures name the file that was asked for.
class OpenFile {
 public:
  /// `descriptor`: from OpenDescriptor. @throws StationFailure when it is an error.
  OpenFile(DiskCalls& calls, int descriptor, std::string path);
  OpenFile(const OpenFile&) = delete;
  OpenFile& operator=(const OpenFile&) = delete;
  ~OpenFile();

  [[nodiscard]] struct stat Facts();
  [[nodiscard]] std::string ReadAt(std::uint64_t offset, std::size_t size);
  /// Takes off `bytes` what it has written, also when it fails.
  void Write(std::string_view& bytes);
  /// To the disk itself. A file system that cannot do it has nothing to be asked for.
  void Sync();
  void Close();
  /// Owner and mode of another file, as far as this user may give them.
  void TakeAfter(const struct stat& other);

 private:
  [[noreturn]] void Fail(int error) const { FailOf(error, path_); }

  DiskCalls& calls_;
  std::string path_;
  int descriptor_;
};

}  // namespace orvane
