#include "app/trace/trace_file.h"

#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>

#include <array>
#include <cerrno>
#include <cstdio>
#include <cstring>
#include <fstream>
#include <utility>

#include "app/trace/trace_record.h"

namespace orvane {
namespace {

constexpr std::size_t kMostWaiting = std::size_t{64} << 10;

std::string PartName(const std::string& path, int age) { return age == 0 ? path : path + "." + std::to_string(age); }

/// What lies under the name, if anything does.
enum class Found { Nothing, Trace, Stream };

/// @throws TraceFault for a file that is no trace: it is somebody's, and must not be touched.
Found LookAt(const std::string& path) {
  struct stat facts {};
  if (::stat(path.c_str(), &facts) != 0) return Found::Nothing;
  if (S_ISDIR(facts.st_mode)) throw TraceFault(path + ": " + std::strerror(EISDIR));
  if (!S_ISREG(facts.st_mode)) return Found::Stream;
  // The first line of a trace is short; that of another file may have no end.
  std::array<char, 4096> first{};
  std::ifstream(path, std::ios::binary).getline(first.data(), first.size());
  if (facts.st_size > 0 && !TraceHeadOf(first.data())) throw TraceFault(path + ": there is a file that is no trace");
  return Found::Trace;
}

}  // namespace

std::vector<std::string> PartsOf(const std::string& path, int parts) {
  std::vector<std::string> names;
  for (int age = parts - 1; age >= 0; --age) {
    if (::access(PartName(path, age).c_str(), F_OK) == 0) names.push_back(PartName(path, age));
  }
  return names;
}

TraceFile::TraceFile(std::string path, TraceLimits limits, std::function<std::string(int part)> head)
    : path_(std::move(path)), limits_(limits), head_(std::move(head)) {
  const Found found = LookAt(path_);
  rotates_ = found != Found::Stream;
  if (found == Found::Trace && !Shift()) throw TraceFault(path_ + ": " + std::strerror(errno));
  Begin();
  if (descriptor_ < 0) throw TraceFault(path_ + ": " + std::strerror(errno));
}

TraceFile::~TraceFile() {
  Flush();
  if (descriptor_ >= 0) ::close(descriptor_);
}

bool TraceFile::Shift() {
  for (int age = limits_.parts - 1; age > 0; --age) {
    if (std::rename(PartName(path_, age - 1).c_str(), PartName(path_, age).c_str()) != 0 && errno != ENOENT)
      return false;
  }
  return true;
}

void TraceFile::Begin() {
  constexpr mode_t kOwnersAndReaders = 0644;
  descriptor_ = ::open(path_.c_str(), O_WRONLY | O_CREAT | O_TRUNC | O_CLOEXEC | O_NONBLOCK, kOwnersAndReaders);
  written_ = 0;
  waiting_ = head_(++part_) + "\n";
}

void TraceFile::Append(std::string_view line) {
  if (descriptor_ < 0) return;
  if (rotates_ && written_ + waiting_.size() + line.size() >= limits_.partBytes) {
    Flush();
    if (descriptor_ < 0) return;
    ::close(std::exchange(descriptor_, -1));
    if (Shift()) Begin();
    if (descriptor_ < 0) return Break(errno);
  }
  waiting_ += line;
  waiting_ += '\n';
  if (waiting_.size() >= kMostWaiting) Flush();
}

void TraceFile::Flush() {
  std::string_view rest = waiting_;
  while (descriptor_ >= 0 && !rest.empty()) {
    const auto count = ::write(descriptor_, rest.data(), rest.size());
    if (count >= 0) {
      rest.remove_prefix(static_cast<std::size_t>(count));
      written_ += static_cast<std::size_t>(count);
    } else if (errno != EINTR) {
      Break(errno);
    }
  }
  waiting_.clear();
}

void TraceFile::Break(int error) {
  if (descriptor_ >= 0) ::close(std::exchange(descriptor_, -1));
  waiting_.clear();
  if (onBroken) onBroken(path_ + ": " + std::strerror(error));
}

}  // namespace orvane
