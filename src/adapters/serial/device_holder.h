#pragma once

#include <string>

namespace orvane {

/// Who holds that device, as "minicom (process 4711)"; empty where it cannot be known. It looks at the system's file
/// locks first, then at the open files of every process that this user may look into.
[[nodiscard]] std::string HolderOf(const std::string& device);

inline constexpr const char* kLockFolder = "/var/lock";

/// The process that left a lock file for that device in the manner of dial-up programs, if it still lives; else 0.
[[nodiscard]] int LockFileOwner(const std::string& device, const std::string& lockFolder);

}  // namespace orvane
