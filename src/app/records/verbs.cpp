#include "app/records/verbs.h"

#include <algorithm>
#include <ostream>

#include "app/records/export_forms.h"
#include "app/records/forward.h"
#include "app/records/named_runs.h"
#include "app/records/record_faults.h"
#include "app/records/record_json.h"
#include "app/records/replay_jobs.h"
#include "app/records/run_text.h"
#include "app/records/shown_text.h"
#include "base/failure.h"

namespace orvane {
namespace {

/// No .orvane file comes near it.
constexpr std::uint64_t kLargestArchive = std::uint64_t{1} << 30U;

std::string Counted(std::size_t count, std::string_view one) {
  return std::to_string(count) + " " + std::string(one) + (count == 1 ? "" : "s");
}

/// One of the verbs' meanings; each returns the exit status.
class Verbs {
 public:
  Verbs(std::string storeName, RecordsDoors& doors) : storeName_(std::move(storeName)), doors_(doors) {}

  int operator()(const ListOrder& order) {
    const auto runs = Store(StoreAccess::Ask).List(order.query);
    if (order.json) {
      doors_.show(ListJson(runs));
    } else if (runs.empty()) {
      doors_.errors << "No run fits." << std::endl;
    } else {
      doors_.show(ListText(runs, doors_.page));
    }
    return 0;
  }

  int operator()(const ShowOrder& order) {
    RecordStore& store = Store(StoreAccess::Ask);
    const RunRecord record = Loaded(store, IdOf(store, order.run));
    doors_.show(order.json ? JsonText(RecordJson(record)) : ShowText(record, doors_.page));
    return 0;
  }

  int operator()(const ExportOrder& order) {
    RecordStore& store = Store(StoreAccess::Ask);
    std::vector<RunRecord> records;
    for (const std::string& id : IdsOf(store, order.runs)) records.push_back(Loaded(store, id));
    const ExportForm& form = *ExportFormOf(order.to);
    const std::string content = form.contentOf != nullptr ? form.contentOf(records) : doors_.archiveOf(records);
    WriteWhole(doors_.files, order.to, OldFile::Goes, content);
    return 0;
  }

  int operator()(const ImportOrder& order) {
    RecordStore& store = Store(StoreAccess::Fill);
    std::size_t taken = 0;
    std::size_t known = 0;
    int status = 0;
    for (const std::string& file : order.files) {
      // A file that is not there says more about this call than one that is damaged.
      status = std::max(status, Guarded([&] {
                          const auto opened = doors_.files.OpenForReading(file, kLargestArchive);
                          for (const RunRecord& record : ArchivedIn(file, ReadWhole(*opened)))
                            ++(store.Finish(record) ? taken : known);
                          return 0;
                        }));
    }
    doors_.out << Counted(taken, "record") << " taken in, " << known << " there already." << std::endl;
    return status;
  }

  int operator()(const ReplayOrder& order) {
    RecordStore& store = Store(StoreAccess::Ask);
    const auto ids = order.runs.empty() ? AllIds(store) : IdsOf(store, order.runs);
    // Each job has a connection of its own.
    store_.reset();
    const ReplayTally tally = ReplayAll(ids, order, storeName_, doors_);
    if (ids.size() > 1) {
      doors_.out << Counted(ids.size(), "run") << ": " << tally.same << " same, " << tally.different << " differ, "
                 << tally.failed << " could not be run again." << std::endl;
    }
    return tally.same == ids.size() ? 0 : kAnswerIsNo;
  }

  int operator()(const VerifyOrder& order) {
    RecordStore& store = Store(StoreAccess::Ask);
    const auto ids = order.runs.empty() ? AllIds(store) : IdsOf(store, order.runs);
    std::size_t damaged = 0;
    std::vector<std::string> ofNoRun;
    if (order.runs.empty()) ofNoRun = store.CheckStore();
    for (const std::string& fault : ofNoRun) doors_.out << Harmless(fault) << "\n";
    for (const std::string& id : ids) {
      const auto faults = FaultsOf(store, id);
      for (const std::string& fault : faults) doors_.out << id << ": " << Harmless(fault) << "\n";
      if (!faults.empty()) ++damaged;
    }
    doors_.out << Counted(ids.size(), "run") << ", " << (damaged == 0 ? "none" : std::to_string(damaged))
               << " damaged." << std::endl;
    return damaged == 0 && ofNoRun.empty() ? 0 : kAnswerIsNo;
  }

  int operator()(const PruneOrder& order) {
    const PruneResult result = Store(StoreAccess::Change).Prune(order);
    doors_.out << (order.keepRecords ? Counted(result.traces, "trace") : Counted(result.records, "record"))
               << " taken out." << std::endl;
    return 0;
  }

  int operator()(const ForwardOrder& order) { return Forward(order, storeName_, doors_); }

  /// What an act's failures mean for the exit status.
  template <class Act>
  int Guarded(Act act) {
    try {
      return act();
    } catch (const AnswerIsNo& fault) {
      Tell(fault.what());
      return kAnswerIsNo;
    } catch (const StoreFault& fault) {
      Tell(fault.what());
    } catch (const TextFailure& fault) {
      Tell(fault.what());
    }
    return kNoStore;
  }

 private:
  RecordStore& Store(StoreAccess use) {
    store_ = doors_.openStore(storeName_, use);
    return *store_;
  }

  static std::vector<std::string> AllIds(RecordStore& store) {
    std::vector<std::string> ids;
    for (const RunSummary& run : store.List({})) ids.push_back(run.identity.id);
    return ids;
  }

  std::vector<RunRecord> ArchivedIn(const std::string& file, const std::string& archive) {
    try {
      return doors_.recordsOf(archive);
    } catch (const AnswerIsNo& fault) {
      throw AnswerIsNo(file + ": " + fault.what());
    }
  }

  /// A record whose rows or documents are damaged cannot be loaded.
  std::vector<std::string> FaultsOf(RecordStore& store, const std::string& id) {
    std::vector<std::string> faults = store.Check(id);
    if (!faults.empty()) return faults;
    const auto record = store.Load(id);
    if (!record) return faults;
    faults = RecordFaults(*record);
    if (doors_.traceFaults && record->Document("trace") != nullptr) {
      for (std::string& fault : doors_.traceFaults(*record)) faults.push_back(std::move(fault));
    }
    return faults;
  }

  /// Line by line: a list of runs has several.
  void Tell(std::string_view text) {
    doors_.errors << "orvane-records: ";
    for (std::string_view rest = text; !rest.empty();) doors_.errors << Harmless(TakeLine(rest)) << "\n";
    doors_.errors << std::flush;
  }

  std::string storeName_;
  RecordsDoors& doors_;
  std::unique_ptr<RecordStore> store_;
};

}  // namespace

int CarryOut(const RecordsOrder& order, RecordsDoors& doors) {
  Verbs verbs(order.store, doors);
  return verbs.Guarded([&] { return std::visit(verbs, order.verb); });
}

}  // namespace orvane
