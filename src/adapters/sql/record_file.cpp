#include "adapters/sql/record_file.h"

#include "adapters/sql/content_codec.h"

namespace orvane {
namespace {

constexpr std::string_view kMagic = "ORVANE";
constexpr std::size_t kVersionSize = 2;
constexpr unsigned kVersion = 1;
constexpr std::size_t kDigestSize = 32;

std::string VersionBytes() { return {static_cast<char>(kVersion & 0xFFU), static_cast<char>(kVersion >> 8U)}; }

unsigned VersionIn(std::string_view head) {
  const auto byte = [&](std::size_t i) { return static_cast<unsigned>(static_cast<unsigned char>(head[i])); };
  return byte(kMagic.size()) | byte(kMagic.size() + 1) << 8U;
}

}  // namespace

std::string PackedRecord(const RunRecord& record) {
  std::string content = std::string(kMagic) + VersionBytes() + Compressed(BytesOf(record));
  return content + DigestOf(content);
}

RunRecord UnpackedRecord(std::string_view content) {
  if (!content.starts_with(kMagic)) throw DamagedRecord("This is no record: it does not begin like one.");
  if (content.size() < kMagic.size() + kVersionSize + kDigestSize) throw DamagedRecord("The record is cut short.");
  // The digest goes first: of a damaged file the version may be what is damaged.
  const std::string_view told = content.substr(content.size() - kDigestSize);
  content.remove_suffix(kDigestSize);
  if (DigestOf(content) != told) throw DamagedRecord("The record is cut short or changed: its digest does not fit.");
  if (const unsigned version = VersionIn(content); version != kVersion) {
    throw DamagedRecord("The record is of version " + std::to_string(version) + ", and this program knows version " +
                        std::to_string(kVersion) + " only.");
  }
  return RunRecordOf(Decompressed(content.substr(kMagic.size() + kVersionSize)));
}

void WriteRecordFile(Files& files, const std::string& path, const RunRecord& record) {
  WriteWhole(files, path, OldFile::Goes, PackedRecord(record));
}

RunRecord ReadRecordFile(Files& files, const std::string& path) {
  return UnpackedRecord(ReadWhole(*files.OpenForReading(path, kLargestPackedRecord)));
}

}  // namespace orvane
