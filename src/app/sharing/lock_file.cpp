#include "app/sharing/lock_file.h"

#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>

#include <algorithm>
#include <array>
#include <cerrno>
#include <cstring>
#include <string_view>
#include <utility>

namespace orvane {
namespace {

namespace fs = std::filesystem;

/// The lock itself, and the place in front of it, where one waits.
constexpr long kLock = 1L << 20;
constexpr long kNext = kLock + 1;

constexpr std::size_t kLongestHolder = 200;
constexpr std::size_t kLongestName = 180;
/// Whoever runs a station: the file is everybody's.
constexpr mode_t kEverybody = 0666;

/// A file's name for anything. Two that come to the same name share a lock, which costs time and harms nothing.
std::string NameOf(const std::string& about) {
  constexpr std::string_view kPlain = "abcdefghijklmnopqrstuvwxyzABCDEFGHIJKLMNOPQRSTUVWXYZ0123456789.-";
  std::string name = "orvane-";
  for (const char c : about.substr(0, kLongestName)) name += kPlain.find(c) == std::string_view::npos ? '_' : c;
  return name + ".lock";
}

struct flock Place(short kind, long byte) {
  struct flock place {};
  place.l_type = kind;
  place.l_whence = SEEK_SET;
  place.l_start = byte;
  place.l_len = 1;
  return place;
}

}  // namespace

fs::path UsualLockFolder() {
  const fs::path locks = "/run/lock";
  return ::access(locks.c_str(), W_OK | X_OK) == 0 ? locks : fs::path("/tmp");
}

LockFile::LockFile(const fs::path& folder, const std::string& about) : path_(folder / NameOf(about)) {}

LockFile::~LockFile() {
  GiveBack();
  if (descriptor_ >= 0) ::close(descriptor_);
}

/// A name in a folder that is everybody's may lead anywhere: no link is followed, and nothing but a plain file taken.
/// It is made apart from being opened, since a file of another user is not to be opened with leave to make it.
void LockFile::Open() {
  if (descriptor_ >= 0) return;
  constexpr int kPlain = O_RDWR | O_CLOEXEC | O_NOFOLLOW | O_NONBLOCK | O_NOCTTY;
  int opened = ::open(path_.c_str(), kPlain);
  if (opened < 0 && errno == ENOENT) {
    opened = ::open(path_.c_str(), kPlain | O_CREAT | O_EXCL, kEverybody);
    if (opened >= 0) (void)::fchmod(opened, kEverybody);
    if (opened < 0 && errno == EEXIST) opened = ::open(path_.c_str(), kPlain);
  }
  if (opened < 0) throw LockFault(path_.string() + ": " + std::strerror(errno));
  struct stat facts {};
  if (::fstat(opened, &facts) != 0 || !S_ISREG(facts.st_mode) || facts.st_nlink != 1) {
    ::close(opened);
    throw LockFault(path_.string() + ": it is no plain file");
  }
  descriptor_ = opened;
}

bool LockFile::Lock(long byte) {
  struct flock place = Place(F_WRLCK, byte);
  while (::fcntl(descriptor_, F_OFD_SETLK, &place) != 0) {
    if (errno == EAGAIN || errno == EACCES) return false;
    if (errno != EINTR) throw LockFault(path_.string() + ": " + std::strerror(errno));
  }
  return true;
}

void LockFile::Unlock(long byte) {
  struct flock place = Place(F_UNLCK, byte);
  (void)::fcntl(descriptor_, F_OFD_SETLK, &place);
}

bool LockFile::TryTake(const std::string& holder) {
  if (held_) return true;
  Open();
  isNext_ = isNext_ || Lock(kNext);
  if (!isNext_ || !Lock(kLock)) return false;
  held_ = true;
  StopWaiting();
  const std::string told = holder.substr(0, kLongestHolder);
  // What cannot be written costs the others its name, and nothing else.
  if (::ftruncate(descriptor_, 0) == 0) (void)!::pwrite(descriptor_, told.data(), told.size(), 0);
  return true;
}

void LockFile::StopWaiting() {
  if (std::exchange(isNext_, false)) Unlock(kNext);
}

void LockFile::GiveBack() {
  StopWaiting();
  if (!std::exchange(held_, false)) return;
  (void)!::ftruncate(descriptor_, 0);
  Unlock(kLock);
}

std::string LockFile::Holder() const {
  std::array<char, kLongestHolder> bytes{};
  const auto count = descriptor_ < 0 ? 0 : ::pread(descriptor_, bytes.data(), bytes.size(), 0);
  std::string text(bytes.data(), static_cast<std::size_t>(std::max<ssize_t>(count, 0)));
  // Everybody may have written it.
  std::erase_if(text, [](char c) { return static_cast<unsigned char>(c) < ' ' || c == '\x7F'; });
  return text;
}

}  // namespace orvane
