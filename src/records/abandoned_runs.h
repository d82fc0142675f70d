#pragma once

#include <cstddef>
#include <cstdint>
#include <functional>

#include "records/record_store.h"

namespace orvane {

/// Whether whoever writes a run may still do so. True also of one that cannot be judged from here.
using WriterJudge = std::function<bool(const WriterMark&)>;
/// What else is left of such a run, put into its record ahead of its end.
using WhatIsLeft = std::function<void(RunRecord&)>;

/// Ends the runs whose writer is no more, as abandoned, at the time when that was found out.
/// @return how many. @throws StoreFault.
std::size_t EndAbandoned(RecordStore& store, const WriterJudge& mayLive, std::int64_t nowMs,
                         const WhatIsLeft& whatIsLeft = {});

}  // namespace orvane
