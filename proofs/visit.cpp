#include "visit.h"

#include <malloc.h>

#include <algorithm>
#include <array>
#include <filesystem>
#include <utility>

#include "app/replay/replayed_run.h"
#include "audit/receiver_audit.h"

namespace orvane::proofs {
namespace {

using namespace std::chrono_literals;

constexpr TimePoint kClickBound = 50min;
/// A hand comes while a good road lasts, or not long after.
constexpr TimePoint kHandsWithin = 2500ms;
/// A list holds that many rows at the most.
constexpr std::size_t kMostRows = 20000;
/// Behind so many roads a station has seen all that it keeps.
constexpr int kSettledRoads = 30;
constexpr std::size_t kMostGrowth = 64 * 1024;

int LengthOf(std::uint64_t seed, Chance& chance) {
  if (seed % 1000 == 0) return 1000;
  if (seed % 10 == 0) return 60;
  return chance.Between(2, 8);
}

std::size_t OpenHandles() {
  return static_cast<std::size_t>(
      std::distance(std::filesystem::directory_iterator("/proc/self/fd"), std::filesystem::directory_iterator()));
}

std::string TenthsText(int tenths) { return "-" + std::to_string(tenths / 10) + "." + std::to_string(tenths % 10); }

std::vector<double> OffsetsOf(const Settings& settings) {
  if (settings.function == "BCHTCH") return {0};
  if (settings.offset == "Average") return {0.067, -0.067};
  // Either sign of the list gives the higher frequency.
  return {0.067};
}

}  // namespace

Visit::Visit(std::uint64_t seed, bool replays)
    : seed_(seed), replays_(replays), chance_(seed), roads_(LengthOf(seed, chance_)) {}

Outcome Visit::Run() {
  const std::size_t handles = OpenHandles();
  StartStation();
  bool disturbed = false;
  for (road_ = 1; road_ <= roads_; ++road_) {
    // Behind a road that was disturbed the next good unit passes.
    auto disturbance = Disturbance::kNone;
    if (!disturbed && chance_.In(60)) disturbance = static_cast<Disturbance>(chance_.Between(1, 5));
    Road(disturbance);
    disturbed = disturbance != Disturbance::kNone;
    LookAtMemory();
    if (renew_) StartStation();
  }
  hands_.reset();
  stand_.reset();
  if (OpenHandles() != handles) Find("a file handle is left open");
  return outcome_;
}

void Visit::StartStation() {
  hands_.reset();
  stand_ = std::make_unique<Stand>(replays_);
  hands_ = std::make_unique<Hands>(*stand_, chance_);
  stand_->absent.onDialog = [this]() -> std::optional<std::string> {
    return hands_->Astray() ? "/out/by hand.epm" : settings_.file;
  };
  // What is changed ahead of the run is a setting like any other.
  stand_->State().report.began.Connect(
      [this] { hands_->Plan(HandKind::kStray, std::exchange(strays_, 0), kHandsWithin); });
  tooLong_.clear();
  renew_ = false;
  roadsOfStation_ = 0;
}

void Visit::Find(const std::string& what) {
  outcome_.findings.push_back("road " + std::to_string(road_) + " (" + what_ + "): " + what);
}

void Visit::ChooseSettings() {
  constexpr std::array<std::string_view, 4> kTolerances{"0.1", "0.15", "0.2", "0.3"};
  constexpr std::array<std::string_view, 3> kOffsets{"Average", "+offset", "-offset"};
  settings_ = {};
  settings_.save = static_cast<Settings::Save>(chance_.Between(0, 2));
  settings_.lossTenths = chance_.Between(0, 30);
  settings_.tolerance = chance_.From(kTolerances);
  settings_.offset = chance_.From(kOffsets);
  settings_.function = chance_.In(85) ? "CW" : "BCHTCH";
  settings_.file = "/out/unit" + std::to_string(chance_.Between(0, 5)) + ".epm";
}

void Visit::SetUp() {
  FrmAutoCal& panel = stand_->Panels().autoCal;
  Operator& op = stand_->op;
  panel.Touch();
  const std::array<OptionButton*, 3> save{&panel.optSaveModeEEPROM, &panel.optSaveModeFile,
                                          &panel.optSaveModeEEPROMFile};
  op.Select(*save[static_cast<std::size_t>(settings_.save)]);
  const std::string loss = TenthsText(settings_.lossTenths);
  for (TextBox* box : {&panel.txtLoss, &panel.txtDCSLoss, &panel.txtRxCableLossGSM, &panel.txtRxCableLossDCS}) {
    op.Type(*box, loss);
  }
  op.Type(panel.txtErrorRate, settings_.tolerance);
  op.Type(panel.comboOffset, settings_.offset);
  op.Type(panel.ComboFunction, settings_.function);
}

void Visit::Disturb(Disturbance disturbance, bench::BenchOptions& unit) {
  if (disturbance == Disturbance::kFault || disturbance == Disturbance::kFaultAndHands) {
    const bench::FaultRow& row = chance_.From(bench::FaultTable());
    constexpr int kCommands = 380;
    constexpr int kLines = 420;
    constexpr int kSupplyLines = 9;
    const int places = row.counted == bench::Counted::kCommands      ? kCommands
                       : row.counted == bench::Counted::kSupplyLines ? kSupplyLines
                                                                     : kLines;
    const int place = chance_.In(10) ? 1 : chance_.Between(1, places);
    const std::string text = std::string(row.name) + "@" + std::to_string(place);
    // The receiver is measured first.
    defectFromTheStart_ = place <= 2;
    what_ += ", " + text;
    unit.faults.push_back(bench::ParseFault(text));
  }
}

std::uint64_t Visit::GoodSeed() {
  Subject unit;
  unit.offsetsMHz = OffsetsOf(settings_);
  do {
    unit.seed = chance_.Of(1'000'000'000) + 1;
  } while (CompensationMayBeOutOfRange(unit));
  return unit.seed;
}

void Visit::Road(Disturbance disturbance) {
  ChooseSettings();
  defectFromTheStart_ = false;
  bench::BenchOptions unit;
  unit.seed = GoodSeed();
  unit.cableLossDb = settings_.lossTenths / 10.0;
  what_ = "unit " + std::to_string(unit.seed);
  Disturb(disturbance, unit);
  stand_->Insert(unit, true);
  SetUp();
  if (disturbance == Disturbance::kWire) {
    Damage damage;
    damage.way = chance_.In(50) ? Way::ToTarget : Way::ToStation;
    damage.byte = chance_.Of(damage.way == Way::ToTarget ? 19000 : 3800);
    damage.harm = static_cast<Harm>(chance_.Between(0, 4));
    damage.value =
        static_cast<unsigned>(damage.harm == Harm::Delayed ? chance_.Between(1, 4000) : chance_.Between(1, 255));
    what_ += ", " + TextOf(damage);
    stand_->line.Strike(damage);
  }
  const std::size_t handled = hands_->Done().size();
  if (disturbance == Disturbance::kHands || disturbance == Disturbance::kFaultAndHands) {
    hands_->Plan(HandKind::kPlausible, chance_.Between(1, 4), kHandsWithin);
  } else if (disturbance == Disturbance::kStrayHands) {
    strays_ = chance_.Between(1, 12);
  }
  // A pace that hands have set as long as this makes a road long, as they wanted it.
  const auto beyondPaces = [this] { return stand_->loop.Now() - stand_->loop.Spun(); };
  const TimePoint begin = beyondPaces();
  (void)stand_->TakeThrough();
  strays_ = 0;
  ++outcome_.figures["roads"];
  for (std::size_t i = handled; i < hands_->Done().size(); ++i) what_ += ", " + hands_->Done()[i];
  if (beyondPaces() - begin > kClickBound) Find("the click took too long");
  Judge(disturbance);
  RunAgainWhatWasKept();
  if (tell) tell("road " + std::to_string(road_) + " (" + what_ + "): " + stand_->Steps());
}

void Visit::Judge(Disturbance disturbance) {
  if (const std::string why = stand_->Unready(); !why.empty()) Find(why);
  for (Panel* panel : stand_->Panels().All()) {
    for (Control* control : panel->Controls()) {
      const auto* list = dynamic_cast<ListBox*>(control);
      if (list != nullptr && list->Items().size() > kMostRows && tooLong_.insert(list).second) {
        Find(list->Name() + " has too many rows");
      }
    }
  }
  if (stand_->PassedComplete()) {
    JudgePass(disturbance);
  } else if (disturbance == Disturbance::kNone) {
    Find("a good unit does not pass: " + stand_->Steps());
  }
  // What stray hands have left on the panels is not for the next unit.
  if (disturbance == Disturbance::kStrayHands) renew_ = true;
  // An operator who is told to load the tables again does so.
  if (!stand_->State().ramp.damage.empty()) renew_ = true;
}

void Visit::RunAgainWhatWasKept() {
  if (!stand_->kept) return;
  stand_->kept->Settle();
  for (const RunRecord& record : stand_->kept->records) {
    const ReplayedRun again = RunAgain(record);
    ++outcome_.figures["replays"];
    if (!again.Same()) Find("a " + record.identity.kind + " run runs again otherwise: " + again.Text());
  }
  stand_->kept->records.clear();
  stand_->kept->grown.clear();
}

void Visit::JudgePass(Disturbance disturbance) {
  ++outcome_.figures["complete"];
  const std::vector<std::string> objections = Audit(ToAudit());
  if (objections.empty()) return;
  if (stand_->line.SwappedWithinAFrame()) {
    ++outcome_.figures["swaps-that-no-checksum-sees"];
    return;
  }
  Find(std::string(disturbance == Disturbance::kStrayHands ? "behind stray hands " : "") +
       "a complete PASS that is none: " + objections.front() +
       (objections.size() > 1 ? " (" + std::to_string(objections.size()) + " objections)" : ""));
}

Subject Visit::ToAudit() {
  Subject subject = stand_->ToAudit();
  // A defect that came behind what it would have shown in is not this road's.
  if (!defectFromTheStart_) subject.defects = {};
  subject.toEeprom = settings_.save != Settings::Save::kFile;
  if (settings_.save != Settings::Save::kEeprom) subject.file = stand_->files.content[settings_.file];
  subject.toleranceSetting = std::stod(settings_.tolerance);
  subject.offsetsMHz = OffsetsOf(settings_);
  return subject;
}

void Visit::LookAtMemory() {
  // Records come and go with their runs, as large as they are.
  if (replays_ || ++roadsOfStation_ < kSettledRoads) return;
  // The disk is in memory, too, and fills as disks do.
  std::size_t now = mallinfo2().uordblks;
  for (const auto& [path, content] : stand_->files.content) now -= std::min(now, content.capacity());
  if (roadsOfStation_ == kSettledRoads) memoryBefore_ = now;
  if (now > memoryBefore_ + kMostGrowth && roadsOfStation_ > kSettledRoads) {
    Find("the station has grown by " + std::to_string((now - memoryBefore_) / 1024) + " KiB in " +
         std::to_string(roadsOfStation_ - kSettledRoads) + " roads");
    memoryBefore_ = SIZE_MAX / 2;
  }
}

}  // namespace orvane::proofs
