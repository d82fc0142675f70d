#include "adapters/sql/spool.h"

#include <algorithm>
#include <filesystem>
#include <system_error>

#include "adapters/sql/record_file.h"
#include "adapters/sql/sql_connection.h"
#include "base/failure.h"

namespace orvane {
namespace {

namespace fs = std::filesystem;

constexpr std::string_view kEnding = ".orvane";

/// In the order of their ids, which is that of their time.
std::vector<fs::path> RecordsIn(const std::string& folder) {
  std::vector<fs::path> records;
  std::error_code error;
  for (auto entry = fs::directory_iterator(folder, error); !error && entry != fs::directory_iterator();
       entry.increment(error)) {
    const fs::path& path = entry->path();
    // A draft whose writer was killed has no such ending, and is read by nobody.
    if (path.extension() == kEnding) records.push_back(path);
  }
  if (error && error != std::errc::no_such_file_or_directory) {
    throw StoreFault("The spool " + folder + " cannot be read: " + error.message() + ".");
  }
  std::sort(records.begin(), records.end());
  return records;
}

fs::path FileOf(const std::string& folder, const std::string& run) {
  return fs::path(folder) / (run + std::string(kEnding));
}

/// The store has no more of it than that its station died, and the record says otherwise.
bool IsOnlyAbandoned(RecordStore& store, const RunRecord& record) {
  const auto there = store.Load(record.identity.id);
  return there && there->end && there->end->ending == Ending::Abandoned && record.end &&
         record.end->ending != Ending::Abandoned;
}

/// @return why the file stays, or nothing.
std::string TakeIn(RecordStore& store, Files& files, const fs::path& path) {
  try {
    const RunRecord record = ReadRecordFile(files, path.string());
    if (!store.Finish(record) && IsOnlyAbandoned(store, record)) {
      return "the store has this run as abandoned, and keeps that.";
    }
  } catch (const DamagedRecord& damage) {
    return damage.what();
  } catch (const RecordRefused& refused) {
    return refused.what();
  } catch (const StationFailure& failure) {
    // Another station on the same store was quicker.
    return files.Exists(path.string()) ? failure.Text() : "";
  }
  std::error_code error;
  fs::remove(path, error);
  return error ? "it is in the store, and stays here: " + error.message() : "";
}

}  // namespace

void KeepInSpool(Files& files, const std::string& folder, const RunRecord& record) {
  std::error_code error;
  fs::create_directories(folder, error);
  if (error) throw StationFailure(error.message() + ": " + folder);
  WriteRecordFile(files, FileOf(folder, record.identity.id).string(), record);
}

bool LiesInSpool(const std::string& folder, const std::string& run) {
  std::error_code unknown;
  return fs::exists(FileOf(folder, run), unknown);
}

DrainedSpool DrainSpool(RecordStore& store, Files& files, const std::string& folder) {
  DrainedSpool drained;
  for (const fs::path& path : RecordsIn(folder)) {
    const std::string fault = TakeIn(store, files, path);
    if (fault.empty()) {
      ++drained.taken;
    } else {
      drained.faults.push_back(path.string() + ": " + fault);
    }
  }
  return drained;
}

}  // namespace orvane
