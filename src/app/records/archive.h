#pragma once

#include <string>
#include <string_view>
#include <vector>

#include "records/record.h"

namespace orvane {

/// The content of an .orvane file: of one record as the spool has it too, of several their packed forms behind
/// "ORVANES\n", their number in four bytes and the length of each in eight, least significant byte first.
[[nodiscard]] std::string ArchiveOf(const std::vector<RunRecord>& records);

/// @throws DamagedRecord for anything else; no record of a damaged archive is given.
[[nodiscard]] std::vector<RunRecord> ArchivedRecords(std::string_view archive);

}  // namespace orvane
