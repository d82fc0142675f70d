#pragma once

#include <array>

#include "base/numbers.h"

namespace orvane {

/// The calibration data of one Target, as raw numbers for its firmware. Every array has one spare element behind
/// what is used; it is never read or written and stays zero.
struct RFParameter {
  struct AgcBand {
    Integer upper_bound = 0;
    Integer agc_calib = 0;
  };
  struct RxTemperature {
    Integer temperature = 0;
    Integer agc_calib = 0;
  };
  struct TxLevel {
    Integer apc = 0;
    Integer ramp_index = 0;
    Integer chan_cal_index = 0;
  };
  struct ChannelSegment {
    Integer arfcn_limit = 0;
    Integer chan_cal = 0;
  };
  struct Ramp {
    std::array<Integer, 17> ramp_up{};
    std::array<Integer, 17> ramp_down{};
  };
  struct TxTemperature {
    Integer temperature = 0;
    Integer apc_calib = 0;
  };

  /// All that reaches the EEPROM of one band.
  struct Band {
    Integer g_magic = 0;
    Integer lna_att = 0;
    Integer lna_switch_thr_low = 0;
    Integer lna_switch_thr_high = 0;
    std::array<AgcBand, 11> agc_bands{};
    struct {
      std::array<RxTemperature, 12> Temp{};
    } rx;
    std::array<TxLevel, 33> tx_Level{};
    /// Element b * 5 + a holds table a, segment b.
    std::array<ChannelSegment, 45> chan_cal_elements{};
    std::array<Ramp, 17> ramp_tables{};
    struct {
      std::array<TxTemperature, 6> Temp{};
    } tx;
    Integer swap_iq = 0;
    std::array<TxTemperature, 6> HighTemp{};
    Integer tx_High_Power_Volt_Cal = 0;

    [[nodiscard]] ChannelSegment& chan_cal(int a, int b) { return chan_cal_elements.at(ElementOf(a, b)); }
    [[nodiscard]] const ChannelSegment& chan_cal(int a, int b) const { return chan_cal_elements.at(ElementOf(a, b)); }

   private:
    static std::size_t ElementOf(int a, int b) {
      return static_cast<std::size_t>(b) * 5 + static_cast<std::size_t>(a);
    }
  };

  Integer rf_revision = 0;
  /// Set to 32 each time a file is converted into the record; nothing reads it.
  Integer rf_reserved_word = 0;
  Integer low_agc_noise_thr = 0;
  Integer high_agc_sat_thr = 0;
  Integer low_agc = 0;
  Integer high_agc = 0;
  std::array<Integer, 122> il2agc_pwr{};
  std::array<Integer, 122> il2agc_max{};
  std::array<Integer, 122> il2agc_av{};
  struct {
    Integer up = 0;
    Integer down = 0;
  } ramp_delay;
  Integer guard_bits = 0;
  Integer prg_tx = 0;
  Integer EEPROM_AFC = 0;
  Long psi_sta_inv = 0;
  Long psi_st = 0;
  Long psi_st_32 = 0;
  Long psi_st_inv = 0;
  /// 0 is the first band ("GSM" in the panels), 1 the second ("DCS").
  std::array<Band, 2> BAND{};
};

}  // namespace orvane
