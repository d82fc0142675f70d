#pragma once

#include <cstdint>
#include <functional>
#include <memory>
#include <optional>
#include <set>
#include <string>

#include "hands.h"
#include "stand.h"
#include "workers.h"

namespace orvane::proofs {

/// How an operator sets the station up for a road.
struct Settings {
  enum class Save { kEeprom, kFile, kBoth };
  Save save = Save::kEeprom;
  int lossTenths = 5;             ///< of the RF cable, in tenths of a dB; the bench has it, the panels state it
  std::string tolerance = "0.1";  ///< the tolerance box
  std::string offset = "Average";
  std::string function = "CW";
  std::string file;  ///< the answer to the file dialog
};

/// One visit to a station: it is started, units go through it one after the other, whole and broken ones, with
/// settings, faults and hands as its seed has it, and it is looked at behind each.
class Visit {
 public:
  /// @param replays whether each run is recorded, run again and held to its record
  explicit Visit(std::uint64_t seed, bool replays = false);
  /// Tells each road as it ends, if it is to be seen.
  std::function<void(const std::string&)> tell;
  [[nodiscard]] Outcome Run();

 private:
  enum class Disturbance { kNone, kFault, kWire, kHands, kFaultAndHands, kStrayHands };

  void Road(Disturbance disturbance);
  void ChooseSettings();
  /// A unit that the station can calibrate with these settings, whatever the noise.
  [[nodiscard]] std::uint64_t GoodSeed();
  void SetUp();
  void Disturb(Disturbance disturbance, bench::BenchOptions& unit);
  void Judge(Disturbance disturbance);
  void JudgePass(Disturbance disturbance);
  void RunAgainWhatWasKept();
  [[nodiscard]] Subject ToAudit();
  void Find(const std::string& what);
  void StartStation();
  void LookAtMemory();

  std::uint64_t seed_;
  bool replays_;
  Chance chance_;
  int roads_;
  int road_ = 0;
  std::unique_ptr<Stand> stand_;
  std::unique_ptr<Hands> hands_;
  Settings settings_;
  std::string what_;
  std::set<const ListBox*> tooLong_;
  bool defectFromTheStart_ = false;
  int strays_ = 0;  ///< acts that wait for the run to begin
  bool renew_ = false;
  int roadsOfStation_ = 0;
  std::size_t memoryBefore_ = 0;
  Outcome outcome_;
};

}  // namespace orvane::proofs
