#include "app/program.h"

#include <iostream>

#include "adapters/sha256.h"
#include "app/automation/state_reader.h"
#include "app/engineer/word_thread.h"
#include "app/route_text.h"
#include "app/safe_off/bench_off_hand.h"
#include "app/safe_off/off_process.h"

namespace orvane {
namespace {

/// Where a virtual Target keeps its memories, in words; empty when it keeps none.
std::string UnitStoreOf(const Options& options) {
  if (!options.bench || !options.bench->store) return "";
  return (*options.bench->store / "eeprom.bin").string() + " and flash100.txt beside it";
}

/// Ahead of all that a run would open or begin: a place that cannot be listened on is a bad option.
std::unique_ptr<ListeningSocket> SocketOf(const Options& options) {
  const auto* unixSocket = std::get_if<UnixAutomation>(&options.automation);
  if (unixSocket == nullptr) return nullptr;
  try {
    return std::make_unique<ListeningSocket>(unixSocket->path);
  } catch (const SocketFailure& failure) {
    throw OptionFault("--automation: unix:" + unixSocket->path + ": " + failure.what());
  }
}

StationWishes WishesOf(const Options& options) {
  return {options.tables, &Sha256Of, options.verifyEeprom, options.safeOff};
}

}  // namespace

Program::Program(const Options& options)
    : options_(options),
      goldenBook_(OpenGoldenBook(options)),
      socket_(SocketOf(options)),
      world_(options),
      unit_(options.unit, options.askSerial),
      station_(world_.Ports(), WishesOf(options)),
      port_({world_.loop,
             world_.desk,
             station_.Nest(),
             station_.State().report,
             station_.State().charger.faults,
             unit_,
             station_.Panels().All(),
             [this](std::string_view name) { return ReadState(station_.State(), name); },
             {&station_.Panels().autoCal.cmdAutoCalStop},
             [this] { return Gathering(station_.State().reply); },
             [this] { return safeOff_ && safeOff_->UnderWay(); }}) {
  world_.Watch(station_.Nest());
  unit_.Follow(station_.Panels());
  station_.Nest().refusal = [this](const Control& button) { return RefusalOf(button); };
  const bool outputIsFree = !std::holds_alternative<StdioAutomation>(options.automation);
  if (options.headless && !Automated()) world_.desk.LeaveUnattended(std::cerr);
  if (options.headless && outputIsFree) {
    const NarratorStyle style = StandardOutputStyle();
    if (style.terminal && !style.boxes) lineClearing_.emplace(std::cerr, std::cout);
    narrator_.emplace(std::cout, style, world_.loop, station_.State(), station_.Panels(), world_.desk,
                      UnitStoreOf(options));
  }
  station_.State().report.began.Connect([this] { runBegan_ = true; });
  station_.State().charger.faults.told.Connect(
      [](const GpibFault& fault) { std::cerr << "orvane: " << OneLine(fault.text) << std::endl; });
  KeepRecords();
  if (goldenBook_) WatchGoldenUnit(std::move(*goldenBook_));
  if (!options_.engineerSecret.empty()) {
    engineerWord_.emplace(world_.loop, LookOnAThread(world_.loop, options_.engineerSecret));
  }
  world_.Share(station_);
  KeepSafe();
  OpenAutomation();
}

std::optional<std::string> Program::RefusalOf(const Control& pressed) {
  if (auto why = safeOff_ ? safeOff_->Refusal(pressed) : std::nullopt) return why;
  if (auto why = SerialRefusal(unit_, station_.Panels(), pressed)) return why;
  if (!golden_ || !StartsARun(station_.Panels(), pressed)) return std::nullopt;
  // A check that is over counts, also in the same turn of the loop.
  records_->CloseWhatIsOver();
  return golden_->NextUnitRefusal(unit_.Texts().serial);
}

void Program::WatchGoldenUnit(GoldenBook book) {
  if (!book.fault.empty()) std::cerr << "orvane: --golden: " << OneLine(book.fault) << std::endl;
  golden_.emplace(options_.golden, std::move(book), world_.loop, &WallClockMs);
  if (options_.golden.excuse && !golden_->Excuse(*options_.golden.excuse)) {
    std::cerr << "orvane: --golden-excuse: there is nothing to excuse: the golden unit was inside its limits."
              << std::endl;
  }
  golden_->checked.Connect([this](const GoldenFinding& finding) { TellGolden(finding); });
  records_->onBegin = [this](RunIdentity& run) { golden_->Mark(run); };
  records_->onEnd = [this](RunRecord& record) { golden_->Take(record); };
}

void Program::TellGolden(const GoldenFinding& finding) {
  std::cerr << "orvane: The golden unit " << golden_->Serial() << " is "
            << (finding.Inside() ? "inside its limits." : "outside its limits: " + OneLine(finding.Text()))
            << std::endl;
}

void Program::KeepRecords() {
  if (world_.Recorder() == nullptr) return;
  records_.emplace(options_, world_.loop, *world_.Recorder(), station_, unit_);
  records_->waited = [this] { return world_.TakeWaited(); };
  records_->onKept = [this](const Kept& kept) { TellKept(kept); };
  station_.State().report.runBegan.Connect([this](RunKind) { recordNews_.Forget(); });
}

/// Behind all that may refuse the options: the process takes a station that is not there any more for a dead one.
void Program::KeepSafe() {
  if (!options_.safeOff) return;
  for (const auto& place : {kUsualOffPlaces.supply, kUsualOffPlaces.load}) {
    if (!options_.share.addresses.contains(place->primary)) continue;
    throw OptionFault("--safe-off: the instrument at address " + std::to_string(place->primary) +
                      " is lent by --share, and may be what another station's unit stands on");
  }
  if (options_.bench) {
    offHand_ = std::make_unique<BenchOffHand>(world_.loop, world_.Bus());
  } else {
    auto process = std::make_unique<OffProcess>(world_.loop, options_.gpib);
    process->onTrouble = [this, runs = process.get()](const std::string& text) {
      std::cerr << "orvane: --safe-off: " << text << std::endl;
      if (!runs->Runs()) station_.State().charger.notOff = text;
    };
    offHand_ = std::move(process);
  }
  safeOff_.emplace(world_.Ports(), station_, *offHand_, [this] { world_.LetBusGo(); });
  if (!records_) return;
  records_->waits = [this] { return safeOff_->UnderWay(); };
  records_->onNoteFile = [this](const std::string& file) { offHand_->Note(file); };
  safeOff_->onAnswered = [this](const std::string& notOff) { records_->GoOn(notOff); };
}

void Program::TellKept(const Kept& kept) {
  if (!kept.fault.empty()) {
    std::cerr << "orvane: --records: " << OneLine(kept.fault)
              << (kept.run.empty() ? ""
                  : kept.isKept    ? " The record lies beside the store."
                                   : " The record is lost.")
              << std::endl;
  }
  recordNews_.Tell(kept);
  if (!kept.run.empty()) port_.TellRecord(kept.isKept ? kept.run : "", kept.fault);
}

void Program::OpenAutomation() {
  if (std::holds_alternative<StdioAutomation>(options_.automation)) {
    transport_ = std::make_unique<StdioTransport>(world_.loop, port_, [this] { EndBehindWhatIsUnderWay(); });
  } else if (socket_) {
    transport_ = std::make_unique<UnixSocketTransport>(world_.loop, port_, std::move(socket_));
  }
}

int Program::Run() {
  try {
    Serve();
  } catch (const StationEnded&) {
  }
  if (safeOff_) safeOff_->EndOfStation(!options_.headless || !Automated());
  if (records_) records_->Finish();
  port_.TellExit();
  if (abandoned_) return runBegan_ ? VerdictStatus() : kNoWindows;
  return options_.headless && options_.initialize ? VerdictStatus() : 0;
}

void Program::Serve() {
  station_.Start();
  world_.StationIsUp();
  Apply(options_.panels, station_.Panels(), station_.Nest(),
        [](const std::string& text) { std::cerr << "orvane: " << OneLine(text) << std::endl; });
  if (options_.initialize) {
    PressInitialize();
    if (options_.headless) return;
  }
  if (options_.headless && !Automated() && station_.Nest().Idle()) {
    std::cerr << "orvane: There are no windows, no --automation and no --initialize: nothing can be asked of this "
                 "station. It waits for a signal to end."
              << std::endl;
  }
  while (!abandoned_ && !clientLost_) {
    runBegan_ = false;
    world_.loop.Yield(kForever);
  }
}

void Program::EndBehindWhatIsUnderWay() {
  std::cerr << "orvane: --automation: nobody takes what the station says; it ends"
            << (station_.Nest().Idle() ? "." : " behind what is under way.") << std::endl;
  if (options_.headless) world_.desk.Abandon(std::cerr);
  clientLost_ = true;
}

void Program::GoOnWithoutScreen() {
  std::cerr << "orvane: the display has gone; "
            << (Automated()              ? "the automation port stays."
                : station_.Nest().Idle() ? "nothing was under way."
                                         : "what is under way goes on to its end.")
            << std::endl;
  if (Automated()) return;
  station_.State().report.concluded.Connect([](Verdict verdict) { std::cerr << VerdictText(verdict) << std::endl; });
  world_.desk.Abandon(std::cerr);
  abandoned_ = true;
}

void Program::PressInitialize() {
  Operator hand(station_.Nest());
  StationPanels& panels = station_.Panels();
  const bool takesUnit = options_.view == View::Panels;
  // What would be refused behind the instruments' Initialize is refused ahead of it: nothing goes out in vain.
  if (const auto why = RefusalOf(panels.main.cmdTargetInitialize); takesUnit && why) {
    station_.Nest().Refuse(*why);
    return;
  }
  hand.Click(panels.main.cmdInstrumentInitialize);
  hand.Click(panels.main.cmdPSInitialize);
  station_.Nest().Run([&] { panels.baseBand.Touch(); });
  hand.Click(panels.baseBand.load.initialize);
  // At the operator's page a unit begins with the operator.
  if (takesUnit) hand.Click(panels.main.cmdTargetInitialize);
}

int Program::VerdictStatus() {
  const RunReport& report = station_.State().report;
  const auto verdict = report.Concluded().value_or(Verdict::None);
  if (verdict == Verdict::Fail) return kFailed;
  const bool isGoldenOutside = golden_ && golden_->LastCheck() != nullptr && !golden_->LastCheck()->Inside();
  if (verdict == Verdict::Pass && report.AllComplete()) return isGoldenOutside ? kUndecided : kPassed;

  const auto doubt = verdict == Verdict::Pass ? report.Doubt() : std::nullopt;
  std::cerr << (doubt ? "PASS, but not every step was completed." : "The run ended without a verdict.") << std::endl;
  for (const StepRecord& step : report.Steps()) {
    if (!step.complete) std::cerr << StepName(step.step) << ": " << step.reason << std::endl;
  }
  if (doubt) std::cerr << FlawText(*doubt) << ". " << RemedyText(*doubt) << std::endl;
  return kUndecided;
}

}  // namespace orvane
