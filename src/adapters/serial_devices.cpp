#include "adapters/serial_devices.h"

#include <sys/stat.h>
#include <sys/sysmacros.h>
#include <unistd.h>

#include <QSerialPortInfo>
#include <algorithm>
#include <cerrno>

#include "adapters/serial/device_holder.h"
#include "adapters/serial/open_failure.h"

namespace orvane {
namespace {

namespace fs = std::filesystem;

/// False only for what certainly is none.
bool MayBeTerminal(const fs::path& device) {
  struct stat kind {};
  if (::stat(device.c_str(), &kind) != 0 || !S_ISCHR(kind.st_mode)) return false;
  const std::string number = std::to_string(major(kind.st_rdev)) + ":" + std::to_string(minor(kind.st_rdev));
  std::error_code unknown;
  const fs::path subsystem = fs::read_symlink("/sys/dev/char/" + number + "/subsystem", unknown);
  return unknown || subsystem.filename() == "tty";
}

/// Parts of a list are no sentences.
std::string WithoutStop(std::string text) {
  if (text.ends_with('.')) text.pop_back();
  return text;
}

}  // namespace

std::vector<ListedDevice> ListedDevices() {
  std::vector<ListedDevice> devices;
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
  std::error_code end;
  for (fs::directory_iterator entry(folder, end); !end && entry != fs::directory_iterator(); entry.increment(end)) {
    if (fs::canonical(entry->path(), unknown) == place) links.push_back(entry->path().string());
  }
  std::sort(links.begin(), links.end());
  return links;
}

std::string SerialDeviceState(const std::string& device) {
  std::error_code unknown;
  const fs::path place = fs::canonical(device, unknown);
  if (unknown) return unknown == std::errc::permission_denied ? "permission denied" : "there is no such device";
  if (!MayBeTerminal(place)) return "no serial line";
  if (::access(place.c_str(), R_OK | W_OK) != 0) return WithoutStop(WhyNotOpened(place, errno));
  const std::string holder = HolderOf(place);
  return holder.empty() ? "free" : "in use by " + holder;
}

}  // namespace orvane
