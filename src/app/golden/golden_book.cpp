#include "app/golden/golden_book.h"

#include <algorithm>
#include <filesystem>

#include "adapters/disk_files.h"
#include "adapters/sql/open_store.h"
#include "adapters/sql/record_file.h"
#include "app/desk.h"
#include "app/golden/golden_check.h"
#include "app/records/archive.h"
#include "app/records/named_runs.h"
#include "app/route_text.h"
#include "base/failure.h"

namespace orvane {
namespace {

namespace fs = std::filesystem;

constexpr std::size_t kLooksBack = 100;
/// The station's start waits for it.
constexpr int kPatienceMs = 1000;

void RequireWholeOptions(const Options& options) {
  const GoldenOptions& golden = options.golden;
  if (golden.serial.empty()) {
    for (const char* const needless : {"golden-reference", "golden-excuse", "check-every"}) {
      if (options.Given(needless))
        throw OptionFault(std::string("--") + needless + ": there is no --golden beside it");
    }
    return;
  }
  if (golden.reference.empty()) throw OptionFault("--golden: it needs a --golden-reference");
  if (!options.records) throw OptionFault("--golden: it needs --records, which this station keeps none of");
}

bool IsFile(const std::string& reference) {
  return reference.ends_with(".orvane") || reference.find('/') != std::string::npos;
}

/// A store of an older program is taken up. Null where nothing was ever kept.
std::unique_ptr<RecordStore> StoreOf(const Options& options) {
  std::error_code absent;
  const auto size = fs::file_size(*options.records, absent);
  if (absent || size == 0) return nullptr;
  const std::string place = "sqlite:" + options.records->string();
  try {
    auto store = OpenStore(place, {.readOnly = true, .patienceMs = kPatienceMs});
    (void)store->IdsLike("", 1);
    return store;
  } catch (const StoreFault&) {
    return OpenStore(place, {.patienceMs = kPatienceMs});
  }
}

RunRecord ReferenceInFile(const std::string& path) {
  DiskFiles files("", "");
  const auto records = ArchivedRecords(ReadWhole(*files.OpenForReading(path, kLargestPackedRecord)));
  if (records.size() != 1) throw DamagedRecord("it holds " + std::to_string(records.size()) + " records, not one.");
  return records.front();
}

RunRecord ReferenceInStore(const Options& options) {
  const std::string& run = options.golden.reference;
  // What is last is another one tomorrow.
  if (run == "last") throw AnswerIsNo("it must be the id of a run");
  const auto store = StoreOf(options);
  if (store == nullptr) throw AnswerIsNo("there is no run in " + options.records->string());
  return Loaded(*store, IdOf(*store, run));
}

RunRecord ReferenceOf(const Options& options) {
  const GoldenOptions& golden = options.golden;
  const auto fault = [](const std::string& what) { return OptionFault("--golden-reference: " + OneLine(what)); };
  RunRecord reference;
  try {
    reference = IsFile(golden.reference) ? ReferenceInFile(golden.reference) : ReferenceInStore(options);
  } catch (const StationFailure& failure) {
    throw fault(failure.Text());
  } catch (const std::exception& unread) {
    throw fault(unread.what());
  }
  const std::string run = "the run " + reference.identity.id;
  if (reference.identity.serial != golden.serial) {
    throw fault(run + " is of the unit \"" + reference.identity.serial + "\", not \"" + golden.serial + "\"");
  }
  if (!IsCompletePass(reference)) throw fault(run + " is no complete PASS");
  return reference;
}

/// A limit for nothing is a slip of the pen, and the reading that was meant would go by another one.
void RequireLimitsThatFit(const Options& options, const RunRecord& reference) {
  for (const GoldenLimit& limit : options.golden.limits) {
    const bool fits =
        std::any_of(reference.readings.begin(), reference.readings.end(),
                    [&](const RecordedReading& reading) { return FitsPattern(limit.pattern, reading.name); });
    if (!fits) {
      throw OptionFault(limit.where + ": golden_limits." + limit.pattern +
                        ": no reading of the reference record has such a name");
    }
  }
}

}  // namespace

std::optional<GoldenExcuse> ExcuseIn(const RunIdentity& run) {
  const auto why = run.tags.find(kExcuseTag);
  const auto until = run.tags.find(kExcuseUntilTag);
  if (why == run.tags.end() || until == run.tags.end()) return std::nullopt;
  const auto ms = UtcOf(until->second);
  return ms ? std::optional(GoldenExcuse{why->second, *ms}) : std::nullopt;
}

void FindLastCheck(RecordStore& store, const Options& options, GoldenBook& book) {
  RunQuery query;
  query.station = options.station;
  query.limit = kLooksBack;
  const char* const bench = options.bench ? "virtual" : "real";
  const auto isHere = [bench](const RunSummary& run) { return run.identity.bench == bench; };

  const auto runs = store.List(query);
  const auto last = std::find_if(runs.begin(), runs.end(), isHere);
  if (last != runs.end()) book.excuse = ExcuseIn(last->identity);

  query.serial = options.golden.serial;
  const auto checks = store.List(query);
  const auto check = std::find_if(checks.begin(), checks.end(),
                                  [&](const RunSummary& run) { return isHere(run) && run.identity.kind == "whole"; });
  if (check != checks.end()) book.lastCheck = store.Load(check->identity.id);
}

std::optional<GoldenBook> OpenGoldenBook(const Options& options) {
  RequireWholeOptions(options);
  if (options.golden.serial.empty()) return std::nullopt;
  GoldenBook book{ReferenceOf(options)};
  RequireLimitsThatFit(options, book.reference);
  try {
    if (const auto store = StoreOf(options)) FindLastCheck(*store, options, book);
  } catch (const StoreFault& fault) {
    // Nothing is known, and the golden unit is due.
    book.fault = fault.what();
  }
  return book;
}

}  // namespace orvane
