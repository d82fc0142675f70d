#pragma once

#include <cstddef>
#include <cstdint>
#include <functional>

#include "records/record_store.h"

namespace orvane {

/// Whether a run may still come to its own end: whoever writes it may live, or its record lies elsewhere. True also
/// of one that cannot be judged from here.
using RunJudge = std::function<bool(const RecordStore::OpenRun&)>;
/// What else is left of such a run, put into its record ahead of its end.
using WhatIsLeft = std::function<void(RunRecord&)>;

/// Ends the runs whose writer is no more, as abandoned, at the time when that was found out.
/// @return how many. @throws StoreFault.
std::size_t EndAbandoned(RecordStore& store, const RunJudge& mayEndByItself, std::int64_t nowMs,
                         const WhatIsLeft& whatIsLeft = {});

}  // namespace orvane
