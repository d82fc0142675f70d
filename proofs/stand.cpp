#include "stand.h"

#include <fstream>
#include <iterator>
#include <map>
#include <stdexcept>
#include <utility>

namespace orvane::proofs {
namespace {

using namespace std::chrono_literals;

/// For so long the fixture is empty between two units; what was still on its way then is lost.
constexpr TimePoint kChangeOfUnits = 10s;

void AddDefect(const bench::Fault& fault, bench::Defects& defects) {
  switch (fault.kind) {
    case bench::FaultKind::kPaDead:
      defects.paDead = true;
      break;
    case bench::FaultKind::kPaWeak:
      defects.paMissingDb = fault.value;
      break;
    case bench::FaultKind::kReceiver:
      defects.receiverDb = fault.value;
      break;
    case bench::FaultKind::kReceiverDead:
      defects.receiverDead = true;
      break;
    case bench::FaultKind::kPhase:
      defects.rmsPhaseDeg = fault.value;
      break;
    case bench::FaultKind::kBattery:
      defects.adcCounts = fault.value;
      break;
    default:
      break;
  }
}

}  // namespace

BoxButton Absent::Show(const Box& box) {
  constexpr std::uint64_t kTooMany = 1'000'000;
  if (++shown > kTooMany) throw std::runtime_error("Boxes without end: " + box.text);
  if (box.title == "Exit") return BoxButton::Cancel;
  if (onBox) {
    if (const auto answer = onBox(box)) return *answer;
  }
  return box.buttons.front();
}

std::optional<std::string> Absent::Choose(FileDialog& dialog) {
  auto path = onDialog ? onDialog() : std::nullopt;
  if (path) dialog.fileName = *path;
  return path;
}

class CountedBus::Session final : public GpibSession {
 public:
  Session(std::unique_ptr<GpibSession> session, Counts& counts) : session_(std::move(session)), counts_(counts) {}

  void Write(std::string_view text, TimePoint timeOut) override {
    ++counts_.lines;
    if (text.ends_with('?')) {
      ++counts_.queries;
      if (text.starts_with("FETC")) ++counts_.readings;
    }
    session_->Write(text, timeOut);
  }
  [[nodiscard]] std::string Read(std::size_t size, TimePoint timeOut) override {
    return session_->Read(size, timeOut);
  }
  void Local() override { session_->Local(); }

 private:
  std::unique_ptr<GpibSession> session_;
  Counts& counts_;
};

std::unique_ptr<GpibSession> CountedBus::Open(const GpibAddress& address) {
  return std::make_unique<Session>(bus_.Open(address), counts[address.primary]);
}

const std::string& InstalledFile(std::string_view name) {
  static std::map<std::string, std::string, std::less<>> cache;
  const auto known = cache.find(name);
  if (known != cache.end()) return known->second;
  std::ifstream file(std::string(ORVANE_DATA_DIR "/").append(name), std::ios::binary);
  std::string content(std::istreambuf_iterator<char>(file), {});
  if (content.empty()) throw std::runtime_error("The installed data file " + std::string(name) + " was not made.");
  return cache.emplace(name, std::move(content)).first->second;
}

Stand::Stand(bool records) : bench(loop), station(Ports(records)), op(station.Nest()) {
  if (kept) kept->Follow(station);
  for (const char* name : {"TI532.epm", "RampTable.dat", "Cable.loss"}) {
    files.content[files.SystemPath(name)] = InstalledFile(name);
  }
  State().report.concluded.Connect([this](Verdict verdict) { verdict_ = verdict; });
  station.Start();
}

StationPorts Stand::Ports(bool records) {
  const StationPorts plain{loop, line, bus, files, absent, absent};
  if (!records) return plain;
  kept.emplace(plain);
  return kept->ports.Ports();
}

void Stand::Insert(const bench::BenchOptions& unit, bool instrumentsToo) {
  LetTimePass(kChangeOfUnits);
  if (line.PortOpen()) op.Click(Panels().main.cmdTargetReset);
  LetTimePass(kChangeOfUnits);
  bench.Insert(unit);
  unit_ = unit;
  line.Strike(std::nullopt);
  if (!instrumentsToo) return;
  Panels().main.Touch();
  InitializeInstrument(Panels().main.cmdInstrumentInitialize);
  Panels().baseBand.Touch();
  InitializeInstrument(Panels().baseBand.supply.initialize);
  InitializeInstrument(Panels().baseBand.load.initialize);
}

void Stand::LetTimePass(TimePoint span) {
  const TimePoint until = loop.Now() + span;
  while (loop.Now() < until) loop.Yield(until);
}

// What failed before may cost the first click; the second one counts.
void Stand::InitializeInstrument(Button& button) {
  op.Click(button);
  op.Click(button);
}

const std::string& Stand::TakeThrough() {
  verdict_ = Verdict::None;
  failure_ = op.Click(Panels().main.cmdTargetInitialize).value_or("");
  return failure_;
}

void Stand::LoadTablesAgainWhereTold() {
  if (State().ramp.damage.empty()) return;
  const auto onDialog = std::exchange(absent.onDialog, [this] { return files.SystemPath("RampTable.dat"); });
  op.Select(Panels().main.ramp.optFile);
  op.Click(Panels().main.ramp.cmdRampLoad);
  absent.onDialog = onDialog;
}

bool Stand::PassedComplete() { return verdict_ == Verdict::Pass && State().report.AllComplete(); }

std::string Stand::Unready() {
  if (!station.Nest().Idle()) return "an operation is left on the stack";
  // A gain out of its limits leaves it so, until the next exchange: with a closed line that is the next unit's.
  if (!State().reply.ReplyDone && line.PortOpen()) return "an exchange is left open";
  for (const Button* button : {&Panels().autoCal.cmdAllCalStart, &Panels().baseBand.cmdChargerAutoCal}) {
    if (!button->Enabled()) return button->Name() + " is left disabled";
  }
  return {};
}

std::string Stand::Steps() {
  std::string text(VerdictText(verdict_));
  if (!failure_.empty()) text += "; stopped by: " + failure_;
  for (const StepRecord& step : State().report.Steps()) {
    text += "; " + std::string(StepName(step.step)) + ": " + (step.complete ? "complete" : step.reason);
  }
  return text;
}

Subject Stand::ToAudit() {
  Subject subject;
  subject.seed = unit_.seed;
  for (const bench::Fault& fault : unit_.faults) AddDefect(fault, subject.defects);
  subject.kept = bench.Models().Target().Kept();
  subject.parameters = InstalledFile("TI532.epm");
  subject.ramps = InstalledFile("RampTable.dat");
  return subject;
}

}  // namespace orvane::proofs
