#include "audit/parameter_layout.h"

#include <charconv>
#include <map>
#include <stdexcept>

namespace orvane::proofs {
namespace {

std::string Numbered(std::string_view before, std::size_t i, std::string_view behind) {
  return std::string(before) + std::to_string(i) + std::string(behind);
}

class Fields {
 public:
  Fields() {
    Words({"g_magic", "lna_att", "lna_switch_thr_low", "lna_switch_thr_high"}, 0);
    for (std::size_t i = 0; i < 10; ++i) {
      Add(Numbered("agc_bands(", i, ").upper_bound"), 8 + 4 * i, 2);
      Add(Numbered("agc_bands(", i, ").agc_calib"), 10 + 4 * i, 1);
    }
    Pairs("rx.Temp(", ").temperature", ").agc_calib", 11, 48);
    for (std::size_t i = 0; i < 32; ++i) {
      Add(Numbered("tx_Level(0).apc (", i, ")"), 92 + 4 * i, 2);
      Add(Numbered("tx_Level(0).ramp_index(", i, ")"), 94 + 4 * i, 1);
      Add(Numbered("tx_Level(0).chan_cal_index(", i, ")"), 95 + 4 * i, 1);
    }
    for (std::size_t a = 0; a < 4; ++a) {
      const std::string table = Numbered("chan_cal(", a, ").");
      Pairs(table + "arfcn_limit (", table + "chan_cal(", 8, 220 + 32 * a);
    }
    for (std::size_t t = 0; t < 16; ++t) {
      const std::string table = Numbered("ramp_tables(", t, ").");
      for (std::size_t k = 0; k < 16; ++k) Add(table + Numbered("ramp_up(", k, ")"), 348 + 32 * t + k, 1);
      for (std::size_t k = 0; k < 16; ++k) Add(table + Numbered("ramp_down(", k, ")"), 364 + 32 * t + k, 1);
    }
    Pairs("tx.Temp(", ").temperature", ").apc_calib", 5, 860);
    Add("swap_iq", 880, 1);
    Pairs("HighTemp(", ").temperature", ").apc_calib", 5, 884);
    Add("tx_High_Power_Volt_Cal", 904, 2);
    for (std::size_t i = 0; i < all.size(); ++i) numbers.emplace(all[i].label, i);
  }

  std::vector<Field> all;
  std::map<std::string, std::size_t, std::less<>> numbers;

 private:
  void Add(std::string label, std::size_t offset, std::size_t bytes) {
    all.push_back({std::move(label), offset, bytes});
  }
  void Words(std::initializer_list<std::string_view> labels, std::size_t offset) {
    for (const std::string_view label : labels) {
      Add(std::string(label), offset, 2);
      offset += 2;
    }
  }
  /// "rx.Temp(i).temperature", "rx.Temp(i).agc_calib"
  void Pairs(std::string_view before, std::string_view first, std::string_view second, std::size_t count,
             std::size_t offset) {
    for (std::size_t i = 0; i < count; ++i) {
      Add(Numbered(before, i, first), offset + 4 * i, 2);
      Add(Numbered(before, i, second), offset + 4 * i + 2, 2);
    }
  }
  /// "chan_cal(a).arfcn_limit (b)", "chan_cal(a).chan_cal(b)"
  void Pairs(const std::string& first, const std::string& second, std::size_t count, std::size_t offset) {
    for (std::size_t i = 0; i < count; ++i) {
      Add(Numbered(first, i, ")"), offset + 4 * i, 2);
      Add(Numbered(second, i, ")"), offset + 4 * i + 2, 2);
    }
  }
};

const Fields& AllFields() {
  static const Fields fields;
  return fields;
}

std::vector<std::string> MakeLabels() {
  std::vector<std::string> labels{"rf_revision", "low_agc_noise_thr", "high_agc_sat_thr", "low_agc", "high_agc"};
  for (const char* table : {"il2agc_pwr(", "il2agc_max(", "il2agc_av("}) {
    for (std::size_t i = 0; i < 121; ++i) labels.push_back(Numbered(table, i, ")"));
  }
  for (const char* label : {"ramp_delay.up", "ramp_delay.down", "guard_bits", "prg_tx", "EEPROM_AFC", "psi_sta_inv",
                            "psi_st", "psi_st_32", "psi_st_inv"}) {
    labels.emplace_back(label);
  }
  for (std::size_t band = 0; band < 2; ++band) {
    for (const Field& field : BandFields()) labels.push_back(Numbered("BAND(", band, ").") + field.label);
  }
  return labels;
}

int NumberIn(std::string_view text) {
  int number = 0;
  const auto [end, fault] = std::from_chars(text.data(), text.data() + text.size(), number);
  return fault == std::errc{} && end == text.data() + text.size() ? number : 0;
}

}  // namespace

const std::vector<Field>& BandFields() { return AllFields().all; }

const std::vector<std::string>& FileLabels() {
  static const std::vector<std::string> labels = MakeLabels();
  return labels;
}

std::size_t FieldNumber(std::string_view label) {
  const auto& numbers = AllFields().numbers;
  const auto found = numbers.find(label);
  if (found == numbers.end()) throw std::out_of_range("There is no field " + std::string(label) + ".");
  return found->second;
}

std::size_t PlaceOf(std::size_t band, std::string_view label) {
  return band * kBlockBytes + BandFields()[FieldNumber(label)].offset;
}

int WordAt(const Image& image, std::size_t place) { return image[place] | image[place + 1] << 8; }

int SignedByteAt(const Image& image, std::size_t place) { return static_cast<std::int8_t>(image[place]); }

std::optional<std::vector<std::string>> ValuesOfFile(std::string_view content, std::string& why) {
  std::vector<std::string> values;
  for (const std::string& label : FileLabels()) {
    const std::size_t end = content.find("\r\n");
    const std::string before = label + "\t=\t";
    if (end == std::string_view::npos || !content.starts_with(before)) {
      why = "line " + std::to_string(values.size()) + " is not that of " + label;
      return std::nullopt;
    }
    values.emplace_back(content.substr(before.size(), end - before.size()));
    content.remove_prefix(end + 2);
  }
  return values;
}

Image ImageOf(std::span<const std::string> values) {
  Image image{};
  for (std::size_t band = 0; band < 2; ++band) {
    for (std::size_t i = 0; i < kBandValues; ++i) {
      const Field& field = BandFields()[i];
      const auto word = static_cast<unsigned>(NumberIn(values[kHeadValues + band * kBandValues + i]));
      const std::size_t place = band * kBlockBytes + field.offset;
      image[place] = static_cast<std::uint8_t>(word & 0xFFU);
      if (field.bytes == 2) image[place + 1] = static_cast<std::uint8_t>(word >> 8U & 0xFFU);
    }
  }
  return image;
}

bool PutRamps(std::string_view content, Image& image) {
  constexpr std::size_t kRecord = 128;
  constexpr std::size_t kTables = 31;
  constexpr std::size_t kTablesOfFirstBand = 15;
  constexpr std::size_t kValues = 32;
  constexpr std::size_t kTableBytes = 32;
  if (content.size() < kRecord * kTables * kValues) return false;
  for (std::size_t t = 0; t < kTables; ++t) {
    const bool second = t >= kTablesOfFirstBand;
    const std::size_t table = (second ? kBlockBytes : 0) + 348 + kTableBytes * (second ? t - kTablesOfFirstBand : t);
    for (std::size_t k = 0; k < kValues; ++k) {
      const std::string_view record = content.substr(kRecord * (kValues * t + k), kRecord);
      const auto length = static_cast<std::size_t>(static_cast<unsigned char>(record[0]));
      if (record[1] != 0 || length + 2 > kRecord) return false;
      image[table + k] = static_cast<std::uint8_t>(NumberIn(record.substr(2, length)) & 0xFF);
    }
  }
  return true;
}

}  // namespace orvane::proofs
