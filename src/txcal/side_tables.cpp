#include "txcal/side_tables.h"

#include <cstdint>

#include "base/text.h"

namespace orvane {
namespace {

struct DefaultRow {
  int powerDbm;
  Integer firstDac;
};

/// GSM levels 5 to 19, then DCS levels 0 to 15.
constexpr std::array<DefaultRow, kTablePositions> kDefaults{{
    {32, 600}, {31, 550}, {29, 430}, {27, 350}, {25, 284}, {23, 222}, {21, 176}, {19, 140},
    {17, 115}, {15, 95},  {13, 80},  {11, 67},  {9, 56},   {8, 51},   {7, 48},               //
    {29, 720}, {28, 630}, {26, 500}, {24, 400}, {22, 330}, {20, 258}, {18, 205}, {16, 162},  //
    {14, 130}, {12, 105}, {10, 90},  {8, 75},   {6, 63},   {5, 57},   {4, 52},   {3, 48},
}};
static_assert(kDefaults[kGsmLevels.PositionOf(19)].powerDbm == 7 &&
              kDefaults[kDcsLevels.PositionOf(0)].powerDbm == 29);

/// The first bytes of a record as a number in two's complement.
template <class Number>
Number ReadNumber(File& file, int number) {
  const std::string record = ReadRecord(file, number, sizeof(Number));
  std::uint64_t bits = 0;
  for (std::size_t i = sizeof(Number); i-- > 0;) bits = bits << 8 | static_cast<unsigned char>(record[i]);
  return static_cast<Number>(bits);
}

template <class Number>
std::string NumberRecord(Number value) {
  auto bits = static_cast<std::uint64_t>(value);
  std::string bytes;
  for (std::size_t i = 0; i < sizeof(Number); ++i, bits >>= 8) bytes += static_cast<char>(bits & 0xFF);
  return RecordOf(bytes);
}

Decimal4 ReadDecimal(File& file, std::size_t position) {
  return Decimal4::FromRaw(ReadNumber<std::int64_t>(file, static_cast<int>(position) + 1));
}

template <std::size_t Size>
std::string DecimalRecords(const std::array<Decimal4, Size>& table, std::size_t count) {
  std::string records;
  for (std::size_t i = 0; i < count; ++i) records += NumberRecord(table[i].Raw());
  return records;
}

std::string SideLine(std::string_view table, std::size_t position, const std::string& value) {
  return std::string(table) + "(" + std::to_string(position) + ")\t" + value + std::string(kLineEnd);
}

}  // namespace

void FillDefaultSideTables(CalState& state) {
  for (std::size_t i = 0; i < kDefaults.size(); ++i) {
    state.InitValueIndex[i] = kDefaults[i].firstDac;
    state.PowerIndex[i] = kDefaults[i].powerDbm;
  }
}

void ReadInitialRecords(File& file, CalState& state) {
  for (int i = 0; i < kTablePositions; ++i) {
    state.InitValueIndex[static_cast<std::size_t>(i)] = ReadNumber<Integer>(file, i + 1);
  }
}

std::string InitialRecords(const CalState& state) {
  std::string records;
  for (const Integer value : state.InitValueIndex) records += NumberRecord(value);
  return records;
}

void ReadPowerRecords(File& file, CalState& state) {
  for (std::size_t i = 0; i < kTablePositions; ++i) state.PowerIndex[i] = ReadDecimal(file, i);
}
std::string PowerRecords(const CalState& state) { return DecimalRecords(state.PowerIndex, kTablePositions); }
void ReadLossRecords(File& file, CalState& state) {
  for (std::size_t i = 0; i < kLosses; ++i) ReadLossRecord(file, i, state);
}
void ReadLossRecord(File& file, std::size_t loss, CalState& state) {
  state.LossTable[loss] = ReadDecimal(file, loss);
}
std::string LossRecords(const CalState& state) { return DecimalRecords(state.LossTable, kLosses); }

std::string InitialSideText(const CalState& state) {
  std::string text;
  for (std::size_t i = 0; i < kTablePositions; ++i) {
    text += SideLine("InitValueIndex", i, std::to_string(state.InitValueIndex[i]));
  }
  return text;
}

std::string PowerSideText(const CalState& state) {
  std::string text;
  for (std::size_t i = 0; i < kTablePositions; ++i) text += SideLine("PowerIndex", i, state.PowerIndex[i].Text());
  return text;
}

std::array<TextBox*, kLosses> LossBoxes(PanelRef<FrmAutoCal> autoCal, PanelRef<OrvaneMain> main) {
  return {&autoCal->txtRxCableLossGSM, &autoCal->txtRxCableLossDCS, &autoCal->txtLoss, &autoCal->txtDCSLoss,
          &main->txtVoltageLoss};
}

void ShowLosses(const CalState& state, PanelRef<FrmAutoCal> autoCal, PanelRef<OrvaneMain> main) {
  const auto boxes = LossBoxes(autoCal, main);
  for (std::size_t i = 0; i < boxes.size(); ++i) boxes[i]->SetText(state.LossTable[i].Text());
}

}  // namespace orvane
