#include "app/records/archive.h"

#include <cstdint>

#include "adapters/sql/record_file.h"

namespace orvane {
namespace {

constexpr std::string_view kSeveral = "ORVANES\n";
constexpr std::size_t kCountBytes = 4;
constexpr std::size_t kLengthBytes = 8;

std::string NumberBytes(std::uint64_t number, std::size_t size) {
  std::string bytes;
  for (std::size_t i = 0; i < size; ++i) bytes += static_cast<char>(number >> (8 * i) & 0xFFU);
  return bytes;
}

std::string_view Take(std::string_view& rest, std::uint64_t size) {
  if (rest.size() < size) throw DamagedRecord("it is cut short.");
  const std::string_view taken = rest.substr(0, size);
  rest.remove_prefix(size);
  return taken;
}

std::uint64_t TakeNumber(std::string_view& rest, std::size_t size) {
  std::uint64_t number = 0;
  const std::string_view bytes = Take(rest, size);
  for (std::size_t i = size; i-- > 0;) number = number << 8U | static_cast<unsigned char>(bytes[i]);
  return number;
}

}  // namespace

std::string ArchiveOf(const std::vector<RunRecord>& records) {
  if (records.size() == 1) return PackedRecord(records.front());
  std::string archive(kSeveral);
  archive += NumberBytes(records.size(), kCountBytes);
  for (const RunRecord& record : records) {
    const std::string packed = PackedRecord(record);
    archive += NumberBytes(packed.size(), kLengthBytes) + packed;
  }
  return archive;
}

std::vector<RunRecord> ArchivedRecords(std::string_view archive) {
  if (!archive.starts_with(kSeveral)) return {UnpackedRecord(archive)};
  archive.remove_prefix(kSeveral.size());
  std::vector<RunRecord> records;
  for (std::uint64_t count = TakeNumber(archive, kCountBytes); count > 0; --count) {
    records.push_back(UnpackedRecord(Take(archive, TakeNumber(archive, kLengthBytes))));
  }
  if (!archive.empty()) throw DamagedRecord("something stands behind its last record.");
  return records;
}

}  // namespace orvane
