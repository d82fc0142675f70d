#pragma once

#include <cstdint>
#include <optional>
#include <span>
#include <stdexcept>
#include <string>
#include <string_view>
#include <vector>

namespace orvane::bench {

/// An option of the bench that it cannot follow; the text names the option and what is wrong with it.
class BenchOptionError : public std::invalid_argument {
  using std::invalid_argument::invalid_argument;
};

enum class FaultKind {
  kSilent,
  kStatus,
  kShort,
  kGarbage,
  kLate,
  kUnplugged,
  kPaDead,
  kPaWeak,
  kReceiver,
  kReceiverDead,
  kPhase,
  kBattery,
  kCharger,
  kTestSetSilent,
  kTestSetEmpty,
  kTestSetNan,
  kTestSetHigh,
  kTestSetAbsent,
  kSupplySilent,
  kSupplyAbsent,
  kLoadSilent,
  kLoadAbsent,
};

/// What a fault counts, so that it can strike at any step.
enum class Counted {
  kCommands,  ///< commands that reach the Target, all of them or those of one word
  kTestSetLines,
  kTestSetQueries,   ///< lines to the test set that ask something
  kTestSetReadings,  ///< queries that measure
  kSupplyLines,
  kLoadLines,
};

/// How long a fault acts that was given a number N.
enum class Lasts {
  kOnce,     ///< at the N-th event only
  kForGood,  ///< from the N-th event on
};

struct FaultRow {
  std::string_view name;
  FaultKind kind;
  Counted counted;
  Lasts lasts;
  bool byEvent;  ///< strikes at single events; otherwise it is a state that stays
  double value;  ///< the usual one
  double lowest;
  double highest;
  std::string_view valueMeans;
  std::string_view description;
};

[[nodiscard]] std::span<const FaultRow> FaultTable();
[[nodiscard]] const FaultRow& RowOf(FaultKind kind);

/// One fault, armed. The text form is NAME[-WORD][@N[+]][/VALUE]:
/// `status-txpw@7/5`, `late@30`, `testset-empty@4+`.
struct Fault {
  FaultKind kind = FaultKind::kSilent;
  std::optional<std::uint8_t> operation;  ///< of the command word it is bound to; none: all words
  unsigned from = 1;                      ///< which event, counted from 1
  bool forGood = true;
  double value = 0;
};

/// A fault of its row's usual value: without a number it acts always, with one as the row says.
[[nodiscard]] Fault FaultAt(FaultKind kind, std::optional<unsigned> from = std::nullopt, std::string_view word = {},
                            std::optional<double> value = std::nullopt);

/// @throws BenchOptionError for a text that names no fault or says it badly.
[[nodiscard]] Fault ParseFault(std::string_view text);

/// Counts the bench's events and knows which faults act at the present one.
class FaultBoard {
 public:
  explicit FaultBoard(const std::vector<Fault>& faults = {});

  void CommandArrived(std::uint8_t operation) { Happened(Counted::kCommands, operation); }
  void Happened(Counted event, std::uint8_t operation = 0);

  /// The fault of this kind that acts now, or none. The first one given wins.
  [[nodiscard]] const Fault* Acting(FaultKind kind) const;
  [[nodiscard]] bool Acts(FaultKind kind) const { return Acting(kind) != nullptr; }

 private:
  struct Armed {
    Fault fault;
    Counted counted;
    bool byEvent;
    unsigned seen = 0;
    bool acting = false;
  };
  std::vector<Armed> armed_;
};

}  // namespace orvane::bench
