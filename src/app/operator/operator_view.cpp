#include "app/operator/operator_view.h"

#include <QApplication>
#include <QDateTime>
#include <QKeyEvent>
#include <QLocale>
#include <algorithm>
#include <utility>

#include "adapters/qt/appearance.h"
#include "app/operator/box_advice.h"
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

std::string DeviceOf(const Options& options, const StationPanels& panels) {
  if (options.bench) return "";
  const std::string& port = panels.main.cboPort.Text();
  const auto number = port.size() == 4 && port.starts_with("COM") ? port.back() - '1' : -1;
  return number >= 0 && number < static_cast<int>(options.com.size())
             ? options.com.at(static_cast<std::size_t>(number))
             : "";
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

// ---- what the operator does

std::optional<QString> OperatorView::FaultOf(const QString& serial) const {
  if (serial.isEmpty()) {
    if (!at_.options.askSerial) return std::nullopt;
    return tr("Scan the serial number of the unit first.");
  }
  if (const auto fault = FaultOfUnitText(serial.toStdString())) {
    return tr("This is no serial number: it %1.").arg(ToQt(*fault));
  }
  if (at_.options.operating.serialPattern.empty() || pattern_.match(serial).hasMatch()) return std::nullopt;
  return tr("\"%1\" is no serial number of this product. Scan it again.").arg(serial);
}

void OperatorView::Start(const QString& typed) {
  if (abandoned_ || !at_.station.Nest().Idle() || question_) return;
  const QString serial = typed.trimmed();
  if (const auto fault = FaultOf(serial)) {
    page_->ShowHint(*fault);
    page_->MarkSerial();
    return;
  }
  page_->ShowHint("");
  std::vector<Lack> lacks =
      LacksAheadOfAUnit({at_.station.State(), at_.station.Panels(), at_.files,
                         DeviceOf(at_.options, at_.station.Panels()), at_.news, at_.options.operating.lossesDays});
  std::erase_if(lacks, [this](const Lack& lack) {
    return !lack.stopsUnits && std::find(readLacks_.begin(), readLacks_.end(), lack.what) != readLacks_.end();
  });
  if (!lacks.empty()) return Ask(CardOf(lacks, serial));
  if (at_.golden != nullptr) {
    if (const auto why = at_.golden->NextUnitRefusal(serial.toStdString())) return Ask(CardOfCheck(*why, serial));
  }
  AskWhetherPassedBefore(serial);
}

void OperatorView::AskWhetherPassedBefore(const QString& serial) {
  if (at_.runs == nullptr || serial.isEmpty()) return Press(serial);
  RunQuery query;
  query.serial = serial.toStdString();
  query.verdict = "PASS";
  at_.runs->List(query, [this, serial](const PastRuns::Listed& listed) {
    const auto isGood = [](const RunSummary& run) { return OutcomeOf(run.end) == Outcome::Good; };
    const auto passed = std::find_if(listed.runs.begin(), listed.runs.end(), isGood);
    if (abandoned_ || !at_.station.Nest().Idle()) return;
    if (passed == listed.runs.end()) return Press(serial);
    const QDateTime when = QDateTime::fromMSecsSinceEpoch(passed->identity.beganMs);
    Ask({"",
         serial,
         tr("This unit passed on %1.").arg(QLocale().toString(when, tr("dddd, d MMMM yyyy, HH:mm"))),
         tr("It is calibrated already."),
         tr("Put it to the good ones, or run it again."),
         std::nullopt,
         {{tr("Run it again"), [this, serial](const QString&) { Press(serial); }},
          {tr("Do not run it"), [this](const QString&) { page_->SetSerial(""); }}}});
  });
}

/// The same buttons that an engineer presses: a unit that is still connected, behind a stop, is let go first.
void OperatorView::Press(const QString& serial) {
  hands_.Do([this, serial](Operator& hand) {
    if (!at_.station.Nest().Idle()) return;
    at_.unit.Change({.serial = serial.toStdString()});
    OrvaneMain& main = at_.station.Panels().main;
    if (at_.status.LinkState() != StationStatus::Link::Closed) hand.Click(main.cmdTargetReset);
    hand.Click(main.cmdTargetInitialize);
  });
}

void OperatorView::Initialize(const std::vector<Lack>& lacks, const QString& serial) {
  hands_.Do(
      [this, lacks](Operator& hand) {
        if (!at_.station.Nest().Idle()) return;
        at_.station.Nest().Run([this] { at_.station.Panels().baseBand.Touch(); });
        for (const Lack& lack : lacks) {
          if (lack.mending != nullptr) hand.Click(*lack.mending);
        }
      },
      [this, serial] { at_.loop.Post([this, serial] { Start(serial); }); });
}

void OperatorView::Stop() {
  hands_.Do([&stop = at_.station.Panels().autoCal.cmdAutoCalStop](Operator& hand) { hand.Click(stop); });
}

void OperatorView::PressExit() {
  hands_.Do([&exit = at_.station.Panels().main.cmdExit](Operator& hand) { hand.Click(exit); });
}

void OperatorView::AskForWord(std::function<void()> behind) {
  if (at_.word == nullptr || question_ || !at_.desk.Clear()) return;
  CardContent card{"", tr("Engineer"), tr("This needs the word of an engineer.")};
  card.typed = {tr("The word"), true, {}};
  card.answers = {{tr("OK"), [this, behind = std::move(behind)](const QString& word) { TryWord(word, behind); }},
                  {tr("Cancel"), [](const QString&) {}}};
  Ask(std::move(card));
}

void OperatorView::TryWord(const QString& word, const std::function<void()>& behind) {
  const bool isTaken = at_.word->Check(word.toStdString(), [this, behind](const WordAnswer& answer) {
    if (abandoned_) return;
    if (std::holds_alternative<WordRight>(answer)) {
      page_->ShowHint("");
      return behind();
    }
    const auto* wait = std::get_if<WordWait>(&answer);
    page_->ShowHint(wait == nullptr ? tr("That is not the word.")
                                    : tr("Too many wrong words: wait %1 seconds.").arg(wait->seconds));
  });
  if (!isTaken) page_->ShowHint(tr("The word before is still being looked at."));
}

void OperatorView::AskWhy(const QString& serial) {
  CardContent card{"", tr("Engineer"), tr("Why may units be run all the same?"),
                   tr("The reason is kept in each record.")};
  card.typed = {tr("The reason"), false, {}};
  card.answers = {{tr("OK"), [this, serial](const QString& why) { Excuse(why.trimmed(), serial); }},
                  {tr("Cancel"), [](const QString&) {}}};
  Ask(std::move(card));
}

void OperatorView::Excuse(const QString& why, const QString& serial) {
  try {
    (void)at_.golden->Excuse(why.toStdString());
  } catch (const UnitFault& fault) {
    return page_->ShowHint(ToQt(fault.what()));
  }
  Start(serial);
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

// ---- cards

void OperatorView::Ask(CardContent card) {
  card.key = "question" + std::to_string(++questions_);
  for (CardContent::Answer& answer : card.answers) {
    answer.act = [this, act = std::move(answer.act)](const QString& typed) {
      question_.reset();
      act(typed);
      Look();
    };
  }
  question_ = std::move(card);
  Look();
}

CardContent OperatorView::CardOf(const std::vector<Lack>& lacks, const QString& serial) {
  QStringList what;
  QStringList toDo;
  for (const Lack& lack : lacks) {
    what << "\u2022 " + lack.what;
    if (!toDo.contains(lack.toDo)) toDo << lack.toDo;
  }
  const bool stops = std::any_of(lacks.begin(), lacks.end(), [](const Lack& lack) { return lack.stopsUnits; });
  const bool canMend =
      std::any_of(lacks.begin(), lacks.end(), [](const Lack& lack) { return lack.mending != nullptr; });
  CardContent card{"", stops ? tr("Not ready for a unit") : tr("Before the next unit"), what.join(u'\n'), "",
                   toDo.join(u'\n')};
  if (canMend) {
    card.answers.push_back(
        {tr("Initialize now"), [this, lacks, serial](const QString&) { Initialize(lacks, serial); }});
  }
  if (!stops) {
    card.answers.push_back({tr("Go on"), [this, lacks, serial](const QString&) {
                              for (const Lack& lack : lacks) readLacks_.push_back(lack.what);
                              Start(serial);
                            }});
  }
  if (stops && !canMend) {
    card.answers.push_back({tr("Look again"), [this, serial](const QString&) { Start(serial); }});
  }
  card.answers.push_back({tr("Close"), [](const QString&) {}});
  return card;
}

CardContent OperatorView::CardOfCheck(const std::string& refusal, const QString& serial) {
  CardContent card{
      "", tr("The station itself is to be checked"), ToQt(refusal),
      tr("No other unit is run before the golden unit %1 was inside its limits.").arg(ToQt(at_.golden->Serial())),
      tr("Put the golden unit in and scan its number.")};
  card.answers = {{tr("Close"), [this](const QString&) { page_->SetSerial(""); }}};
  if (at_.word != nullptr) {
    card.answers.push_back({tr("An engineer says why not"),
                            [this, serial](const QString&) { AskForWord([this, serial] { AskWhy(serial); }); }});
  }
  return card;
}

/// In a statement of the station: the card is shown when that is over.
void OperatorView::TellCheck(const GoldenFinding& finding) {
  if (finding.Inside()) return;
  QStringList pointsTo;
  for (const std::string& sentence : finding.pointsTo) pointsTo << ToQt(sentence);
  CardContent card{"", tr("The golden unit is outside its limits"), ToQt(finding.Text()), pointsTo.join(u' '),
                   tr("No other unit is run before it was inside them. Call an engineer.")};
  card.answers = {{tr("Close"), [](const QString&) {}}};
  at_.loop.Post([this, card] {
    if (!abandoned_) Ask(card);
  });
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

CardContent OperatorView::CardOf(const Desk::OpenBox& open) {
  const BoxAdvice advice = AdviceOn(open.box.text);
  CardContent card{"box" + std::to_string(open.id), ToQt(open.box.title), ToQt(open.box.text).remove(u'\r').trimmed(),
                   advice.means, advice.toDo};
  for (const BoxButton button : open.box.buttons) {
    card.answers.push_back({ToQt(ButtonText(button)), [this, id = open.id, button](const QString&) {
                              at_.loop.Post([this, id, button] { at_.desk.Press(id, ButtonText(button)); });
                            }});
  }
  return card;
}

CardContent OperatorView::CardOf(const Desk::OpenDialog& open) {
  CardContent card{
      "dialog" + std::to_string(open.id), ToQt(open.dialog.title),
      open.mode == Desk::Mode::Save ? tr("Where is the result to be saved?") : tr("Which file is to be read?"),
      tr("The station is set to ask for a file."), tr("Type its name, or press Cancel and call an engineer.")};
  card.typed = {tr("Name of the file"), false, ToQt(open.dialog.fileName)};
  const auto choose = [this, id = open.id](const std::optional<std::string>& path) {
    at_.loop.Post([this, id, path] { at_.desk.Choose(id, path); });
  };
  card.answers = {{tr("OK"), [choose](const QString& path) { choose(path.toStdString()); }},
                  {tr("Cancel"), [choose](const QString&) { choose(std::nullopt); }}};
  return card;
}

/// What was opened last lies on top.
std::optional<CardContent> OperatorView::CardOfDesk() {
  const auto& boxes = at_.desk.OpenBoxes();
  const auto& dialogs = at_.desk.OpenDialogs();
  const Desk::Id box = boxes.empty() ? 0 : boxes.back().id;
  const Desk::Id dialog = dialogs.empty() ? 0 : dialogs.back().id;
  if (box > dialog) return CardOf(boxes.back());
  if (dialog > box) return CardOf(dialogs.back());
  return std::nullopt;
}

// ---- what is seen of the station

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
  for (const RunStep step : kRunSteps) page_->ShowStep(step, clock_.Of(step), clock_.Took(step), GoesOn(step));
  page_->ShowShift(shift_);
  page_->ShowVerdict(Covering(), [this] { LeaveVerdict(); });
  const auto ofDesk = CardOfDesk();
  page_->ShowCard(ofDesk ? ofDesk : question_);
}

}  // namespace orvane
