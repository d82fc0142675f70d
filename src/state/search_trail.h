#pragma once

#include <array>
#include <cstddef>
#include <optional>
#include <string>
#include <vector>

#include "base/decimal4.h"
#include "base/numbers.h"
#include "platform/signal.h"

namespace orvane {

/// What a power search is for.
struct SearchSubject {
  enum class Kind { Level, Channel };
  /// Element of `RFParams.BAND`.
  std::size_t band = 0;
  Kind kind = Kind::Level;
  /// The power level, or the ARFCN.
  int number = 0;
  /// In words: "GSM level 5".
  std::string name;
};

/// "tx.gsm.level.5", "tx.dcs.channel.885": in the names of readings.
[[nodiscard]] std::string ReadingNameOf(const SearchSubject& subject);

/// One pass: what was measured at which DAC value, in dBm, and the tolerance in dB that the next look at it takes.
struct SearchPass {
  Integer dac = 0;
  Decimal4 power;
  Decimal4 tolerance;
};

/// A search from its beginning on.
struct SearchStory {
  SearchSubject subject;
  Decimal4 target;
  /// Ahead of the first pass.
  Decimal4 tolerance;
  std::vector<SearchPass> passes{};
};

/// What a search ended with. A value that was accepted at a DAC limit or after many near passes is not on target.
struct FoundValue {
  SearchSubject subject;
  Decimal4 target;
  Integer dac = 0;
  Decimal4 power;
  bool onTarget = false;
};

/// The power searches as they go, for whoever wants to show them: the one under way or the last one pass by pass, of
/// the earlier ones what they found. The searches tell it and never ask it.
class SearchTrail {
 public:
  /// A run begins that searches both bands anew: nothing of the unit before is left.
  void Forget();
  /// A band run comes to its first level: what was found in the band before is forgotten.
  void BeginBand(std::size_t band);
  void Begin(const SearchSubject& subject, Decimal4 target, Decimal4 tolerance);
  void Pass(const SearchPass& pass);
  /// The search under way has its value. Without this it ends without one.
  void Accept(Integer dac, Decimal4 power, bool onTarget);
  void End();

  [[nodiscard]] bool UnderWay() const { return underWay_; }
  [[nodiscard]] const std::optional<SearchStory>& Last() const { return last_; }
  /// Levels and channels of a band, in the order of searching.
  [[nodiscard]] const std::vector<FoundValue>& Found(std::size_t band) const { return found_.at(band); }

  Signal<> forgotten;
  Signal<std::size_t> bandBegan;
  Signal<const SearchStory&> began;
  Signal<const SearchPass&> passed;
  /// Also for a search that was stopped or failed: then nothing more was found.
  Signal<const SearchStory&> ended;

 private:
  std::optional<SearchStory> last_;
  bool underWay_ = false;
  std::array<std::vector<FoundValue>, 2> found_;
};

/// A search under way, for as long as it is on the stack, however it ends.
class TrailedSearch {
 public:
  TrailedSearch(SearchTrail& trail, const SearchSubject& subject, Decimal4 target, Decimal4 tolerance)
      : trail_(trail) {
    trail_.Begin(subject, target, tolerance);
  }
  TrailedSearch(const TrailedSearch&) = delete;
  TrailedSearch& operator=(const TrailedSearch&) = delete;
  ~TrailedSearch() { trail_.End(); }

 private:
  SearchTrail& trail_;
};

}  // namespace orvane
