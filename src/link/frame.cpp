#include "link/frame.h"

#include <algorithm>
#include <string>

#include "base/failure.h"
#include "base/subscript.h"

namespace orvane {
namespace {

constexpr int kScanBeyondData = 10;

bool NeedsEscape(Integer value) { return value == kTerminator || value == kEscape; }

char AsByte(Integer value) {
  if (value < 0 || value > 255) throw StationFailure("Overflow: " + std::to_string(value) + " is no byte.");
  return static_cast<char>(static_cast<unsigned char>(value));
}

}  // namespace

Integer ChecksumOf(Integer operation, Integer count, const FrameData& data) {
  int checksum = operation;
  for (int i = 0; i < count; ++i) checksum ^= At(data, i);
  return static_cast<Integer>(checksum);
}

void EscapeData(FrameData& data, Integer& count) {
  const auto end = static_cast<std::size_t>(count) + kScanBeyondData + 1;
  for (std::size_t i = 0; i < std::min(end, data.size()); ++i) {
    if (!NeedsEscape(data[i])) continue;
    for (int from = count - 1; from >= static_cast<int>(i); --from) At(data, from + 1) = At(data, from);
    data[i] = kEscape;
    ++count;
    ++i;
  }
  if (end > data.size()) FailOutOfRange(static_cast<std::int64_t>(data.size()), data.size());
}

std::string PlainData(const FrameData& escaped, int count) {
  std::string plain;
  for (std::size_t i = 0; i < escaped.size() && static_cast<int>(plain.size()) < count; ++i) {
    if (escaped[i] == kEscape && i + 1 < escaped.size()) ++i;
    plain += static_cast<char>(escaped[i] & 0xFF);
  }
  return plain;
}

std::array<char, kFrameBodySize> FrameBody(Integer operation, Integer count, const FrameData& escaped,
                                           Integer checksum) {
  std::array<char, kFrameBodySize> body{};
  int at = 0;
  const auto put = [&](Integer value) { At(body, at++) = AsByte(value); };
  put(operation);
  for (int i = 0; i < count; ++i) put(At(escaped, i));
  // A frame without data takes its checksum as it is.
  if (count > 0 && NeedsEscape(checksum)) put(kEscape);
  put(checksum);
  put(kTerminator);
  return body;
}

}  // namespace orvane
