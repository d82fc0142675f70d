#include "rfparams/record_layout.h"

#include <array>
#include <charconv>

namespace orvane {
namespace {

using Record = RFParameter;
using Band = RFParameter::Band;
using E = Element;
using enum EepromForm;

/// Kinds of values that repeat together: for each i, for each k, all of the rows.
struct Group {
  std::span<const FieldRow> rows;
  std::size_t outer = 1;
  std::size_t inner = 1;
};

constexpr std::array kHeadBegin{
    FieldRow{"rf_revision", [](Record& r, E) -> Integer& { return r.rf_revision; }},
    FieldRow{"low_agc_noise_thr", [](Record& r, E) -> Integer& { return r.low_agc_noise_thr; }},
    FieldRow{"high_agc_sat_thr", [](Record& r, E) -> Integer& { return r.high_agc_sat_thr; }},
    FieldRow{"low_agc", [](Record& r, E) -> Integer& { return r.low_agc; }},
    FieldRow{"high_agc", [](Record& r, E) -> Integer& { return r.high_agc; }},
};
constexpr std::array kIl2agcPwr{
    FieldRow{"il2agc_pwr({i})", [](Record& r, E e) -> Integer& { return r.il2agc_pwr[e.i]; }}};
constexpr std::array kIl2agcMax{
    FieldRow{"il2agc_max({i})", [](Record& r, E e) -> Integer& { return r.il2agc_max[e.i]; }}};
constexpr std::array kIl2agcAv{
    FieldRow{"il2agc_av({i})", [](Record& r, E e) -> Integer& { return r.il2agc_av[e.i]; }}};
constexpr std::array kHeadEnd{
    FieldRow{"ramp_delay.up", [](Record& r, E) -> Integer& { return r.ramp_delay.up; }},
    FieldRow{"ramp_delay.down", [](Record& r, E) -> Integer& { return r.ramp_delay.down; }},
    FieldRow{"guard_bits", [](Record& r, E) -> Integer& { return r.guard_bits; }},
    FieldRow{"prg_tx", [](Record& r, E) -> Integer& { return r.prg_tx; }},
    FieldRow{"EEPROM_AFC", [](Record& r, E) -> Integer& { return r.EEPROM_AFC; }},
    FieldRow{"psi_sta_inv", &Record::psi_sta_inv},
    FieldRow{"psi_st", &Record::psi_st},
    FieldRow{"psi_st_32", &Record::psi_st_32},
    FieldRow{"psi_st_inv", &Record::psi_st_inv},
};

constexpr std::array kBandBegin{
    FieldRow{"g_magic", [](Band& b, E) -> Integer& { return b.g_magic; }, Word},
    FieldRow{"lna_att", [](Band& b, E) -> Integer& { return b.lna_att; }, Word},
    FieldRow{"lna_switch_thr_low", [](Band& b, E) -> Integer& { return b.lna_switch_thr_low; }, Word},
    FieldRow{"lna_switch_thr_high", [](Band& b, E) -> Integer& { return b.lna_switch_thr_high; }, Word},
};
constexpr std::array kAgcBands{
    FieldRow{"agc_bands({i}).upper_bound", [](Band& b, E e) -> Integer& { return b.agc_bands[e.i].upper_bound; },
             Word},
    FieldRow{"agc_bands({i}).agc_calib", [](Band& b, E e) -> Integer& { return b.agc_bands[e.i].agc_calib; }, LowByte,
             1},
};
constexpr std::array kRxTemperatures{
    FieldRow{"rx.Temp({i}).temperature", [](Band& b, E e) -> Integer& { return b.rx.Temp[e.i].temperature; }, Word},
    FieldRow{"rx.Temp({i}).agc_calib", [](Band& b, E e) -> Integer& { return b.rx.Temp[e.i].agc_calib; }, Word},
};
// The level stands in the second bracket; the 0 in the first is part of the label for every level.
constexpr std::array kTxLevels{
    FieldRow{"tx_Level(0).apc ({i})", [](Band& b, E e) -> Integer& { return b.tx_Level[e.i].apc; }, Word},
    FieldRow{"tx_Level(0).ramp_index({i})", [](Band& b, E e) -> Integer& { return b.tx_Level[e.i].ramp_index; },
             Byte},
    FieldRow{"tx_Level(0).chan_cal_index({i})",
             [](Band& b, E e) -> Integer& { return b.tx_Level[e.i].chan_cal_index; }, Byte},
};
constexpr auto kSegment = [](Band& b, E e) -> RFParameter::ChannelSegment& {
  return b.chan_cal(static_cast<int>(e.i), static_cast<int>(e.k));
};
constexpr std::array kChannelSegments{
    FieldRow{"chan_cal({i}).arfcn_limit ({k})", [](Band& b, E e) -> Integer& { return kSegment(b, e).arfcn_limit; },
             Word},
    FieldRow{"chan_cal({i}).chan_cal({k})", [](Band& b, E e) -> Integer& { return kSegment(b, e).chan_cal; }, Word},
};
constexpr std::array kRampTables{
    FieldRow{"ramp_tables({i}).ramp_up({k})",
             [](Band& b, E e) -> Integer& { return b.ramp_tables[e.i].ramp_up[e.k]; }, Byte, 0, 16},
    FieldRow{"ramp_tables({i}).ramp_down({k})",
             [](Band& b, E e) -> Integer& { return b.ramp_tables[e.i].ramp_down[e.k]; }, Byte, 0, 16},
};
constexpr std::array kTxTemperatures{
    FieldRow{"tx.Temp({i}).temperature", [](Band& b, E e) -> Integer& { return b.tx.Temp[e.i].temperature; }, Word},
    FieldRow{"tx.Temp({i}).apc_calib", [](Band& b, E e) -> Integer& { return b.tx.Temp[e.i].apc_calib; }, Word},
};
constexpr std::array kSwapIq{
    FieldRow{"swap_iq", [](Band& b, E) -> Integer& { return b.swap_iq; }, Byte, 3},
};
constexpr std::array kHighTemperatures{
    FieldRow{"HighTemp({i}).temperature", [](Band& b, E e) -> Integer& { return b.HighTemp[e.i].temperature; }, Word},
    FieldRow{"HighTemp({i}).apc_calib", [](Band& b, E e) -> Integer& { return b.HighTemp[e.i].apc_calib; }, Word},
};
constexpr std::array kBandEnd{
    FieldRow{"tx_High_Power_Volt_Cal", [](Band& b, E) -> Integer& { return b.tx_High_Power_Volt_Cal; }, Word, 2},
};

constexpr std::array kHeadGroups{
    Group{kHeadBegin}, Group{kIl2agcPwr, 121}, Group{kIl2agcMax, 121}, Group{kIl2agcAv, 121}, Group{kHeadEnd},
};
constexpr std::array kBandGroups{
    Group{kBandBegin},
    Group{kAgcBands, 10},
    Group{kRxTemperatures, 11},
    Group{kTxLevels, 32},
    Group{kChannelSegments, 4, 8},
    Group{kRampTables, 16},
    Group{kTxTemperatures, 5},
    Group{kSwapIq},
    Group{kHighTemperatures, 5},
    Group{kBandEnd},
};

constexpr int SizeOf(const FieldRow& row) {
  const int size = row.form == None ? 0 : row.form == Word ? 2 : 1;
  return size + row.zeros;
}

/// Lays the slots out one behind the other, in the text form and in the image.
struct Layout {
  std::array<ParameterSlot, kParameterCount> slots{};
  std::size_t count = 0;
  int bytes = 0;

  constexpr void Add(std::span<const Group> groups, std::size_t n) {
    for (const Group& group : groups) {
      for (std::size_t i = 0; i < group.outer; ++i) {
        for (std::size_t k = 0; k < group.inner; ++k) Add(group.rows, {n, i, k});
      }
    }
  }
  constexpr void Add(std::span<const FieldRow> rows, Element first) {
    for (const FieldRow& row : rows) {
      for (std::size_t k = 0; k < row.run; ++k) {
        slots[count++] = {&row, {first.n, first.i, first.k + k}, bytes};
        bytes += SizeOf(row);
      }
    }
  }
};

constexpr Layout kLayout = [] {
  Layout layout;
  layout.Add(kHeadGroups, 0);
  layout.Add(kBandGroups, 0);
  layout.Add(kBandGroups, 1);
  return layout;
}();

static_assert(kLayout.count == kParameterCount);
static_assert(kLayout.bytes == kImageSize);

void AppendIndex(std::string& out, std::size_t index) {
  std::array<char, 20> digits;
  out.append(digits.data(), std::to_chars(digits.begin(), digits.end(), index).ptr);
}

}  // namespace

std::span<const ParameterSlot> ParameterSlots() { return kLayout.slots; }

void AppendLabel(std::string& out, const ParameterSlot& slot) {
  if (slot.InBand()) out.append("BAND(").append(1, static_cast<char>('0' + slot.element.n)).append(").");
  std::string_view rest = slot.row->label;
  for (auto at = rest.find('{'); at != std::string_view::npos; at = rest.find('{')) {
    out.append(rest.substr(0, at));
    AppendIndex(out, rest[at + 1] == 'i' ? slot.element.i : slot.element.k);
    rest.remove_prefix(at + 3);
  }
  out.append(rest);
}

}  // namespace orvane
