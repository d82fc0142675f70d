#pragma once

#include <optional>
#include <string>
#include <string_view>

#include "bench/faults.h"
#include "bench/scpi.h"
#include "bench/target_line.h"

namespace orvane::bench {

/// Which faults of the table belong to an instrument, and by what they count.
struct InstrumentFaults {
  Counted lines;
  std::optional<Counted> queries;
  std::optional<Counted> readings;
  FaultKind absent;
  FaultKind silent;
};

inline constexpr InstrumentFaults kTestSetFaults{Counted::kTestSetLines, Counted::kTestSetQueries,
                                                 Counted::kTestSetReadings, FaultKind::kTestSetAbsent,
                                                 FaultKind::kTestSetSilent};
inline constexpr InstrumentFaults kSupplyFaults{
    Counted::kSupplyLines, {}, {}, FaultKind::kSupplyAbsent, FaultKind::kSupplySilent};
inline constexpr InstrumentFaults kLoadFaults{
    Counted::kLoadLines, {}, {}, FaultKind::kLoadAbsent, FaultKind::kLoadSilent};

/// An instrument's end of its route, with the faults that sit on it.
class InstrumentLine {
 public:
  InstrumentLine(std::string_view name, const InstrumentFaults& kinds, FaultBoard& faults)
      : name_(name), kinds_(kinds), faults_(faults) {}
  InstrumentLine(const InstrumentLine&) = delete;
  InstrumentLine& operator=(const InstrumentLine&) = delete;
  virtual ~InstrumentLine() = default;

  /// Takes one line without its end.
  /// @return false when the instrument is not there.
  [[nodiscard]] bool Take(std::string_view line);

  /// The reply to the last line, with its line feed; no value when there is none. Taking it empties the output.
  [[nodiscard]] std::optional<std::string> TakeReply();

  /// A device clear: what waits to be read is gone.
  void Clear() { reply_.reset(); }

  /// An answer was thrown away because the next line came before it was read.
  virtual void Report(int number, std::string_view text) = 0;

  /// It is not on its route, even before the first line.
  [[nodiscard]] bool Absent() const { return faults_.Acts(kinds_.absent); }
  [[nodiscard]] std::string_view Name() const { return name_; }
  [[nodiscard]] const LinkCounters& Counters() const { return counters_; }

 protected:
  virtual ScpiAnswer Execute(std::string_view line) = 0;

 private:
  void Spoil(ScpiAnswer& answer) const;

  std::string_view name_;
  InstrumentFaults kinds_;
  FaultBoard& faults_;
  LinkCounters counters_;
  std::optional<std::string> reply_;
};

template <class Instrument>
class LineOf final : public InstrumentLine {
 public:
  LineOf(std::string_view name, const InstrumentFaults& kinds, FaultBoard& faults, Instrument& instrument)
      : InstrumentLine(name, kinds, faults), instrument_(instrument) {}
  void Report(int number, std::string_view text) override { instrument_.Report(number, text); }

 private:
  ScpiAnswer Execute(std::string_view line) override { return instrument_.Execute(line); }
  Instrument& instrument_;
};

}  // namespace orvane::bench
