#include "adapters/serial/open_failure.h"

#include <grp.h>
#include <pwd.h>
#include <sys/stat.h>

#include <cerrno>
#include <cstring>

#include "adapters/serial/device_holder.h"

namespace orvane {
namespace {

std::string InUse(const std::string& path) {
  const std::string holder = HolderOf(path);
  return "the device is in use by another program" + (holder.empty() ? "." : ": " + holder + ".");
}

std::string Forbidden(const std::string& path) {
  struct stat facts {};
  if (::stat(path.c_str(), &facts) != 0) return "permission denied.";
  constexpr mode_t kGroupUses = S_IRGRP | S_IWGRP;
  if ((facts.st_mode & kGroupUses) == kGroupUses) {
    const group* owner = ::getgrgid(facts.st_gid);
    const std::string name = owner != nullptr ? owner->gr_name : std::to_string(facts.st_gid);
    return "permission denied. Is the user in the group \"" + name + "\"?";
  }
  const passwd* owner = ::getpwuid(facts.st_uid);
  const std::string name = owner != nullptr ? owner->pw_name : std::to_string(facts.st_uid);
  return "permission denied. Only its owner \"" + name + "\" might use it, no group.";
}

}  // namespace

std::string WhyNotOpened(const std::string& path, int error) {
  switch (error) {
    case ENOENT:
    case ENOTDIR:
      return "there is no such device.";
    case EACCES:
    case EPERM:
      return Forbidden(path);
    case EBUSY:
    case EWOULDBLOCK:
      return InUse(path);
    case EIO:
    case ENXIO:
    case ENODEV:
      return "nothing is behind the device: its hardware is missing.";
    case ENOTTY:
    case EINVAL:
      return "the device is no serial line.";
    default:
      return std::string(std::strerror(error)) + ".";
  }
}

}  // namespace orvane
