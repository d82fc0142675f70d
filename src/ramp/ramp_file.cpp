#include "ramp/ramp_file.h"

#include <utility>

#include "base/failure.h"
#include "base/text.h"

namespace orvane {
namespace {

constexpr std::size_t kLengthSize = 2;
constexpr std::size_t kLongestText = kRecordSize - kLengthSize;

}  // namespace

std::optional<std::string> RampTextOf(std::string_view record) {
  if (record.size() < kLengthSize) return std::nullopt;
  const auto byteAt = [&](std::size_t i) { return static_cast<std::size_t>(static_cast<unsigned char>(record[i])); };
  const std::size_t length = byteAt(0) + 256 * byteAt(1);
  if (record.size() < kLengthSize + length) return std::nullopt;
  return TextOfBytes(record.substr(kLengthSize, length));
}

std::string RampRecordOf(const std::string& text, int number) {
  const std::string bytes = BytesOfText(text);
  if (bytes.size() > kLongestText) {
    throw StationFailure("Bad record length in record " + std::to_string(number) + ".");
  }
  return RecordOf(std::string{static_cast<char>(bytes.size()), '\0'} + bytes);
}

void ReadRampRecords(File& file, RampState& state) {
  std::uint64_t offset = 0;
  for (auto& table : state.RampTable) {
    for (std::string& value : table) {
      PassOver([&] {
        if (auto text = RampTextOf(file.Read(offset, kRecordSize))) value = std::move(*text);
      });
      offset += kRecordSize;
    }
  }
}

std::string RampRecords(const RampState& state) {
  std::string records;
  records.reserve(kRampRecords * kRecordSize);
  int number = 0;
  for (const auto& table : state.RampTable) {
    for (const std::string& value : table) records += RampRecordOf(value, ++number);
  }
  return records;
}

std::string RampSideText(const RampState& state) {
  std::string text;
  for (std::size_t t = 0; t < state.RampTable.size(); ++t) {
    text += "RampIndex = " + std::to_string(t) + std::string(kLineEnd) + "UP";
    for (std::size_t j = 0; j < kRampValues; ++j) {
      if (j == kRampUpValues) text += std::string(kLineEnd) + "DOWN";
      text += "\t" + BytesOfText(state.RampTable[t][j]);
    }
    text += kLineEnd;
  }
  return text;
}

}  // namespace orvane
