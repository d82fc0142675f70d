#include "audit/auditor.h"

#include <algorithm>
#include <cmath>
#include <cstdio>

#include "audit/parameter_layout.h"
#include "audit/receiver_audit.h"
#include "audit/transmitter_audit.h"

namespace orvane::proofs {
namespace {

constexpr double kHighVolts = 4.2;
constexpr double kLowVolts = 3.35;

/// Which bytes of the image a run calibrates; all others are what was installed.
std::array<bool, kImageBytes> CalibratedPlaces() {
  std::array<bool, kImageBytes> places{};
  const auto mark = [&](std::size_t band, const std::string& label, std::size_t bytes) {
    for (std::size_t i = 0; i < bytes; ++i) places[PlaceOf(band, label) + i] = true;
  };
  for (std::size_t band = 0; band < 2; ++band) {
    mark(band, "g_magic", 2);
    for (std::size_t k = 0; k < 10; ++k) mark(band, "agc_bands(" + std::to_string(k) + ").upper_bound", 4);
    const std::size_t first = band == 0 ? 5 : 0;
    const std::size_t last = band == 0 ? 19 : 15;
    for (std::size_t level = first; level <= last; ++level) {
      mark(band, "tx_Level(0).apc (" + std::to_string(level) + ")", 2);
    }
    for (const char* table : {"chan_cal(2).arfcn_limit (0)", "chan_cal(3).arfcn_limit (0)"}) mark(band, table, 32);
  }
  return places;
}

std::string Hexadecimal(std::size_t value) {
  std::array<char, 16> text{};
  const int length = std::snprintf(text.data(), text.size(), "0x%zX", value);
  return {text.data(), static_cast<std::size_t>(length)};
}

void AuditInstalledBytes(const Image& image, const Image& installed, std::vector<std::string>& objections) {
  static const std::array<bool, kImageBytes> calibrated = CalibratedPlaces();
  std::size_t wrong = 0;
  std::size_t first = 0;
  for (std::size_t i = 0; i < image.size(); ++i) {
    if (calibrated[i] || image[i] == installed[i]) continue;
    if (wrong++ == 0) first = i;
  }
  if (wrong == 0) return;
  objections.push_back(std::to_string(wrong) +
                       " bytes that no run calibrates are not those installed, the first at " + Hexadecimal(first) +
                       ": " + Hexadecimal(image[first]) + ", not " + Hexadecimal(installed[first]) + ".");
}

void AuditFlash(const Subject& subject, std::vector<std::string>& objections) {
  constexpr double kNoiseCounts = 1.5;
  const bench::UnitTraits unit = bench::UnitOf(subject.seed);
  const auto& table = subject.kept.FlashTable();
  const auto check = [&](std::size_t word, double volts, int least, int most) {
    const double counts = bench::BatteryCounts(unit, volts) + subject.defects.adcCounts;
    const int kept = table[word];
    if (std::abs(kept - counts) <= kNoiseCounts && kept >= least && kept <= most) return;
    objections.push_back("Flash table 100 holds " + std::to_string(kept) + " as word " + std::to_string(word) +
                         "; this unit counts " + std::to_string(std::lround(counts)) + " there.");
  };
  check(0, kHighVolts, 619, 631);
  check(4, kLowVolts, 489, 503);
  if (table[1] != 0 || table[2] != 0 || table[3] != 0) {
    objections.emplace_back("Flash table 100 holds something in its spare words.");
  }
}

/// What the unit keeps without power.
Image CommittedImage(bench::Memory memory) {
  memory.Restart();
  Image image{};
  std::copy(memory.Eeprom().begin(), memory.Eeprom().end(), image.begin());
  return image;
}

void AuditFile(const std::vector<std::string>& values, const std::vector<std::string>& installed,
               std::vector<std::string>& objections) {
  for (std::size_t i = 0; i < kHeadValues; ++i) {
    if (values[i] == installed[i]) continue;
    objections.push_back("The saved file says " + values[i] + " for " + FileLabels()[i] + ", not " + installed[i] +
                         ".");
    return;
  }
}

void AuditImage(const Subject& subject, const Image& image, const Image& installed,
                std::vector<std::string>& objections) {
  AuditInstalledBytes(image, installed, objections);
  AuditReceiver(subject, image, objections);
  AuditTransmitter(subject, image, objections);
}

}  // namespace

std::vector<std::string> Audit(const Subject& subject) {
  std::vector<std::string> objections;
  std::string why;
  const auto installedValues = ValuesOfFile(subject.parameters, why);
  if (!installedValues) return {"The installed parameters cannot be read: " + why + "."};
  Image installed = ImageOf(*installedValues);
  if (!PutRamps(subject.ramps, installed)) return {"The installed ramp tables cannot be read."};

  const Image kept = CommittedImage(subject.kept);
  if (subject.toEeprom) AuditImage(subject, kept, installed, objections);
  if (subject.file) {
    if (const auto values = ValuesOfFile(*subject.file, why)) {
      const Image filed = ImageOf(*values);
      AuditFile(*values, *installedValues, objections);
      if (!subject.toEeprom) AuditImage(subject, filed, installed, objections);
      if (subject.toEeprom && filed != kept) {
        objections.emplace_back("The saved file and the unit's memory are not the same.");
      }
    } else {
      objections.push_back("The saved file cannot be read: " + why + ".");
    }
  }
  AuditFlash(subject, objections);
  return objections;
}

}  // namespace orvane::proofs
