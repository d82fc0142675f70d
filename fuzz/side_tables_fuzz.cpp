// A file of target powers, of first DAC values, or of losses. Each value must be the one at the head of its record; a
// file that is too short fails, and what stands ahead of its end is taken all the same.

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

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
  if (size == 0) return 0;
  const Kind& kind = kKinds[data[0] % std::size(kKinds)];
  ContentFile file(std::string(data + 1, data + size));
  static CalState state;
  for (std::size_t i = 0; i < kind.records; ++i) kind.keep(state, i);

  const bool read = fuzz::Done<StationFailure>([&] { kind.read(file, state); });
  std::size_t whole = 0;
  while (whole < kind.records && file.content.size() >= whole * 128 + kind.width) ++whole;
  Require(read == (whole == kind.records), "a file is long enough or not, not both");
  for (std::size_t i = 0; i < kind.records; ++i) {
    Require(kind.value(state, i) == (i < whole ? PlainNumber(file.content, i, kind.width) : kKept), "another value");
  }

  if (whole == 0) return 0;
  ContentFile own(kind.write(state));
  Require(own.content.size() == kind.records * kRecordSize, "another length of its own file");
  static CalState again;
  kind.read(own, again);
  for (std::size_t i = 0; i < kind.records; ++i) {
    Require(kind.value(again, i) == kind.value(state, i), "its own file gives another value");
    const Decimal4 shown = Decimal4::FromRaw(kind.value(state, i));
    if (i < whole) Require(Decimal4::FromText(shown.Text()) == shown, "its text is another decimal");
  }
  return 0;
}
