#include "records/abandoned_runs.h"

namespace orvane {

std::size_t EndAbandoned(RecordStore& store, const RunJudge& mayEndByItself, std::int64_t nowMs,
                         const WhatIsLeft& whatIsLeft) {
  std::size_t ended = 0;
  for (const RecordStore::OpenRun& open : store.OpenRuns()) {
    if (mayEndByItself(open)) continue;
    auto record = store.Load(open.id);
    // Another station may have been quicker.
    if (!record || record->end) continue;
    RunEnd& end = record->end.emplace();
    end.endedMs = nowMs;
    end.ending = Ending::Abandoned;
    end.reason = "The station that ran it ended in the middle of it.";
    if (whatIsLeft) whatIsLeft(*record);
    if (store.Finish(*record)) ++ended;
  }
  return ended;
}

}  // namespace orvane
