#include <QCoreApplication>
#include <clocale>
#include <csignal>
#include <ctime>
#include <filesystem>
#include <iostream>

#include "adapters/disk_files.h"
#include "adapters/sql/open_store.h"
#include "app/records/archive.h"
#include "app/records/named_runs.h"
#include "app/records/screen.h"
#include "app/records/verbs.h"
#include "app/replay/replayed_run.h"
#include "base/failure.h"
#include "records/record_bytes.h"
#include "records/wire_log.h"

namespace orvane {
namespace {

/// A store that holds nothing at all is not made one by being asked.
bool IsThere(const std::string& name) {
  constexpr std::string_view kSqlite = "sqlite:";
  if (!name.starts_with(kSqlite)) return true;
  std::error_code absent;
  const auto size = std::filesystem::file_size(name.substr(kSqlite.size()), absent);
  return !absent && size > 0;
}

/// Asking never waits for whoever writes. A store of an older program is taken up, though, which is writing.
std::unique_ptr<RecordStore> OpenForAsking(const std::string& name) {
  try {
    return OpenStore(name, {.readOnly = true});
  } catch (const StoreFault&) {
    if (!IsThere(name)) throw;
    try {
      return OpenStore(name);
    } catch (const StoreFault&) {
      // What was said first says more of a store that can neither be written.
    }
    throw;
  }
}

std::unique_ptr<RecordStore> Open(const std::string& name, StoreAccess access) {
  if (access == StoreAccess::Ask) return OpenForAsking(name);
  if (access == StoreAccess::Change && !IsThere(name)) throw StoreFault("There is no store " + name + ".");
  return OpenStore(name);
}

std::vector<RunRecord> RecordsOf(const std::string& archive) {
  try {
    return ArchivedRecords(archive);
  } catch (const DamagedRecord& fault) {
    throw AnswerIsNo(fault.what());
  }
}

/// Tables of no station: whatever is there is tried, as a station that had it installed would try it.
std::optional<std::string> TableIn(const std::string& folder, const std::string& name) {
  constexpr std::uint64_t kLargest = 4 << 20;
  try {
    DiskFiles files(folder, folder);
    return ReadWhole(*files.OpenForReading(files.SystemPath(name), kLargest));
  } catch (const StationFailure&) {
    return std::nullopt;
  }
}

ReplayAnswer Replay(const RunRecord& record, const ReplayOptions& options) {
  OtherTable tables;
  if (options.systemFolder) {
    if (!std::filesystem::is_directory(*options.systemFolder)) {
      throw AnswerIsNo("There is no folder " + *options.systemFolder + ".");
    }
    tables = [folder = *options.systemFolder](const std::string& name) { return TableIn(folder, name); };
  }
  try {
    const ReplayedRun run = RunAgain(record, tables);
    return {run.Same(), run.Text()};
  } catch (const CannotReplay& fault) {
    throw AnswerIsNo(fault.what());
  }
}

/// What was written last of an abandoned run may be half a note.
std::vector<std::string> TraceFaults(const RunRecord& record) {
  const std::string damage = ReadWireLog(record.Document("trace")->content).damage;
  const bool mayBeCut = record.end && record.end->ending == Ending::Abandoned;
  return damage.empty() || mayBeCut ? std::vector<std::string>() : std::vector{"trace: " + damage};
}

/// A signal ends a program that goes on for ever between two records, not in the middle of one.
std::function<bool(std::chrono::milliseconds)> EndBySignal() {
  sigset_t ends;
  sigemptyset(&ends);
  sigaddset(&ends, SIGINT);
  sigaddset(&ends, SIGTERM);
  sigprocmask(SIG_BLOCK, &ends, nullptr);
  return [ends, asked = false](std::chrono::milliseconds patience) mutable {
    constexpr long kNanosecondsPerMillisecond = 1'000'000;
    const timespec time{patience.count() / 1000, patience.count() % 1000 * kNanosecondsPerMillisecond};
    asked = asked || sigtimedwait(&ends, nullptr, &time) > 0;
    return asked;
  };
}

bool Follows(const RecordsOrder& order) {
  const auto* forward = std::get_if<ForwardOrder>(&order.verb);
  return forward != nullptr && forward->follow;
}

int Run(const RecordsOrder& order) {
  DiskFiles files("", "");
  RecordsDoors doors{&Open,
                     files,
                     &ArchiveOf,
                     &RecordsOf,
                     &Replay,
                     &TraceFaults,
                     Follows(order) ? EndBySignal() : [](std::chrono::milliseconds) { return false; },
                     [](const std::string& text) { ShowOnScreen(text); },
                     PageOfStandardOutput(),
                     std::cout,
                     std::cerr};
  const int status = CarryOut(order, doors);
  if (std::cout.good()) return status;
  std::cerr << "orvane-records: The answer could not be written." << std::endl;
  return kNoStore;
}

}  // namespace
}  // namespace orvane

int main(int argc, char** argv) {
  const auto parsed = orvane::ParseRecordsOrder(argc, argv, orvane::DefaultRecords());
  if (const auto* none = std::get_if<orvane::NoOrder>(&parsed)) {
    (none->status == 0 ? std::cout : std::cerr) << none->text << (none->status == 0 ? "" : "\n") << std::flush;
    return none->status;
  }
  // The drivers of stores are found by it.
  const QCoreApplication application(argc, argv);
  // The toolkit takes up the user's locale; numbers have a point in every country.
  (void)std::setlocale(LC_NUMERIC, "C");
  return orvane::Run(std::get<orvane::RecordsOrder>(parsed));
}
