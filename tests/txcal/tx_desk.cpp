#include "txcal/tx_desk.h"

namespace orvane::test {
namespace {

/// A pace at the panel's default count, on virtual time.
constexpr TimePoint kPace{20000 * 2};

bool BeginsWith(const std::string& line, const std::string& head) { return line.rfind(head, 0) == 0; }

}  // namespace

TxDesk::~TxDesk() = default;

TxDesk::TxDesk() {
  tx.Connect();
  panel.Touch();
  state.rf.recordIsWhole = true;
  OpenPort();
  OpenTestSet();
  serial.delay = TimePoint{0};
  serial.answer = [this](const SentCommand& command) { return Answer(command); };
  panels.main.txtUserCommand.changed.Connect([this] { Follow(panels.main.txtUserCommand.Text()); });
  bus.At(1).answer = [this](const std::string& line) {
    return (line == "FETCH:PFERROR:ALL?" ? phaseReading : reading()) + "\n";
  };
  for (int table = 0; table < kRampTables; ++table) {
    for (int k = 0; k < kRampValues; ++k) {
      state.ramp.RampTable[static_cast<std::size_t>(table)][static_cast<std::size_t>(k)] =
          std::to_string((table + k) % 32);
    }
  }
}

void TxDesk::Follow(const std::string& command) {
  if (command.empty()) return;
  lastCommand = command;
  if (BeginsWith(command, "txpw 1 ")) levelWord = std::stoi(command.substr(7));
  if (BeginsWith(command, "txpw 4 ")) dac = std::stoi(command.substr(7));
}

std::string TxDesk::Answer(const SentCommand& command) {
  if (const auto act = during.find(lastCommand); act != during.end()) act->second();
  if (silent.contains(lastCommand)) return "";
  return PaddedReply(command.operation, failing.contains(lastCommand) ? 5 : 0);
}

Decimal4 TxDesk::UsualPower(int word, int value) const {
  const bool isDcs = word >= 100;
  const std::size_t strongest = isDcs ? 15 : 0, weakest = isDcs ? 30 : 14;
  std::size_t upper = weakest - 1;
  while (upper > strongest && value > cal.InitValueIndex[upper]) --upper;
  const Decimal4 dacs = cal.InitValueIndex[upper] - cal.InitValueIndex[upper + 1];
  const Decimal4 above = value - cal.InitValueIndex[upper + 1];
  return cal.PowerIndex[upper + 1] + (cal.PowerIndex[upper] - cal.PowerIndex[upper + 1]) * above / dacs;
}

std::vector<std::string> TxDesk::Trace() const {
  std::vector<std::string> trace = journal.Lines();
  for (std::size_t i = 0; i < trace.size(); ++i) {
    const TimePoint next = i + 1 < trace.size() ? journal.Times()[i + 1] : loop.Now();
    if (const auto paces = (next - journal.Times()[i]) / kPace; paces > 0) trace[i] += " +" + std::to_string(paces);
  }
  return trace;
}

std::vector<std::string> TxDesk::Trace(const std::string& from, const std::string& to, int nth) const {
  std::vector<std::string> part;
  for (const std::string& line : Trace()) {
    if (nth > 0 && (!BeginsWith(line, from) || --nth > 0)) continue;
    if (!part.empty() && BeginsWith(line, to)) return part;
    part.push_back(line);
  }
  return part;
}

std::string TxDesk::Flaws() {
  state.report.Leave();
  return state.report.Steps().empty() ? "no step" : state.report.Steps().back().reason;
}

}  // namespace orvane::test
