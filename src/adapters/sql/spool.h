#pragma once

#include <cstddef>
#include <string>
#include <vector>

#include "platform/files.h"
#include "records/record_store.h"

namespace orvane {

/// Keeps a record that its store does not take, as "FOLDER/ID.orvane"; the folder is made.
/// @throws StationFailure with the system's text, or DamagedRecord for what is too large.
void KeepInSpool(Files& files, const std::string& folder, const RunRecord& record);

/// Whether such a record lies there.
[[nodiscard]] bool LiesInSpool(const std::string& folder, const std::string& run);

/// What became of the files of a spool.
struct DrainedSpool {
  /// In the store now; one that was there already counts.
  std::size_t taken = 0;
  /// "FILE: why", for what stays because it is damaged, cannot be read, or is refused by the store.
  std::vector<std::string> faults;
};

/// Takes all records of a spool into a store, the oldest first, and removes each file when its record is there for
/// good. A folder that is not there is an empty one. @throws StoreFault when the store fails: all else stays for the
/// next time.
DrainedSpool DrainSpool(RecordStore& store, Files& files, const std::string& folder);

}  // namespace orvane
