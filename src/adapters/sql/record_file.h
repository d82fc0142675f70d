#pragma once

#include <string>
#include <string_view>

#include "platform/files.h"
#include "records/record.h"
#include "records/record_bytes.h"

namespace orvane {

/// The largest file of a record that is read.
inline constexpr std::uint64_t kLargestPackedRecord = 256 << 20;

/// A record as a file has it: "ORVANE", two bytes for the version of the layout, a Zstandard frame of the record's
/// bytes, and the SHA-256 of all that.
[[nodiscard]] std::string PackedRecord(const RunRecord& record);
/// @throws DamagedRecord for anything else, and for a version that this program does not know.
[[nodiscard]] RunRecord UnpackedRecord(std::string_view content);

/// There whole, or not at all. @throws StationFailure with the system's text.
void WriteRecordFile(Files& files, const std::string& path, const RunRecord& record);
/// @throws StationFailure with the system's text, or DamagedRecord.
[[nodiscard]] RunRecord ReadRecordFile(Files& files, const std::string& path);

}  // namespace orvane
