#include "bench/faults.h"

#include <algorithm>
#include <array>
#include <charconv>

#include "bench/operations.h"

namespace orvane::bench {
namespace {

using enum FaultKind;
using enum Counted;
using enum Lasts;

constexpr std::array kFaults{
    FaultRow{"silent", kSilent, kCommands, kForGood, true, 0, 0, 0, "", "the Target does not answer"},
    FaultRow{"status", kStatus, kCommands, kOnce, true, 1, 1, 127, "status, 1..127",
             "the Target answers with a failure status"},
    FaultRow{"short", kShort, kCommands, kOnce, true, 5, 0, 200, "bytes that still come", "the reply is cut short"},
    FaultRow{"garbage", kGarbage, kCommands, kOnce, true, 3, 1, 200, "bytes of garbage",
             "garbage comes ahead of the reply"},
    FaultRow{"late", kLate, kCommands, kOnce, true, 2600, 0, 60000, "delay in ms",
             "the reply comes after the station's wait"},
    FaultRow{"unplugged", kUnplugged, kCommands, kForGood, false, 0, 0, 0, "", "the serial device is gone"},
    FaultRow{"pa-dead", kPaDead, kCommands, kForGood, false, 0, 0, 0, "", "no burst comes out of the transmitter"},
    FaultRow{"pa-weak", kPaWeak, kCommands, kForGood, false, 5, 0, 60, "dB missing at full power",
             "the transmitter cannot reach its top levels"},
    FaultRow{"receiver", kReceiver, kCommands, kForGood, false, -10, -60, 60, "dB off",
             "the receiver's gain is out of range"},
    FaultRow{"receiver-dead", kReceiverDead, kCommands, kForGood, false, 0, 0, 0, "", "power reports are zero"},
    FaultRow{"phase", kPhase, kCommands, kForGood, false, 7.5, 0, 180, "degrees RMS", "the phase error is too high"},
    FaultRow{"battery", kBattery, kCommands, kForGood, false, 20, -500, 500, "counts off",
             "the battery ADC is out of its window"},
    FaultRow{"charger", kCharger, kCommands, kForGood, false, 0, 0, 0, "", "no charger is connected"},
    FaultRow{"testset-silent", kTestSetSilent, kTestSetQueries, kForGood, false, 0, 0, 0, "",
             "the test set answers no query"},
    FaultRow{"testset-empty", kTestSetEmpty, kTestSetReadings, kOnce, true, 0, 0, 0, "", "a reading is empty"},
    FaultRow{"testset-nan", kTestSetNan, kTestSetReadings, kOnce, true, 0, 0, 0, "", "a reading is no number"},
    FaultRow{"testset-high", kTestSetHigh, kTestSetReadings, kOnce, true, 41.2, -60, 1000, "dBm",
             "a power reading is too high"},
    FaultRow{"testset-absent", kTestSetAbsent, kTestSetLines, kForGood, false, 0, 0, 0, "",
             "the test set is not on the bus"},
    FaultRow{"supply-silent", kSupplySilent, kSupplyLines, kForGood, false, 0, 0, 0, "",
             "the supply answers no query"},
    FaultRow{"supply-absent", kSupplyAbsent, kSupplyLines, kForGood, false, 0, 0, 0, "",
             "the supply is not on the bus"},
    FaultRow{"load-silent", kLoadSilent, kLoadLines, kForGood, false, 0, 0, 0, "", "the load answers no query"},
    FaultRow{"load-absent", kLoadAbsent, kLoadLines, kForGood, false, 0, 0, 0, "", "the load is not on the bus"},
};

[[noreturn]] void Refuse(std::string_view text, const std::string& why) {
  throw BenchOptionError("fault=" + std::string(text) + ": " + why);
}

template <class Number>
std::optional<Number> NumberIn(std::string_view text) {
  Number number{};
  const auto [end, fault] = std::from_chars(text.data(), text.data() + text.size(), number);
  return fault == std::errc{} && end == text.data() + text.size() ? std::optional(number) : std::nullopt;
}

/// Cuts off what stands behind the last `mark`; no value when there is no such mark.
std::optional<std::string_view> CutBehind(std::string_view& text, char mark) {
  const std::size_t at = text.rfind(mark);
  if (at == std::string_view::npos) {
    return std::nullopt;
  }
  const std::string_view behind = text.substr(at + 1);
  text = text.substr(0, at);
  return behind;
}

const FaultRow* RowNamed(std::string_view name) {
  const auto row = std::find_if(kFaults.begin(), kFaults.end(), [&](const FaultRow& r) { return r.name == name; });
  return row == kFaults.end() ? nullptr : &*row;
}

}  // namespace

std::span<const FaultRow> FaultTable() { return kFaults; }

const FaultRow& RowOf(FaultKind kind) {
  return *std::find_if(kFaults.begin(), kFaults.end(), [&](const FaultRow& r) { return r.kind == kind; });
}

Fault FaultAt(FaultKind kind, std::optional<unsigned> from, std::string_view word, std::optional<double> value) {
  const FaultRow& row = RowOf(kind);
  Fault fault{kind, std::nullopt, from.value_or(1), !from || row.lasts == kForGood, value.value_or(row.value)};
  if (!(fault.value >= row.lowest && fault.value <= row.highest)) {
    Refuse(row.name, row.valueMeans.empty() ? "this fault has no value" : "the value is out of its range");
  }
  if (!word.empty()) {
    fault.operation = OperationOf(word);
    if (!fault.operation || row.counted != kCommands) {
      Refuse(row.name, "\"" + std::string(word) + "\" is no command word to bind this fault to");
    }
  }
  return fault;
}

Fault ParseFault(std::string_view text) {
  std::string_view rest = text;
  std::optional<double> value;
  if (const auto behind = CutBehind(rest, '/')) {
    value = NumberIn<double>(*behind);
    if (!value) {
      Refuse(text, "the value behind \"/\" is no number");
    }
  }
  std::optional<unsigned> from;
  bool forGood = false;
  if (auto behind = CutBehind(rest, '@')) {
    forGood = behind->ends_with('+');
    if (forGood) {
      behind->remove_suffix(1);
    }
    from = NumberIn<unsigned>(*behind);
    if (!from || *from == 0) {
      Refuse(text, "behind \"@\" a number from 1 up is needed");
    }
  }
  std::string_view word;
  const FaultRow* row = RowNamed(rest);
  if (row == nullptr) {
    // The last part may be a command word.
    word = CutBehind(rest, '-').value_or(std::string_view{});
    row = RowNamed(rest);
  }
  if (row == nullptr) {
    Refuse(text, "there is no fault of this name");
  }
  Fault fault = FaultAt(row->kind, from, word, value);
  fault.forGood = fault.forGood || forGood;
  return fault;
}

FaultBoard::FaultBoard(const std::vector<Fault>& faults) {
  for (const Fault& fault : faults) {
    const FaultRow& row = RowOf(fault.kind);
    // A lasting state that is due from the first event on was there before it.
    armed_.push_back({fault, row.counted, row.byEvent, 0, !row.byEvent && fault.from == 1 && !fault.operation});
  }
}

void FaultBoard::Happened(Counted event, std::uint8_t operation) {
  for (Armed& armed : armed_) {
    if (armed.counted != event) {
      continue;
    }
    const bool matches = !armed.fault.operation || *armed.fault.operation == operation;
    if (matches) {
      ++armed.seen;
      armed.acting = armed.seen == armed.fault.from || (armed.fault.forGood && armed.seen > armed.fault.from);
    } else if (armed.byEvent) {
      armed.acting = false;
    }
  }
}

const Fault* FaultBoard::Acting(FaultKind kind) const {
  for (const Armed& armed : armed_) {
    if (armed.acting && armed.fault.kind == kind) {
      return &armed.fault;
    }
  }
  return nullptr;
}

}  // namespace orvane::bench
