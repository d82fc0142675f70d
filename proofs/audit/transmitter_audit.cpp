#include "audit/transmitter_audit.h"

#include <algorithm>
#include <array>
#include <cmath>
#include <cstdio>

namespace orvane::proofs {
namespace {

struct LevelOf {
  int level;
  double targetDbm;
};

struct Segments {
  int limit;
  int code;  ///< which of the four codes; -1: neutral
};

struct BandOf {
  std::string_view name;
  int channel;
  int levelWord;  ///< what is added to a level
  std::vector<LevelOf> levels;
  double lastThreshold;
  int strongest;
  std::array<int, 3> channels;
  std::array<Segments, 8> segments;
};

const std::array<BandOf, 2>& Bands() {
  static const std::array<BandOf, 2> bands{
      {{"GSM",
        62,
        0,
        {{5, 32},
         {6, 31},
         {7, 29},
         {8, 27},
         {9, 25},
         {10, 23},
         {11, 21},
         {12, 19},
         {13, 17},
         {14, 15},
         {15, 13},
         {16, 11},
         {17, 9},
         {18, 8},
         {19, 7}},
        31,
        5,
        {5, 124, 975},
        {{{10, 0}, {114, -1}, {124, 1}, {980, 2}, {1023, -1}, {1023, -1}, {1023, -1}, {1023, -1}}}},
       {"DCS",
        699,
        100,
        {{0, 29},
         {1, 28},
         {2, 26},
         {3, 24},
         {4, 22},
         {5, 20},
         {6, 18},
         {7, 16},
         {8, 14},
         {9, 12},
         {10, 10},
         {11, 8},
         {12, 6},
         {13, 5},
         {14, 4},
         {15, 3}},
        28,
        0,
        {512, 781, 885},
        {{{520, 0}, {770, -1}, {790, 1}, {821, 3}, {885, 2}, {886, -1}, {990, -1}, {1023, -1}}}}}};
  return bands;
}

constexpr int kNeutral = 128;
/// Noise of a reading of few bursts, and the last place of its text.
constexpr double kNoiseDb = 0.0095;

int CodeOf(int difference, bool both) {
  const int size = std::abs(difference);
  const int steps = size < 10 ? 0 : size < 19 ? 1 : size < 29 ? 2 : size < 39 ? 3 : 4;
  return kNeutral + (both && difference < 0 ? -steps : steps);
}

std::string Decibels(double value) {
  std::array<char, 32> text{};
  const int length = std::snprintf(text.data(), text.size(), "%.3f", value);
  return {text.data(), static_cast<std::size_t>(length)};
}

/// The unit on a stand of the auditor's own, with the memory that it has now.
class OnStand {
 public:
  explicit OnStand(const Subject& subject, const bench::Memory& memory) : handset_(fixture_, memory, subject.seed) {
    handset_.SetDefects(subject.defects);
  }

  /// What it radiates at a level on a channel, if it does.
  std::optional<bench::Burst> Radiated(int channel, int levelWord) {
    Say(bench::Op::kRfWrite, {2, 0, Low(channel), High(channel)});
    Say(bench::Op::kRfWrite, {1, 0, Low(channel), High(channel)});
    Say(bench::Op::kTxWrite, {1, 0, Low(levelWord), High(levelWord)});
    Say(bench::Op::kRfEnable, {2, 0});
    const std::optional<bench::Burst> burst = fixture_.uplink;
    Say(bench::Op::kRfEnable, {0, 0});
    return burst;
  }

 private:
  static std::uint8_t Low(int word) { return static_cast<std::uint8_t>(word & 0xFF); }
  static std::uint8_t High(int word) { return static_cast<std::uint8_t>(word >> 8); }
  void Say(bench::Op operation, bench::Bytes data) {
    (void)handset_.Answer({static_cast<std::uint8_t>(operation), std::move(data)});
  }

  bench::Fixture fixture_;
  bench::Handset handset_;
};

class TransmitterAudit {
 public:
  TransmitterAudit(const Subject& subject, const Image& image, std::vector<std::string>& objections)
      : subject_(subject), image_(image), objections_(objections), unit_(bench::UnitOf(subject.seed)) {}

  void Run() {
    bench::Memory memory;
    memory.Write(0, image_);
    memory.Commit();
    OnStand stand(subject_, memory);
    for (std::size_t b = 0; b < Bands().size(); ++b) {
      const BandOf& band = Bands()[b];
      for (const LevelOf& level : band.levels) Level(band, level, stand);
      Codes(band, b);
    }
    Modulation(stand);
  }

 private:
  double ToleranceAt(const BandOf& band, double dbm) const {
    if (subject_.toleranceSetting >= 0.2) return subject_.toleranceSetting;
    return dbm <= 8 ? 0.2 : dbm <= 14 ? 0.15 : dbm <= band.lastThreshold ? 0.1 : 0.05;
  }

  /// It was measured while it was somewhere between cold and warm; here it is cold.
  bool OnTarget(const BandOf& band, double coldDbm, double target) const {
    const double tolerance = ToleranceAt(band, target) + kNoiseDb;
    return coldDbm + kCold >= target - tolerance && coldDbm - unit_.paDriftDb <= target + tolerance;
  }

  void Level(const BandOf& band, const LevelOf& level, OnStand& stand) {
    const auto burst = stand.Radiated(band.channel, band.levelWord + level.level);
    if (burst && OnTarget(band, burst->powerDbm, level.targetDbm)) return;
    objections_.push_back(std::string(band.name) + " level " + std::to_string(level.level) + " radiates " +
                          (burst ? Decibels(burst->powerDbm) + " dBm" : "nothing") + ", not " +
                          Decibels(level.targetDbm) + " dBm.");
  }

  void Codes(const BandOf& band, std::size_t b) {
    const auto text = [](int a, const char* field, std::size_t s) {
      return "chan_cal(" + std::to_string(a) + ")." + field + std::to_string(s) + ")";
    };
    std::array<int, 4> codes{};
    for (std::size_t s = 0; s < band.segments.size(); ++s) {
      const Segments& segment = band.segments[s];
      const int code = WordAt(image_, PlaceOf(b, text(3, "chan_cal(", s)));
      if (segment.code >= 0) codes[static_cast<std::size_t>(segment.code)] = code;
      const bool limits = WordAt(image_, PlaceOf(b, text(2, "arfcn_limit (", s))) == segment.limit &&
                          WordAt(image_, PlaceOf(b, text(3, "arfcn_limit (", s))) == segment.limit;
      // The DCS run sets the unused table of both bands to the neutral code.
      const bool neutral = WordAt(image_, PlaceOf(b, text(2, "chan_cal(", s))) == kNeutral;
      if (!limits || !neutral || (segment.code < 0 && code != kNeutral)) {
        objections_.push_back(std::string(band.name) + " channel segment " + std::to_string(s) +
                              " is not what it has to be.");
      }
    }
    for (std::size_t i = 0; i < band.channels.size(); ++i) Code(band, b, band.channels[i], codes[i]);
    const int between = codes[1] != kNeutral && codes[2] != kNeutral ? codes[1] : kNeutral;
    if (b == 1 && codes[3] != between) {
      objections_.push_back("DCS: code " + std::to_string(codes[3]) + " stands between channels of code " +
                            std::to_string(codes[1]) + " and " + std::to_string(codes[2]) + ".");
    }
  }

  /// Whether some DAC value that brings the strongest level to its target on that channel has this code.
  void Code(const BandOf& band, std::size_t b, int channel, int code) {
    const int reference = WordAt(image_, PlaceOf(b, "tx_Level(0).apc (" + std::to_string(band.strongest) + ")"));
    const double target = band.levels.front().targetDbm;
    constexpr int kLastDac = 1023;
    for (int dac = 0; dac <= kLastDac; ++dac) {
      // Only what a code tells apart is looked at closely.
      if (CodeOf(dac - reference, b == 1) != code) continue;
      if (OnTarget(band, ColdPower(channel, dac), target)) return;
    }
    objections_.push_back(std::string(band.name) + " channel " + std::to_string(channel) + ": code " +
                          std::to_string(code) + " belongs to no DAC value that reaches the target there.");
  }

  double ColdPower(int channel, int dac) const {
    const double power = bench::TransmitPowerDbm(unit_, channel, dac, 0);
    if (subject_.defects.paMissingDb <= 0) return power;
    return std::min(power, bench::TransmitPowerDbm(unit_, channel, 1023, 0) - subject_.defects.paMissingDb);
  }

  void Modulation(OnStand& stand) {
    constexpr double kRmsLimit = 5.1;
    constexpr double kPeakLimit = 20.3;
    for (const BandOf& band : Bands()) {
      const auto burst = stand.Radiated(band.channel, band.levelWord + band.strongest);
      if (burst && burst->rmsPhaseDeg <= kRmsLimit && burst->peakPhaseDeg <= kPeakLimit) continue;
      objections_.push_back(std::string(band.name) + ": the phase error is beyond its limits.");
    }
  }

  /// On the stand it warms up by a few commands, of the two hundred that make it warm.
  static constexpr double kCold = 0.03;

  const Subject& subject_;
  const Image& image_;
  std::vector<std::string>& objections_;
  bench::UnitTraits unit_;
};

}  // namespace

void AuditTransmitter(const Subject& subject, const Image& image, std::vector<std::string>& objections) {
  TransmitterAudit(subject, image, objections).Run();
}

}  // namespace orvane::proofs
