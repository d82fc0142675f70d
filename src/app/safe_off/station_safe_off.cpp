#include "app/safe_off/station_safe_off.h"

#include <algorithm>
#include <array>
#include <exception>
#include <utility>

#include "base/failure.h"
#include "panels/run_guard.h"
#include "records/record.h"

namespace orvane {
namespace {

constexpr std::chrono::milliseconds kLookForIdle{100};

GpibAddress AddressOn(const BenchSessionFace& face) {
  const std::string& secondary = face.secAddress.Text();
  return {ToInteger(face.boardNumber.Text()), ToInteger(face.primAddress.Text()),
          secondary == "None" ? Integer{0} : ToInteger(secondary)};
}

/// Where the station speaks to it, or else would.
GpibAddress PlaceOf(bool ready, const GpibAddress& session, const BenchSessionFace& face, const GpibAddress& before) {
  if (ready) return session;
  GpibAddress place = before;
  PassOver([&] { place = AddressOn(face); });
  return place;
}

}  // namespace

bool LeavesBenchOn(const RunEnding& ending) {
  if (ending.kind == RunKind::Whole) return ending.verdict == Verdict::Pass;
  return !ending.thrown && !ending.stopped && !ending.failed;
}

SafeOff::SafeOff(const StationPorts& ports, Station& station, OffHand& hand, std::function<void()> letGo)
    : ports_(ports), station_(station), hand_(hand), letGo_(std::move(letGo)) {
  FollowPlaces();
  FollowRuns();
  TellPlaces();
}

void SafeOff::FollowPlaces() {
  FrmBaseBand& panel = station_.Panels().baseBand;
  for (BenchSessionFace* face : {&panel.supply, &panel.load}) {
    for (Control* control : std::array<Control*, 3>{&face->boardNumber, &face->primAddress, &face->secAddress}) {
      control->changed.Connect([this] { TellPlaces(); });
    }
  }
  panel.optLoaderDisuse.changed.Connect([this] { TellPlaces(); });
  station_.State().charger.configured.Connect([this] {
    station_.State().charger.notOff.clear();
    TellPlaces();
  });
}

/// A station of which it is said that its load is not used has none.
OffPlaces SafeOff::Places() const {
  const ChargerState& charger = station_.State().charger;
  const FrmBaseBand& panel = station_.Panels().baseBand;
  OffPlaces places;
  places.supply =
      PlaceOf(charger.PSReady, charger.supplyAddress, panel.supply, places_.supply.value_or(*kUsualOffPlaces.supply));
  if (panel.optLoaderDisuse.Selected()) return places;
  places.load =
      PlaceOf(charger.LoaderReady, charger.loaderAddress, panel.load, places_.load.value_or(*kUsualOffPlaces.load));
  return places;
}

void SafeOff::TellPlaces() {
  places_ = Places();
  hand_.Tell(places_);
}

void SafeOff::FollowRuns() {
  StationState& state = station_.State();
  state.report.runBegan.Connect([this, &state](RunKind kind) {
    kind_ = kind;
    stopsAskedBefore_ = state.cal.stopsAsked;
    failedBefore_ = state.cal.CalFailed;
    flawed_ = false;
  });
  state.report.flawed.Connect([this](const std::string&) { flawed_ = true; });
  state.report.runIsOver.Connect([this] { RunIsOver(); });
}

/// The run's operation still stands on the stack: what is to be done is done behind it.
void SafeOff::RunIsOver() {
  const StationState& state = station_.State();
  const CalState& cal = state.cal;
  const RunEnding ending{
      .kind = kind_,
      .verdict = state.report.Concluded().value_or(Verdict::None),
      .thrown = std::uncaught_exceptions() > 0,
      .stopped = cal.CalStopRequested && cal.stopStands && cal.stopsAsked != stopsAskedBefore_,
      // Nothing but a whole run takes an earlier unit's failure back.
      .failed = cal.CalFailed && (!failedBefore_ || flawed_),
  };
  if (LeavesBenchOn(ending)) return;
  owed_ = true;
  ports_.loop.Post([this] {
    if (owed_) Begin();
  });
}

void SafeOff::Begin() {
  if (asked_) return;
  asked_ = true;
  owed_ = false;
  TellPlaces();
  station_.LetBenchGo();
  letGo_();
  hand_.SwitchOff([this](const OffOutcome& outcome) { Take(outcome); });
}

void SafeOff::Take(const OffOutcome& outcome) {
  ChargerState& charger = station_.State().charger;
  notOff_.clear();
  for (const NotOff& each : TextsOf(outcome)) {
    const GpibAddress place = each.part == OffPart::Supply ? *places_.supply : *places_.load;
    charger.faults.told.Emit({place.primary, ports_.bus.RouteOf(place), each.text});
    notOff_ += (notOff_.empty() ? "" : " ") + each.text;
  }
  charger.notOff = notOff_;
  if (onAnswered) onAnswered(notOff_);
  asked_ = false;
  if (!notOff_.empty() && !ends_) ShowBoxWhenIdle(notOff_);
}

/// A box inside an operation would hold that up for as long as it lies open.
void SafeOff::ShowBoxWhenIdle(const std::string& text) {
  if (ends_) return;
  if (station_.Nest().Idle()) return ShowBox(text);
  ports_.loop.PostAt(ports_.loop.Now() + kLookForIdle, [this, text] { ShowBoxWhenIdle(text); });
}

void SafeOff::ShowBox(const std::string& text) {
  station_.Nest().Run([&] {
    ports_.boxes.Show({text, std::string(kSafeOffTitle), BoxIcon::Exclamation, {BoxButton::Ok}});
  });
}

std::optional<std::string> SafeOff::Refusal(const Control& pressed) const {
  if (!UnderWay()) return std::nullopt;
  StationPanels& panels = station_.Panels();
  const auto starters = RunStarters(panels.autoCal, panels.mpAutoCal, panels.baseBand);
  const std::array<const Control*, 3> bringers{&panels.main.cmdTargetInitialize, &panels.main.cmdInstrumentInitialize,
                                               &panels.main.cmdPSInitialize};
  const bool needsThem = std::find(starters.begin(), starters.end(), &pressed) != starters.end() ||
                         std::find(bringers.begin(), bringers.end(), &pressed) != bringers.end() ||
                         (&pressed.Owner() == &panels.baseBand && &pressed != &panels.baseBand.cmdBaseBandClose);
  if (!needsThem) return std::nullopt;
  return "The supply and the load are being switched off.";
}

void SafeOff::EndOfStation(bool boxes) {
  ends_ = true;
  const auto waited = [](const auto& wait) {
    try {
      wait();
    } catch (const StationEnded&) {
      // It ends already.
    }
  };
  Begin();
  while (asked_) waited([this] { ports_.loop.Yield(kForever); });
  hand_.Dismiss();
  if (boxes && !notOff_.empty()) waited([this] { ShowBox(notOff_); });
}

}  // namespace orvane
