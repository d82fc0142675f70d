// A ramp table file. Each value must be the text that its record holds, or be kept where there is no such record;
// what was read comes back from a file of its own.

#include "content_file.h"
#include "ramp/ramp_file.h"
#include "require.h"

namespace {

using namespace orvane;

const std::string kKept = "kept";

/// The text of a record by its layout alone: its length in two bytes, low byte first, then so many characters.
std::string PlainText(std::string_view content, std::size_t record) {
  if (content.size() < record * 128 + 2) return kKept;
  const std::string_view bytes = content.substr(record * 128, 128);
  const std::size_t length = static_cast<unsigned char>(bytes[0]) + 256U * static_cast<unsigned char>(bytes[1]);
  if (length > bytes.size() - 2) return kKept;
  std::string text;
  for (const char c : bytes.substr(2, length)) {
    const auto byte = static_cast<unsigned char>(c);
    if (byte >= 0x80) text += static_cast<char>(0xC0 + byte / 64);
    text += static_cast<char>(byte < 0x80 ? byte : 0x80 + byte % 64);
  }
  return text;
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
  fuzz::ContentFile file(std::string(data, data + size));
  for (std::size_t i = 0; i * kRecordSize < size; ++i) {
    const std::string_view record = std::string_view(file.content).substr(i * kRecordSize, kRecordSize);
    const auto text = RampTextOf(record);
    fuzz::Require(text.value_or(kKept) == PlainText(file.content, i), "another text");
    if (text) fuzz::Require(RampTextOf(RampRecordOf(*text, 1)) == text, "it does not come back");
  }
  return 0;
}
