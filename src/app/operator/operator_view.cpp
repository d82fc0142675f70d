#include "app/operator/operator_view.h"

#include <QApplication>
#include <QDateTime>
#include <QKeyEvent>
#include <QLocale>
#include <algorithm>
#include <utility>

#include "adapters/qt/appearance.h"
#include "app/records/run_words.h"

namespace orvane {
namespace {

constexpr std::chrono::milliseconds kLook{100};
constexpr std::size_t kMostOfAShift = 5000;

/// What a stop does at this point, as the status says it.
QString StopWordsOf(std::string_view words) {
  static constexpr const char* kAll[] = {
      QT_TRANSLATE_NOOP("OperatorView", "stops behind this level"),
      QT_TRANSLATE_NOOP("OperatorView", "stops at the next step"),
      QT_TRANSLATE_NOOP("OperatorView", "stops behind the receiver"),
      QT_TRANSLATE_NOOP("OperatorView", "the result is being saved, it stops between two pieces"),
      QT_TRANSLATE_NOOP("OperatorView", "the result is being saved"),
      QT_TRANSLATE_NOOP("OperatorView", "the result is saved, the battery is measured to its end"),
  };
  for (const char* known : kAll) {
    if (words == known) return OperatorView::tr(known);
  }
  return ToQt(words);
}

UnitOutcome OutcomeOfRun(UnitVerdict verdict) {
  switch (verdict) {
    case UnitVerdict::Pass:
      return UnitOutcome::Pass;
    case UnitVerdict::Fail:
      return UnitOutcome::Fail;
    case UnitVerdict::None:
      return UnitOutcome::NoVerdict;
    case UnitVerdict::OutOfTolerance:
    case UnitVerdict::NotMeasured:
      break;
  }
  return UnitOutcome::NotComplete;
}

UnitOutcome OutcomeOfRecord(const RunEnd& end) {
  if (end.verdict == "FAIL") return UnitOutcome::Fail;
  if (end.verdict != "PASS") return UnitOutcome::NoVerdict;
  return end.complete ? UnitOutcome::Pass : UnitOutcome::NotComplete;
}

}  // namespace

OperatorView::OperatorView(const OperatorWorld& world, bool isDark)
    : at_(world),
      isDark_(isDark),
      surroundings_(SurroundingsOf(world.options)),
      pattern_(QRegularExpression::anchoredPattern(ToQt(world.options.operating.serialPattern))),
      hands_(world.loop, world.station.Nest(), [&desk = world.desk] { return desk.Clear(); }),
      clock_(world.loop, world.station.State().report) {
  page_ = std::make_unique<OperatorPage>(
      OperatorPage::Asked{[this](const QString& serial) { Start(serial); }, [this] { Stop(); },
                          [this] {
                            AskForWord([this] {
                              if (openPanels) openPanels();
                            });
                          },
                          [this] { PressExit(); }},
      world.station.State().searchTrail, isDark_);
  page_->SetSerial(ToQt(at_.unit.Texts().serial));
  Follow();
  FillShift();
  connect(&timer_, &QTimer::timeout, this, &OperatorView::Look);
  timer_.start(kLook);
  qApp->installEventFilter(this);
}

OperatorView::~OperatorView() { qApp->removeEventFilter(this); }

/// Within a statement of the station nothing may reach for the display, which may have gone.
void OperatorView::Follow() {
  RunReport& report = at_.station.State().report;
  const auto soon = ShownSoon(*page_, [this] { Look(); });
  report.began.Connect([this] { RunBegins(); });
  report.ended.Connect([this] { RunIsOver(); });
  report.concluded.Connect([soon](Verdict) { soon(); });
  report.ended.Connect(soon);
  clock_.changed.Connect(soon);
  at_.station.Panels().pass.changed.Connect(soon);
  at_.station.Panels().fail.changed.Connect(soon);
  at_.desk.boxOpened.Connect([soon](const Desk::OpenBox&) { soon(); });
  at_.desk.dialogOpened.Connect([soon](const Desk::OpenDialog&) { soon(); });
  at_.desk.closed.Connect([soon](Desk::Id) { soon(); });
  at_.station.Nest().onFailure.push_back([this](const std::string& text) {
    // It is told when the run that it ended is over.
    if (!run_.isSeen) run_.failure = text;
  });
  if (at_.golden != nullptr) {
    at_.golden->changed.Connect(soon);
    at_.golden->checked.Connect([this](const GoldenFinding& finding) { TellCheck(finding); });
  }
  if (at_.news == nullptr) return;
  at_.news->changed.Connect([this, soon] {
    TakeRecord();
    soon();
  });
}

void OperatorView::Show() {
  page_->setGeometry(page_->screen()->geometry());
  page_->showFullScreen();
  timer_.start();
  Look();
}

void OperatorView::Hide() {
  timer_.stop();
  page_->hide();
}

void OperatorView::Abandon() {
  abandoned_ = true;
  timer_.stop();
  page_->setUpdatesEnabled(false);
}

/// Whatever window has the keyboard, a card's too.
bool OperatorView::eventFilter(QObject* watched, QEvent* event) {
  if (event->type() == QEvent::KeyPress && page_->isVisible()) {
    const auto* const key = static_cast<QKeyEvent*>(event);
    if (key->key() == Qt::Key_F12 && at_.status.Running()) {
      if (!key->isAutoRepeat()) Stop();
      return true;
    }
  }
  return QObject::eventFilter(watched, event);
}

void OperatorView::RunBegins() {
  run_ = {.isUnderWay = true, .isSeen = false};
  run_.unit.serial = at_.unit.Texts().serial;
  run_.unit.beganMs = QDateTime::currentMSecsSinceEpoch();
  run_.began = at_.loop.Now();
}

void OperatorView::RunIsOver() {
  constexpr double kNanosecondsASecond = 1e9;
  const CalState& cal = at_.station.State().cal;
  run_.isUnderWay = false;
  run_.isStopped = cal.stopStands && cal.CalStopRequested;
  run_.unit.outcome = OutcomeOfRun(VerdictOf(at_.station.State().report));
  run_.unit.seconds = static_cast<double>((at_.loop.Now() - run_.began).count()) / kNanosecondsASecond;
  if (at_.news == nullptr) shift_.Put(run_.unit);
}

/// The record's id is known behind the run: it keeps a run from being counted twice.
void OperatorView::TakeRecord() {
  const auto& last = at_.news->Last();
  if (!last || run_.isUnderWay || run_.unit.beganMs == 0 || !run_.unit.run.empty()) return;
  if (last->run.empty() && !last->fault.empty()) return;
  run_.unit.run = last->run;
  shift_.Put(run_.unit);
}

void OperatorView::FillShift() {
  shift_.BeginAt(ShiftBegin(at_.options.operating.shiftStarts, QDateTime::currentMSecsSinceEpoch()));
  if (at_.runs == nullptr) return;
  RunQuery query;
  query.station = at_.options.station;
  query.since = ShiftBegin(at_.options.operating.shiftStarts, QDateTime::currentMSecsSinceEpoch());
  query.limit = kMostOfAShift;
  at_.runs->List(query, [this](const PastRuns::Listed& listed) {
    for (const RunSummary& run : listed.runs) {
      if (!run.end || run.identity.kind != RunKindText(RunKind::Whole)) continue;
      shift_.Put(
          {run.identity.id, run.identity.serial, OutcomeOfRecord(*run.end), run.end->seconds, run.identity.beganMs});
    }
  });
}

QString OperatorView::GoesOn(RunStep step) const {
  const StationState& state = at_.station.State();
  switch (step) {
    case RunStep::Receive:
      return state.rxTrail.Channel() ? tr("channel %1").arg(*state.rxTrail.Channel()) : QString();
    case RunStep::TransmitDcs:
    case RunStep::TransmitGsm: {
      const SearchTrail& trail = state.searchTrail;
      if (!trail.UnderWay()) return {};
      const SearchSubject& subject = trail.Last()->subject;
      return (subject.kind == SearchSubject::Kind::Level ? tr("level %1, pass %2") : tr("channel %1, pass %2"))
          .arg(subject.number)
          .arg(trail.Last()->passes.size() + 1);
    }
    case RunStep::Save:
      if (const auto transfer = at_.status.Transfer()) {
        return tr("%1 of %2").arg(transfer->done).arg(transfer->of);
      }
      return {};
    case RunStep::Charger:
      return {};
  }
  return {};
}

QString OperatorView::GoldenWords() const {
  if (at_.golden == nullptr) return {};
  const GoldenState state = at_.golden->State();
  const auto clock = [](std::int64_t ms) {
    return QLocale().toString(QDateTime::fromMSecsSinceEpoch(ms), tr("ddd HH:mm"));
  };
  QString words = tr("golden unit is due");
  if (const auto* good = std::get_if<GoldenGood>(&state)) words = tr("golden unit due on %1").arg(clock(good->dueMs));
  if (std::holds_alternative<GoldenOutside>(state)) words = tr("golden unit was outside");
  if (const auto* excused = std::get_if<GoldenExcused>(&state))
    words = tr("golden unit excused until %1").arg(clock(excused->untilMs));
  return QStringLiteral("  \u00b7  ") + words;
}

QString OperatorView::WaitWords() const {
  constexpr auto whole = [](TimePoint span) {
    return std::chrono::duration_cast<std::chrono::seconds>(span).count();
  };
  const auto wait = at_.waits == nullptr ? std::nullopt : at_.waits->UnderWay();
  if (wait && wait->lasts >= LongWaits::kUntold) {
    return tr("Waiting for the instrument at address %1: %2 s").arg(wait->address).arg(whole(wait->lasts));
  }
  if (const auto& lent = at_.station.State().instrumentWait) {
    return tr("Waiting for the instrument at address %1, which %2 has: %3 s")
        .arg(lent->address)
        .arg(ToQt(lent->holder))
        .arg(whole(at_.loop.Now() - lent->since));
  }
  return {};
}

QString OperatorView::LinkWords() const {
  switch (at_.status.LinkState()) {
    case StationStatus::Link::Closed:
      return tr("\u25cb No phone connected");
    case StationStatus::Link::NoReply:
      return tr("\u2715 The phone does not answer");
    case StationStatus::Link::Open:
    case StationStatus::Link::Waiting:
      break;
  }
  return tr("\u25cf Phone connected");
}

/// While the station shows its verdict; behind a run without one until the operator has seen that.
std::optional<OperatorPage::Covering> OperatorView::Covering() const {
  const StationPanels& panels = at_.station.Panels();
  const RunReport& report = at_.station.State().report;
  const bool isShown = panels.pass.Visible() || panels.fail.Visible();
  const bool hasNone = !run_.isUnderWay && !run_.isSeen && report.Concluded() == Verdict::None;
  if ((!isShown && !hasNone) || !report.Concluded()) return std::nullopt;
  QString record;
  if (at_.news != nullptr && at_.news->Last()) {
    const Kept& kept = *at_.news->Last();
    record = kept.isKept && kept.fault.empty() ? tr("Record %1").arg(ToQt(ShortId(kept.run)))
             : kept.isKept                     ? tr("The record lies beside the store. Call an engineer.")
                                               : tr("The record is lost. Call an engineer.");
  }
  return OperatorPage::Covering{VerdictOf(report), WordsOf(report, run_.isStopped, run_.failure),
                                ToQt(run_.unit.serial), record};
}

void OperatorView::LeaveVerdict() {
  run_.isSeen = true;
  StationPanels& panels = at_.station.Panels();
  hands_.Do(
      [&panels](Operator& hand) {
        if (panels.pass.Visible()) hand.Click(panels.pass.Command1);
        if (panels.fail.Visible()) hand.Click(panels.fail.Command1);
      },
      ShownSoon(*page_, [this] { Look(); }));
}

void OperatorView::Look() {
  if (abandoned_) return;
  const std::int64_t begin = ShiftBegin(at_.options.operating.shiftStarts, QDateTime::currentMSecsSinceEpoch());
  shift_.BeginAt(begin);
  page_->ShowHead({surroundings_.isVirtual ? tr("VIRTUAL BENCH") : tr("REAL BENCH"), surroundings_.isVirtual,
                   ToQt(at_.options.station) + GoldenWords(), LinkWords(), at_.word != nullptr});
  const auto progress = at_.status.Running() ? at_.status.WholeRun() : std::nullopt;
  const auto elapsed = at_.status.Running() ? at_.status.Elapsed() : std::nullopt;
  QString stopWords = StopWordsOf(at_.status.StopWords());
  if (at_.status.StopAsked()) stopWords = tr("asked for: %1. F12 takes it back").arg(stopWords);
  page_->ShowRun({!at_.station.Nest().Idle(), at_.status.Running(), ToQt(at_.unit.Texts().serial), stopWords,
                  elapsed ? ToQt(MinutesText(*elapsed)) : QString(), progress ? progress->done : 0,
                  progress ? progress->of : 0});
  const QString wait = WaitWords();
  if (!wait.isEmpty() || saysWait_) page_->ShowHint(wait);
  saysWait_ = !wait.isEmpty();
  for (const RunStep step : kRunSteps) page_->ShowStep(step, clock_.Of(step), clock_.Took(step), GoesOn(step));
  page_->ShowShift(shift_);
  page_->ShowVerdict(Covering(), [this] { LeaveVerdict(); });
  const auto ofDesk = CardOfDesk();
  page_->ShowCard(ofDesk ? ofDesk : question_);
}

}  // namespace orvane
