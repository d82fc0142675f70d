#pragma once

#include <nlohmann/json.hpp>
#include <string>
#include <vector>

#include "records/record_store.h"

namespace orvane {

/// The columns of the store's table `run`, by their names and in their order. What is not known is null, flags are 0
/// and 1 as they are there.
[[nodiscard]] nlohmann::ordered_json RunJson(const RunIdentity& run, const std::optional<RunEnd>& end);

/// An array of these, each on a line of its own.
[[nodiscard]] std::string ListJson(const std::vector<RunSummary>& runs);

/// The whole record: the columns of `run`, then `tags` (an object), and `steps`, `readings`, `passes`, `boxes` and
/// `documents`, arrays of objects with the columns of their tables. A document has its role, kind, digest and number
/// of bytes, and its content as `text`, or as `base64` where it is bytes. A trace's content is left out.
[[nodiscard]] nlohmann::ordered_json RecordJson(const RunRecord& record);

/// Indented, with a line end. Bytes that are no UTF-8 are replaced.
[[nodiscard]] std::string JsonText(const nlohmann::ordered_json& json);

}  // namespace orvane
