#include "app/station_status.h"

#include <algorithm>
#include <numeric>

#include "txcal/band_table.h"

namespace orvane {
namespace {

/// What a band's transmit step has to find: its levels, and the channels at the strongest one.
constexpr int SearchesOf(const BandRow& band) {
  return band.weakestLevel - band.strongestLevel + 1 + static_cast<int>(band.calChannels.size());
}

/// The pieces of each step, in the order of the steps. Save and charger are one piece each.
constexpr std::array<int, kRunSteps.size()> kPieces{std::tuple_size_v<RxChannels>, SearchesOf(kDcsBand),
                                                    SearchesOf(kGsmBand), 1, 1};

constexpr int PiecesOf(RunStep step) { return kPieces.at(static_cast<std::size_t>(step)); }

constexpr std::string_view HeadOf(RunStep step) {
  switch (step) {
    case RunStep::Receive:
      return "Receive";
    case RunStep::TransmitDcs:
      return "Transmit DCS";
    case RunStep::TransmitGsm:
      return "Transmit GSM";
    case RunStep::Save:
      return "Save";
    case RunStep::Charger:
      return "Charger";
  }
  return "";
}

}  // namespace

StationStatus::StationStatus(const EventLoop& loop, const SerialControl& line, StationState& state,
                             StationPanels& panels)
    : loop_(loop), line_(line), state_(state), panels_(panels) {
  FollowRuns();
  FollowSteps();
}

/// While a run is under way, whatever it is, the buttons that start one are held.
void StationStatus::FollowRuns() {
  Button& start = panels_.autoCal.cmdAllCalStart;
  start.changed.Connect([this, &start] {
    if (running_ == !start.Enabled()) return;
    running_ = !start.Enabled();
    if (running_) {
      start_ = loop_.Now();
      whole_ = false;
    } else {
      end_ = loop_.Now();
    }
  });
}

void StationStatus::FollowSteps() {
  state_.report.began.Connect([this] {
    whole_ = true;
    done_ = {};
  });
  state_.report.entered.Connect([this](RunStep) { receiving_ = false; });
  state_.report.left.Connect([this](const StepRecord& record) {
    if (record.complete) DoneIn(record.step) = PiecesOf(record.step);
  });
  state_.rxTrail.changed.Connect([this] {
    receiving_ = true;
    if (state_.report.UnderWay() != RunStep::Receive) return;
    int& done = DoneIn(RunStep::Receive);
    done = std::max(done, state_.rxTrail.ChannelsRead());
  });
  state_.searchTrail.ended.Connect([this](const SearchStory&) { CountSearches(); });
}

/// A channel step that is made again finds more than there is to do.
void StationStatus::CountSearches() {
  const auto step = state_.report.UnderWay();
  if (step != RunStep::TransmitDcs && step != RunStep::TransmitGsm) return;
  const BandRow& band = step == RunStep::TransmitDcs ? kDcsBand : kGsmBand;
  const auto found = static_cast<int>(state_.searchTrail.Found(band.record).size());
  DoneIn(*step) = std::max(DoneIn(*step), std::min(found, PiecesOf(*step)));
}

StationStatus::Link StationStatus::LinkState() const {
  if (!line_.PortOpen()) return Link::Closed;
  if (!state_.reply.ReplyDone) return Link::Waiting;
  const bool silent = state_.tally.commands > 0 && StatusOf(state_.reply) == kNothingCame;
  return silent ? Link::NoReply : Link::Open;
}

std::string StationStatus::Stage() const {
  const auto& fault = state_.charger.faults.Last();
  const std::string& notOff = state_.charger.notOff;
  return StageOfRun() + StageOfWait() + (fault ? "; " + fault->text : "") + (notOff.empty() ? "" : "; " + notOff);
}

std::string StationStatus::StageOfWait() const {
  const auto& wait = state_.instrumentWait;
  if (!wait) return "";
  return "; waits " + MinutesText(loop_.Now() - wait->since) + " for the instrument at address " +
         std::to_string(wait->address) + ", which " + wait->holder + " has";
}

std::string_view StationStatus::StopWords() const {
  const auto step = state_.report.UnderWay();
  if (!step) return state_.searchTrail.UnderWay() ? "stops behind this level" : "stops at the next step";
  switch (*step) {
    case RunStep::Receive:
      return "stops behind the receiver";
    case RunStep::TransmitDcs:
    case RunStep::TransmitGsm:
      return "stops behind this level";
    case RunStep::Save:
      return Transfer() ? "the result is being saved, it stops between two pieces" : "the result is being saved";
    case RunStep::Charger:
      return "the result is saved, the battery is measured to its end";
  }
  return "";
}

std::string StationStatus::StageOfRun() const {
  if (running_) {
    if (const auto step = state_.report.UnderWay()) return StageOfStep(*step);
    const std::string search = StageOfSearch();
    return search.empty() ? "Running" : search;
  }
  if (!start_) return "No run yet";
  const auto verdict = state_.report.Concluded();
  if (!whole_ || !verdict) return "Run ended";
  if (*verdict == Verdict::None) return "Ended without a verdict";
  const auto doubt = *verdict == Verdict::Pass ? state_.report.Doubt() : std::nullopt;
  return "Ended: " + std::string(VerdictText(*verdict)) + (doubt ? ", but " + std::string(FlawText(*doubt)) : "");
}

std::string StationStatus::StageOfStep(RunStep step) const {
  std::string stage(HeadOf(step));
  if (step == RunStep::Receive && receiving_ && state_.rxTrail.Channel()) {
    stage += ": channel " + std::to_string(*state_.rxTrail.Channel());
  } else if (const std::string search = StageOfSearch(); !search.empty()) {
    stage += ": " + search;
  }
  return stage;
}

std::string StationStatus::StageOfSearch() const {
  const SearchTrail& trail = state_.searchTrail;
  if (!trail.UnderWay()) return "";
  return trail.Last()->subject.name + ", pass " + std::to_string(trail.Last()->passes.size() + 1);
}

std::optional<TimePoint> StationStatus::Elapsed() const {
  if (!start_) return std::nullopt;
  return (running_ ? loop_.Now() : end_) - *start_;
}

std::optional<StationStatus::Progress> StationStatus::WholeRun() const {
  if (!whole_) return std::nullopt;
  return Progress{std::accumulate(done_.begin(), done_.end(), 0), std::accumulate(kPieces.begin(), kPieces.end(), 0)};
}

std::optional<StationStatus::Progress> StationStatus::Transfer() const {
  // The bar of the calibration panel goes with it.
  const ProgressBar& bar = panels_.downLoad.prgDownload;
  if (!bar.Visible()) return std::nullopt;
  return Progress{bar.Value(), bar.Max()};
}

std::string_view StationStatus::InstrumentAt(Integer address) const {
  const std::string text = std::to_string(address);
  if (panels_.main.cboPrimaryAddress.Text() == text) return "test set";
  if (panels_.baseBand.supply.primAddress.Text() == text) return "supply";
  return panels_.baseBand.load.primAddress.Text() == text ? "load" : "instrument";
}

std::string MinutesText(TimePoint span) {
  const auto seconds = std::chrono::duration_cast<std::chrono::seconds>(span).count();
  const std::string rest = std::to_string(seconds % 60);
  return std::to_string(seconds / 60) + (rest.size() < 2 ? ":0" : ":") + rest;
}

}  // namespace orvane
