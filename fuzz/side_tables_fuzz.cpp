// A file of target powers, of first DAC values, or of losses. Each value must be the one at the head of its record; a
// file that is too short fails, and what stands ahead of its end is taken all the same. The input has the heads of
// the records alone: the bytes between them, which its second byte says, are nobody's.

#include "base/failure.h"
#include "content_file.h"
#include "require.h"
#include "txcal/side_tables.h"

namespace {

using namespace orvane;
using fuzz::ContentFile;
using fuzz::Require;

constexpr std::int64_t kKept = 1234;

/// The number at the head of a record, low byte first.
std::int64_t PlainNumber(std::string_view content, std::size_t record, std::size_t width) {
  std::int64_t value = static_cast<signed char>(content[record * 128 + width - 1]);
  for (std::size_t i = width - 1; i-- > 0;) {
    value = value * 256 + static_cast<unsigned char>(content[record * 128 + i]);
  }
  return value;
}

struct Kind {
  std::size_t records;
  std::size_t width;
  void (*read)(File&, CalState&);
  std::string (*write)(const CalState&);
  std::int64_t (*value)(const CalState&, std::size_t);
  void (*keep)(CalState&, std::size_t);
};

constexpr Kind kKinds[] = {
    {kTablePositions, 2, &ReadInitialRecords, &InitialRecords,
     [](const CalState& state, std::size_t i) -> std::int64_t { return state.InitValueIndex[i]; },
     [](CalState& state, std::size_t i) { state.InitValueIndex[i] = kKept; }},
    {kTablePositions, 8, &ReadPowerRecords, &PowerRecords,
     [](const CalState& state, std::size_t i) { return state.PowerIndex[i].Raw(); },
     [](CalState& state, std::size_t i) { state.PowerIndex[i] = Decimal4::FromRaw(kKept); }},
    {kLosses, 8, &ReadLossRecords, &LossRecords,
     [](const CalState& state, std::size_t i) { return state.LossTable[i].Raw(); },
     [](CalState& state, std::size_t i) { state.LossTable[i] = Decimal4::FromRaw(kKept); }},
};

/// The heads, each at the begin of its record; nothing stands behind the last one when it was cut off.
std::string FileOf(std::string_view heads, std::size_t width, char between) {
  std::string content;
  content.reserve((heads.size() / width + 1) * kRecordSize);
  for (; heads.size() >= width; heads.remove_prefix(width)) {
    content.append(heads.substr(0, width)).append(kRecordSize - width, between);
  }
  return content.append(heads);
}

/// The station's own file of what it read.
void CheckOwnFile(const Kind& kind, const CalState& state) {
  const std::string own = kind.write(state);
  Require(own.size() == kind.records * kRecordSize, "another length of its own file");
  for (std::size_t i = 0; i < kind.records; ++i) {
    Require(PlainNumber(own, i, kind.width) == kind.value(state, i), "its own file has another value");
    const std::string_view rest =
        std::string_view(own).substr(i * kRecordSize + kind.width, kRecordSize - kind.width);
    Require(rest.find_first_not_of('\0') == std::string_view::npos, "its own file has more than values");
  }
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
  if (size < 2) return 0;
  const Kind& kind = kKinds[data[0] % std::size(kKinds)];
  const std::string_view heads(reinterpret_cast<const char*>(data) + 2, size - 2);
  ContentFile file(FileOf(heads.substr(0, (kind.records + 1) * kind.width), kind.width, static_cast<char>(data[1])));
  static CalState state;
  for (std::size_t i = 0; i < kind.records; ++i) kind.keep(state, i);

  const bool read = fuzz::Done<StationFailure>([&] { kind.read(file, state); });
  std::size_t whole = 0;
  while (whole < kind.records && file.content.size() >= whole * 128 + kind.width) ++whole;
  Require(read == (whole == kind.records), "a file is long enough or not, not both");
  for (std::size_t i = 0; i < kind.records; ++i) {
    Require(kind.value(state, i) == (i < whole ? PlainNumber(file.content, i, kind.width) : kKept), "another value");
  }

  if (read) CheckOwnFile(kind, state);
  if (whole == 0) return 0;
  const Decimal4 one = Decimal4::FromRaw(kind.value(state, data[0] % whole));
  Require(Decimal4::FromText(one.Text()) == one, "its text is another decimal");
  return 0;
}
