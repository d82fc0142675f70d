#include "bench/target_line.h"

#include <algorithm>

namespace orvane::bench {

TargetLine::TargetLine(Handset& handset, FaultBoard& faults) : handset_(handset), faults_(faults) { TakeUp(); }

void TargetLine::TakeUp() {
  reader_ = {};
  handset_.SetDefects(PresentDefects());
}

std::vector<Transmission> TargetLine::Receive(std::span<const std::uint8_t> bytes) {
  counters_.bytesIn += bytes.size();
  reader_.Feed(bytes);
  std::vector<Transmission> sent;
  while (const Command* command = reader_.Next()) {
    ++counters_.commands;
    faults_.CommandArrived(command->operation);
    if (Unplugged()) {
      break;
    }
    handset_.SetDefects(PresentDefects());
    Transmission transmission = Answer(*command);
    if (!transmission.bytes.empty()) {
      counters_.bytesOut += transmission.bytes.size();
      sent.push_back(std::move(transmission));
    }
  }
  return sent;
}

Transmission TargetLine::Answer(const Command& command) {
  if (faults_.Acts(FaultKind::kSilent)) {
    return {};
  }
  if (const Fault* fault = faults_.Acting(FaultKind::kStatus)) {
    return {PaddedFrame({command.operation, static_cast<std::uint8_t>(fault->value), {}})};
  }
  Transmission transmission{handset_.Answer(command)};
  if (transmission.bytes.empty()) {
    return transmission;
  }
  if (const Fault* fault = faults_.Acting(FaultKind::kShort)) {
    transmission.bytes.resize(std::min(transmission.bytes.size(), static_cast<std::size_t>(fault->value)));
  }
  if (const Fault* fault = faults_.Acting(FaultKind::kGarbage)) {
    transmission.bytes.insert(transmission.bytes.begin(), static_cast<std::size_t>(fault->value), 0xA5);
  }
  if (const Fault* fault = faults_.Acting(FaultKind::kLate)) {
    transmission.delay = Span{static_cast<std::int64_t>(fault->value * 1e6)};
  }
  return transmission;
}

Defects TargetLine::PresentDefects() const {
  const auto value = [&](FaultKind kind) {
    const Fault* fault = faults_.Acting(kind);
    return fault == nullptr ? 0 : fault->value;
  };
  return {
      .paDead = faults_.Acts(FaultKind::kPaDead),
      .paMissingDb = value(FaultKind::kPaWeak),
      .receiverDb = value(FaultKind::kReceiver),
      .receiverDead = faults_.Acts(FaultKind::kReceiverDead),
      .rmsPhaseDeg = value(FaultKind::kPhase),
      .adcCounts = value(FaultKind::kBattery),
      .noCharger = faults_.Acts(FaultKind::kCharger),
  };
}

}  // namespace orvane::bench
