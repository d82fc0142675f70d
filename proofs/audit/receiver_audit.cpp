#include "audit/receiver_audit.h"

#include <algorithm>
#include <array>
#include <cmath>
#include <map>
#include <set>

namespace orvane::proofs {
namespace {

constexpr double kGeneratorDbm = -74;
constexpr double kAgc = 40;
constexpr double kReadingNoiseDb = 0.05;
constexpr int kLeastGain = 171;
constexpr int kMostGain = 191;
constexpr int kMostCompensation = 5;

/// The levels, in tenths of a dB, that the readings of a channel can come to.
using Levels = std::set<int>;

int Nearest(double value) { return static_cast<int>(std::nearbyint(value)); }

std::set<double> ReadingsOf(const Subject& subject, const bench::UnitTraits& unit, int channel, double offset) {
  const double gain = bench::ReceiveGainDb(unit, channel, bench::DownlinkMHz(channel) + offset);
  const double middle = kGeneratorDbm + gain + subject.defects.receiverDb + kAgc;
  std::set<double> readings;
  const auto last = std::lround((middle + kReadingNoiseDb) * 64);
  for (auto report = std::lround((middle - kReadingNoiseDb) * 64); report <= last; ++report) {
    readings.insert(subject.defects.receiverDead ? 0 : TenthsRead(static_cast<int>(report)));
  }
  return readings;
}

Levels LevelsOf(const Subject& subject, const bench::UnitTraits& unit, int channel) {
  Levels levels;
  const auto first = ReadingsOf(subject, unit, channel, subject.offsetsMHz.front());
  if (subject.offsetsMHz.size() == 1) {
    for (const double reading : first) levels.insert(Nearest(reading));
    return levels;
  }
  const auto second = ReadingsOf(subject, unit, channel, subject.offsetsMHz.back());
  for (const double one : first) {
    for (const double other : second) levels.insert(Nearest((Nearest(one) + other) / 2));
  }
  return levels;
}

/// A row of a compensation table: a channel, and the measured channels around it when it is not one itself.
struct Row {
  int channel;
  int below;
  int above;
};

constexpr std::array<Row, 7> kGsmRows{
    {{0, 0, 0}, {21, 0, 40}, {40, 40, 40}, {62, 40, 124}, {83, 40, 124}, {103, 40, 124}, {124, 124, 124}}};
constexpr std::array<Row, 7> kDcsRows{{{512, 512, 512},
                                       {574, 574, 574},
                                       {636, 636, 636},
                                       {700, 700, 700},
                                       {760, 760, 760},
                                       {822, 822, 822},
                                       {885, 885, 885}}};
constexpr std::array<Row, 3> kExtendedRows{{{975, 975, 975}, {999, 975, 1023}, {1023, 1023, 1023}}};
constexpr int kGsmReference = 40;
constexpr int kDcsReference = 700;

class ReceiverAudit {
 public:
  ReceiverAudit(const Subject& subject, const Image& image, std::vector<std::string>& objections)
      : subject_(subject), image_(image), objections_(objections), unit_(bench::UnitOf(subject.seed)) {}

  void Run() {
    Gain(0, kGsmReference);
    Gain(1, kDcsReference);
    for (std::size_t k = 0; k < kGsmRows.size(); ++k) Compensation(0, k, kGsmRows[k], kGsmReference);
    for (std::size_t k = 0; k < kDcsRows.size(); ++k) Compensation(1, k, kDcsRows[k], kDcsReference);
    for (std::size_t k = 0; k < kExtendedRows.size(); ++k) {
      Compensation(0, kGsmRows.size() + k, kExtendedRows[k], kGsmReference);
      Compensation(1, kDcsRows.size() + k, kExtendedRows[k], kGsmReference);
    }
  }

 private:
  const Levels& At(int channel) {
    const auto [place, isNew] = levels_.try_emplace(channel);
    if (isNew) place->second = LevelsOf(subject_, unit_, channel);
    return place->second;
  }

  void Gain(std::size_t band, int reference) {
    const int kept = WordAt(image_, PlaceOf(band, "g_magic"));
    bool possible = false;
    for (const int level : At(reference)) {
      possible = possible || kept == 2 * Nearest(level / 10.0 - kAgc - kGeneratorDbm);
    }
    if (!possible || kept < kLeastGain || kept > kMostGain) {
      objections_.push_back("The gain constant of band " + std::to_string(band) + " is " + std::to_string(kept) +
                            ", which no reading of this receiver gives.");
    }
  }

  void Compensation(std::size_t band, std::size_t k, const Row& row, int reference) {
    const std::string name = "agc_bands(" + std::to_string(k) + ").";
    const std::size_t place = PlaceOf(band, name + "agc_calib");
    const int channel = WordAt(image_, PlaceOf(band, name + "upper_bound"));
    const int kept = SignedByteAt(image_, place);
    const std::string where = "Band " + std::to_string(band) + ", row " + std::to_string(k);
    if (channel != row.channel) {
      objections_.push_back(where + " ends at channel " + std::to_string(channel) + ", not at " +
                            std::to_string(row.channel) + ".");
    }
    if (image_[place + 1] != 0 || !Possible(row, reference, kept)) {
      objections_.push_back(where + ": the compensation " + std::to_string(kept) + " of channel " +
                            std::to_string(row.channel) + " follows from no reading of this receiver.");
    }
  }

  bool Possible(const Row& row, int reference, int kept) {
    if (row.channel == reference) return kept == 0;
    for (const int own : At(reference)) {
      for (const int below : At(row.below)) {
        if (row.below == reference && below != own) continue;
        if (row.below == row.above) {
          if (kept == Nearest(2 * (own - below) / 10.0)) return true;
          continue;
        }
        for (const int above : At(row.above)) {
          if (row.above == reference && above != own) continue;
          if (Walked(row, own, below, above, kept)) return true;
        }
      }
    }
    return false;
  }

  /// Between two measured channels each row is rounded to a tenth on the way, at most three of them.
  static bool Walked(const Row& row, int own, int below, int above, int kept) {
    constexpr double kRoundings = 1.5;
    const double slope = static_cast<double>(above - below) / (row.above - row.below);
    const double level = below + slope * (row.channel - row.below);
    return Nearest(2 * (own - level - kRoundings) / 10) <= kept &&
           kept <= Nearest(2 * (own - level + kRoundings) / 10);
  }

  const Subject& subject_;
  const Image& image_;
  std::vector<std::string>& objections_;
  bench::UnitTraits unit_;
  std::map<int, Levels> levels_;
};

bool RowMayBeOutOfRange(const Levels& reference, const Levels& row) {
  // The ends of what is possible are enough.
  const auto most = std::max(*reference.rbegin() - *row.begin(), *row.rbegin() - *reference.begin());
  return Nearest(2 * most / 10.0) > kMostCompensation;
}

}  // namespace

bool CompensationMayBeOutOfRange(const Subject& subject) {
  const bench::UnitTraits unit = bench::UnitOf(subject.seed);
  const Levels gsm = LevelsOf(subject, unit, kGsmReference);
  const Levels dcs = LevelsOf(subject, unit, kDcsReference);
  const auto beyond = [&](const Row& row, const Levels& reference) {
    return row.below == row.above && RowMayBeOutOfRange(reference, LevelsOf(subject, unit, row.channel));
  };
  const auto gsmRow = [&](const Row& row) { return beyond(row, gsm); };
  return std::any_of(kGsmRows.begin(), kGsmRows.end(), gsmRow) ||
         std::any_of(kExtendedRows.begin(), kExtendedRows.end(), gsmRow) ||
         std::any_of(kDcsRows.begin(), kDcsRows.end(), [&](const Row& row) { return beyond(row, dcs); });
}

double TenthsRead(int report) {
  // The weights of six fraction bits as a fixed-point number of four decimals keeps them.
  constexpr std::array kWeights{0.5, 0.25, 0.125, 0.0625, 0.0312, 0.0156};
  double fraction = 0;
  for (std::size_t bit = 0; bit < kWeights.size(); ++bit) {
    if ((report >> (5 - bit) & 1) != 0) fraction += kWeights[bit];
  }
  const int hundredths = Nearest(fraction * 100);
  return 10.0 * (report >> 6) + hundredths / (hundredths < 10 ? 1.0 : 10.0);
}

void AuditReceiver(const Subject& subject, const Image& image, std::vector<std::string>& objections) {
  ReceiverAudit(subject, image, objections).Run();
}

}  // namespace orvane::proofs
