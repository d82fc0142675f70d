#pragma once

#include "records/record_store.h"

namespace orvane {

/// This process, to be known again when it is no more.
[[nodiscard]] WriterMark CurrentWriter();

/// Whether that process may still be there. True as well of one that cannot be judged from here: on another host, or
/// among processes that this one does not see.
[[nodiscard]] bool WriterMayLive(const WriterMark& writer);

}  // namespace orvane
