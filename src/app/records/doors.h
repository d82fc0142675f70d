#pragma once

#include <chrono>
#include <functional>
#include <iosfwd>
#include <memory>
#include <string>
#include <vector>

#include "app/records/orders.h"
#include "app/records/text_table.h"
#include "platform/files.h"
#include "records/record_store.h"

namespace orvane {

enum class StoreAccess {
  /// It is only read, and has to be there.
  Ask,
  /// It has to be there.
  Change,
  /// One that is not there is made.
  Fill,
};

/// What came of a record that was run again.
struct ReplayAnswer {
  bool same = false;
  /// What differs, in words; may be empty for "same".
  std::string text;
};

/// What the verbs have of the world. Each may throw StoreFault where it deals with a store.
struct RecordsDoors {
  std::function<std::unique_ptr<RecordStore>(const std::string& store, StoreAccess use)> openStore;
  Files& files;
  /// The bytes of an .orvane file, and the records in them. @throws AnswerIsNo for damaged ones.
  std::function<std::string(const std::vector<RunRecord>& records)> archiveOf;
  std::function<std::vector<RunRecord>(const std::string& archive)> recordsOf;
  /// Runs a record, which has its trace, again. @throws AnswerIsNo for one that cannot be. May be called in several
  /// processes at a time.
  std::function<ReplayAnswer(const RunRecord& record, const ReplayOptions& options)> replay;
  /// What is wrong in a record's trace from end to end, a line each.
  std::function<std::vector<std::string>(const RunRecord& record)> traceFaults;
  /// Waits so long for whoever wants this program to end. @return whether it is to end.
  std::function<bool(std::chrono::milliseconds patience)> endAsked;

  /// An answer of any length for whoever asked.
  std::function<void(const std::string& text)> show;
  Page page;
  /// What a verb tells while it works, and what went wrong.
  std::ostream& out;
  std::ostream& errors;
};

}  // namespace orvane
