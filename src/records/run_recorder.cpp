#include "records/run_recorder.h"

#include <algorithm>
#include <exception>
#include <map>
#include <utility>

namespace orvane {
namespace {

/// What a station that dies loses of its trace, at the most.
constexpr TimePoint kGrowthToldEach = std::chrono::milliseconds(250);

double SecondsOf(TimePoint span) { return std::chrono::duration<double>(span).count(); }

bool IsTargetLink(std::string_view link) { return link.starts_with("COM"); }

/// The first step that is not complete says why.
std::string FirstReason(const std::vector<RecordedStep>& steps) {
  const auto hit = std::find_if(steps.begin(), steps.end(), [](const RecordedStep& step) { return !step.complete; });
  return hit == steps.end() ? "" : hit->reason;
}

}  // namespace

struct RunRecorder::Run {
  explicit Run(RunKind kindOfRun, TimePoint now, const StationState& state)
      : kind(kindOfRun), began(now), tally(state.tally), stopsAsked(state.cal.stopsAsked), toldAt(now) {}

  RunKind kind;
  TimePoint began;
  LinkTally tally;
  long stopsAsked;
  RunRecord record;
  WireLog wires;
  /// Of the trace, and when.
  std::size_t toldBytes = 0;
  TimePoint toldAt{0};
  /// Of the search that is under way.
  std::string search;
  /// Of each search so far. One that is made once more goes on counting.
  std::map<std::string, int> passes;
  /// A command is out whose answer may still come in.
  std::optional<TimePoint> awaiting;
  TimePoint lastIn{0};
  TimePoint onWire{0};
  TimePoint messageBegan{0};
  TimePoint inMessages{0};
  /// By hand there are no steps that would say why.
  std::string firstFlaw;
  bool isOver = false;
  TimePoint overAt{0};
  bool wasThrown = false;
  std::string failure;
  RunEnd end;
};

RunRecorder::RunRecorder(EventLoop& loop) : loop_(loop) {}
RunRecorder::~RunRecorder() = default;

void RunRecorder::Follow(StationState& state, RecorderLinks links) {
  state_ = &state;
  links_ = std::move(links);
  RunReport& report = state.report;
  report.runBegan.Connect([this](RunKind kind) { Begin(kind); });
  report.runIsOver.Connect([this] { IsOver(); });
  report.read.Connect([this](const Reading& reading) { Read(reading); });
  report.kept.Connect([this](const RunDocument& document) { Keep(document); });
  report.entered.Connect([this](RunStep step) { StepEntered(step); });
  report.left.Connect([this](const StepRecord& step) { StepLeft(step); });
  report.flawed.Connect([this](const std::string& reason) {
    if (run_ && run_->firstFlaw.empty()) run_->firstFlaw = reason;
  });
  state.searchTrail.began.Connect([this](const SearchStory& story) {
    if (!run_) return;
    run_->search = ReadingNameOf(story.subject);
  });
  state.searchTrail.passed.Connect([this](const SearchPass& pass) { Passed(pass); });
}

bool RunRecorder::Listening() const { return run_ && !run_->isOver; }

double RunRecorder::Now() const { return SecondsOf(loop_.Now() - run_->began); }

void RunRecorder::Begin(RunKind kind) {
  // One whose end is still to be told is over all the same.
  if (run_) Close();
  run_ = std::make_unique<Run>(kind, loop_.Now(), *state_);
  run_->record.identity = links_.identity(kind);
  run_->record.documents = links_.documentsBefore();
  Note(kStationLink, WireEvent::State, links_.state());
  links_.begun(run_->record.identity);
}

/// The verdict may stand already, a failure's text does not: the record is closed behind what is under way.
void RunRecorder::IsOver() {
  if (!run_) return;
  run_->isOver = true;
  run_->overAt = loop_.Now() - run_->began;
  run_->wasThrown = std::uncaught_exceptions() > 0;
  run_->end = EndOfRun();
  loop_.Post([this, mine = ++*count_, count = std::weak_ptr(count_)] {
    if (const auto held = count.lock(); held && *held == mine) Close();
  });
}

RunEnd RunRecorder::EndOfRun() const {
  const Run& run = *run_;
  RunEnd end;
  end.endedMs = links_.wallClock();
  end.seconds = Now();
  const bool whole = run.kind == RunKind::Whole;
  const Verdict verdict = whole ? state_->report.Concluded().value_or(Verdict::None) : Verdict::None;
  end.verdict = VerdictText(verdict);
  end.complete = verdict == Verdict::Pass && state_->report.AllComplete();
  const CalState& cal = state_->cal;
  // The charger run does not look at a stop.
  const bool stoppedByHand =
      run.kind != RunKind::Charger && cal.CalStopRequested && cal.stopStands && cal.stopsAsked != run.stopsAsked;
  const bool stopped = whole ? verdict == Verdict::None : stoppedByHand;
  end.ending = run.wasThrown ? Ending::Failure : stopped ? Ending::Stopped : Ending::Verdict;
  end.commands = state_->tally.commands - run.tally.commands;
  end.bytesOut = state_->tally.bytesOut - run.tally.bytesOut;
  end.bytesIn = state_->tally.bytesIn - run.tally.bytesIn;
  return end;
}

void RunRecorder::Stopped(const std::string& text) {
  if (!run_ || !run_->isOver || !run_->wasThrown) return;
  run_->failure = text;
  Close();
}

void RunRecorder::Acted(const std::string& where, std::string_view how, std::string_view value) {
  if (run_) Note(kHandLink, WireEvent::Act, std::string(where).append("\n").append(how).append("\n").append(value));
}

void RunRecorder::Flush() {
  if (run_ && run_->isOver) Close();
}

void RunRecorder::Close() {
  ++*count_;
  if (!run_->isOver) {
    // Its guard went without a word: nothing is known but that it ended.
    run_->overAt = loop_.Now() - run_->began;
    run_->end = EndOfRun();
    run_->end.ending = Ending::Failure;
  }
  // An end of the station in mid-run is a stop, and brings no failure's text.
  if (run_->end.ending == Ending::Failure && run_->failure.empty()) {
    run_->end.ending = Ending::Stopped;
    run_->wires.Note(run_->overAt, kStationLink, WireEvent::Close, "The station ended.");
  }
  TellTimes();
  const std::unique_ptr<Run> run = std::move(run_);
  RunRecord record = std::move(run->record);
  if (!run->end.complete) {
    run->end.reason = !run->failure.empty() ? run->failure : FirstReason(record.steps);
    if (run->end.reason.empty()) run->end.reason = run->firstFlaw;
    if (run->end.reason.empty() && run->end.ending == Ending::Stopped) run->end.reason = "The run was stopped.";
  }
  record.end = run->end;
  for (RecordedDocument& document : links_.documentsAfter()) record.documents.push_back(std::move(document));
  record.documents.push_back({"trace", "trace", run->wires.Content()});
  links_.finished(std::move(record));
}

void RunRecorder::TellTimes() {
  const double seconds = run_->end.seconds;
  const auto tell = [&](const char* name, double value) {
    run_->record.readings.push_back({"", name, value, "second", std::nullopt, std::nullopt, seconds});
  };
  tell("road.seconds", seconds);
  tell("road.wire_seconds", SecondsOf(run_->onWire));
  tell("road.instrument_seconds", SecondsOf(run_->inMessages));
}

void RunRecorder::Read(const Reading& reading) {
  if (!run_) return;
  const auto step = state_->report.UnderWay();
  run_->record.readings.push_back({step ? std::string(StepName(*step)) : "", reading.name, reading.value,
                                   std::string(reading.unit), reading.low, reading.high, Now()});
}

/// One that is made again in the same run takes the earlier one's place.
void RunRecorder::Keep(const RunDocument& document) {
  if (!run_) return;
  auto& documents = run_->record.documents;
  const auto same = std::find_if(documents.begin(), documents.end(),
                                 [&](const RecordedDocument& each) { return each.role == document.role; });
  RecordedDocument& kept = same == documents.end() ? documents.emplace_back() : *same;
  kept = {std::string(document.role), "bytes", document.content};
}

void RunRecorder::Passed(const SearchPass& pass) {
  if (!run_) return;
  run_->record.passes.push_back({run_->search, run_->passes[run_->search]++, pass.dac, pass.power.ToDouble(),
                                 pass.tolerance.ToDouble(), Now()});
}

void RunRecorder::StepEntered(RunStep step) {
  if (!run_) return;
  run_->record.steps.push_back({std::string(StepName(step)), Now(), 0, false, "The step did not end."});
}

void RunRecorder::StepLeft(const StepRecord& step) {
  if (!run_ || run_->record.steps.empty()) return;
  RecordedStep& record = run_->record.steps.back();
  record.seconds = Now() - record.beganS;
  record.complete = step.complete;
  record.reason = step.reason;
}

void RunRecorder::Note(std::string_view link, WireEvent event, std::string_view bytes) {
  // What passes while its record waits to be closed is not the run's.
  if (!Listening()) return;
  const TimePoint now = loop_.Now();
  run_->wires.Note(now - run_->began, link, event, bytes);
  if (now - run_->toldAt >= kGrowthToldEach) TellGrowth(now);
  if (!IsTargetLink(link)) return;
  if (event == WireEvent::Out) {
    if (run_->awaiting && run_->lastIn > *run_->awaiting) run_->onWire += run_->lastIn - *run_->awaiting;
    // The bytes ahead of a command's body belong to it.
    if (!run_->awaiting || run_->lastIn > *run_->awaiting || bytes.size() < 3) run_->awaiting = now;
  } else if (event == WireEvent::In) {
    run_->lastIn = now;
  }
}

void RunRecorder::TellGrowth(TimePoint now) {
  const std::string& content = run_->wires.Content();
  links_.grown(run_->record.identity.id, content.substr(run_->toldBytes));
  run_->toldBytes = content.size();
  run_->toldAt = now;
}

void RunRecorder::MessageBegins() {
  if (run_) run_->messageBegan = loop_.Now();
}

void RunRecorder::MessageIsOver() {
  if (run_) run_->inMessages += loop_.Now() - run_->messageBegan;
}

std::size_t RunRecorder::BoxOpened(const Box& box) {
  if (!Listening()) return 0;
  run_->record.boxes.push_back({box.title, box.text, "", Now(), std::nullopt});
  return run_->record.boxes.size();
}

void RunRecorder::BoxAnswered(std::size_t mark, BoxButton answer) {
  if (!run_ || mark == 0 || mark > run_->record.boxes.size()) return;
  RecordedBox& box = run_->record.boxes[mark - 1];
  box.answer = ButtonText(answer);
  box.answeredS = Now();
}

}  // namespace orvane
