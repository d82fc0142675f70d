#pragma once

#include <functional>
#include <string>
#include <vector>

#include "state/rf_parameter.h"

namespace orvane::test {

/// One value of the record as the product's tables give it: position in the text form, label, the field itself.
using ValueVisit = std::function<void(int position, const std::string& label, Integer& value)>;

/// Walks a record by the tables of the product, formula by formula; shares nothing with the station's own layout.
/// The four 32-bit values of the head (373..376) are left out.
inline void VisitByPosition(RFParameter& r, const ValueVisit& visit) {
  const auto s = [](int i) { return std::to_string(i); };
  const auto at = [](auto& array, int i) -> auto& { return array[static_cast<std::size_t>(i)]; };
  visit(1, "low_agc_noise_thr", r.low_agc_noise_thr);
  visit(2, "high_agc_sat_thr", r.high_agc_sat_thr);
  visit(3, "low_agc", r.low_agc);
  visit(4, "high_agc", r.high_agc);
  for (int i = 0; i <= 120; ++i) {
    visit(5 + i, "il2agc_pwr(" + s(i) + ")", at(r.il2agc_pwr, i));
    visit(126 + i, "il2agc_max(" + s(i) + ")", at(r.il2agc_max, i));
    visit(247 + i, "il2agc_av(" + s(i) + ")", at(r.il2agc_av, i));
  }
  visit(368, "ramp_delay.up", r.ramp_delay.up);
  visit(369, "ramp_delay.down", r.ramp_delay.down);
  visit(370, "guard_bits", r.guard_bits);
  visit(371, "prg_tx", r.prg_tx);
  visit(372, "EEPROM_AFC", r.EEPROM_AFC);
  for (int n = 0; n <= 1; ++n) {
    auto& band = at(r.BAND, n);
    const auto put = [&](int position, const std::string& label, Integer& value) {
      visit(position + 740 * n, "BAND(" + s(n) + ")." + label, value);
    };
    put(377, "g_magic", band.g_magic);
    put(378, "lna_att", band.lna_att);
    put(379, "lna_switch_thr_low", band.lna_switch_thr_low);
    put(380, "lna_switch_thr_high", band.lna_switch_thr_high);
    for (int i = 0; i <= 9; ++i) {
      put(381 + 2 * i, "agc_bands(" + s(i) + ").upper_bound", at(band.agc_bands, i).upper_bound);
      put(382 + 2 * i, "agc_bands(" + s(i) + ").agc_calib", at(band.agc_bands, i).agc_calib);
    }
    for (int i = 0; i <= 10; ++i) {
      put(401 + 2 * i, "rx.Temp(" + s(i) + ").temperature", at(band.rx.Temp, i).temperature);
      put(402 + 2 * i, "rx.Temp(" + s(i) + ").agc_calib", at(band.rx.Temp, i).agc_calib);
    }
    for (int i = 0; i <= 31; ++i) {
      put(423 + 3 * i, "tx_Level(0).apc (" + s(i) + ")", at(band.tx_Level, i).apc);
      put(424 + 3 * i, "tx_Level(0).ramp_index(" + s(i) + ")", at(band.tx_Level, i).ramp_index);
      put(425 + 3 * i, "tx_Level(0).chan_cal_index(" + s(i) + ")", at(band.tx_Level, i).chan_cal_index);
    }
    for (int a = 0; a <= 3; ++a) {
      for (int b = 0; b <= 7; ++b) {
        put(519 + 16 * a + 2 * b, "chan_cal(" + s(a) + ").arfcn_limit (" + s(b) + ")",
            band.chan_cal(a, b).arfcn_limit);
        put(520 + 16 * a + 2 * b, "chan_cal(" + s(a) + ").chan_cal(" + s(b) + ")", band.chan_cal(a, b).chan_cal);
      }
    }
    for (int t = 0; t <= 15; ++t) {
      for (int k = 0; k <= 15; ++k) {
        auto& table = at(band.ramp_tables, t);
        put(583 + 32 * t + k, "ramp_tables(" + s(t) + ").ramp_up(" + s(k) + ")", at(table.ramp_up, k));
        put(599 + 32 * t + k, "ramp_tables(" + s(t) + ").ramp_down(" + s(k) + ")", at(table.ramp_down, k));
      }
    }
    for (int i = 0; i <= 4; ++i) {
      put(1095 + 2 * i, "tx.Temp(" + s(i) + ").temperature", at(band.tx.Temp, i).temperature);
      put(1096 + 2 * i, "tx.Temp(" + s(i) + ").apc_calib", at(band.tx.Temp, i).apc_calib);
      put(1106 + 2 * i, "HighTemp(" + s(i) + ").temperature", at(band.HighTemp, i).temperature);
      put(1107 + 2 * i, "HighTemp(" + s(i) + ").apc_calib", at(band.HighTemp, i).apc_calib);
    }
    put(1105, "swap_iq", band.swap_iq);
    put(1116, "tx_High_Power_Volt_Cal", band.tx_High_Power_Volt_Cal);
  }
}

/// All spare elements, which no form carries.
inline std::vector<Integer> SpareValues(const RFParameter& r) {
  std::vector<Integer> spare{r.il2agc_pwr[121], r.il2agc_max[121], r.il2agc_av[121]};
  for (const auto& band : r.BAND) {
    spare.insert(spare.end(),
                 {band.agc_bands[10].upper_bound, band.agc_bands[10].agc_calib, band.rx.Temp[11].temperature,
                  band.rx.Temp[11].agc_calib, band.tx_Level[32].apc, band.tx_Level[32].ramp_index,
                  band.tx_Level[32].chan_cal_index, band.tx.Temp[5].temperature, band.tx.Temp[5].apc_calib,
                  band.HighTemp[5].temperature, band.HighTemp[5].apc_calib});
    for (int a = 0; a <= 4; ++a) {
      for (int b = 0; b <= 8; ++b) {
        if (a < 4 && b < 8) continue;
        spare.push_back(band.chan_cal(a, b).arfcn_limit);
        spare.push_back(band.chan_cal(a, b).chan_cal);
      }
    }
    for (std::size_t t = 0; t <= 16; ++t) {
      spare.push_back(band.ramp_tables[t].ramp_up[16]);
      spare.push_back(band.ramp_tables[t].ramp_down[16]);
    }
    for (std::size_t k = 0; k <= 16; ++k) {
      spare.push_back(band.ramp_tables[16].ramp_up[k]);
      spare.push_back(band.ramp_tables[16].ramp_down[k]);
    }
  }
  return spare;
}

}  // namespace orvane::test
