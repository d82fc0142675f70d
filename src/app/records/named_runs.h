#pragma once

#include <stdexcept>
#include <string>
#include <vector>

#include "records/record_store.h"

namespace orvane {

/// The answer is "no": there is no such run, several are meant, something differs or is damaged. In words.
class AnswerIsNo : public std::runtime_error {
  using std::runtime_error::runtime_error;
};

/// The id of the run that is meant: an id, a unique beginning of one, or "last", which is the one that began last.
/// @throws AnswerIsNo when none is meant, or several, which are named then; StoreFault.
[[nodiscard]] std::string IdOf(RecordStore& store, const std::string& run);

/// The same for several; each run is there once, in the order in which it was named first.
[[nodiscard]] std::vector<std::string> IdsOf(RecordStore& store, const std::vector<std::string>& runs);

/// @throws AnswerIsNo when it is not there (any more), StoreFault.
[[nodiscard]] RunRecord Loaded(RecordStore& store, const std::string& id);

}  // namespace orvane
