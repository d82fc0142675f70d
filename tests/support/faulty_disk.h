#pragma once

#include <unistd.h>

#include <cerrno>
#include <string>
#include <string_view>
#include <vector>

#include "adapters/disk_calls.h"

namespace orvane::test {

/// The system's calls for files, counted, with something in their way.
class FaultyDisk final : public DiskCalls {
 public:
  /// What is to happen at the `at`-th call, counted from 1.
  struct Fault {
    enum class Kind {
      None,
      Fails,         ///< that call fails with `error`
      FailsOnwards,  ///< that call and all behind it
      Short,         ///< a write takes half of its bytes; any other call fails with EINTR
      ShortAndFull,  ///< a write takes half of its bytes, and the next one fails with `error`
      Killed,        ///< the process ends ahead of the call
      KilledHalf,    ///< the process ends ahead of it; a write has taken half of its bytes
    };
    Kind kind = Kind::None;
    int at = 0;
    int error = ENOSPC;
  };
  static constexpr int kKilledStatus = 42;

  void Set(const Fault& fault) {
    fault_ = fault;
    calls_.clear();
    struck_ = false;
    unlinkFailed_ = false;
  }
  /// "open", "write", ... since the fault was set.
  [[nodiscard]] const std::vector<std::string>& Calls() const { return calls_; }
  [[nodiscard]] bool Struck() const { return struck_; }
  /// Something could not be removed: it may be there still.
  [[nodiscard]] bool UnlinkFailed() const { return unlinkFailed_; }

  int Open(const char* path, int flags, mode_t mode) override {
    return Fails("open") ? -1 : DiskCalls::Open(path, flags, mode);
  }
  ssize_t ReadAt(int descriptor, void* bytes, std::size_t size, off_t offset) override {
    return Fails("read") ? -1 : DiskCalls::ReadAt(descriptor, bytes, size, offset);
  }
  ssize_t Write(int descriptor, const void* bytes, std::size_t size) override {
    using Kind = Fault::Kind;
    const bool half =
        IsNext() && size > 1 &&
        (fault_.kind == Kind::Short || fault_.kind == Kind::ShortAndFull || fault_.kind == Kind::KilledHalf);
    if (!half) return Fails("write") ? -1 : DiskCalls::Write(descriptor, bytes, size);
    struck_ = true;
    calls_.emplace_back("write");
    const ssize_t taken = DiskCalls::Write(descriptor, bytes, size / 2);
    if (fault_.kind == Kind::KilledHalf) ::_exit(kKilledStatus);
    if (fault_.kind == Kind::ShortAndFull) fault_ = {Kind::Fails, fault_.at + 1, fault_.error};
    return taken;
  }
  /// No power fails here: nobody waits for a real disk.
  int Sync(int /*descriptor*/) override { return Fails("sync") ? -1 : 0; }
  /// The descriptor is gone whatever the call says, as on the system.
  int Close(int descriptor) override {
    const bool fails = Fails("close");
    const int status = DiskCalls::Close(descriptor);
    if (fails) errno = fault_.kind == Fault::Kind::Short ? EINTR : fault_.error;
    return fails ? -1 : status;
  }
  int Rename(const char* from, const char* to) override { return Fails("rename") ? -1 : DiskCalls::Rename(from, to); }
  int Unlink(const char* path) override {
    if (!Fails("unlink")) return DiskCalls::Unlink(path);
    unlinkFailed_ = true;
    return -1;
  }
  int Look(const char* path, struct stat& facts) override {
    return Fails("look") ? -1 : DiskCalls::Look(path, facts);
  }
  int LookAtOpen(int descriptor, struct stat& facts) override {
    return Fails("look") ? -1 : DiskCalls::LookAtOpen(descriptor, facts);
  }
  int SetOwner(int descriptor, uid_t user, gid_t group) override {
    return Fails("owner") ? -1 : DiskCalls::SetOwner(descriptor, user, group);
  }
  int SetMode(int descriptor, mode_t mode) override {
    return Fails("mode") ? -1 : DiskCalls::SetMode(descriptor, mode);
  }

 private:
  [[nodiscard]] bool IsNext() const { return static_cast<int>(calls_.size()) + 1 == fault_.at; }

  bool Fails(std::string_view call) {
    using Kind = Fault::Kind;
    const bool here = IsNext();
    const bool behind = static_cast<int>(calls_.size()) + 1 > fault_.at;
    calls_.emplace_back(call);
    if (fault_.kind == Kind::FailsOnwards && (here || behind)) {
      struck_ = true;
      errno = fault_.error;
      return true;
    }
    if (!here || fault_.kind == Kind::None) return false;
    struck_ = true;
    if (fault_.kind == Kind::Killed || fault_.kind == Kind::KilledHalf) ::_exit(kKilledStatus);
    if (fault_.kind == Kind::Short || fault_.kind == Kind::ShortAndFull) {
      // Only what may be interrupted.
      errno = EINTR;
      return call == "open" || call == "read" || call == "write" || call == "sync" || call == "close";
    }
    errno = fault_.error;
    return true;
  }

  Fault fault_;
  std::vector<std::string> calls_;
  bool struck_ = false;
  bool unlinkFailed_ = false;
};

}  // namespace orvane::test
