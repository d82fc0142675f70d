#pragma once

#include <filesystem>
#include <stdexcept>
#include <string>

namespace orvane {

/// There is no lock to be had, whoever holds it: a folder that is not there, a file that may not be opened.
class LockFault : public std::runtime_error {
  using std::runtime_error::runtime_error;
};

/// A lock among the stations of a machine, whoever runs them, on a file that bears the name of what it is about. It
/// is gone with the process that holds it, however that ends. The file stays: one that were removed could be locked
/// by two, each on a file of its own.
///
/// Who waits is let in ahead of the one that has given back, however soon that asks again.
class LockFile {
 public:
  LockFile(const std::filesystem::path& folder, const std::string& about);
  LockFile(const LockFile&) = delete;
  LockFile& operator=(const LockFile&) = delete;
  ~LockFile();

  /// Never waits: who waits asks again and again. `holder` is what the others are told meanwhile. @throws LockFault
  [[nodiscard]] bool TryTake(const std::string& holder);
  /// Asks no more.
  void StopWaiting();
  void GiveBack();
  [[nodiscard]] bool Held() const { return held_; }
  /// Who has it, in the words that he left; empty when nobody has said so.
  [[nodiscard]] std::string Holder() const;

  [[nodiscard]] const std::filesystem::path& Path() const { return path_; }

 private:
  void Open();
  /// On one byte of the file, so far behind its end that it is never there.
  [[nodiscard]] bool Lock(long byte);
  void Unlock(long byte);

  std::filesystem::path path_;
  int descriptor_ = -1;
  bool isNext_ = false;
  bool held_ = false;
};

/// Where the locks of this machine are: a folder that everybody may write to.
[[nodiscard]] std::filesystem::path UsualLockFolder();

}  // namespace orvane
