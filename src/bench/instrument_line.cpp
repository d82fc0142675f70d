#include "bench/instrument_line.h"

#include <utility>

namespace orvane::bench {

bool InstrumentLine::Take(std::string_view line) {
  faults_.Happened(kinds_.lines);
  if (faults_.Acts(kinds_.absent)) {
    return false;
  }
  ++counters_.commands;
  counters_.bytesIn += line.size() + 1;
  if (reply_) {
    Report(-410, "Query INTERRUPTED");
    reply_.reset();
  }
  ScpiAnswer answer = Execute(line);
  if (!answer.text) {
    return true;
  }
  if (kinds_.queries) {
    faults_.Happened(*kinds_.queries);
  }
  if (kinds_.readings && answer.reading) {
    faults_.Happened(*kinds_.readings);
    Spoil(answer);
  }
  if (!faults_.Acts(kinds_.silent)) {
    reply_ = *answer.text + "\n";
  }
  return true;
}

void InstrumentLine::Spoil(ScpiAnswer& answer) const {
  if (faults_.Acts(FaultKind::kTestSetEmpty)) {
    answer.text = "";
  } else if (faults_.Acts(FaultKind::kTestSetNan)) {
    answer.text = "NAN";
  } else if (const Fault* fault = faults_.Acting(FaultKind::kTestSetHigh)) {
    answer.text = ReadingText(fault->value);
  }
}

std::optional<std::string> InstrumentLine::TakeReply() {
  std::optional<std::string> reply = std::exchange(reply_, std::nullopt);
  counters_.bytesOut += reply ? reply->size() : 0;
  return reply;
}

}  // namespace orvane::bench
