#include "adapters/serial/device_holder.h"

#include <sys/stat.h>
#include <sys/sysmacros.h>
#include <unistd.h>

#include <cerrno>
#include <charconv>
#include <csignal>
#include <cstdio>
#include <filesystem>
#include <fstream>
#include <functional>
#include <optional>
#include <sstream>

namespace orvane {
namespace {

namespace fs = std::filesystem;

std::string RealPath(const std::string& device) {
  std::error_code unknown;
  const fs::path real = fs::canonical(device, unknown);
  return unknown ? device : real.string();
}

/// The process that has a lock on the whole file, as /proc/locks tells it; 0 for none.
int LockOwner(const std::string& device) {
  struct stat facts {};
  if (::stat(device.c_str(), &facts) != 0) return 0;
  char file[64];
  std::snprintf(file, sizeof file, "%02x:%02x:%lu", major(facts.st_dev), minor(facts.st_dev), facts.st_ino);
  std::ifstream locks("/proc/locks");
  for (std::string line; std::getline(locks, line);) {
    std::istringstream words(line);
    std::string number;
    std::string kind;
    std::string manner;
    std::string access;
    std::string where;
    int process = 0;
    if (words >> number >> kind >> manner >> access >> process >> where && where == file && process > 0)
      return process;
  }
  return 0;
}

/// The first of the folder's entries that passes the test. Entries may go, and with them the folder, while it is
/// read.
std::optional<fs::path> FirstIn(const fs::path& folder, const std::function<bool(const fs::path&)>& test) {
  std::error_code end;
  for (fs::directory_iterator entry(folder, end); !end && entry != fs::directory_iterator(); entry.increment(end)) {
    if (test(entry->path())) return entry->path();
  }
  return std::nullopt;
}

bool HasOpen(const fs::path& process, const fs::path& device) {
  const auto open = FirstIn(process / "fd", [&](const fs::path& descriptor) {
    std::error_code hidden;
    return fs::read_symlink(descriptor, hidden) == device;
  });
  return open.has_value();
}

/// 0 for a folder of /proc that is no process's.
int ProcessOf(const fs::path& folder) {
  const std::string name = folder.filename();
  int process = 0;
  const auto [end, error] = std::from_chars(name.data(), name.data() + name.size(), process);
  return error == std::errc{} && *end == '\0' ? process : 0;
}

/// Some other process that has the device open; 0 for none. One that holds the other ends of pseudo-terminals is no
/// user of this line but what answers on it.
int Opener(const std::string& device) {
  const auto opener = FirstIn("/proc", [&](const fs::path& folder) {
    const int process = ProcessOf(folder);
    return process != 0 && process != ::getpid() && HasOpen(folder, device) && !HasOpen(folder, "/dev/ptmx");
  });
  return opener ? ProcessOf(*opener) : 0;
}

}  // namespace

std::string HolderOf(const std::string& device) {
  const std::string real = RealPath(device);
  int process = LockOwner(real);
  if (process == 0) process = LockFileOwner(real, kLockFolder);
  if (process == 0) process = Opener(real);
  if (process == 0) return "";
  std::string name;
  std::getline(std::ifstream("/proc/" + std::to_string(process) + "/comm"), name);
  return (name.empty() ? "" : name + " ") + "(process " + std::to_string(process) + ")";
}

int LockFileOwner(const std::string& device, const std::string& lockFolder) {
  const std::string name = fs::path(RealPath(device)).filename();
  std::ifstream file(lockFolder + "/LCK.." + name);
  int process = 0;
  if (!(file >> process) || process <= 0) return 0;
  const bool lives = ::kill(process, 0) == 0 || errno == EPERM;
  return lives ? process : 0;
}

}  // namespace orvane
