#include "adapters/serial_devices.h"

#include <sys/stat.h>
#include <sys/sysmacros.h>
#include <unistd.h>

#include <QSerialPortInfo>
#include <algorithm>
#include <cerrno>
#include <csignal>
#include <cstring>
#include <fstream>
#include <functional>
#include <optional>

namespace orvane {
namespace {

namespace fs = std::filesystem;

bool IsProcess(const fs::path& entry) {
  const std::string name = entry.filename().string();
  return !name.empty() && std::all_of(name.begin(), name.end(), [](char c) { return c >= '0' && c <= '9'; });
}

/// Whether one of the folder's entries passes the test. Entries may come and go meanwhile.
bool AnyIn(const fs::path& folder, const std::function<bool(const fs::path&)>& test) {
  std::error_code end;
  for (fs::directory_iterator entry(folder, end); !end && entry != fs::directory_iterator(); entry.increment(end)) {
    if (test(entry->path())) return true;
  }
  return false;
}

bool HoldsOpen(const fs::path& process, const fs::path& device) {
  return AnyIn(process / "fd", [&](const fs::path& descriptor) {
    std::error_code unknown;
    return fs::read_symlink(descriptor, unknown) == device;
  });
}

std::string FirstLineOf(const fs::path& file) {
  std::ifstream stream(file);
  std::string line;
  std::getline(stream, line);
  return line;
}

/// The program that has the device open, among those whose doings this user may see. One that holds the other end of
/// pseudo-terminals is no user of this line but what answers on it.
std::optional<std::string> HolderOf(const fs::path& device) {
  const std::string self = std::to_string(::getpid());
  std::optional<std::string> holder;
  (void)AnyIn("/proc", [&](const fs::path& process) {
    const std::string number = process.filename().string();
    if (!IsProcess(process) || number == self || !HoldsOpen(process, device) || HoldsOpen(process, "/dev/ptmx")) {
      return false;
    }
    holder = FirstLineOf(process / "comm") + ", process " + number;
    return true;
  });
  return holder;
}

/// False only for what certainly is none.
bool MayBeTerminal(const fs::path& device) {
  struct stat kind {};
  if (::stat(device.c_str(), &kind) != 0 || !S_ISCHR(kind.st_mode)) return false;
  const std::string number = std::to_string(major(kind.st_rdev)) + ":" + std::to_string(minor(kind.st_rdev));
  std::error_code unknown;
  const fs::path subsystem = fs::read_symlink("/sys/dev/char/" + number + "/subsystem", unknown);
  return unknown || subsystem.filename() == "tty";
}

/// Whether somebody who is still there has left the customary lock file, which any user may read.
bool IsLocked(const fs::path& device) {
  std::ifstream lock("/var/lock/LCK.." + device.filename().string());
  pid_t holder = 0;
  if (!(lock >> holder) || holder <= 0 || holder == ::getpid()) return false;
  return ::kill(holder, 0) == 0 || errno == EPERM;
}

}  // namespace

std::vector<SerialDevice> SerialDevices() {
  std::vector<SerialDevice> devices;
  for (const QSerialPortInfo& port : QSerialPortInfo::availablePorts()) {
    const std::string path = port.systemLocation().toStdString();
    const QString description = (port.manufacturer() + " " + port.description()).simplified();
    devices.push_back({path, description.toStdString(), LinksTo(path)});
  }
  std::sort(devices.begin(), devices.end(), [](const auto& a, const auto& b) { return a.path < b.path; });
  return devices;
}

std::vector<std::string> LinksTo(const std::string& device, const fs::path& folder) {
  std::vector<std::string> links;
  std::error_code unknown;
  const fs::path place = fs::canonical(device, unknown);
  if (unknown) return links;
  (void)AnyIn(folder, [&](const fs::path& link) {
    if (fs::canonical(link, unknown) == place) links.push_back(link.string());
    return false;
  });
  std::sort(links.begin(), links.end());
  return links;
}

std::string SerialDeviceState(const std::string& device) {
  std::error_code unknown;
  const fs::path place = fs::canonical(device, unknown);
  if (unknown) return unknown == std::errc::permission_denied ? "permission denied" : "there is no such device";
  if (!MayBeTerminal(place)) return "no serial line";
  if (::access(place.c_str(), R_OK | W_OK) != 0) {
    return errno == EACCES ? "permission denied. Is the user in the group \"dialout\"?" : std::strerror(errno);
  }
  if (const auto holder = HolderOf(place)) return "in use by " + *holder;
  return IsLocked(place) ? "in use by another program" : "free";
}

}  // namespace orvane
