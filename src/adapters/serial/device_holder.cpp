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

bool HasOpen(const fs::path& process, const std::string& device) {
  std::error_code hidden;
  for (const auto& entry : fs::directory_iterator(process / "fd", hidden)) {
    if (fs::read_symlink(entry.path(), hidden) == device) return true;
  }
  return false;
}

/// Some other process that has the device open; 0 for none.
int Opener(const std::string& device) {
  std::error_code hidden;
  for (const auto& entry : fs::directory_iterator("/proc", hidden)) {
    const std::string name = entry.path().filename();
    int process = 0;
    const auto [end, error] = std::from_chars(name.data(), name.data() + name.size(), process);
    if (error != std::errc{} || *end != '\0' || process == ::getpid()) continue;
    if (HasOpen(entry.path(), device)) return process;
  }
  return 0;
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
  return " " + (name.empty() ? "" : name + " ") + "(process " + std::to_string(process) + ")";
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
